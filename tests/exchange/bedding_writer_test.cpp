#include "found/bedding_writer.h"

#include <limits>
#include <type_traits>

#include "exchange/documents.h"

using Found::Foundation;
using Found::FoundationManager;
using Found::Umo::BeddingWriter;

namespace ExchangeTest {
namespace {

/// Sets all that a foundation holds.
Foundation& addFull(FoundationManager& manager, int number, const std::string& name) {
  Foundation& foundation = addFoundation(manager, number, name);
  setDispArea(foundation, 1.5, -2.0, 3e5);
  setDispLine(foundation, 4.0, 5.0, 6.0);
  setRotLine(foundation, 7.0, 8.0, 9.0);
  foundation.setFailAreaZ(Foundation::Compression);
  foundation.setFailLineX(Foundation::Tension);
  foundation.setFailLineY(Foundation::Tension);
  foundation.setFailLineZ(Foundation::Compression);
  foundation.setFactorArea(0.25);
  foundation.setFactorLine(-1.0);
  foundation.setFailPossible(true);
  foundation.setGenerated(true);
  return foundation;
}

const std::string fullCurve =
    "<CurveBedding Number=\"3\" Name=\"A\" StiffnessX=\"4\" StiffnessY=\"5\" StiffnessZ=\"6\" "
    "StiffnessXX=\"7\" StiffnessYFailure=\"tension\" StiffnessZFailure=\"compression\" "
    "TangentialStiffnessXFactor=\"-1\" />";
const std::string fullSurface =
    "<SurfaceBedding Number=\"3\" Name=\"A\" StiffnessX=\"1.5\" StiffnessY=\"-2\" "
    "StiffnessZ=\"3e+05\" StiffnessZFailure=\"compression\" TangentialStiffnessXYFactor=\"0.25\" "
    "/>";
const std::string fullBedding =
    "<Bedding Name=\"A\" SurfaceStiffnessX=\"1.5\" SurfaceStiffnessY=\"-2\" "
    "SurfaceStiffnessZ=\"3e+05\" SurfaceStiffnessZFailure=\"compression\" "
    "TangentialSurfaceStiffnessXYFactor=\"0.25\" CurveStiffnessX=\"4\" CurveStiffnessY=\"5\" "
    "CurveStiffnessZ=\"6\" CurveStiffnessXX=\"7\" CurveStiffnessYFailure=\"tension\" "
    "CurveStiffnessZFailure=\"compression\" TangentialCurveStiffnessX=\"-1\" />";

/// The end of an element without failures and factors, in the current version.
const std::string bareCurve =
    "StiffnessYFailure=\"none\" StiffnessZFailure=\"none\" TangentialStiffnessXFactor=\"0\" />";
const std::string bareSurface = "StiffnessZFailure=\"none\" TangentialStiffnessXYFactor=\"0\" />";

class BeddingWriting : public testing::Test {
 protected:
  FoundationManager manager;
};

TEST_F(BeddingWriting, OfNoFoundationsWritesNothing) {
  EXPECT_EQ(write(manager, currentVersion), makePrinted({}));
  EXPECT_EQ(write(manager, "1.0"), makePrinted({}));
}

TEST_F(BeddingWriting, PutsCurveBeforeSurface) {
  addFull(manager, 3, "A");

  EXPECT_EQ(write(manager, currentVersion), makePrinted({fullCurve, fullSurface}));
}

TEST_F(BeddingWriting, PutsAllIntoOneElementInVersion10) {
  addFull(manager, 3, "A");

  EXPECT_EQ(write(manager, "1.0"), makePrinted({fullBedding}));
}

TEST_F(BeddingWriting, TakesEveryOtherVersionForTheCurrentOne) {
  addFull(manager, 3, "A");

  for (const char* version : {"2.0", "1", "1.00", "01.0", "1.0 ", " 1.0", "1,0", ""})
    EXPECT_EQ(write(manager, version), makePrinted({fullCurve, fullSurface})) << version;
}

TEST_F(BeddingWriting, KeepsTheOrderOfTheList) {
  setDispLine(addFoundation(manager, 9, "Z"), 1.0, 0.0, 0.0);
  Foundation& both = addFoundation(manager, 2, "Y");
  setDispArea(both, 2.0, 0.0, 0.0);
  setDispLine(both, 3.0, 0.0, 0.0);
  setDispArea(addFoundation(manager, 5, "X"), 4.0, 0.0, 0.0);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<CurveBedding Number=\"9\" Name=\"Z\" StiffnessX=\"1\" StiffnessY=\"0\" "
                         "StiffnessZ=\"0\" " +
                             bareCurve,
                         "<CurveBedding Number=\"2\" Name=\"Y\" StiffnessX=\"3\" StiffnessY=\"0\" "
                         "StiffnessZ=\"0\" " +
                             bareCurve,
                         "<SurfaceBedding Number=\"2\" Name=\"Y\" StiffnessX=\"2\" "
                         "StiffnessY=\"0\" StiffnessZ=\"0\" " +
                             bareSurface,
                         "<SurfaceBedding Number=\"5\" Name=\"X\" StiffnessX=\"4\" "
                         "StiffnessY=\"0\" StiffnessZ=\"0\" " +
                             bareSurface}));
}

