#include <string>

#include <gtest/gtest.h>

#include "workbench/checks/check.h"

namespace {

using ChecksTest::check;
using ChecksTest::makeModel;

TEST(CheckLegacy, FindsNothingInAModelWithoutFoundations) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD><FOUND NUMBER='x'/></SMOD>\n"), "");
}

TEST(CheckLegacy, FindsNothingInAnEmptyListOfFoundations) { EXPECT_EQ(check(makeModel("")), ""); }

TEST(CheckLegacy, TellsFindingsInTheOrderOfTheDocument) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD>\n"
                  "<FOUNDATIONS CURRENT='B' COLOUR='red'>\n"
                  "<FOUND FXX='-1' NUMBER='0.5' NAME='A' FACAREA='x'><LAYER/></FOUND>\n"
                  "</FOUNDATIONS>\n</SMOD>\n"),
            "3:14: CURRENT=\"B\" names no foundation; none will be the current one\n"
            "3:26: COLOUR is no attribute of <FOUNDATIONS>; it is not read\n"
            "4:8: FXX=\"-1\" is negative; it is read as it is\n"
            "4:17: NUMBER=\"0.5\" is no whole number; it is read as number 0\n"
            "4:39: FACAREA=\"x\" is no number; it is read as 0\n"
            "4:51: <LAYER> is no element of <FOUND>; it is skipped\n");
}

TEST(CheckLegacy, NamesTheColumnOfWhatStandsInTheSameLine) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='1' NAME='B'/>")),
            "4:36: the number 1 was given before, in column 8 of this line; both "
            "foundations will have it, and an update of a document merges them\n");
}

// --- Attributes

TEST(CheckLegacy, FindsStiffnessAndFactorsThatAreNoNumbers) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' NAME='A' FXAREA='12,5' FYAREA='' FZAREA='1 000'\n"
                            "FXLINE='9kN' FYLINE='0x10' FZLINE='--1' FXX='+-1'\n"
                            "FACAREA='10%' FACLINE='1/2'/>")),
            "4:28: FXAREA=\"12,5\" is no number; it is read as 0\n"
            "4:42: FYAREA=\"\" is no number; it is read as 0\n"
            "4:52: FZAREA=\"1 000\" is no number; it is read as 0\n"
            "5:1: FXLINE=\"9kN\" is no number; it is read as 0\n"
            "5:14: FYLINE=\"0x10\" is no number; it is read as 0\n"
            "5:28: FZLINE=\"--1\" is no number; it is read as 0\n"
            "5:41: FXX=\"+-1\" is no number; it is read as 0\n"
            "6:1: FACAREA=\"10%\" is no number; it is read as 0\n"
            "6:15: FACLINE=\"1/2\" is no number; it is read as 0\n");
}

TEST(CheckLegacy, FindsNegativeStiffnessAndFactors) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' FXAREA='-1' FYAREA='-0.5' FZAREA='-1e-9'\n"
                            "FXLINE='-2' FYLINE='-3' FZLINE='-4' FXX='-5'\n"
                            "FACAREA='-6' FACLINE='-7'/>")),
            "4:19: FXAREA=\"-1\" is negative; it is read as it is\n"
            "4:31: FYAREA=\"-0.5\" is negative; it is read as it is\n"
            "4:45: FZAREA=\"-1e-9\" is negative; it is read as it is\n"
            "5:1: FXLINE=\"-2\" is negative; it is read as it is\n"
            "5:13: FYLINE=\"-3\" is negative; it is read as it is\n"
            "5:25: FZLINE=\"-4\" is negative; it is read as it is\n"
            "5:37: FXX=\"-5\" is negative; it is read as it is\n"
            "6:1: FACAREA=\"-6\" is negative; it is read as it is\n"
            "6:14: FACLINE=\"-7\" is negative; it is read as it is\n");
}

TEST(CheckLegacy, AcceptsZeroOfEitherSign) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' FXAREA='-0' FYAREA='0' FXX='-0.0' FACAREA='-0'/>")),
            "");
}

TEST(CheckLegacy, FindsNumbersThatAreNotFinite) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' FXAREA='inf' FYAREA='1e999' FZAREA='nan'\n"
                            "FXLINE='-inf' FACLINE='-1e999'/>")),
            "4:19: FXAREA=\"inf\" is not finite; it is read as inf\n"
            "4:32: FYAREA=\"1e999\" is not finite; it is read as inf\n"
            "4:47: FZAREA=\"nan\" is not finite; it is read as nan\n"
            "5:1: FXLINE=\"-inf\" is not finite; it is read as -inf\n"
            "5:15: FACLINE=\"-1e999\" is not finite; it is read as -inf\n");
}

TEST(CheckLegacy, TellsThatALineStiffnessIsLostWithAPartThatIsNaN) {
  const std::string model = makeModel("<FOUND NUMBER='1' FXLINE='7' FYLINE='nan' FXX='nan'/>");

  EXPECT_EQ(check(model),
            "4:30: FYLINE=\"nan\" is not finite; the line stiffness that it belongs to is "
            "not read\n"
            "4:43: FXX=\"nan\" is not finite; the line stiffness that it belongs to is not "
            "read\n");
  Documents::Document document({"file", "", model});
  KvVector3D ignored;
  EXPECT_FALSE(document.getFoundations().getFoundations().front()->getDispLine(ignored));
}

