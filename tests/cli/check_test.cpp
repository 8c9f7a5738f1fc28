#include <algorithm>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "cli/run_program.h"

namespace {

/// A legacy model, the first of whose `lines` is line 4.
std::string makeModel(const std::string& lines) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n<FOUNDATIONS>\n" + lines + "\n</FOUNDATIONS>\n</SMOD>\n";
}

/// An exchange document, the first of whose `lines` is line 2.
std::string makeExchange(const std::string& lines) {
  return "<Beddings>\n" + lines + "\n</Beddings>\n";
}

/// What checking a document prints, each line without the path.
std::string check(const std::string& document, const std::string& options = "") {
  const std::string path = makeFile("in.xml", document);
  const Result result = run("check " + options + " '" + path + "'");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, result.out.empty() ? 0 : 1);
  std::istringstream lines(result.out);
  std::string shortened;
  for (std::string line; std::getline(lines, line);) {
    EXPECT_EQ(line.compare(0, path.size() + 1, path + ":"), 0) << line;
    shortened += line.substr(std::min(line.size(), path.size() + 1)) + "\n";
  }
  return shortened;
}

// --- What there is to check

TEST(Check, PrintsNothingForCleanDocuments) {
  const Result result =
      run("check '" KVFOUND_EXAMPLES_DIR "/model.xml' '" KVFOUND_EXAMPLES_DIR "/beddings-1.0.xml'");

  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Check, TellsThatTheExchangeExampleHasAFoundationInTwoParts) {
  const Result result = run("check '" KVFOUND_EXAMPLES_DIR "/beddings.xml'");

  EXPECT_EQ(result.out, KVFOUND_EXAMPLES_DIR
            "/beddings.xml:9:21: warning: the foundation number 5 \"Pile cap P1 <4 piles>\" is in "
            "two parts; the first, in line 8, is read, and this one is lost\n");
  EXPECT_EQ(result.status, 1);
}

TEST(Check, PrintsNothingForACleanDocumentOfTheCurrentVersion) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='A' StiffnessX='0' StiffnessY='-0' "
                               "StiffnessZ='4.5e3' StiffnessXX=' +7 ' StiffnessYFailure='tension' "
                               "StiffnessZFailure='compression' TangentialStiffnessXFactor='.2'/>\n"
                               "<SurfaceBedding Number=' +2 ' Name='B' StiffnessX='1' "
                               "StiffnessY='2' StiffnessZ='3' StiffnessZFailure='none' "
                               "TangentialStiffnessXYFactor='1e-3'/>")),
            "");
}

TEST(Check, PrintsNothingForAModelWithoutFoundations) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD><FOUND NUMBER='x'/></SMOD>\n"), "");
}

TEST(Check, PrintsNothingForAnEmptyListOfFoundations) { EXPECT_EQ(check(makeModel("")), ""); }

TEST(Check, ReadsStandardInput) {
  const std::string path = makeFile("in.xml", makeModel("<FOUND/>"));
  const std::string expected =
      "standard input:4:1: warning: <FOUND> has no NUMBER; it is read as number 1\n";

  EXPECT_EQ(run("check - < '" + path + "'").out, expected);
  EXPECT_EQ(run("check < '" + path + "'").out, expected);
  EXPECT_EQ(run("check - < '" + path + "'").status, 1);
}

TEST(Check, ReadsSeveralFilesInTheirOrder) {
  const std::string first = makeFile("1.xml", makeModel("<FOUND/>"));
  const std::string second = makeFile("2.xml", makeModel("<FOUND NUMBER='1'/>"));
  const std::string third = makeFile("3.xml", makeExchange("<CurveBedding Name='A'/>"));

  const Result result = run("check '" + third + "' '" + second + "' '" + first + "'");

  EXPECT_EQ(result.out, third + ":2:1: warning: <CurveBedding> has no Number; it is skipped\n" +
                            first +
                            ":4:1: warning: <FOUND> has no NUMBER; it is read as number 1\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 1);
}

TEST(Check, PrintsWarningsInTheOrderOfTheDocument) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD>\n"
                  "<FOUNDATIONS CURRENT='B' COLOUR='red'>\n"
                  "<FOUND FXX='-1' NUMBER='0.5' NAME='A' FACAREA='x'><LAYER/></FOUND>\n"
                  "</FOUNDATIONS>\n</SMOD>\n"),
            "3:14: warning: CURRENT=\"B\" names no foundation; none will be the current one\n"
            "3:26: warning: COLOUR is no attribute of <FOUNDATIONS>; it is not read\n"
            "4:8: warning: FXX=\"-1\" is negative; it is read as it is\n"
            "4:17: warning: NUMBER=\"0.5\" is no whole number; it is read as number 0\n"
            "4:39: warning: FACAREA=\"x\" is no number; it is read as 0\n"
            "4:51: warning: <LAYER> is no element of <FOUND>; it is skipped\n");
}

