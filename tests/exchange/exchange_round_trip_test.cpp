#include <limits>
#include <vector>

#include "exchange/documents.h"

using Found::Foundation;
using Found::FoundationManager;
using TestSupport::AbsentVector;
using TestSupport::Differences;

namespace ExchangeTest {
namespace {

/// The line part with all that every version holds.
Foundation& addLine(FoundationManager& manager, int number, const std::string& name) {
  Foundation& foundation = addFoundation(manager, number, name);
  setDispLine(foundation, -4.0, 5e-324, 6.5);
  setRotLine(foundation, 7.0, 0.0, 0.0);
  foundation.setFailLineY(Foundation::Compression);
  foundation.setFailLineZ(Foundation::Tension);
  foundation.setFactorLine(-1.0 / 3.0);
  return foundation;
}

/// The area part with all that every version holds.
Foundation& addArea(FoundationManager& manager, int number, const std::string& name) {
  Foundation& foundation = addFoundation(manager, number, name);
  setDispArea(foundation, 0.1, -2.0, 1e300);
  foundation.setFailAreaZ(Foundation::Compression);
  foundation.setFactorArea(0.3);
  return foundation;
}

/// Both parts.
Foundation& addBoth(FoundationManager& manager, int number, const std::string& name) {
  Foundation& foundation = addLine(manager, number, name);
  setDispArea(foundation, 0.1, -2.0, 1e300);
  foundation.setFailAreaZ(Foundation::Tension);
  foundation.setFactorArea(0.3);
  return foundation;
}

class ExchangeRoundTrip : public testing::Test {
 protected:
  /// Writes `before` and reads that into `after`.
  void pass(const std::string& version) {
    readText(after, write(before, version), version, &messenger);
  }

  /// What was lost where the same number of foundations came back.
  Differences listLosses() {
    Differences losses;
    if (before.getFoundations().size() != after.getFoundations().size())
      return {"not the same number of foundations"};
    for (std::size_t i = 0; i < before.getFoundations().size(); ++i)
      for (const std::string& difference :
           TestSupport::compare(*before.getFoundations()[i], *after.getFoundations()[i],
                                AbsentVector::CountsAsZeros))
        losses.push_back(difference);
    return losses;
  }

  FoundationManager before;
  FoundationManager after;
  RecordingMessenger messenger;
};

class CurrentRoundTrip : public ExchangeRoundTrip {};
class RoundTripInVersion10 : public ExchangeRoundTrip {};

// The current version

TEST_F(CurrentRoundTrip, LosesNothingOfAFoundationWithOnePart) {
  addLine(before, 10, "line");
  addArea(before, 4, "area");
  addLine(before, 2147483647, "largest number");
  setDispLine(addLine(before, 6, "negative zero"), -0.0, 1.0, -0.0);
  setDispArea(addArea(before, 7, "extremes"), std::numeric_limits<double>::max(),
              std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::lowest());
  setDispArea(addArea(before, 8, "infinite"), std::numeric_limits<double>::infinity(),
              -std::numeric_limits<double>::infinity(), 0.0);

  pass(currentVersion);

  EXPECT_EQ(listLosses(), Differences{});
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 6"}));
}

TEST_F(CurrentRoundTrip, PrintsTheSameTextTheSecondTime) {
  addLine(before, 10, "line");
  addArea(before, 4, "area");
  const std::string printed = makePrinted(
      {"<CurveBedding Number=\"10\" Name=\"line\" StiffnessX=\"-4\" StiffnessY=\"5e-324\" "
       "StiffnessZ=\"6.5\" StiffnessXX=\"7\" StiffnessYFailure=\"compression\" "
       "StiffnessZFailure=\"tension\" TangentialStiffnessXFactor=\"-0.3333333333333333\" />",
       "<SurfaceBedding Number=\"4\" Name=\"area\" StiffnessX=\"0.1\" StiffnessY=\"-2\" "
       "StiffnessZ=\"1e+300\" StiffnessZFailure=\"compression\" "
       "TangentialStiffnessXYFactor=\"0.3\" />"});
  ASSERT_EQ(write(before, currentVersion), printed);

  pass(currentVersion);

  EXPECT_EQ(write(after, currentVersion), printed);
}

TEST_F(CurrentRoundTrip, LosesTheFailureOfLineX) {
  addLine(before, 1, "A").setFailLineX(Foundation::Tension);

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: failLineX"}));
}

TEST_F(CurrentRoundTrip, LosesRotationAboutYAndZ) {
  setRotLine(addLine(before, 1, "A"), 7.0, 8.0, 9.0);
  setRotLine(addLine(before, 2, "B"), 0.0, 8.0, 9.0);

  pass(currentVersion);

  EXPECT_EQ(listLosses(),
            (Differences{"A: rotLine y", "A: rotLine z", "B: rotLine y", "B: rotLine z"}));
}

TEST_F(CurrentRoundTrip, LosesThatAFoundationIsGenerated) {
  addLine(before, 1, "A").setGenerated(true);

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: generated"}));
}

TEST_F(CurrentRoundTrip, LosesThatAFoundationCanFail) {
  addLine(before, 1, "A").setFailPossible(true);

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: failPossible"}));
}

TEST_F(CurrentRoundTrip, LosesThatAFoundationIsUnchanged) {
  addLine(before, 1, "A").setChanged(false);

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: changed"}));
}

TEST_F(CurrentRoundTrip, LosesTheAreaOfAFoundationWithBothParts) {
  addBoth(before, 5, "A");

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: dispArea was dropped", "A: dispArea x", "A: dispArea y",
                                       "A: dispArea z", "A: failAreaZ", "A: factorArea"}));
  EXPECT_EQ(messenger.messages,
            (Messages{"onInvalidNumber <SurfaceBedding> 5", "onReadFinished 1"}));
}

