#include <gtest/gtest.h>

#include "tools/run_program.h"

namespace {

std::string makeDocument(const std::string& foundations) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n" + foundations + "\n</SMOD>\n";
}

const std::string legend =
    "\n* current   gen generated   T fails in tension   C fails in compression   - none\n";

TEST(Show, PrintsTheExampleAsAnAlignedTable) {
  const Result result = run("show '" KVFOUND_EXAMPLES_DIR "/model.xml'");

  EXPECT_EQ(result.out,
            "                                       Area --------------------------------  Line "
            "--------------------------------------\n"
            "   No  Name                       Gen       x       y       z  Fails  Factor      x   "
            "   y       z   rot x  Fails  Factor\n"
            "    1  Strip footing, axis A                0       0       0  -           0   9000   "
            "9000   45000    3750  -         0.2\n"
            "    2  Strip footing, axis D                0       0       0  -           0   7200   "
            "7200   36000    3000  zT        0.2\n"
            "*   3  Raft on stiff clay                1500    1500   15000  zT        0.1      -   "
            "   -       -       -  -           0\n"
            "    4  Slab on dense sand                8000    8000   80000  zT        0.1      -   "
            "   -       -       -  -           0\n"
            "    5  Pile cap P1 <4 piles>             2500    2500  120000  -        0.05  16000  "
            "16000  350000  125000  -        0.05\n"
            "    6  Sheet-pile wall, embedded            0       0       0  -           0    500  "
            "18000    2500       -  xC yT       0\n"
            "    7  R\xC3\xBC"
            "ckwand Kranbahn                    0       0       0  -           0   4000   4000   "
            "22000  1850.5  yC zT    0.15\n"
            "    8  Floor on gravel \"0/45\"               0       0   62500  zT          0      - "
            "     -       -       -  -           0\n"
            "    9  Ground anchor beam                   0       0       0  -           0      0   "
            "   0    5200       -  zC          0\n"
            "   10  Found0010                  gen     620     620    6200  zT        0.1      -   "
            "   -       -       -  -           0\n"
            "   11  Found0011                  gen     745     745    7450  zT        0.1      -   "
            "   -       -       -  -           0\n"
            "   12  Found0012                  gen  871.25  871.25  8712.5  zT        0.1      -   "
            "   -       -       -  -           0\n" +
                legend + "12 foundations, largest stiffness 350730.6658962116\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Show, ReadsStandardInputWithoutAFile) {
  const std::string path =
      makeFile("in.xml", makeDocument("<FOUNDATIONS><FOUND FZAREA='2'/></FOUNDATIONS>"));

  const Result result = run("show < '" + path + "'");

  EXPECT_EQ(result.out,
            "                      Area -----------------  Line ------------------------\n"
            "  No  Name       Gen  x  y  z  Fails  Factor  x  y  z  rot x  Fails  Factor\n"
            "   1  Found0001       0  0  2  -           0  -  -  -      -  -           0\n" +
                legend + "1 foundation, largest stiffness 2\n");
  EXPECT_EQ(result.status, 0);
}

TEST(Show, TellsLineAndColumnOfStandardInput) {
  const std::string path = makeFile("in.xml", makeDocument("<FOUNDATIONS></OTHER>"));

  const Result result = run("show - < '" + path + "'");

  EXPECT_EQ(result.err,
            "kvfound: standard input:3:16: this end tag does not close the element that is open\n");
  EXPECT_EQ(result.status, 2);
}

TEST(Show, ShowsAnUnknownFailureAsItsNumber) {
  const std::string path =
      makeFile("in.xml", makeDocument("<FOUNDATIONS><FOUND FAILYLINE='7'/></FOUNDATIONS>"));

  EXPECT_NE(run("show '" + path + "'").out.find("  y7  "), std::string::npos);
}

TEST(Show, ShowsNamesOfAnEightBitCodePageInUtf8) {
  const std::string path = makeFile("in.xml", makeDocument("<FOUNDATIONS><FOUND NAME='Stra\xDF"
                                                           "e \x80'/></FOUNDATIONS>"));

  EXPECT_NE(run("show '" + path + "'")
                .out.find("Stra\xC3\x9F"
                          "e \xE2\x82\xAC"),
            std::string::npos);
}

TEST(Show, EscapesControlCharactersInNames) {
  const std::string path = makeFile(
      "in.xml", makeDocument("<FOUNDATIONS><FOUND NAME='a&#10;b&#9;c\x7F'/></FOUNDATIONS>"));

  EXPECT_NE(run("show '" + path + "'").out.find("a\\nb\\tc\\x7F"), std::string::npos);
}

TEST(Show, EscapesCharactersThatChangeTheDirectionOfWriting) {
  const std::string path = makeFile("in.xml", makeDocument("<FOUNDATIONS><FOUND NAME='a\xE2\x80\xAE"
                                                           "b'/></FOUNDATIONS>"));

  EXPECT_NE(run("show '" + path + "'").out.find("a\\u202Eb"), std::string::npos);
}

TEST(Show, ShortensNamesOfMoreThanSixtyPlaces) {
  const std::string longest(60, 'x');
  const std::string path =
      makeFile("in.xml", makeDocument("<FOUNDATIONS><FOUND NAME='" + longest + "'/><FOUND NAME='" +
                                      longest + "y'/></FOUNDATIONS>"));

  const std::string out = run("show '" + path + "'").out;

  EXPECT_NE(out.find("1  " + longest + " "), std::string::npos) << out;
  EXPECT_NE(out.find("2  " + longest.substr(1) + "\xE2\x80\xA6 "), std::string::npos) << out;
}

TEST(Show, AlignsWideAndCombiningCharactersByTheirPlaces) {
  const std::string path = makeFile(
      "in.xml", makeDocument("<FOUNDATIONS><FOUND NAME='\xE5\x9C\xB0'/><FOUND NAME='u\xCC\x88"
                             "o'/>"
                             "</FOUNDATIONS>"));

  const std::string out = run("show '" + path + "'").out;

  EXPECT_NE(out.find("   1  \xE5\x9C\xB0         0"), std::string::npos) << out;
  EXPECT_NE(out.find("   2  u\xCC\x88"
                     "o         0"),
            std::string::npos)
      << out;
}

TEST(Show, ReadsAPipeByItsPath) {
  const std::string path = makeFile("in.xml", makeDocument("<FOUNDATIONS><FOUND/></FOUNDATIONS>"));

  const Result result = run("show /dev/stdin < <(cat '" + path + "')");

  EXPECT_NE(result.out.find("1 foundation, largest stiffness 0\n"), std::string::npos)
      << result.err;
  EXPECT_EQ(result.status, 0);
}

TEST(ShowErrors, PassesNoControlCharactersOnToTheTerminal) {
  const Result result = run("show $'/no\\x1b/file'");

  EXPECT_EQ(result.err, "kvfound: /no\\x1B/file: cannot be opened: No such file or directory\n");
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
            "kvfound: " + path + ": <Bedding> is no bedding of this version; it was skipped\n" +
                "kvfound: " + path + ": 1 bedding was read\n");
  EXPECT_EQ(run("show --version 1.0 '" + path + "'").err,
            "kvfound: " + path + ": 2 beddings were read\n");
}