TEST(Check, NamesTheColumnOfWhatStandsInTheSameLine) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='1' NAME='B'/>")),
            "4:36: warning: the number 1 was given before, in column 8 of this line; both "
            "foundations will have it, and an update of a document merges them\n");
}

TEST(Check, ShowsAnExampleInItsHelp) {
  EXPECT_NE(run("check --help").out.find("Example: kvfound check model.xml beddings.xml\n"),
            std::string::npos);
}

// --- What cannot be read

TEST(CheckErrors, ChecksTheOtherFilesBesideOneThatIsMalformed) {
  const std::string good = makeFile("good.xml", makeModel("<FOUND/>"));
  const std::string broken = makeFile("broken.xml", "<X>\n<Y></X>\n");

  const Result result = run("check '" + good + "' '" + broken + "' /no/such/file '" + good + "'");

  const std::string warning =
      good + ":4:1: warning: <FOUND> has no NUMBER; it is read as number 1\n";
  EXPECT_EQ(result.out, warning + warning);
  EXPECT_EQ(result.err,
            "kvfound: " + broken +
                ":2:6: this end tag does not close the element that is open\n"
                "kvfound: /no/such/file: cannot be opened: No such file or directory\n");
  EXPECT_EQ(result.status, 2);
}

TEST(CheckErrors, RefusesADocumentOfAnotherForm) {
  const Result result = run("check '" KVFOUND_EXAMPLES_DIR "/beddings.kvml'");

  EXPECT_EQ(result.err, run("show '" KVFOUND_EXAMPLES_DIR "/beddings.kvml'").err);
  EXPECT_NE(result.err.find("/beddings.kvml: there are no beddings in <Kvml>"), std::string::npos);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.status, 2);
}

TEST(CheckErrors, RefusesAModelThatTheReaderRefuses) {
  const std::string path = makeFile("in.xml", "<!-- model -->\n<SMOD/>\n");

  const Result result = run("check '" + path + "'");

  EXPECT_EQ(result.err,
            "kvfound: " + path +
                ": the first line must be an XML declaration, <?xml version=\"1.0\"?>\n");
  EXPECT_EQ(result.status, 2);
}

TEST(CheckErrors, PassesNoControlCharactersOfAPathOnToTheTerminal) {
  SKIP_WITHOUT_BASH();
  const std::string path = makeFile("a\x1B.xml", makeModel("<FOUND/>"));
  const Result result = run("check '" + path + "' $'/no\\x1b/file'");

  EXPECT_NE(result.out.find("a\\x1B.xml:4:1: warning: "), std::string::npos) << result.out;
  EXPECT_EQ(result.err, "kvfound: /no\\x1B/file: cannot be opened: No such file or directory\n");
}

// --- Attributes of legacy models

TEST(CheckLegacy, FindsStiffnessAndFactorsThatAreNoNumbers) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' NAME='A' FXAREA='12,5' FYAREA='' FZAREA='1 000'\n"
                            "FXLINE='9kN' FYLINE='0x10' FZLINE='--1' FXX='+-1'\n"
                            "FACAREA='10%' FACLINE='1/2'/>")),
            "4:28: warning: FXAREA=\"12,5\" is no number; it is read as 0\n"
            "4:42: warning: FYAREA=\"\" is no number; it is read as 0\n"
            "4:52: warning: FZAREA=\"1 000\" is no number; it is read as 0\n"
            "5:1: warning: FXLINE=\"9kN\" is no number; it is read as 0\n"
            "5:14: warning: FYLINE=\"0x10\" is no number; it is read as 0\n"
            "5:28: warning: FZLINE=\"--1\" is no number; it is read as 0\n"
            "5:41: warning: FXX=\"+-1\" is no number; it is read as 0\n"
            "6:1: warning: FACAREA=\"10%\" is no number; it is read as 0\n"
            "6:15: warning: FACLINE=\"1/2\" is no number; it is read as 0\n");
}

