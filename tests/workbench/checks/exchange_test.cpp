#include <string>

#include <gtest/gtest.h>

#include "workbench/checks/check.h"

namespace {

using ChecksTest::check;
using ChecksTest::makeExchange;

TEST(CheckExchange, FindsNothingInACleanDocumentOfTheCurrentVersion) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='A' StiffnessX='0' StiffnessY='-0' "
                               "StiffnessZ='4.5e3' StiffnessXX=' +7 ' StiffnessYFailure='tension' "
                               "StiffnessZFailure='compression' TangentialStiffnessXFactor='.2'/>\n"
                               "<SurfaceBedding Number=' +2 ' Name='B' StiffnessX='1' "
                               "StiffnessY='2' StiffnessZ='3' StiffnessZFailure='none' "
                               "TangentialStiffnessXYFactor='1e-3'/>")),
            "");
}

// --- Attributes

TEST(CheckExchange, FindsNumbersThatCannotBeMeant) {
  EXPECT_EQ(
      check(makeExchange("<CurveBedding Number='1' Name='A' StiffnessX='1,5' StiffnessY='-1'\n"
                         "StiffnessZ='inf' StiffnessXX='nan' TangentialStiffnessXFactor=''/>\n"
                         "<SurfaceBedding Number='2' Name='B' StiffnessX='-1' "
                         "StiffnessY='1e999'\n"
                         "StiffnessZ='kN' TangentialStiffnessXYFactor='-0.1'/>")),
      "2:35: StiffnessX=\"1,5\" is no number; it is read as 0\n"
      "2:52: StiffnessY=\"-1\" is negative; it is read as it is\n"
      "3:1: StiffnessZ=\"inf\" is not finite; it is read as inf\n"
      "3:18: StiffnessXX=\"nan\" is not finite; it is read as nan\n"
      "3:36: TangentialStiffnessXFactor=\"\" is no number; it is read as 0\n"
      "4:37: StiffnessX=\"-1\" is negative; it is read as it is\n"
      "4:53: StiffnessY=\"1e999\" is not finite; it is read as inf\n"
      "5:1: StiffnessZ=\"kN\" is no number; it is read as 0\n"
      "5:17: TangentialStiffnessXYFactor=\"-0.1\" is negative; it is read as it is\n");
}

TEST(CheckExchange, FindsMisspeltFailures) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='A' StiffnessYFailure='Tension'\n"
                               "StiffnessZFailure=''/>\n"
                               "<SurfaceBedding Number='2' Name='B' StiffnessZFailure='none '/>")),
            "2:35: StiffnessYFailure=\"Tension\" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n"
            "3:1: StiffnessZFailure=\"\" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n"
            "4:37: StiffnessZFailure=\"none \" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n");
}

TEST(CheckExchange, FindsAttributesThatOnlyTheOtherPartHas) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='A' "
                               "TangentialStiffnessXYFactor='0'/>\n"
                               "<SurfaceBedding Number='2' Name='B' StiffnessXX='1' "
                               "StiffnessYFailure='none' x:y='' xmlns='z'/>")),
            "2:35: TangentialStiffnessXYFactor is no attribute of <CurveBedding>; it is "
            "not read\n"
            "3:37: StiffnessXX is no attribute of <SurfaceBedding>; it is not read\n"
            "3:53: StiffnessYFailure is no attribute of <SurfaceBedding>; it is not read\n");
}

TEST(CheckExchange, JudgesWhatABeddingHoldsThatIsSkipped) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Name='A' StiffnessX='1,5'/>")),
            "2:1: <CurveBedding> has no Number; it is skipped\n"
            "2:24: StiffnessX=\"1,5\" is no number; it is read as 0\n");
}

TEST(CheckExchange, FindsFaultsInEveryAttributeOfABedding) {
  EXPECT_EQ(check(makeExchange(
                "<Bedding Name='A' Number='1'\nSurfaceStiffnessX='x'\nSurfaceStiffnessY='x'"
                "\nSurfaceStiffnessZ='x'\nSurfaceStiffnessZFailure='x'\n"
                "TangentialSurfaceStiffnessXYFactor='x'\nCurveStiffnessX='x'\n"
                "CurveStiffnessY='x'\nCurveStiffnessZ='x'\nCurveStiffnessXX='x'\n"
                "CurveStiffnessYFailure='x'\nCurveStiffnessZFailure='x'\n"
                "TangentialCurveStiffnessX='x'\nTangentialCurveStiffnessXFactor='x'/>")),
            "2:19: Number is no attribute of <Bedding>; it is not read\n"
            "3:1: SurfaceStiffnessX=\"x\" is no number; it is read as 0\n"
            "4:1: SurfaceStiffnessY=\"x\" is no number; it is read as 0\n"
            "5:1: SurfaceStiffnessZ=\"x\" is no number; it is read as 0\n"
            "6:1: SurfaceStiffnessZFailure=\"x\" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n"
            "7:1: TangentialSurfaceStiffnessXYFactor=\"x\" is no number; it is read as 0\n"
            "8:1: CurveStiffnessX=\"x\" is no number; it is read as 0\n"
            "9:1: CurveStiffnessY=\"x\" is no number; it is read as 0\n"
            "10:1: CurveStiffnessZ=\"x\" is no number; it is read as 0\n"
            "11:1: CurveStiffnessXX=\"x\" is no number; it is read as 0\n"
            "12:1: CurveStiffnessYFailure=\"x\" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n"
            "13:1: CurveStiffnessZFailure=\"x\" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n"
            "14:1: TangentialCurveStiffnessX=\"x\" is no number; it is read as 0\n"
            "15:1: TangentialCurveStiffnessXFactor is no attribute of <Bedding>; it is not "
            "read\n");
}