TEST_F(BeddingWriting, KeepsTheOrderOfTheListInVersion10) {
  addFoundation(manager, 9, "Z");
  addFoundation(manager, 2, "Y");

  const std::string bare =
      "SurfaceStiffnessZFailure=\"none\" TangentialSurfaceStiffnessXYFactor=\"0\" "
      "CurveStiffnessYFailure=\"none\" CurveStiffnessZFailure=\"none\" "
      "TangentialCurveStiffnessX=\"0\" />";
  EXPECT_EQ(write(manager, "1.0"),
            makePrinted({"<Bedding Name=\"Z\" " + bare, "<Bedding Name=\"Y\" " + bare}));
}

TEST_F(BeddingWriting, WritesNoSurfaceWithoutAreaStiffness) {
  Foundation& foundation = addFull(manager, 3, "A");

  foundation.setDispArea(nullptr);
  EXPECT_EQ(write(manager, currentVersion), makePrinted({fullCurve}));
  setDispArea(foundation, 0.0, 0.0, 0.0);
  EXPECT_EQ(write(manager, currentVersion), makePrinted({fullCurve}));
}

TEST_F(BeddingWriting, WritesNoCurveWithoutLineStiffness) {
  Foundation& foundation = addFull(manager, 3, "A");

  foundation.setDispLine(nullptr);
  foundation.setRotLine(nullptr);
  EXPECT_EQ(write(manager, currentVersion), makePrinted({fullSurface}));
  setDispLine(foundation, 0.0, 0.0, 0.0);
  setRotLine(foundation, 0.0, -0.0, 0.0);
  EXPECT_EQ(write(manager, currentVersion), makePrinted({fullSurface}));
}

TEST_F(BeddingWriting, WritesNothingForAFoundationWithoutStiffness) {
  Foundation& zeros = addFull(manager, 3, "A");
  setDispArea(zeros, 0.0, 0.0, 0.0);
  setDispLine(zeros, 0.0, 0.0, 0.0);
  setRotLine(zeros, 0.0, 0.0, 0.0);
  addFoundation(manager, 4, "B");

  EXPECT_EQ(write(manager, currentVersion), makePrinted({}));
}

TEST_F(BeddingWriting, WritesNameFailuresAndFactorsWithoutStiffnessInVersion10) {
  Foundation& zeros = addFull(manager, 3, "A");
  setDispArea(zeros, 0.0, 0.0, 0.0);
  setDispLine(zeros, 0.0, 0.0, 0.0);
  setRotLine(zeros, 0.0, 0.0, 0.0);
  addFoundation(manager, 4, "B");

  EXPECT_EQ(
      write(manager, "1.0"),
      makePrinted({"<Bedding Name=\"A\" SurfaceStiffnessZFailure=\"compression\" "
                   "TangentialSurfaceStiffnessXYFactor=\"0.25\" CurveStiffnessYFailure=\"tension\" "
                   "CurveStiffnessZFailure=\"compression\" TangentialCurveStiffnessX=\"-1\" />",
                   "<Bedding Name=\"B\" SurfaceStiffnessZFailure=\"none\" "
                   "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessYFailure=\"none\" "
                   "CurveStiffnessZFailure=\"none\" TangentialCurveStiffnessX=\"0\" />"}));
}