TEST(CheckLegacy, FindsNegativeStiffnessAndFactors) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' FXAREA='-1' FYAREA='-0.5' FZAREA='-1e-9'\n"
                            "FXLINE='-2' FYLINE='-3' FZLINE='-4' FXX='-5'\n"
                            "FACAREA='-6' FACLINE='-7'/>")),
            "4:19: warning: FXAREA=\"-1\" is negative; it is read as it is\n"
            "4:31: warning: FYAREA=\"-0.5\" is negative; it is read as it is\n"
            "4:45: warning: FZAREA=\"-1e-9\" is negative; it is read as it is\n"
            "5:1: warning: FXLINE=\"-2\" is negative; it is read as it is\n"
            "5:13: warning: FYLINE=\"-3\" is negative; it is read as it is\n"
            "5:25: warning: FZLINE=\"-4\" is negative; it is read as it is\n"
            "5:37: warning: FXX=\"-5\" is negative; it is read as it is\n"
            "6:1: warning: FACAREA=\"-6\" is negative; it is read as it is\n"
            "6:14: warning: FACLINE=\"-7\" is negative; it is read as it is\n");
}

TEST(CheckLegacy, AcceptsZeroOfEitherSign) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' FXAREA='-0' FYAREA='0' FXX='-0.0' FACAREA='-0'/>")),
            "");
}

TEST(CheckLegacy, FindsNumbersThatAreNotFinite) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' FXAREA='inf' FYAREA='1e999' FZAREA='nan'\n"
                            "FXLINE='-inf' FACLINE='-1e999'/>")),
            "4:19: warning: FXAREA=\"inf\" is not finite; it is read as inf\n"
            "4:32: warning: FYAREA=\"1e999\" is not finite; it is read as inf\n"
            "4:47: warning: FZAREA=\"nan\" is not finite; it is read as nan\n"
            "5:1: warning: FXLINE=\"-inf\" is not finite; it is read as -inf\n"
            "5:15: warning: FACLINE=\"-1e999\" is not finite; it is read as -inf\n");
}

TEST(CheckLegacy, TellsThatALineStiffnessIsLostWithAPartThatIsNaN) {
  const std::string model = makeModel("<FOUND NUMBER='1' FXLINE='7' FYLINE='nan' FXX='nan'/>");

  EXPECT_EQ(
      check(model),
      "4:30: warning: FYLINE=\"nan\" is not finite; the line stiffness that it belongs to is "
      "not read\n"
      "4:43: warning: FXX=\"nan\" is not finite; the line stiffness that it belongs to is not "
      "read\n");
  EXPECT_NE(run("show '" + makeFile("in.xml", model) + "'").out.find("largest stiffness 0\n"),
            std::string::npos);
}

TEST(CheckLegacy, FindsFailuresThatAreNoModes) {
  EXPECT_EQ(
      check(makeModel("<FOUND NUMBER='1' FAILZAREA='2' FAILXLINE='-2' FAILYLINE='tension'\n"
                      "FAILZLINE='1.0'/>\n"
                      "<FOUND NUMBER='2' FAILZAREA='99999999999' FAILXLINE=''/>")),
      "4:19: warning: FAILZAREA=\"2\" is none of -1 (tension), 0 (none) and 1 (compression); "
      "it is kept as it is\n"
      "4:33: warning: FAILXLINE=\"-2\" is none of -1 (tension), 0 (none) and 1 (compression); "
      "it is kept as it is\n"
      "4:48: warning: FAILYLINE=\"tension\" is no whole number; it is read as 0, no failure\n"
      "5:1: warning: FAILZLINE=\"1.0\" is no whole number; it is read as 0, no failure\n"
      "6:19: warning: FAILZAREA=\"99999999999\" is out of range; it is read as 0, no failure\n"
      "6:43: warning: FAILXLINE=\"\" is no whole number; it is read as 0, no failure\n");
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
            "4:19: warning: IsGenerated=\"true\" is no whole number; it is read as 0, which is not "
            "generated\n");
}

TEST(CheckLegacy, FindsUnknownAttributesOfEveryLetterCase) {
  EXPECT_EQ(
      check(makeModel("<FOUND NUMBER='1' Name='A' FZLine='3' ISGENERATED='1' FAILXAREA='1'/>")),
      "4:19: warning: Name is no attribute of <FOUND>; it is not read\n"
      "4:28: warning: FZLine is no attribute of <FOUND>; it is not read\n"
      "4:39: warning: ISGENERATED is no attribute of <FOUND>; it is not read\n"
      "4:55: warning: FAILXAREA is no attribute of <FOUND>; it is not read\n");
}

TEST(CheckLegacy, AcceptsNamespaces) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' xmlns='a' xmlns:b='c' b:note='d' xml:lang='en'/>")),
            "");
}

// --- Elements of legacy models

TEST(CheckLegacy, FindsUnknownElements) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1'><STIFFNESS/></FOUND>\n"
                            "<found NUMBER='2' FXAREA='x'/>\n"
                            "<GROUP><FOUND NUMBER='x'/></GROUP>\n"
                            "<FOUNDATIONS/>")),
            "4:19: warning: <STIFFNESS> is no element of <FOUND>; it is skipped\n"
            "5:1: warning: <found> is no element of <FOUNDATIONS>; it is skipped\n"
            "6:1: warning: <GROUP> is no element of <FOUNDATIONS>; it is skipped\n"
            "7:1: warning: <FOUNDATIONS> is no element of <FOUNDATIONS>; it is skipped\n");
}