// --- Elements

TEST(CheckExchange, FindsUnknownElements) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='A'><Layer/></CurveBedding>\n"
                               "<Load><CurveBedding Number='1' Name='A'/></Load>\n"
                               "<surfacebedding Number='1'/>\n<x:CurveBedding xmlns:x='y'/>")),
            "2:35: <Layer> is no element of <CurveBedding>; it is skipped\n"
            "3:1: <Load> is no bedding; it is skipped\n"
            "3:7: <CurveBedding> stands where no beddings are read; it is skipped\n"
            "4:1: <surfacebedding> is no bedding; it is skipped\n"
            "5:1: <x:CurveBedding> is no bedding; it is skipped\n");
}

TEST(CheckExchange, LeavesTheRestOfTheDocumentAlone) {
  EXPECT_EQ(check("<Exchange Number='x'><Loads><Load/></Loads><Beddings Colour='red'>"
                  "<CurveBedding Number='1' Name='A'/></Beddings></Exchange>"),
            "");
}

TEST(CheckExchange, FindsElementsOfTheFirstVersionInOneOfTheCurrent) {
  const std::string document =
      makeExchange("<Bedding Name='A'/>\n<CurveBedding Number='1' Name='A'/>");

  EXPECT_EQ(check(document, "2.0"),
            "2:1: <Bedding> is a bedding of version 1.0 only; it is skipped\n");
}

TEST(CheckExchange, TakesTheVersionThatIsGiven) {
  EXPECT_EQ(check(makeExchange("<Bedding/>\n<CurveBedding Number='7' Name='B'/>"), "1.0"),
            "2:1: <Bedding> has no Name; it is skipped\n");
}

// --- Numbers and names

TEST(CheckExchange, FindsBeddingsThatAreSkippedForTheirNumber) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Name='A'/>\n"
                               "<SurfaceBedding Number='' Name='B'/>\n"
                               "<CurveBedding Number='no. 7' Name='C'/>\n"
                               "<CurveBedding Number='99999999999' Name='D'/>\n"
                               "<SurfaceBedding Number='0' Name='E'/>\n"
                               "<SurfaceBedding Number='-4' Name='F'/>\n"
                               "<SurfaceBedding Number='.5' Name='G'/>")),
            "2:1: <CurveBedding> has no Number; it is skipped\n"
            "3:17: Number=\"\" is no whole number; the bedding is skipped\n"
            "4:15: Number=\"no. 7\" is no whole number; the bedding is skipped\n"
            "5:15: Number=\"99999999999\" is out of range; the bedding is skipped\n"
            "6:17: the number 0 is below 1; the bedding is skipped\n"
            "7:17: the number -4 is below 1; the bedding is skipped\n"
            "8:17: Number=\".5\" is no whole number; the bedding is skipped\n");
}

TEST(CheckExchange, FindsNumbersOfWhichOnlyTheStartIsRead) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='7.9' Name='A'/>\n"
                               "<CurveBedding Number='8x' Name='B'/>\n"
                               "<CurveBedding Number='3e9' Name='C'/>\n"
                               "<CurveBedding Number='0x10' Name='D'/>\n"
                               "<CurveBedding Number='7' Name='E'/>")),
            "2:15: Number=\"7.9\" is no whole number; it is read as 7\n"
            "3:15: Number=\"8x\" is no whole number; it is read as 8\n"
            "4:15: Number=\"3e9\" is no whole number; it is read as 3\n"
            "5:15: Number=\"0x10\" is no whole number; it is read as 0\n"
            "5:15: the number 0 is below 1; the bedding is skipped\n"
            "6:15: the number 7 is taken by the bedding in line 2; this one is skipped\n");
}

