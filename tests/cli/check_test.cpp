#include <string>

#include <gtest/gtest.h>

#include "cli/run_command.h"

namespace {

/// A legacy model, the first of whose `lines` is line 4.
std::string makeModel(const std::string& lines) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n<FOUNDATIONS>\n" + lines + "\n</FOUNDATIONS>\n</SMOD>\n";
}

/// An exchange document, the first of whose `lines` is line 2.
std::string makeExchange(const std::string& lines) {
  return "<Beddings>\n" + lines + "\n</Beddings>\n";
}

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
            "two parts; hosts keep only the first, in line 8\n");
  EXPECT_EQ(result.status, 1);
}

TEST(Check, ReadsStandardInput) {
  const std::string path = makeFile("in.xml", makeModel("<FOUND/>"));
  const std::string expected =
      "standard input:4:1: warning: <FOUND> has no NUMBER; it is read as number 1\n";

  EXPECT_EQ(run("check -", path).out, expected);
  EXPECT_EQ(run("check", path).out, expected);
  EXPECT_EQ(run("check -", path).status, 1);
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

TEST(Check, TakesTheVersionThatIsGiven) {
  const std::string path = makeFile("in.xml", makeExchange("<Bedding Name='A'/>"));

  EXPECT_EQ(run("check '" + path + "'").out, "");
  EXPECT_EQ(run("check --version 2.0 '" + path + "'").out,
            path + ":2:1: warning: <Bedding> is a bedding of version 1.0 only; it is skipped\n");
}

TEST(Check, ShowsAnExampleInItsHelp) {
  EXPECT_NE(run("check --help").out.find("Example: kvfound check model.xml beddings.xml\n"),
            std::string::npos);
}

// --- For programs

TEST(CheckFormat, JsonHasTheFindingsOfAllFiles) {
  const std::string first = makeFile("1.xml", makeModel("<FOUND/>"));
  const std::string second = makeFile("2.xml", "<X>\n<Y></X>\n");

  const Result result = run("check --format json '" + first + "' '" + second + "'");

  EXPECT_EQ(result.out,
            "{\n"
            "  \"format\": \"kvfound-check\",\n"
            "  \"version\": 1,\n"
            "  \"files\": [\n"
            "    \"" +
                escapePath(first) +
                "\",\n"
                "    \"" +
                escapePath(second) +
                "\"\n"
                "  ],\n"
                "  \"findings\": [\n"
                "    {\n"
                "      \"file\": \"" +
                escapePath(first) +
                "\",\n"
                "      \"line\": 4,\n"
                "      \"column\": 1,\n"
                "      \"level\": \"warning\",\n"
                "      \"rule\": \"missing-number\",\n"
                "      \"foundation\": \"number 1 \\\"Found0001\\\"\",\n"
                "      \"sentence\": \"<FOUND> has no NUMBER; it is read as number 1\"\n"
                "    },\n"
                "    {\n"
                "      \"file\": \"" +
                escapePath(second) +
                "\",\n"
                "      \"line\": 2,\n"
                "      \"column\": 6,\n"
                "      \"level\": \"error\",\n"
                "      \"rule\": \"unreadable\",\n"
                "      \"sentence\": \"this end tag does not close the element that is open\"\n"
                "    }\n"
                "  ]\n"
                "}\n");
  EXPECT_EQ(result.err,
            "kvfound: " + second + ":2:6: this end tag does not close the element that is open\n");
  EXPECT_EQ(result.status, 2);
}

TEST(CheckFormat, SarifPointsIntoEachFile) {
  const std::string path = makeFile("1.xml", makeModel("<FOUND/>"));

  const Result result = run("check --format sarif '" + path + "'");

  EXPECT_NE(result.out.find("\"ruleId\": \"missing-number\""), std::string::npos);
  EXPECT_NE(result.out.find("\"startLine\": 4,"), std::string::npos);
  EXPECT_EQ(result.status, 1);
}

TEST(CheckFormat, TellsErrorsInEditorColumnsToo) {
  const std::string path = makeFile("1.xml", "<X>\xC3\xBC<Y></X>\n");

  const std::string sarif = run("check --format sarif '" + path + "'").out;

  EXPECT_NE(sarif.find("\"startColumn\": 10"), std::string::npos) << sarif;
}

TEST(CheckFormat, TellsTheLineAloneOfErrorsAboutAWholeLine) {
  const std::string path = makeFile("in.csv", "number,name\n1\n");

  const Result json = run("check --format json '" + path + "'");
  const std::string sarif = run("check --format sarif '" + path + "'").out;

  EXPECT_NE(json.out.find("      \"line\": 2,\n      \"level\": \"error\",\n"), std::string::npos)
      << json.out;
  EXPECT_NE(json.out.find("\"sentence\": \"this row has too few cells: 1 instead of 2\""),
            std::string::npos);
  EXPECT_EQ(json.err, "kvfound: " + path + ":2: this row has too few cells: 1 instead of 2\n");
  EXPECT_NE(sarif.find("\"startLine\": 2\n"), std::string::npos) << sarif;
  EXPECT_EQ(sarif.find("startColumn"), std::string::npos);
}

TEST(CheckFormat, NamesStandardInput) {
  EXPECT_NE(run("check --format json -").out.find("\"file\": \"standard input\""),
            std::string::npos);
  EXPECT_NE(run("check --format sarif -").out.find("\"uri\": \"stdin\""), std::string::npos);
}

TEST(CheckFormat, IsAnswerEnoughForCleanDocuments) {
  const Result result = run("check --format json '" KVFOUND_EXAMPLES_DIR "/model.xml'");

  EXPECT_NE(result.out.find("\"findings\": []"), std::string::npos);
  EXPECT_EQ(result.status, 0);
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
  const Result result = run("check '/no\x1B/file'");

  const std::string start = "kvfound: /no\\x1B/file: cannot be opened: ";  // reasons differ
  EXPECT_EQ(result.err.substr(0, start.size()), start);
}

#ifndef _WIN32  // where no file can be called so
TEST(Check, PassesNoControlCharactersOfAPathOnToTheTerminal) {
  const std::string path = makeFile("a\x1B.xml", makeModel("<FOUND NUMBER='1' X=''/>"));

  EXPECT_NE(run("check '" + path + "'").out.find("a\\x1B.xml:4:19: warning: X is no attribute"),
            std::string::npos);
}
#endif

}  // namespace