TEST(CheckLegacy, FindsAFurtherListOfFoundationsWhichIsNotRead) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD>\n"
                  "<STAGE><FOUNDATIONS><FOUND NUMBER='1'/></FOUNDATIONS></STAGE>\n"
                  "<FOUNDATIONS><FOUND NUMBER='x'/></FOUNDATIONS>\n"
                  "<STAGE><FOUNDATIONS/></STAGE>\n</SMOD>\n"),
            "4:1: warning: only the first <FOUNDATIONS> of a model is read, in line 3; this one is "
            "skipped\n"
            "5:8: warning: only the first <FOUNDATIONS> of a model is read, in line 3; this one is "
            "skipped\n");
}

TEST(CheckLegacy, LeavesTheRestOfTheModelAlone) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD A='1'><NODES X='a'><FOUND NUMBER='1,5'/></NODES>\n"
                  "<FOUNDATIONS/></SMOD>\n"),
            "");
}

// --- Numbers and names of legacy models

TEST(CheckLegacy, FindsMissingNumbersAndTellsTheNumbersThatAreGiven) {
  EXPECT_EQ(check(makeModel("<FOUND NAME='A'/>\n"
                            "<FOUND NUMBER='7' NAME='B'/>\n"
                            "<FOUND NUMBER='3' NAME='C'/>\n"
                            "<FOUND NAME='D'/>\n"
                            "<FOUND NUMBER=' -1 ' NAME='E'/>")),
            "4:1: warning: <FOUND> has no NUMBER; it is read as number 1\n"
            "7:1: warning: <FOUND> has no NUMBER; it is read as number 8\n"
            "8:8: warning: NUMBER=\" -1 \" counts as missing; it is read as number 9\n");
}

TEST(CheckLegacy, FindsNumbersThatAreNoWholeNumbers) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='7.5'/>")),
            "4:8: warning: NUMBER=\"7.5\" is no whole number; it is read as number 0\n");
  EXPECT_EQ(check(makeModel("<FOUND NUMBER=''/>")),
            "4:8: warning: NUMBER=\"\" is no whole number; it is read as number 0\n");
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='2147483648'/>")),
            "4:8: warning: NUMBER=\"2147483648\" is out of range; it is read as number 0\n");
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='2147483647'/>")), "");
}

TEST(CheckLegacy, FindsNumbersThatWereGivenBefore) {
  EXPECT_EQ(
      check(makeModel("<FOUND NUMBER='4' NAME='A'/>\n"
                      "<FOUND NUMBER='5' NAME='B'/>\n"
                      "<FOUND NUMBER='+4' NAME='C'/>\n"
                      "<FOUND NUMBER='4' NAME='D'/>")),
      "6:8: warning: the number 4 was given before, in line 4; both foundations will have it, "
      "and an update of a document merges them\n"
      "7:8: warning: the number 4 was given before, in line 4; both foundations will have it, "
      "and an update of a document merges them\n");
}

TEST(CheckLegacy, FindsANumberThatTheReaderHasGivenToAFoundationWithout) {
  EXPECT_EQ(
      check(makeModel("<FOUND NUMBER='4'/>\n<FOUND/>\n<FOUND NUMBER='5'/>")),
      "5:1: warning: <FOUND> has no NUMBER; it is read as number 5\n"
      "6:8: warning: the number 5 was given before, in line 5; both foundations will have it, "
      "and an update of a document merges them\n");
}

TEST(CheckLegacy, FindsANumberThatIsReadAsOneGivenBefore) {
  EXPECT_EQ(
      check(makeModel("<FOUND NUMBER='0'/>\n<FOUND NUMBER='x'/>")),
      "5:8: warning: NUMBER=\"x\" is no whole number; it is read as number 0\n"
      "5:8: warning: the number 0 was given before, in line 4; both foundations will have it, "
      "and an update of a document merges them\n");
}

TEST(CheckLegacy, FindsThatBehindTheLargestNumberThereIsNone) {
  EXPECT_EQ(
      check(makeModel("<FOUND NUMBER='2147483647'/>\n<FOUND/>")),
      "5:1: warning: <FOUND> has no NUMBER; it is read as number 2147483647\n"
      "5:1: warning: the number 2147483647 was given before, in line 4; both foundations will "
      "have it, and an update of a document merges them\n");
}