TEST(CheckLegacy, FindsFailuresThatAreNoModes) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' FAILZAREA='2' FAILXLINE='-2' FAILYLINE='tension'\n"
                            "FAILZLINE='1.0'/>\n"
                            "<FOUND NUMBER='2' FAILZAREA='99999999999' FAILXLINE=''/>")),
            "4:19: FAILZAREA=\"2\" is none of -1 (tension), 0 (none) and 1 (compression); "
            "it is kept as it is\n"
            "4:33: FAILXLINE=\"-2\" is none of -1 (tension), 0 (none) and 1 (compression); "
            "it is kept as it is\n"
            "4:48: FAILYLINE=\"tension\" is no whole number; it is read as 0, no failure\n"
            "5:1: FAILZLINE=\"1.0\" is no whole number; it is read as 0, no failure\n"
            "6:19: FAILZAREA=\"99999999999\" is out of range; it is read as 0, no failure\n"
            "6:43: FAILXLINE=\"\" is no whole number; it is read as 0, no failure\n");
}

TEST(CheckLegacy, AcceptsTheThreeFailureModes) {
  EXPECT_EQ(check(makeModel(
                "<FOUND NUMBER='1' FAILZAREA='-1' FAILXLINE='0' FAILYLINE='1' FAILZLINE='+1'/>")),
            "");
}

TEST(CheckLegacy, FindsAFlagThatIsNoWholeNumber) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' IsGenerated='true'/>\n"
                            "<FOUND NUMBER='2' IsGenerated='1'/>\n"
                            "<FOUND NUMBER='3' IsGenerated='0'/>")),
            "4:19: IsGenerated=\"true\" is no whole number; it is read as 0, which is not "
            "generated\n");
}

TEST(CheckLegacy, FindsUnknownAttributesOfEveryLetterCase) {
  EXPECT_EQ(
      check(makeModel("<FOUND NUMBER='1' Name='A' FZLine='3' ISGENERATED='1' FAILXAREA='1'/>")),
      "4:19: Name is no attribute of <FOUND>; it is not read\n"
      "4:28: FZLine is no attribute of <FOUND>; it is not read\n"
      "4:39: ISGENERATED is no attribute of <FOUND>; it is not read\n"
      "4:55: FAILXAREA is no attribute of <FOUND>; it is not read\n");
}

TEST(CheckLegacy, AcceptsNamespaces) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' xmlns='a' xmlns:b='c' b:note='d' xml:lang='en'/>")),
            "");
}

// --- Elements

TEST(CheckLegacy, FindsUnknownElements) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1'><STIFFNESS/></FOUND>\n"
                            "<found NUMBER='2' FXAREA='x'/>\n"
                            "<GROUP><FOUND NUMBER='x'/></GROUP>\n"
                            "<FOUNDATIONS/>")),
            "4:19: <STIFFNESS> is no element of <FOUND>; it is skipped\n"
            "5:1: <found> is no element of <FOUNDATIONS>; it is skipped\n"
            "6:1: <GROUP> is no element of <FOUNDATIONS>; it is skipped\n"
            "6:8: <FOUND> stands where no foundations are read; it is skipped\n"
            "7:1: <FOUNDATIONS> is no element of <FOUNDATIONS>; it is skipped\n");
}

TEST(CheckLegacy, FindsAFurtherListOfFoundationsWhichIsNotRead) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD>\n"
                  "<STAGE><FOUNDATIONS><FOUND NUMBER='1'/></FOUNDATIONS></STAGE>\n"
                  "<FOUNDATIONS><FOUND NUMBER='x'/></FOUNDATIONS>\n"
                  "<STAGE><FOUNDATIONS/></STAGE>\n</SMOD>\n"),
            "4:1: only the first <FOUNDATIONS> of a model is read, in line 3; this one is "
            "skipped\n"
            "4:14: <FOUND> stands where no foundations are read; it is skipped\n"
            "5:8: only the first <FOUNDATIONS> of a model is read, in line 3; this one is "
            "skipped\n");
}

TEST(CheckLegacy, LeavesTheRestOfTheModelAlone) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD A='1'><NODES X='a'><FOUND NUMBER='1,5'/></NODES>\n"
                  "<FOUNDATIONS/></SMOD>\n"),
            "");
}

// --- Numbers and names

TEST(CheckLegacy, FindsMissingNumbersAndTellsTheNumbersThatAreGiven) {
  EXPECT_EQ(check(makeModel("<FOUND NAME='A'/>\n"
                            "<FOUND NUMBER='7' NAME='B'/>\n"
                            "<FOUND NUMBER='3' NAME='C'/>\n"
                            "<FOUND NAME='D'/>\n"
                            "<FOUND NUMBER=' -1 ' NAME='E'/>")),
            "4:1: <FOUND> has no NUMBER; it is read as number 1\n"
            "7:1: <FOUND> has no NUMBER; it is read as number 8\n"
            "8:8: NUMBER=\" -1 \" counts as missing; it is read as number 9\n");
}