TEST(ShowExchange, ReadsEveryContainerOfBeddings) {
  const std::string path = makeFile("in.xml",
                                    "<X><A><CurveBedding Number='1' Name='A'/></A>"
                                    "<B><C><Bedding Name='B'/></C></B></X>");

  const Result result = run("show '" + path + "'");

  EXPECT_EQ(result.err, "kvfound: " + path + ": 1 bedding was read\n" +  //
                            "kvfound: " + path + ": 1 bedding was read\n");
  EXPECT_NE(result.out.find("2 foundations"), std::string::npos);
}

TEST(ShowExchange, TellsEveryMessageAsASentence) {
  const std::string path = makeFile("in.xml",
                                    "<X><B><CurveBedding Number='1' Name='A'/><Load/>"
                                    "<CurveBedding Number='2'/><SurfaceBedding Number='3' Name=''/>"
                                    "<CurveBedding Name='A'/><SurfaceBedding Number='0' Name='A'/>"
                                    "<SurfaceBedding Number='1' Name='A'/>"
                                    "<SurfaceBedding Number='4' Name='A'/></B></X>");
  const std::string prefix = "kvfound: " + path + ": ";

  EXPECT_EQ(run("show '" + path + "'").err,
            prefix + "<Load> is no bedding of this version; it was skipped\n" +  //
                prefix + "the bedding with the number 2 has no name; it was skipped\n" + prefix +
                "the name of the bedding with the number 3 is empty; it was skipped\n" + prefix +
                "a <CurveBedding> has no number, or one that cannot be read; it was skipped\n" +
                prefix + "the number 0 of a <SurfaceBedding> is below 1; it was skipped\n" +
                prefix + "the number 1 of a <SurfaceBedding> is already taken; it was skipped\n" +
                prefix + "the name \"A\" is already taken; the bedding was read as \"A_1\"\n" +
                prefix + "2 beddings were read\n");
}

