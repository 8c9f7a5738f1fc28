#include "exchange/messengers.h"
#include "found/bedding_writer.h"
#include "recorded_run.h"
#include "recording_newer.h"
#include "support/foundations.h"

using Found::Foundation;
using Found::FoundationManager;
using Found::Umo::BeddingWriter;
using Recording::Lines;
using TestSupport::addFoundation;
using TestSupport::setDispArea;
using TestSupport::setDispLine;
using TestSupport::setRotLine;

namespace ExchangeTest {
namespace {

class RecordedBeddingWriter : public Recording::RecordedTest {
 protected:
  /// Adds a foundation of both parts whose values tell its number.
  Foundation& addBoth(int number, const std::string& name) {
    Foundation& foundation = addFoundation(manager, number, name);
    setDispArea(foundation, number, 1.0, 2.0);
    setDispLine(foundation, number, 3.0, 4.0);
    setRotLine(foundation, number, 5.0, 6.0);
    foundation.setFailAreaZ(Foundation::Tension);
    foundation.setFailLineX(Foundation::Tension);
    foundation.setFailLineY(Foundation::Compression);
    foundation.setFailLineZ(Foundation::None);
    foundation.setFactorArea(0.25);
    foundation.setFactorLine(0.5);
    return foundation;
  }

  /// Writes into the container; the log then holds only what that called.
  void write(const std::string& versionText) {
    const Tools::VersionText version(versionText);
    const BeddingWriter writer(manager, version);
    Recording::clearLog();
    writer.write(container);
    calls = Recording::listCallsWithout({"KvVector3D"});
  }