TEST_F(CurrentRoundTrip, LosesFailureAndFactorOfAPartWithoutStiffness) {
  Foundation& line = addLine(before, 1, "A");
  line.setFailAreaZ(Foundation::Tension);
  line.setFactorArea(0.5);
  Foundation& area = addArea(before, 2, "B");
  area.setFailLineY(Foundation::Tension);
  area.setFailLineZ(Foundation::Tension);
  area.setFactorLine(0.5);

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: failAreaZ", "A: factorArea", "B: failLineY",
                                       "B: failLineZ", "B: factorLine"}));
}

TEST_F(CurrentRoundTrip, LosesAFoundationWithoutStiffness) {
  addFoundation(before, 1, "A");
  addLine(before, 2, "B");

  pass(currentVersion);

  EXPECT_EQ(describe(after), "2 B");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

TEST_F(CurrentRoundTrip, LosesStiffnessBelowTheTolerance) {
  setDispLine(addLine(before, 1, "A"), 9.9e-11, 0.0, 0.0);
  setDispArea(addArea(before, 2, "B"), 0.0, 0.0, -9.9e-11);

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: dispLine x", "B: dispArea z"}));
}

TEST_F(CurrentRoundTrip, LosesThatAVectorOfTheLineIsAbsent) {
  addLine(before, 1, "A").setRotLine(nullptr);
  addLine(before, 2, "B").setDispLine(nullptr);

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: rotLine came up", "B: dispLine came up"}));
}

TEST_F(CurrentRoundTrip, LosesFailureValuesThatAreNoMode) {
  addLine(before, 1, "A").setFailLineY(static_cast<Foundation::Failure>(2));
  addArea(before, 2, "B").setFailAreaZ(static_cast<Foundation::Failure>(-2));

  pass(currentVersion);

  EXPECT_EQ(listLosses(), (Differences{"A: failLineY", "B: failAreaZ"}));
  EXPECT_EQ(describeValues(*after.getFoundations().at(1)),
            "area (0.1, -2, 1e+300), factor area 0.3");
}

TEST_F(CurrentRoundTrip, LosesFoundationsThatAreNotNumbered) {
  addLine(before, -1, "A");
  addLine(before, 0, "B");
  addLine(before, 1, "C");

  pass(currentVersion);

  EXPECT_EQ(describe(after), "1 C");
  EXPECT_EQ(messenger.messages, (Messages{"onInvalidNumber <CurveBedding> -1",
                                          "onInvalidNumber <CurveBedding> 0", "onReadFinished 1"}));
}

TEST_F(CurrentRoundTrip, LosesTheSecondFoundationOfANumber) {
  addLine(before, 1, "A");
  addLine(before, 1, "B");

  pass(currentVersion);

  EXPECT_EQ(describe(after), "1 A");
  EXPECT_EQ(messenger.messages, (Messages{"onInvalidNumber <CurveBedding> 1", "onReadFinished 1"}));
}

TEST_F(CurrentRoundTrip, LosesThatTwoFoundationsHaveOneName) {
  addLine(before, 1, "A");
  addArea(before, 2, "A");

  pass(currentVersion);

  EXPECT_EQ(describe(after), "1 A, 2 A_1");
  EXPECT_EQ(messenger.messages, (Messages{"onNameChanged <A> <A_1>", "onReadFinished 2"}));
}

TEST_F(CurrentRoundTrip, LosesFoundationsWithoutAName) {
  addLine(before, 1, "");

  pass(currentVersion);

  EXPECT_EQ(describe(after), "");
  EXPECT_EQ(messenger.messages, (Messages{"onEmptyName 1 <>", "onReadFinished 0"}));
}

TEST_F(CurrentRoundTrip, LosesNullFoundations) {
  before.add(nullptr);
  addLine(before, 1, "A");

  pass(currentVersion);

  EXPECT_EQ(describe(after), "1 A");
}

// Version "1.0"

TEST_F(RoundTripInVersion10, LosesNothingOfFoundationsInTheirNumbersOrder) {
  addBoth(before, 1, "both");
  setDispLine(addBoth(before, 2, "zero line"), 0.0, 0.0, 0.0);
  setRotLine(addBoth(before, 3, "zero rotation"), 0.0, 0.0, 0.0);
  Foundation& zeros = addBoth(before, 4, "zeros");
  setDispArea(zeros, 0.0, 0.0, 0.0);
  setDispLine(zeros, 0.0, 0.0, 0.0);
  setRotLine(zeros, 0.0, 0.0, 0.0);
  setDispLine(addBoth(before, 5, "negative zero"), -0.0, 1.0, -0.0);

  pass("1.0");

  EXPECT_EQ(listLosses(), Differences{});
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 5"}));
}

TEST_F(RoundTripInVersion10, PrintsTheSameTextTheSecondTime) {
  addBoth(before, 9, "both");
  addFoundation(before, 4, "bare");
  const std::string printed =
      makePrinted({"<Bedding Name=\"both\" SurfaceStiffnessX=\"0.1\" SurfaceStiffnessY=\"-2\" "
                   "SurfaceStiffnessZ=\"1e+300\" SurfaceStiffnessZFailure=\"tension\" "
                   "TangentialSurfaceStiffnessXYFactor=\"0.3\" CurveStiffnessX=\"-4\" "
                   "CurveStiffnessY=\"5e-324\" CurveStiffnessZ=\"6.5\" CurveStiffnessXX=\"7\" "
                   "CurveStiffnessYFailure=\"compression\" CurveStiffnessZFailure=\"tension\" "
                   "TangentialCurveStiffnessX=\"-0.3333333333333333\" />",
                   "<Bedding Name=\"bare\" SurfaceStiffnessZFailure=\"none\" "
                   "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessYFailure=\"none\" "
                   "CurveStiffnessZFailure=\"none\" TangentialCurveStiffnessX=\"0\" />"});
  ASSERT_EQ(write(before, "1.0"), printed);

  pass("1.0");

  EXPECT_EQ(write(after, "1.0"), printed);
}

TEST_F(RoundTripInVersion10, LosesNumbers) {
  addBoth(before, 9, "A");
  addBoth(before, -1, "B");
  addBoth(before, 9, "C");

  pass("1.0");

  EXPECT_EQ(describe(after), "1 A, 2 B, 3 C");
  EXPECT_EQ(listLosses(), (Differences{"A: number", "B: number", "C: number"}));
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 3"}));
}

TEST_F(RoundTripInVersion10, LosesTheFailureOfLineX) {
  addBoth(before, 1, "A").setFailLineX(Foundation::Compression);

  pass("1.0");

  EXPECT_EQ(listLosses(), (Differences{"A: failLineX"}));
}

TEST_F(RoundTripInVersion10, LosesRotationAboutYAndZ) {
  setRotLine(addBoth(before, 1, "A"), 7.0, 8.0, 9.0);

  pass("1.0");

  EXPECT_EQ(listLosses(), (Differences{"A: rotLine y", "A: rotLine z"}));
}

TEST_F(RoundTripInVersion10, LosesTheFlags) {
  addBoth(before, 1, "A").setGenerated(true);
  addBoth(before, 2, "B").setFailPossible(true);
  addBoth(before, 3, "C").setChanged(false);

  pass("1.0");

  EXPECT_EQ(listLosses(), (Differences{"A: generated", "B: failPossible", "C: changed"}));
}

TEST_F(RoundTripInVersion10, LosesThatAVectorIsAbsent) {
  addBoth(before, 1, "A").setDispArea(nullptr);
  addBoth(before, 2, "B").setDispLine(nullptr);
  addBoth(before, 3, "C").setRotLine(nullptr);

  pass("1.0");

  EXPECT_EQ(listLosses(),
            (Differences{"A: dispArea came up", "B: dispLine came up", "C: rotLine came up"}));
}

TEST_F(RoundTripInVersion10, KeepsFoundationsWithoutStiffness) {
  addFoundation(before, 1, "A");

  pass("1.0");

  EXPECT_EQ(describe(after), "1 A");
  EXPECT_EQ(listLosses(), (Differences{"A: changed", "A: dispArea came up", "A: dispLine came up",
                                       "A: rotLine came up"}));
}

TEST_F(RoundTripInVersion10, LosesStiffnessBelowTheTolerance) {
  setDispLine(addBoth(before, 1, "A"), 9.9e-11, 0.0, 0.0);

  pass("1.0");

  EXPECT_EQ(listLosses(), (Differences{"A: dispLine x"}));
}

TEST_F(RoundTripInVersion10, LosesFailureValuesThatAreNoMode) {
  addBoth(before, 1, "A").setFailLineZ(static_cast<Foundation::Failure>(2));

  pass("1.0");

  EXPECT_EQ(listLosses(), (Differences{"A: failLineZ"}));
}

TEST_F(RoundTripInVersion10, LosesThatTwoFoundationsHaveOneName) {
  addBoth(before, 1, "A");
  addBoth(before, 2, "A");

  pass("1.0");

  EXPECT_EQ(describe(after), "1 A, 2 A_1");
}

TEST_F(RoundTripInVersion10, LosesFoundationsWithoutANameAndTheirNumbers) {
  addBoth(before, 1, "");
  addBoth(before, 2, "B");

  pass("1.0");

  EXPECT_EQ(describe(after), "1 B");
  EXPECT_EQ(messenger.messages, (Messages{"onEmptyBeddingName <>", "onReadFinished 1"}));
}

}  // namespace
}  // namespace ExchangeTest