TEST(CheckLegacy, FindsNamesThatWereGivenBefore) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' NAME='Raft'/>\n"
                            "<FOUND NUMBER='2' NAME='raft'/>\n"
                            "<FOUND NUMBER='3' NAME='Raft'/>")),
            "6:19: warning: the name \"Raft\" was given before, in line 4; both foundations will "
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
            "7:20: warning: the name \"Found0002\" was given before, in line 5; both foundations "
            "will have it, and CURRENT finds only the first\n"
            "8:20: warning: the name \"Found0011\" was given before, in line 6; both foundations "
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
            "2:20: warning: CURRENT=\"raft\" names no foundation; none will be the current one\n");
}

TEST(CheckLegacy, TakesAnEmptyCurrentForNone) {
  EXPECT_EQ(check("<?xml version='1.0'?>\n<SMOD><FOUNDATIONS CURRENT=''><FOUND NUMBER='1'/>"
                  "</FOUNDATIONS></SMOD>\n"),
            "");
}

// --- Attributes of exchange documents

TEST(CheckExchange, FindsNumbersThatCannotBeMeant) {
  EXPECT_EQ(
      check(makeExchange("<CurveBedding Number='1' Name='A' StiffnessX='1,5' StiffnessY='-1'\n"
                         "StiffnessZ='inf' StiffnessXX='nan' TangentialStiffnessXFactor=''/>\n"
                         "<SurfaceBedding Number='2' Name='B' StiffnessX='-1' "
                         "StiffnessY='1e999'\n"
                         "StiffnessZ='kN' TangentialStiffnessXYFactor='-0.1'/>")),
      "2:35: warning: StiffnessX=\"1,5\" is no number; it is read as 0\n"
      "2:52: warning: StiffnessY=\"-1\" is negative; it is read as it is\n"
      "3:1: warning: StiffnessZ=\"inf\" is not finite; it is read as inf\n"
      "3:18: warning: StiffnessXX=\"nan\" is not finite; it is read as nan\n"
      "3:36: warning: TangentialStiffnessXFactor=\"\" is no number; it is read as 0\n"
      "4:37: warning: StiffnessX=\"-1\" is negative; it is read as it is\n"
      "4:53: warning: StiffnessY=\"1e999\" is not finite; it is read as inf\n"
      "5:1: warning: StiffnessZ=\"kN\" is no number; it is read as 0\n"
      "5:17: warning: TangentialStiffnessXYFactor=\"-0.1\" is negative; it is read as it is\n");
}

TEST(CheckExchange, FindsMisspeltFailures) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='A' StiffnessYFailure='Tension'\n"
                               "StiffnessZFailure=''/>\n"
                               "<SurfaceBedding Number='2' Name='B' StiffnessZFailure='none '/>")),
            "2:35: warning: StiffnessYFailure=\"Tension\" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n"
            "3:1: warning: StiffnessZFailure=\"\" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n"
            "4:37: warning: StiffnessZFailure=\"none \" is none of \"tension\", \"none\" and "
            "\"compression\"; it is read as none\n");
}

TEST(CheckExchange, FindsAttributesThatOnlyTheOtherPartHas) {
  EXPECT_EQ(
      check(makeExchange("<CurveBedding Number='1' Name='A' "
                         "TangentialStiffnessXYFactor='0'/>\n"
                         "<SurfaceBedding Number='2' Name='B' StiffnessXX='1' "
                         "StiffnessYFailure='none' x:y='' xmlns='z'/>")),
      "2:35: warning: TangentialStiffnessXYFactor is no attribute of <CurveBedding>; it is "
      "not read\n"
      "3:37: warning: StiffnessXX is no attribute of <SurfaceBedding>; it is not read\n"
      "3:53: warning: StiffnessYFailure is no attribute of <SurfaceBedding>; it is not read\n");
}

TEST(CheckExchange, JudgesWhatABeddingHoldsThatIsSkipped) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Name='A' StiffnessX='1,5'/>")),
            "2:1: warning: <CurveBedding> has no Number; it is skipped\n"
            "2:24: warning: StiffnessX=\"1,5\" is no number; it is read as 0\n");
}