TEST(CheckExchange, FindsNumbersThatAreTaken) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='5' Name='A'/>\n"
                               "<SurfaceBedding Number='5' Name='B'/>\n"
                               "<CurveBedding Number='5' Name='A'/>\n"
                               "<CurveBedding Number='6' Name='B'/>")),
            "3:17: the number 5 is taken by the bedding in line 2; this one is skipped\n"
            "4:15: the number 5 is taken by the bedding in line 2; this one is skipped\n");
}

TEST(CheckExchange, FindsFoundationsInTwoPartsOfWhichHostsKeepOne) {
  EXPECT_EQ(
      check(makeExchange("<CurveBedding Number='5' Name='A'/>\n"
                         "<SurfaceBedding Number='5' Name='A'/>\n"
                         "<SurfaceBedding Number='6' Name='A'/><CurveBedding Number='6' Name='A'/>"
                         "\n<SurfaceBedding Number='5' Name='A'/>")),
      "3:17: the foundation number 5 \"A\" is in two parts; hosts keep only the first, in line 2\n"
      "4:28: the name \"A\" is taken by the bedding in line 2; this one is read as "
      "\"A_1\"\n"
      "4:52: the foundation number 6 \"A\" is in two parts; hosts keep only the first, in column 1 "
      "of this line\n"
      "5:17: the number 5 is taken by the bedding in line 2; this one is skipped\n");
}

TEST(CheckExchange, LosesNoPartWhenTheFirstIsSkipped) {
  EXPECT_EQ(
      check(makeExchange("<CurveBedding Number='5'/>\n<SurfaceBedding Number='5' Name='A'/>")),
      "2:1: <CurveBedding> has no Name; it is skipped\n");
}

TEST(CheckExchange, FindsBeddingsThatAreSkippedForTheirName) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='5'/>\n<SurfaceBedding Number='6' Name=''/>")),
            "2:1: <CurveBedding> has no Name; it is skipped\n"
            "3:28: the Name is empty; the bedding is skipped\n");
}

TEST(CheckExchange, FindsNamesThatAreReadAsOthers) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='A'/>\n"
                               "<CurveBedding Number='2' Name='A_1'/>\n"
                               "<CurveBedding Number='3' Name='A'/>\n"
                               "<CurveBedding Number='4' Name='A'/>\n"
                               "<CurveBedding Number='5' Name='A_2'/>")),
            "4:26: the name \"A\" is taken by the bedding in line 2; this one is read as "
            "\"A_2\"\n"
            "5:26: the name \"A\" is taken by the bedding in line 2; this one is read as "
            "\"A_3\"\n"
            "6:26: the name \"A_2\" is taken by the bedding in line 4; this one is read as "
            "\"A_2_1\"\n");
}

TEST(CheckExchange, FindsNumbersAndNamesThatAnotherContainerHas) {
  EXPECT_EQ(check("<X>\n<A><CurveBedding Number='1' Name='A'/></A>\n"
                  "<B><CurveBedding Number='1' Name='B'/>\n"
                  "<CurveBedding Number='2' Name='A'/></B>\n</X>\n"),
            "3:18: the number 1 is taken by the bedding in line 2; this one is skipped\n"
            "4:26: the name \"A\" is taken by the bedding in line 2; this one is read as "
            "\"A_1\"\n");
}

TEST(CheckExchange, CountsBeddingsOfTheFirstVersionByContainer) {
  EXPECT_EQ(check("<X>\n<A>\n<Bedding Name='A'/>\n<Bedding/>\n<Bedding Name='B'/></A>\n"
                  "<B>\n<CurveBedding Number='2' Name='C'/>\n<CurveBedding Number='9' Name='D'/>\n"
                  "<Bedding Name='E'/>\n<Bedding Name='F'/>\n<Bedding Name='A'/></B>\n</X>\n"),
            "4:1: <Bedding> has no Name; it is skipped\n"
            "7:15: the number 2 is taken by the bedding in line 5; this one is skipped\n"
            "9:1: the bedding is read as number 2, which the one in line 5 has; both "
            "foundations will have it\n"
            "11:10: the name \"A\" is taken by the bedding in line 3; this one is read as "
            "\"A_1\"\n");
}

TEST(CheckExchange, FindsNamesOfTheFirstVersionThatAreEmptyOrTaken) {
  EXPECT_EQ(check(makeExchange("<Bedding Name=''/>\n<Bedding Name='A'/>\n<Bedding Name='A'/>\n"
                               "<CurveBedding Number='2' Name='A'/>")),
            "2:10: the Name is empty; the bedding is skipped\n"
            "4:10: the name \"A\" is taken by the bedding in line 3; this one is read as "
            "\"A_1\"\n"
            "5:15: the number 2 is taken by the bedding in line 4; this one is skipped\n");
}

}  // namespace
