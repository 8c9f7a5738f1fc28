#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

TEST(Show, ReadsStandardInputWithoutAFile) {
  const std::string path =
      makeFile("in.xml", makeDocument("<FOUNDATIONS><FOUND FZAREA='2'/></FOUNDATIONS>"));

  const Result result = run("show", path);

  EXPECT_NE(result.out.find("1 foundation, largest stiffness 2\n"), std::string::npos);
  EXPECT_EQ(result.status, 0);
}

TEST(Show, ReadsAFileWithBlanksAndUmlautsInItsPath) {
  const std::string path =
      makeFile("M\xFChle 1.xml", makeDocument("<FOUNDATIONS><FOUND/></FOUNDATIONS>"));

  const Result result = run("show '" + path + "'");

  EXPECT_NE(result.out.find("1 foundation, largest stiffness 0\n"), std::string::npos);
  EXPECT_EQ(result.err, "");
}

TEST(Show, TellsLineAndColumnOfStandardInput) {
  const std::string path = makeFile("in.xml", makeDocument("<FOUNDATIONS></OTHER>"));

  const Result result = run("show -", path);

  EXPECT_EQ(result.err,
            "kvfound: standard input:3:16: this end tag does not close the element that is open\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowErrors, PassesNoControlCharactersOnToTheTerminal) {
  const Result result = run("show '/no\x1B/file'");

  const std::string start = "kvfound: /no\\x1B/file: cannot be opened: ";  // reasons differ
  EXPECT_EQ(result.err.substr(0, start.size()), start);
}

TEST(ShowExchange, ReadsBothVersionsAndTellsThemByTheirContent) {
  for (const char* name : {"beddings.xml", "beddings-1.0.xml"}) {
    const Result result = run("show '" KVFOUND_EXAMPLES_DIR "/" + std::string(name) + "'");

    EXPECT_NE(result.out.find("12 foundations, largest stiffness 350730.6658962116\n"),
              std::string::npos)
        << name;
    EXPECT_EQ(result.status, 0) << name;
  }
}

TEST(ShowExchange, TakesTheVersionThatIsGiven) {
  const std::string path =
      makeFile("in.xml", "<X><Bedding Name='A'/><CurveBedding Number='7' Name='B'/></X>");

  EXPECT_EQ(run("show --version 2.0 '" + path + "'").err,
            "kvfound: " + path + ":1:4: <Bedding> is no bedding of this version; it was skipped\n" +
                "kvfound: " + path + ": 1 bedding was read\n");
  EXPECT_EQ(run("show --version 1.0 '" + path + "'").err,
            "kvfound: " + path + ": 2 beddings were read\n");
}

TEST(ShowExchange, ReadsEveryContainerOfBeddings) {
  const std::string path = makeFile("in.xml",
                                    "<X><A><CurveBedding Number='1' Name='A'/></A>"
                                    "<B><C><Bedding Name='B'/></C></B></X>");

  const Result result = run("show '" + path + "'");

  EXPECT_EQ(result.err, "kvfound: " + path + ": 2 beddings were read\n");
  EXPECT_NE(result.out.find("2 foundations"), std::string::npos);
}

TEST(ShowExchange, TellsEveryMessageAsASentence) {
  const std::string path = makeFile("in.xml",
                                    "<X><B><CurveBedding Number='1' Name='A'/><Load/>"
                                    "<CurveBedding Number='2'/><SurfaceBedding Number='3' Name=''/>"
                                    "<CurveBedding Name='A'/><SurfaceBedding Number='0' Name='A'/>"
                                    "<SurfaceBedding Number='1' Name='B'/>"
                                    "<SurfaceBedding Number='4' Name='A'/></B></X>");
  const std::string prefix = "kvfound: " + path + ":";

  EXPECT_EQ(
      run("show '" + path + "'").err,
      prefix + "1:42: <Load> is no bedding of this version; it was skipped\n" +  //
          prefix + "1:49: the bedding with the number 2 has no name; it was skipped\n" + prefix +
          "1:75: the name of the bedding with the number 3 is empty; it was skipped\n" + prefix +
          "1:111: a <CurveBedding> has no number, or one that cannot be read; it was "
          "skipped\n" +
          prefix + "1:135: the number 0 of a <SurfaceBedding> is below 1; it was skipped\n" +
          prefix + "1:172: the number 1 of a <SurfaceBedding> is already taken; it was skipped\n" +
          prefix + "1:209: the name \"A\" is already taken; the bedding was read as \"A_1\"\n" +
          prefix + " 2 beddings were read\n");
}

TEST(ShowExchange, TellsMessagesOfTheFirstVersion) {
  const std::string path = makeFile("in.xml", "<X><Bedding/><Bedding Name=''/></X>");
  const std::string prefix = "kvfound: " + path + ":";

  EXPECT_EQ(run("show '" + path + "'").err,
            prefix + "1:4: a <Bedding> has no name; it was skipped\n" +                //
                prefix + "1:14: the name of a <Bedding> is empty; it was skipped\n" +  //
                prefix + " 0 beddings were read\n");
}

TEST(ShowErrors, NamesADocumentOfAnotherForm) {
  const Result result = run("show '" KVFOUND_EXAMPLES_DIR "/beddings.kvml'");

  EXPECT_EQ(result.err, "kvfound: " KVFOUND_EXAMPLES_DIR
                        "/beddings.kvml: there are no beddings in <Kvml>; a legacy model or an "
                        "exchange document can be read, a Kvml listing cannot\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowErrors, TellsThatTheModelStartsOnTheFirstLine) {
  const std::string path = makeFile("in.xml", "<SMOD><FOUNDATIONS/></SMOD>\n");

  const Result result = run("show '" + path + "'");

  EXPECT_EQ(result.err, "kvfound: " + path +
                            ": <SMOD> must start on a line of its own, behind the line of the XML "
                            "declaration\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowErrors, TellsWhatIsWrongWithATextThatMayBeMeantAsXml) {
  const std::string empty = makeFile("empty.xml", "");
  const std::string wide = makeFile("wide.xml", std::string("\xFF\xFE<\0a\0", 6));
  const std::string marked = makeFile("marked.xml", "\xEF\xBB\xBF\n<X/>");

  EXPECT_EQ(run("show '" + empty + "'").err,
            "kvfound: " + empty + ":1:1: the document has no root element\n");
  EXPECT_EQ(
      run("show '" + wide + "'").err,
      "kvfound: " + wide + ":1:4: a NUL character; only 8-bit text such as UTF-8 can be read\n");
  EXPECT_EQ(run("show '" + marked + "'").err,
            "kvfound: " + marked +
                ": there are no beddings in <X>; a legacy model or an exchange document can be "
                "read, a Kvml listing cannot\n");
}

TEST(ShowErrors, TellsThatTheFirstLineIsNoDeclaration) {
  const std::string path = makeFile("in.xml", "<!-- model -->\n<SMOD/>\n");

  EXPECT_EQ(run("show '" + path + "'").err,
            "kvfound: " + path +
                ": the first line must be an XML declaration, <?xml version=\"1.0\"?>\n");
}

TEST(ShowErrors, NamesAFileThatIsMissing) {
  const Result result = run("show /no/such/model.xml");

  EXPECT_EQ(result.err,
            "kvfound: /no/such/model.xml: cannot be opened: No such file or directory\n");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowErrors, NamesAFolder) {
  const Result result = run("show /");

  EXPECT_EQ(result.err, "kvfound: /: this is a folder, not a file\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowErrors, NamesAFileThatIsNoXml) {
  const std::string path = makeFile("in.txt", "plain text\n");

  const Result result = run("show '" + path + "'");

  EXPECT_EQ(result.err, "kvfound: " + path +
                            ": this is no XML document (a table or JSON needs the ending .csv or "
                            ".json, or --from)\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowErrors, NamesThePlaceWhereADocumentIsMalformed) {
  const std::string path =
      makeFile("in.xml", makeDocument("<FOUNDATIONS>\n  <FOUND A='1' A='2'/></FOUNDATIONS>"));

  const Result result = run("show '" + path + "'");

  EXPECT_EQ(result.err, "kvfound: " + path + ":4:16: the attribute \"A\" is given twice\n");
  EXPECT_EQ(result.status, 2);
}

// --- Several files

std::string makeNumbered(const std::string& name, const std::string& numbers) {
  std::string foundations;
  for (const char number : numbers)
    foundations += std::string("<FOUND NUMBER='") + number + "' NAME='" + number + "'/>";
  return makeFile(name, makeDocument("<FOUNDATIONS>" + foundations + "</FOUNDATIONS>"));
}

const char* const headOfTable = "  No  Name  Gen  Part  x  y  z  rot x  Fails  Factor\n";
const char* const headLegend =
    "\n* current   gen generated   T fails in tension   C fails in compression   - none\n"
    "1 foundation, largest stiffness 0\n";

TEST(ShowFiles, HeadsEachTableByItsFile) {
  const std::string first = makeNumbered("a.xml", "1");
  const std::string second = makeNumbered("b.xml", "2");

  const Result result = run("show '" + first + "' '" + second + "'");

  EXPECT_EQ(result.out, first + ":\n" + headOfTable +
                            "   1  1          area  0  0  0      -  -           0\n" + headLegend +
                            "\n" + second + ":\n" + headOfTable +
                            "   2  2          area  0  0  0      -  -           0\n" + headLegend);
  EXPECT_EQ(result.status, 0);
}

TEST(ShowFiles, TakesWhatLooksLikeNumbersBehindThemForNumbers) {
  const std::string first = makeNumbered("a.xml", "123");
  const std::string second = makeNumbered("b.xml", "234");

  const Result result = run("show '" + first + "' '" + second + "' 2-3");

  EXPECT_EQ(result.out.find("\n   1  "), std::string::npos);
  EXPECT_EQ(result.out.find("\n   4  "), std::string::npos);
  EXPECT_NE(result.out.find("2 foundations"), result.out.rfind("2 foundations"));
  EXPECT_EQ(result.status, 0);
}

TEST(ShowFiles, TakesTheFirstArgumentForAFileWhateverItLooksLike) {
  EXPECT_EQ(run("show 3").err.substr(0, 27), "kvfound: 3: cannot be opene");
  EXPECT_EQ(run("show 3 ./5").err.substr(0, 27), "kvfound: 3: cannot be opene");
}

TEST(ShowFiles, NamesNumbersThatAreNone) {
  EXPECT_EQ(run("show a.xml 3-").err,
            "kvfound: \"3-\" is no list of numbers such as 3,5-9; see kvfound show --help\n");
}

TEST(ShowFiles, ShowsTheOthersBesideOneThatCannotBeRead) {
  const std::string good = makeNumbered("a.xml", "1");

  const Result result = run("show /no/such/file '" + good + "'");

  EXPECT_EQ(result.out.substr(0, good.size() + 2), good + ":\n");
  EXPECT_EQ(result.err, "kvfound: /no/such/file: cannot be opened: No such file or directory\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowFiles, RefusesToPrintDataOfSeveral) {
  for (const char* format : {"json", "csv"}) {
    const Result result = run(std::string("show a.xml b.xml --format ") + format);
    EXPECT_EQ(result.err,
              "kvfound: JSON and CSV hold the foundations of one document; show one after the "
              "other\n");
    EXPECT_EQ(result.status, 2);
  }
}

}  // namespace