TEST_F(BeddingWriting, WritesRotationAlone) {
  setRotLine(addFoundation(manager, 3, "A"), 2.0, 0.0, 0.0);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<CurveBedding Number=\"3\" Name=\"A\" StiffnessXX=\"2\" " + bareCurve}));
}

TEST_F(BeddingWriting, WritesOnlyXOfARotation) {
  setRotLine(addFoundation(manager, 3, "A"), 0.0, 8.0, 9.0);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<CurveBedding Number=\"3\" Name=\"A\" StiffnessXX=\"0\" " + bareCurve}));
}

TEST_F(BeddingWriting, WritesTranslationAlone) {
  setDispLine(addFoundation(manager, 3, "A"), 0.0, 0.0, 6.0);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<CurveBedding Number=\"3\" Name=\"A\" StiffnessX=\"0\" StiffnessY=\"0\" "
                         "StiffnessZ=\"6\" " +
                         bareCurve}));
}

// A vector shorter than 1e-10 has no attributes; being longer than 0 it still has an element.

TEST_F(BeddingWriting, LeavesOutVectorsBelowTheTolerance) {
  Foundation& foundation = addFoundation(manager, 3, "A");
  setDispArea(foundation, 0.0, 9.9e-11, 0.0);
  setDispLine(foundation, -9.9e-11, 0.0, 0.0);
  setRotLine(foundation, 9.9e-11, 0.0, 0.0);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<CurveBedding Number=\"3\" Name=\"A\" " + bareCurve,
                         "<SurfaceBedding Number=\"3\" Name=\"A\" " + bareSurface}));
  EXPECT_EQ(write(manager, "1.0"),
            makePrinted({"<Bedding Name=\"A\" SurfaceStiffnessZFailure=\"none\" "
                         "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessYFailure=\"none\" "
                         "CurveStiffnessZFailure=\"none\" TangentialCurveStiffnessX=\"0\" />"}));
}

TEST_F(BeddingWriting, WritesVectorsAtTheTolerance) {
  Foundation& foundation = addFoundation(manager, 3, "A");
  setDispArea(foundation, 0.0, 1e-10, 0.0);
  setDispLine(foundation, -1e-10, 0.0, 0.0);
  setRotLine(foundation, 1e-10, 0.0, 0.0);

  EXPECT_EQ(
      write(manager, currentVersion),
      makePrinted({"<CurveBedding Number=\"3\" Name=\"A\" StiffnessX=\"-1e-10\" StiffnessY=\"0\" "
                   "StiffnessZ=\"0\" StiffnessXX=\"1e-10\" " +
                       bareCurve,
                   "<SurfaceBedding Number=\"3\" Name=\"A\" StiffnessX=\"0\" "
                   "StiffnessY=\"1e-10\" StiffnessZ=\"0\" " +
                       bareSurface}));
  EXPECT_EQ(write(manager, "1.0"),
            makePrinted({"<Bedding Name=\"A\" SurfaceStiffnessX=\"0\" SurfaceStiffnessY=\"1e-10\" "
                         "SurfaceStiffnessZ=\"0\" SurfaceStiffnessZFailure=\"none\" "
                         "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessX=\"-1e-10\" "
                         "CurveStiffnessY=\"0\" CurveStiffnessZ=\"0\" CurveStiffnessXX=\"1e-10\" "
                         "CurveStiffnessYFailure=\"none\" CurveStiffnessZFailure=\"none\" "
                         "TangentialCurveStiffnessX=\"0\" />"}));
}

TEST_F(BeddingWriting, NamesEachFailureMode) {
  const struct {
    int failure;
    const char* text;
  } rows[] = {{-1, "tension"}, {0, "none"}, {1, "compression"},
              {2, ""},         {-2, ""},    {2147483647, ""}};
  Foundation& foundation = addFoundation(manager, 3, "A");
  setDispArea(foundation, 1.0, 0.0, 0.0);
  for (const auto& row : rows) {
    foundation.setFailAreaZ(static_cast<Foundation::Failure>(row.failure));
    EXPECT_EQ(write(manager, currentVersion),
              makePrinted({"<SurfaceBedding Number=\"3\" Name=\"A\" StiffnessX=\"1\" "
                           "StiffnessY=\"0\" StiffnessZ=\"0\" StiffnessZFailure=\"" +
                           std::string(row.text) + "\" TangentialStiffnessXYFactor=\"0\" />"}))
        << row.failure;
  }
}