TEST(CheckExchange, FindsFaultsInEveryAttributeOfABedding) {
  EXPECT_EQ(
      check(
          makeExchange("<Bedding Name='A' Number='1'\nSurfaceStiffnessX='x'\nSurfaceStiffnessY='x'"
                       "\nSurfaceStiffnessZ='x'\nSurfaceStiffnessZFailure='x'\n"
                       "TangentialSurfaceStiffnessXYFactor='x'\nCurveStiffnessX='x'\n"
                       "CurveStiffnessY='x'\nCurveStiffnessZ='x'\nCurveStiffnessXX='x'\n"
                       "CurveStiffnessYFailure='x'\nCurveStiffnessZFailure='x'\n"
                       "TangentialCurveStiffnessX='x'\nTangentialCurveStiffnessXFactor='x'/>")),
      "2:19: warning: Number is no attribute of <Bedding>; it is not read\n"
      "3:1: warning: SurfaceStiffnessX=\"x\" is no number; it is read as 0\n"
      "4:1: warning: SurfaceStiffnessY=\"x\" is no number; it is read as 0\n"
      "5:1: warning: SurfaceStiffnessZ=\"x\" is no number; it is read as 0\n"
      "6:1: warning: SurfaceStiffnessZFailure=\"x\" is none of \"tension\", \"none\" and "
      "\"compression\"; it is read as none\n"
      "7:1: warning: TangentialSurfaceStiffnessXYFactor=\"x\" is no number; it is read as 0\n"
      "8:1: warning: CurveStiffnessX=\"x\" is no number; it is read as 0\n"
      "9:1: warning: CurveStiffnessY=\"x\" is no number; it is read as 0\n"
      "10:1: warning: CurveStiffnessZ=\"x\" is no number; it is read as 0\n"
      "11:1: warning: CurveStiffnessXX=\"x\" is no number; it is read as 0\n"
      "12:1: warning: CurveStiffnessYFailure=\"x\" is none of \"tension\", \"none\" and "
      "\"compression\"; it is read as none\n"
      "13:1: warning: CurveStiffnessZFailure=\"x\" is none of \"tension\", \"none\" and "
      "\"compression\"; it is read as none\n"
      "14:1: warning: TangentialCurveStiffnessX=\"x\" is no number; it is read as 0\n"
      "15:1: warning: TangentialCurveStiffnessXFactor is no attribute of <Bedding>; it is not "
      "read\n");
}

// --- Elements of exchange documents

TEST(CheckExchange, FindsUnknownElements) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='A'><Layer/></CurveBedding>\n"
                               "<Load><CurveBedding Number='1' Name='A'/></Load>\n"
                               "<surfacebedding Number='1'/>\n<x:CurveBedding xmlns:x='y'/>")),
            "2:35: warning: <Layer> is no element of <CurveBedding>; it is skipped\n"
            "3:1: warning: <Load> is no bedding; it is skipped\n"
            "4:1: warning: <surfacebedding> is no bedding; it is skipped\n"
            "5:1: warning: <x:CurveBedding> is no bedding; it is skipped\n");
}

TEST(CheckExchange, LeavesTheRestOfTheDocumentAlone) {
  EXPECT_EQ(check("<Exchange Number='x'><Loads><Load/></Loads><Beddings Colour='red'>"
                  "<CurveBedding Number='1' Name='A'/></Beddings></Exchange>"),
            "");
}

TEST(CheckExchange, FindsElementsOfTheFirstVersionInOneOfTheCurrent) {
  const std::string document =
      makeExchange("<Bedding Name='A'/>\n<CurveBedding Number='1' Name='A'/>");

  EXPECT_EQ(check(document, "--version 2.0"),
            "2:1: warning: <Bedding> is a bedding of version 1.0 only; it is skipped\n");
}

TEST(CheckExchange, TakesTheVersionThatIsGiven) {
  EXPECT_EQ(check(makeExchange("<Bedding/>\n<CurveBedding Number='7' Name='B'/>"), "--version 1.0"),
            "2:1: warning: <Bedding> has no Name; it is skipped\n");
}

// --- Numbers and names of exchange documents

TEST(CheckExchange, FindsBeddingsThatAreSkippedForTheirNumber) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Name='A'/>\n"
                               "<SurfaceBedding Number='' Name='B'/>\n"
                               "<CurveBedding Number='no. 7' Name='C'/>\n"
                               "<CurveBedding Number='99999999999' Name='D'/>\n"
                               "<SurfaceBedding Number='0' Name='E'/>\n"
                               "<SurfaceBedding Number='-4' Name='F'/>\n"
                               "<SurfaceBedding Number='.5' Name='G'/>")),
            "2:1: warning: <CurveBedding> has no Number; it is skipped\n"
            "3:17: warning: Number=\"\" is no whole number; the bedding is skipped\n"
            "4:15: warning: Number=\"no. 7\" is no whole number; the bedding is skipped\n"
            "5:15: warning: Number=\"99999999999\" is out of range; the bedding is skipped\n"
            "6:17: warning: the number 0 is below 1; the bedding is skipped\n"
            "7:17: warning: the number -4 is below 1; the bedding is skipped\n"
            "8:17: warning: Number=\".5\" is no whole number; the bedding is skipped\n");
}