TEST(CheckLegacy, FindsNumbersThatAreNoWholeNumbers) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='7.5'/>")),
            "4:8: NUMBER=\"7.5\" is no whole number; it is read as number 0\n");
  EXPECT_EQ(check(makeModel("<FOUND NUMBER=''/>")),
            "4:8: NUMBER=\"\" is no whole number; it is read as number 0\n");
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='2147483648'/>")),
            "4:8: NUMBER=\"2147483648\" is out of range; it is read as number 0\n");
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='2147483647'/>")), "");
}

TEST(CheckLegacy, FindsNumbersThatWereGivenBefore) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='4' NAME='A'/>\n"
                            "<FOUND NUMBER='5' NAME='B'/>\n"
                            "<FOUND NUMBER='+4' NAME='C'/>\n"
                            "<FOUND NUMBER='4' NAME='D'/>")),
            "6:8: the number 4 was given before, in line 4; both foundations will have it, "
            "and an update of a document merges them\n"
            "7:8: the number 4 was given before, in line 4; both foundations will have it, "
            "and an update of a document merges them\n");
}

TEST(CheckLegacy, FindsANumberThatTheReaderHasGivenToAFoundationWithout) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='4'/>\n<FOUND/>\n<FOUND NUMBER='5'/>")),
            "5:1: <FOUND> has no NUMBER; it is read as number 5\n"
            "6:8: the number 5 was given before, in line 5; both foundations will have it, "
            "and an update of a document merges them\n");
}

TEST(CheckLegacy, FindsANumberThatIsReadAsOneGivenBefore) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='0'/>\n<FOUND NUMBER='x'/>")),
            "5:8: NUMBER=\"x\" is no whole number; it is read as number 0\n"
            "5:8: the number 0 was given before, in line 4; both foundations will have it, "
            "and an update of a document merges them\n");
}

TEST(CheckLegacy, FindsThatBehindTheLargestNumberThereIsNone) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='2147483647'/>\n<FOUND/>")),
            "5:1: <FOUND> has no NUMBER; it is read as number 2147483647\n"
            "5:1: the number 2147483647 was given before, in line 4; both foundations will "
            "have it, and an update of a document merges them\n");
}

TEST(CheckLegacy, FindsNamesThatWereGivenBefore) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' NAME='Raft'/>\n"
                            "<FOUND NUMBER='2' NAME='raft'/>\n"
                            "<FOUND NUMBER='3' NAME='Raft'/>")),
            "6:19: the name \"Raft\" was given before, in line 4; both foundations will "
            "have it, and CURRENT finds only the first\n");
}

TEST(CheckLegacy, AcceptsFoundationsWithoutAName) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1'/>\n<FOUND NUMBER='2' NAME=''/>")), "");
}

TEST(CheckLegacy, FindsADefaultNameThatTheReaderHasGivenBefore) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' NAME='Found0010'/>\n"
                            "<FOUND NUMBER='9'/>\n"
                            "<FOUND NUMBER='10'/>\n"
                            "<FOUND NUMBER='11' NAME='Found0002'/>\n"
                            "<FOUND NUMBER='12' NAME='Found0011'/>")),
            "7:20: the name \"Found0002\" was given before, in line 5; both foundations "
            "will have it, and CURRENT finds only the first\n"
            "8:20: the name \"Found0011\" was given before, in line 6; both foundations "
            "will have it, and CURRENT finds only the first\n");
}

TEST(CheckLegacy, GoesOnWithDefaultNamesBehindTheLargestNumber) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD>\n<FOUNDATIONS CURRENT='Found2147483648'>\n"
                  "<FOUND NUMBER='2147483647' NAME='Found2147483647'/>\n"
                  "<FOUND NUMBER='5'/>\n</FOUNDATIONS></SMOD>\n"),
            "");
}

TEST(CheckLegacy, FindsACurrentThatNamesNothing) {
  const auto makeList = [](const std::string& current) {
    return "<?xml version='1.0'?>\n<SMOD><FOUNDATIONS CURRENT='" + current +
           "'><FOUND NUMBER='1' NAME='Raft'/><FOUND NUMBER='2'/></FOUNDATIONS></SMOD>\n";
  };

  EXPECT_EQ(check(makeList("Raft")), "");
  EXPECT_EQ(check(makeList("Found0002")), "");
  EXPECT_EQ(check(makeList("raft")),
            "2:20: CURRENT=\"raft\" names no foundation; none will be the current one\n");
}

TEST(CheckLegacy, TakesAnEmptyCurrentForNone) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD><FOUNDATIONS CURRENT=''><FOUND NUMBER='1'/>"
                  "</FOUNDATIONS></SMOD>\n"),
            "");
}

}  // namespace