TEST_F(BeddingWriting, WritesUnknownFailureModesOfLinesAsEmptyTexts) {
  Foundation& foundation = addFoundation(manager, 3, "A");
  setRotLine(foundation, 1.0, 0.0, 0.0);
  foundation.setFailLineX(static_cast<Foundation::Failure>(7));
  foundation.setFailLineY(static_cast<Foundation::Failure>(2));
  foundation.setFailLineZ(static_cast<Foundation::Failure>(-2));
  foundation.setFailAreaZ(static_cast<Foundation::Failure>(3));

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<CurveBedding Number=\"3\" Name=\"A\" StiffnessXX=\"1\" "
                         "StiffnessYFailure=\"\" StiffnessZFailure=\"\" "
                         "TangentialStiffnessXFactor=\"0\" />"}));
  EXPECT_EQ(write(manager, "1.0"),
            makePrinted({"<Bedding Name=\"A\" SurfaceStiffnessZFailure=\"\" "
                         "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessXX=\"1\" "
                         "CurveStiffnessYFailure=\"\" CurveStiffnessZFailure=\"\" "
                         "TangentialCurveStiffnessX=\"0\" />"}));
}

TEST_F(BeddingWriting, WritesFailureModesAlsoWhenFailingIsSwitchedOff) {
  addFull(manager, 3, "A").setFailPossible(false);

  EXPECT_EQ(write(manager, currentVersion), makePrinted({fullCurve, fullSurface}));
  EXPECT_EQ(write(manager, "1.0"), makePrinted({fullBedding}));
}

TEST_F(BeddingWriting, WritesAnyNumberAsItIs) {
  const struct {
    int number;
    const char* text;
  } rows[] = {{-1, "-1"},
              {0, "0"},
              {2147483647, "2147483647"},
              {std::numeric_limits<int>::min(), "-2147483648"}};
  Foundation& foundation = addFoundation(manager, 1, "A");
  setRotLine(foundation, 2.0, 0.0, 0.0);
  for (const auto& row : rows) {
    foundation.setNumber(row.number);
    EXPECT_EQ(write(manager, currentVersion),
              makePrinted({"<CurveBedding Number=\"" + std::string(row.text) +
                           "\" Name=\"A\" StiffnessXX=\"2\" " + bareCurve}));
  }
}

TEST_F(BeddingWriting, DoesNotMindEqualNumbersAndNamesNorEmptyOnes) {
  for (const char* name : {"A", "A", ""})
    setRotLine(addFoundation(manager, 1, name), 2.0, 0.0, 0.0);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<CurveBedding Number=\"1\" Name=\"A\" StiffnessXX=\"2\" " + bareCurve,
                         "<CurveBedding Number=\"1\" Name=\"A\" StiffnessXX=\"2\" " + bareCurve,
                         "<CurveBedding Number=\"1\" Name=\"\" StiffnessXX=\"2\" " + bareCurve}));
}

TEST_F(BeddingWriting, WritesDoublesInTheirShortestForm) {
  Foundation& foundation = addFoundation(manager, 3, "A");
  setDispArea(foundation, 0.1, 1e22, 5e-324);
  foundation.setFactorArea(1.0 / 3.0);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<SurfaceBedding Number=\"3\" Name=\"A\" StiffnessX=\"0.1\" "
                         "StiffnessY=\"1e+22\" StiffnessZ=\"5e-324\" StiffnessZFailure=\"none\" "
                         "TangentialStiffnessXYFactor=\"0.3333333333333333\" />"}));
}

TEST_F(BeddingWriting, PassesOverNullFoundations) {
  manager.add(nullptr);
  addFull(manager, 3, "A");
  manager.add(nullptr);

  EXPECT_EQ(write(manager, currentVersion), makePrinted({fullCurve, fullSurface}));
  EXPECT_EQ(write(manager, "1.0"), makePrinted({fullBedding}));
}