TEST(CheckExchange, FindsNumbersOfWhichOnlyTheStartIsRead) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='7.9' Name='A'/>\n"
                               "<CurveBedding Number='8x' Name='B'/>\n"
                               "<CurveBedding Number='3e9' Name='C'/>\n"
                               "<CurveBedding Number='0x10' Name='D'/>\n"
                               "<CurveBedding Number='7' Name='E'/>")),
            "2:15: warning: Number=\"7.9\" is no whole number; it is read as 7\n"
            "3:15: warning: Number=\"8x\" is no whole number; it is read as 8\n"
            "4:15: warning: Number=\"3e9\" is no whole number; it is read as 3\n"
            "5:15: warning: Number=\"0x10\" is no whole number; it is read as 0\n"
            "5:15: warning: the number 0 is below 1; the bedding is skipped\n"
            "6:15: warning: the number 7 is taken by the bedding in line 2; this one is skipped\n");
}

TEST(CheckExchange, FindsNumbersThatAreTaken) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='5' Name='A'/>\n"
                               "<SurfaceBedding Number='5' Name='B'/>\n"
                               "<CurveBedding Number='5' Name='A'/>\n"
                               "<CurveBedding Number='6' Name='B'/>")),
            "3:17: warning: the number 5 is taken by the bedding in line 2; this one is skipped\n"
            "4:15: warning: the number 5 is taken by the bedding in line 2; this one is skipped\n");
}

TEST(CheckExchange, FindsFoundationsInTwoPartsOfWhichOneIsLost) {
  EXPECT_EQ(
      check(makeExchange("<CurveBedding Number='5' Name='A'/>\n"
                         "<SurfaceBedding Number='5' Name='A'/>\n"
                         "<SurfaceBedding Number='6' Name='A'/><CurveBedding Number='6' Name='A'/>"
                         "\n<SurfaceBedding Number='5' Name='A'/>")),
      "3:17: warning: the foundation number 5 \"A\" is in two parts; the first, in line 2, is "
      "read, and this one is lost\n"
      "4:28: warning: the name \"A\" is taken by the bedding in line 2; this one is read as "
      "\"A_1\"\n"
      "4:52: warning: the foundation number 6 \"A\" is in two parts; the first, in column 1 of "
      "this line, is read, and this one is lost\n"
      "5:17: warning: the foundation number 5 \"A\" is in two parts; the first, in line 2, is "
      "read, and this one is lost\n");
}

TEST(CheckExchange, LosesNoPartWhenTheFirstIsSkipped) {
  EXPECT_EQ(
      check(makeExchange("<CurveBedding Number='5'/>\n<SurfaceBedding Number='5' Name='A'/>")),
      "2:1: warning: <CurveBedding> has no Name; it is skipped\n");
}

TEST(CheckExchange, FindsBeddingsThatAreSkippedForTheirName) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='5'/>\n<SurfaceBedding Number='6' Name=''/>")),
            "2:1: warning: <CurveBedding> has no Name; it is skipped\n"
            "3:28: warning: the Name is empty; the bedding is skipped\n");
}

TEST(CheckExchange, FindsNamesThatAreReadAsOthers) {
  EXPECT_EQ(
      check(makeExchange("<CurveBedding Number='1' Name='A'/>\n"
                         "<CurveBedding Number='2' Name='A_1'/>\n"
                         "<CurveBedding Number='3' Name='A'/>\n"
                         "<CurveBedding Number='4' Name='A'/>\n"
                         "<CurveBedding Number='5' Name='A_2'/>")),
      "4:26: warning: the name \"A\" is taken by the bedding in line 2; this one is read as "
      "\"A_2\"\n"
      "5:26: warning: the name \"A\" is taken by the bedding in line 2; this one is read as "
      "\"A_3\"\n"
      "6:26: warning: the name \"A_2\" is taken by the bedding in line 4; this one is read as "
      "\"A_2_1\"\n");
}

TEST(CheckExchange, FindsNumbersAndNamesThatAnotherContainerHas) {
  EXPECT_EQ(check("<X>\n<A><CurveBedding Number='1' Name='A'/></A>\n"
                  "<B><CurveBedding Number='1' Name='B'/>\n"
                  "<CurveBedding Number='2' Name='A'/></B>\n</X>\n"),
            "3:18: warning: the number 1 is taken by the bedding in line 2; this one is skipped\n"
            "4:26: warning: the name \"A\" is taken by the bedding in line 2; this one is read as "
            "\"A_1\"\n");
}