  FoundationManager manager;
  KvXmlN::Data container{"Box"};
  Lines calls;
};

TEST_F(RecordedBeddingWriter, CallsNothingBeforeItWrites) {
  const Tools::VersionText version("1.0");
  RecordingMessenger messenger;
  {
    BeddingWriter writer(manager, version);
    writer.setMessenger(&messenger);
    writer.setMessenger(nullptr);
  }

  EXPECT_EQ(Recording::getLog(), Lines{});
}

TEST_F(RecordedBeddingWriter, AsksForTheVersionOnce) {
  write("1.0");
  EXPECT_EQ(Recording::getLog(), (Lines{"isEqualTo 1.0 1.0"}));

  addBoth(1, "A");
  addBoth(2, "B");
  write("2.0");
  EXPECT_EQ(Recording::listCallsOf({"isEqualTo"}), (Lines{"isEqualTo 2.0 1.0"}));
  EXPECT_EQ(calls.front(), "isEqualTo 2.0 1.0");
}

TEST_F(RecordedBeddingWriter, SetsTheAttributesInOrder) {
  addBoth(7, "A");

  write("2.0");

  EXPECT_EQ(calls, (Lines{"isEqualTo 2.0 1.0", "createChild Box CurveBedding",
                          "setAttribute CurveBedding Number int 7 true",
                          "setAttribute CurveBedding Name text A true",
                          "setAttribute CurveBedding StiffnessX double 7",
                          "setAttribute CurveBedding StiffnessY double 3",
                          "setAttribute CurveBedding StiffnessZ double 4",
                          "setAttribute CurveBedding StiffnessXX double 7",
                          "setAttribute CurveBedding StiffnessYFailure text compression true",
                          "setAttribute CurveBedding StiffnessZFailure text none true",
                          "setAttribute CurveBedding TangentialStiffnessXFactor double 0.5",
                          "createChild Box SurfaceBedding",
                          "setAttribute SurfaceBedding Number int 7 true",
                          "setAttribute SurfaceBedding Name text A true",
                          "setAttribute SurfaceBedding StiffnessX double 7",
                          "setAttribute SurfaceBedding StiffnessY double 1",
                          "setAttribute SurfaceBedding StiffnessZ double 2",
                          "setAttribute SurfaceBedding StiffnessZFailure text tension true",
                          "setAttribute SurfaceBedding TangentialStiffnessXYFactor double 0.25"}));
}

TEST_F(RecordedBeddingWriter, SetsTheAttributesOfABeddingInOrder) {
  addBoth(7, "A");

  write("1.0");

  EXPECT_EQ(calls, (Lines{"isEqualTo 1.0 1.0", "createChild Box Bedding",
                          "setAttribute Bedding Name text A true",
                          "setAttribute Bedding SurfaceStiffnessX double 7",
                          "setAttribute Bedding SurfaceStiffnessY double 1",
                          "setAttribute Bedding SurfaceStiffnessZ double 2",
                          "setAttribute Bedding SurfaceStiffnessZFailure text tension true",
                          "setAttribute Bedding TangentialSurfaceStiffnessXYFactor double 0.25",
                          "setAttribute Bedding CurveStiffnessX double 7",
                          "setAttribute Bedding CurveStiffnessY double 3",
                          "setAttribute Bedding CurveStiffnessZ double 4",
                          "setAttribute Bedding CurveStiffnessXX double 7",
                          "setAttribute Bedding CurveStiffnessYFailure text compression true",
                          "setAttribute Bedding CurveStiffnessZFailure text none true",
                          "setAttribute Bedding TangentialCurveStiffnessX double 0.5"}));
}

TEST_F(RecordedBeddingWriter, SetsNothingForAbsentVectors) {
  addBoth(7, "A").setDispLine(nullptr);
  addBoth(8, "B").setRotLine(nullptr);

  write("2.0");

  EXPECT_EQ(Recording::describe(container),
            (Lines{"Box",
                   " CurveBedding Number=7 Name=A StiffnessXX=7 StiffnessYFailure=compression "
                   "StiffnessZFailure=none TangentialStiffnessXFactor=0.5",
                   " SurfaceBedding Number=7 Name=A StiffnessX=7 StiffnessY=1 StiffnessZ=2 "
                   "StiffnessZFailure=tension TangentialStiffnessXYFactor=0.25",
                   " CurveBedding Number=8 Name=B StiffnessX=8 StiffnessY=3 StiffnessZ=4 "
                   "StiffnessYFailure=compression StiffnessZFailure=none "
                   "TangentialStiffnessXFactor=0.5",
                   " SurfaceBedding Number=8 Name=B StiffnessX=8 StiffnessY=1 StiffnessZ=2 "
                   "StiffnessZFailure=tension TangentialStiffnessXYFactor=0.25"}));
}

TEST_F(RecordedBeddingWriter, SetsNothingForAbsentVectorsOfABedding) {
  addFoundation(manager, 7, "A");

  write("1.0");

  EXPECT_EQ(calls, (Lines{"isEqualTo 1.0 1.0", "createChild Box Bedding",
                          "setAttribute Bedding Name text A true",
                          "setAttribute Bedding SurfaceStiffnessZFailure text none true",
                          "setAttribute Bedding TangentialSurfaceStiffnessXYFactor double 0",
                          "setAttribute Bedding CurveStiffnessYFailure text none true",
                          "setAttribute Bedding CurveStiffnessZFailure text none true",
                          "setAttribute Bedding TangentialCurveStiffnessX double 0"}));
}

TEST_F(RecordedBeddingWriter, CreatesNothingForAFoundationWithoutStiffness) {
  addFoundation(manager, 7, "A");

  write("2.0");

  EXPECT_EQ(calls, (Lines{"isEqualTo 2.0 1.0"}));
}

TEST_F(RecordedBeddingWriter, PassesOverAnElementThatCannotBeCreated) {
  addBoth(7, "A");
  addBoth(8, "B");
  const Lines all = {"CurveBedding 7", "SurfaceBedding 7", "CurveBedding 8", "SurfaceBedding 8"};
  for (std::size_t refused = 0; refused < all.size(); ++refused) {
    KvXmlN::Data box("Box");
    const Tools::VersionText version("2.0");
    {
      const Recording::ChildRefusal refusal(static_cast<int>(refused) + 1);
      BeddingWriter(manager, version).write(box);
    }
    Lines expected = all;
    expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(refused));
    Lines written;
    for (const KvXmlN::Data* element : box.getChildren())
      written.push_back(element->getName() + " " + element->findAttribute("Number")->getData());
    EXPECT_EQ(written, expected);
  }
}

TEST_F(RecordedBeddingWriter, PassesOverABeddingThatCannotBeCreated) {
  addBoth(7, "A");
  addBoth(8, "B");
  addBoth(9, "C");
  const Lines all = {"A", "B", "C"};
  for (std::size_t refused = 0; refused < all.size(); ++refused) {
    KvXmlN::Data box("Box");
    const Tools::VersionText version("1.0");
    {
      const Recording::ChildRefusal refusal(static_cast<int>(refused) + 1);
      BeddingWriter(manager, version).write(box);
    }
    Lines expected = all;
    expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(refused));
    Lines written;
    for (const KvXmlN::Data* element : box.getChildren())
      written.push_back(element->findAttribute("Name")->getData());
    EXPECT_EQ(written, expected);
  }
}

TEST_F(RecordedBeddingWriter, SetsNothingForAnElementThatCannotBeCreated) {
  addBoth(7, "A").setDispArea(nullptr);
  const Recording::ChildRefusal refusal(1);

  write("2.0");

  EXPECT_EQ(calls, (Lines{"isEqualTo 2.0 1.0", "createChild Box CurveBedding"}));
  EXPECT_EQ(Recording::describe(container), (Lines{"Box"}));
}

TEST_F(RecordedBeddingWriter, AsksNothingOfTheContainerButForNewChildren) {
  addBoth(7, "A");
  Recording::addElement(container, "CurveBedding", {{"Number", "7"}});
  Recording::addNullElement(container);

  write("1.0");

  const Lines lines = Recording::describe(container);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], "Box");
  EXPECT_EQ(lines[1], " CurveBedding Number=7");
  EXPECT_EQ(lines[2], " null");
  EXPECT_EQ(lines[3].substr(0, 15), " Bedding Name=A");
  EXPECT_EQ(Recording::listCallsOf({"getChildren", "getName", "findAttribute"}), Lines{});
}

TEST_F(RecordedBeddingWriter, LeavesWithTheVectorsToTheirOwnJudgement) {
  addBoth(7, "A");

  write("2.0");

  EXPECT_EQ(std::count(Recording::getLog().begin(), Recording::getLog().end(), "KvVector3D isNull"),
            3);
}

}  // namespace
}  // namespace ExchangeTest