TEST(ShowExchange, TellsMessagesOfTheFirstVersion) {
  const std::string path = makeFile("in.xml", "<X><Bedding/><Bedding Name=''/></X>");
  const std::string prefix = "kvfound: " + path + ": ";

  EXPECT_EQ(run("show '" + path + "'").err,
            prefix + "a <Bedding> has no name; it was skipped\n" +               //
                prefix + "the name of a <Bedding> is empty; it was skipped\n" +  //
                prefix + "0 beddings were read\n");
}

TEST(ShowErrors, NamesADocumentOfAnotherForm) {
  const Result result = run("show '" KVFOUND_EXAMPLES_DIR "/beddings.kvml'");

  EXPECT_EQ(result.err, "kvfound: " KVFOUND_EXAMPLES_DIR
                        "/beddings.kvml: there are no beddings in <Kvml>; a legacy model or an "
                        "exchange document can be read\n");
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
                "read\n");
}

TEST(ShowErrors, TellsThatTheFirstLineIsNoDeclaration) {
  const std::string path = makeFile("in.xml", "<!-- model -->\n<SMOD/>\n");

  EXPECT_EQ(run("show '" + path + "'").err,
            "kvfound: " + path +
                ": the first line must be an XML declaration, <?xml version=\"1.0\"?>\n");
}

TEST(Show, PrintsOnlyTheCountWhenThereAreNoFoundations) {
  const std::string path = makeFile("in.xml", makeDocument(""));

  const Result result = run("show '" + path + "'");

  EXPECT_EQ(result.out, "0 foundations, largest stiffness 0\n");
  EXPECT_EQ(result.status, 0);
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

  EXPECT_EQ(result.err, "kvfound: " + path + ": this is no XML document\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowErrors, NamesThePlaceWhereADocumentIsMalformed) {
  const std::string path =
      makeFile("in.xml", makeDocument("<FOUNDATIONS>\n  <FOUND A='1' A='2'/></FOUNDATIONS>"));

  const Result result = run("show '" + path + "'");

  EXPECT_EQ(result.err, "kvfound: " + path + ":4:16: the attribute \"A\" is given twice\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ShowErrors, TellsThatOutputCannotBeWritten) {
  const int status = runTo("/dev/full", "show '" KVFOUND_EXAMPLES_DIR "/model.xml'");

  EXPECT_EQ(readFile(makePath("err")), "kvfound: standard output cannot be written\n");
  EXPECT_EQ(status, 2);
}

TEST(Program, AsksForACommand) {
  const Result result = run("");

  EXPECT_EQ(result.err, "kvfound: A subcommand is required; see kvfound --help\n");
  EXPECT_EQ(result.status, 2);
}

TEST(Program, NamesACommandThatThereIsNot) {
  const Result result = run("bogus model.xml");

  EXPECT_EQ(result.err, "kvfound: there is no command \"bogus\"; see kvfound --help\n");
  EXPECT_EQ(result.status, 2);
}

TEST(Program, NamesAnOptionThatThereIsNot) {
  const Result result = run("show --bogus");

  EXPECT_EQ(result.err,
            "kvfound: The following argument was not expected: --bogus; see kvfound --help\n");
  EXPECT_EQ(result.status, 2);
}

TEST(Program, PrintsItsVersion) { EXPECT_EQ(run("--version").out, "kvfound 1.0.0\n"); }

TEST(Program, ShowsAnExampleInTheHelpOfACommand) {
  EXPECT_NE(run("show --help").out.find("Example: kvfound show model.xml\n"), std::string::npos);
}

}  // namespace