TEST_F(BeddingWriting, WritesAFoundationListedTwiceTwice) {
  Foundation& foundation = addFull(manager, 3, "A");
  manager.add(&foundation);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({fullCurve, fullSurface, fullCurve, fullSurface}));
  EXPECT_EQ(write(manager, "1.0"), makePrinted({fullBedding, fullBedding}));
  manager.remove(&foundation, false, false);
}

TEST_F(BeddingWriting, ChangesNothingOfTheManager) {
  Foundation& foundation = addFull(manager, 3, "A");
  foundation.setChanged(false);
  manager.setCurrentFoundation(&foundation);

  write(manager, currentVersion);
  write(manager, "1.0");

  EXPECT_EQ(describe(manager), "3 A");
  EXPECT_EQ(describeValues(foundation),
            "area (1.5, -2, 3e+05), line (4, 5, 6), rotation (7, 8, 9), fails area z 1, "
            "fails line x -1, fails line y -1, fails line z 1, factor area 0.25, "
            "factor line -1, can fail, generated");
  EXPECT_FALSE(foundation.getChanged());
  EXPECT_EQ(manager.getCurrentFoundation(), &foundation);
}

TEST_F(BeddingWriting, AppendsToWhatTheContainerHas) {
  addFull(manager, 3, "A");
  const auto document = parse(
      "<Exchange Version='2.0'><CurveBedding Number='3' Name='A'/><!-- kept --><Other>text</Other>"
      "</Exchange>");
  const Tools::VersionText version(currentVersion);

  BeddingWriter(manager, version).write(document->getRoot());

  const std::vector<KvXmlN::Data*>& children = document->getRoot().getChildren();
  ASSERT_EQ(children.size(), 4u);
  EXPECT_EQ(children[0]->getName(), "CurveBedding");
  EXPECT_EQ(children[0]->findAttribute("StiffnessX"), nullptr);
  EXPECT_EQ(children[1]->getName(), "Other");
  const std::string printed = print(*document);
  EXPECT_NE(printed.find("<Exchange Version='2.0'>"), std::string::npos);
  EXPECT_NE(printed.find("<!-- kept -->"), std::string::npos);
  EXPECT_NE(printed.find("<Other>text</Other>"), std::string::npos);
  EXPECT_LT(printed.find("</Other>"), printed.find(fullCurve));
  EXPECT_LT(printed.find(fullCurve), printed.find(fullSurface));
}

TEST_F(BeddingWriting, AppendsAgainEachTime) {
  addFull(manager, 3, "A");
  KvXmlN::Document document("Exchange");
  const Tools::VersionText version(currentVersion);
  const BeddingWriter writer(manager, version);

  writer.write(document.getRoot());
  writer.write(document.getRoot());

  EXPECT_EQ(print(document), makePrinted({fullCurve, fullSurface, fullCurve, fullSurface}));
}

TEST_F(BeddingWriting, LooksAtVersionAndManagerWhenItWrites) {
  KvXmlN::Document document("Exchange");
  Tools::VersionText version(currentVersion);
  const BeddingWriter writer(manager, version);

  addFull(manager, 3, "A");
  version = Tools::VersionText("1.0");
  writer.write(document.getRoot());

  EXPECT_EQ(print(document), makePrinted({fullBedding}));
}

TEST_F(BeddingWriting, SendsNoMessageAtAll) {
  addFull(manager, 0, "");
  manager.add(nullptr);
  RecordingMessenger messenger;
  for (const char* versionName : {"1.0", currentVersion}) {
    KvXmlN::Document document("Exchange");
    const Tools::VersionText version(versionName);
    BeddingWriter writer(manager, version);
    writer.setMessenger(&messenger);
    writer.write(document.getRoot());
    writer.setMessenger(nullptr);
    writer.write(document.getRoot());
    EXPECT_FALSE(document.getRoot().getChildren().empty());
  }
  EXPECT_EQ(messenger.messages, Messages{});
}

TEST(BeddingWriter, CannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<BeddingWriter>);
  EXPECT_FALSE(std::is_copy_assignable_v<BeddingWriter>);
}

TEST(BeddingWriter, IsOnePointer) { EXPECT_EQ(sizeof(BeddingWriter), sizeof(void*)); }

}  // namespace
}  // namespace ExchangeTest