TEST(CheckExchange, CountsBeddingsOfTheFirstVersionByContainer) {
  EXPECT_EQ(check("<X>\n<A>\n<Bedding Name='A'/>\n<Bedding/>\n<Bedding Name='B'/></A>\n"
                  "<B>\n<CurveBedding Number='2' Name='C'/>\n<CurveBedding Number='9' Name='D'/>\n"
                  "<Bedding Name='E'/>\n<Bedding Name='F'/>\n<Bedding Name='A'/></B>\n</X>\n"),
            "4:1: warning: <Bedding> has no Name; it is skipped\n"
            "7:15: warning: the number 2 is taken by the bedding in line 5; this one is skipped\n"
            "9:1: warning: the bedding is read as number 2, which the one in line 5 has; both "
            "foundations will have it\n"
            "11:10: warning: the name \"A\" is taken by the bedding in line 3; this one is read as "
            "\"A_1\"\n");
}

TEST(CheckExchange, FindsNamesOfTheFirstVersionThatAreEmptyOrTaken) {
  EXPECT_EQ(check(makeExchange("<Bedding Name=''/>\n<Bedding Name='A'/>\n<Bedding Name='A'/>\n"
                               "<CurveBedding Number='2' Name='A'/>")),
            "2:10: warning: the Name is empty; the bedding is skipped\n"
            "4:10: warning: the name \"A\" is taken by the bedding in line 3; this one is read as "
            "\"A_1\"\n"
            "5:15: warning: the number 2 is taken by the bedding in line 4; this one is skipped\n");
}

// --- Texts from documents

TEST(CheckTexts, EscapesControlCharacters) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1&#10;2' FXAREA='\x7F' NAME='a&#9;b'/>\n"
                            "<FOUND NUMBER='2' NAME='a&#9;b'/>")),
            "4:8: warning: NUMBER=\"1\\n2\" is no whole number; it is read as number 0\n"
            "4:25: warning: FXAREA=\"\\x7F\" is no number; it is read as 0\n"
            "5:19: warning: the name \"a\\tb\" was given before, in line 4; both foundations will "
            "have it, and CURRENT finds only the first\n");
}

TEST(CheckTexts, ShowsAnEightBitCodePageInUtf8) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='Stra\xDF"
                               "e'/>\n"
                               "<CurveBedding Number='2' Name='Stra\xDF"
                               "e' H\xF6he='3'/>\n<T\xFCr/>")),
            "3:26: warning: the name \"Stra\xC3\x9F"
            "e\" is taken by the bedding in line 2; this one is read as \"Stra\xC3\x9F"
            "e_1\"\n"
            "3:40: warning: H\xC3\xB6he is no attribute of <CurveBedding>; it is not read\n"
            "4:1: warning: <T\xC3\xBCr> is no bedding; it is skipped\n");
}

TEST(CheckTexts, ShortensTextsOfMoreThanSixtyPlaces) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1' FXAREA='" + std::string(61, 'x') + "'/>")),
            "4:19: warning: FXAREA=\"" + std::string(59, 'x') +
                "\xE2\x80\xA6\" is no number; it is read as 0\n");
}

// --- Many findings

TEST(CheckMany, FindsAsMuchInFiveThousandFoundationsAsInFew) {
  std::string lines;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    const std::string line = std::to_string(i + 4);
    lines += (i == 0 ? "" : "\n") + std::string("<FOUND NUMBER='7' NAME='A'/>");
    if (i == 0) continue;
    expected += line +
                ":8: warning: the number 7 was given before, in line 4; both foundations will have "
                "it, and an update of a document merges them\n" +
                line +
                ":19: warning: the name \"A\" was given before, in line 4; both foundations will "
                "have it, and CURRENT finds only the first\n";
  }

  EXPECT_EQ(check(makeModel(lines)), expected);
}

TEST(CheckMany, TellsTheChangedNamesOfFiveThousandBeddings) {
  std::string lines;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    lines += (i == 0 ? "" : "\n") + std::string("<Bedding Name='A'/>");
    if (i > 0)
      expected +=
          std::to_string(i + 2) +
          ":10: warning: the name \"A\" is taken by the bedding in line 2; this one is read as "
          "\"A_" +
          std::to_string(i) + "\"\n";
  }

  EXPECT_EQ(check(makeExchange(lines)), expected);
}

TEST(CheckMany, GivesDefaultNamesToFiveThousandFoundationsInTurn) {
  std::string lines = "<FOUND NUMBER='0'/>";
  for (int i = 1; i < 5000; ++i) lines += "<FOUND NUMBER='0'/>";
  lines += "<FOUND NUMBER='1' NAME='Found5001'/>\n<FOUND NUMBER='2' NAME='Found5000'/>";

  const std::string out = check(makeModel(lines));

  EXPECT_EQ(out.substr(out.rfind("\n", out.size() - 2) + 1),
            "5:19: warning: the name \"Found5000\" was given before, in line 4; both foundations "
            "will have it, and CURRENT finds only the first\n");
}

}  // namespace
