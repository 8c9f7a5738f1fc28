#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_program.h"

namespace {

const std::string example = "'" KVFOUND_EXAMPLES_DIR "/model.xml'";
const std::string beddings = "'" KVFOUND_EXAMPLES_DIR "/beddings.xml'";

/// What a command line that is wrong makes the program say.
std::string complain(const std::string& arguments) {
  const Result result = run(arguments);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.status, 2);
  return result.err;
}

Result runInBash(const std::string& arguments) {
  return runScript("'" KVFOUND_PROGRAM "' " + arguments + "\n");
}

/// More than a pipe takes before somebody reads it.
std::string makeLargeModel() {
  std::string foundations;
  for (int i = 0; i < 5000; ++i) foundations += "<FOUND/>";
  return makeFile("large.xml", makeDocument("<FOUNDATIONS>" + foundations + "</FOUNDATIONS>"));
}

TEST(Program, AsksForACommand) {
  EXPECT_EQ(complain(""), "kvfound: a command is missing; see kvfound --help\n");
}

TEST(Program, NamesACommandThatThereIsNot) {
  EXPECT_EQ(complain("bogus model.xml"),
            "kvfound: there is no command \"bogus\"; see kvfound --help\n");
}

TEST(Program, SuggestsTheCommandThatWasMeant) {
  const struct {
    const char* written;
    const char* meant;
  } rows[] = {{"shwo", "show"}, {"sow", "show"},    {"shoow", "show"},
              {"shaw", "show"}, {"cehck", "check"}, {"covnrt", "convert"}};
  for (const auto& row : rows)
    EXPECT_EQ(complain(row.written), std::string("kvfound: there is no command \"") + row.written +
                                         "\"; did you mean " + row.meant +
                                         "? See kvfound --help\n");
}

TEST(Program, SuggestsNoCommandThatIsFarFromWhatWasWritten) {
  for (const std::string written : {"hsow-", "swoh", "s", "''"})
    EXPECT_EQ(complain(written).find("did you mean"), std::string::npos) << written;
}

TEST(Program, NamesAnOptionThatThereIsNot) {
  EXPECT_EQ(complain("show --bogus"),
            "kvfound: there is no option \"--bogus\"; see kvfound show --help\n");
  EXPECT_EQ(complain("-x"), "kvfound: there is no option \"-x\"; see kvfound --help\n");
}

TEST(Program, SuggestsTheOptionThatWasMeant) {
  EXPECT_EQ(complain("show --formt json " + example),
            "kvfound: there is no option \"--formt\"; did you mean --format? See kvfound show "
            "--help\n");
  EXPECT_EQ(complain("show -format=json"),
            "kvfound: there is no option \"-format\"; did you mean --format? See kvfound show "
            "--help\n");
  EXPECT_EQ(complain("--verison"),
            "kvfound: there is no option \"--verison\"; did you mean --version? See kvfound "
            "--help\n");
}

TEST(Program, TellsOfAnUnknownOptionBeforeAnArgumentThatIsMissing) {
  EXPECT_EQ(complain("diff --verson"),
            "kvfound: there is no option \"--verson\"; did you mean --version? See kvfound diff "
            "--help\n");
}

TEST(Program, NamesAnArgumentThatIsMissing) {
  EXPECT_EQ(complain("diff a.xml"), "kvfound: B is missing; see kvfound diff --help\n");
}

TEST(Program, NamesAnArgumentTooMany) {
  EXPECT_EQ(complain("remove a.xml 3 b.xml"),
            "kvfound: \"b.xml\" is one argument too many; see kvfound remove --help\n");
}

TEST(Program, TakesWhatFollowsTwoDashesForAFile) {
  EXPECT_EQ(complain("show -- --format"),
            "kvfound: --format: cannot be opened: No such file or directory\n");
  EXPECT_EQ(complain("remove -- a.xml 3 b.xml"),
            "kvfound: \"b.xml\" is one argument too many; see kvfound remove --help\n");
}

TEST(Program, NamesAnArgumentTooManyBehindTwoDashes) {
  EXPECT_EQ(complain("remove a.xml 3 -- b.xml"),
            "kvfound: \"b.xml\" is one argument too many; see kvfound --help\n");
}

TEST(Program, NamesAnOptionWithoutAValue) {
  EXPECT_EQ(complain("show --format"),
            "kvfound: --format needs a value; see kvfound show --help\n");
}

TEST(Program, NamesAnOptionThatIsGivenTwice) {
  EXPECT_EQ(complain("show --format csv --format json"),
            "kvfound: --format is given more than once; see kvfound show --help\n");
}

TEST(Program, NamesTheValuesThatAnOptionTakes) {
  EXPECT_EQ(complain("show --format xml"),
            "kvfound: --format cannot be \"xml\", only table, json or csv; see kvfound show "
            "--help\n");
  EXPECT_EQ(complain("convert a b --to pdf"),
            "kvfound: --to cannot be \"pdf\", only legacy, exchange, exchange-1.0, kvml, csv or "
            "json; see kvfound convert --help\n");
}

TEST(Program, ComplainsInOneLineWhateverWasWritten) {
  EXPECT_EQ(complain("'a\nb\x1B'"),
            "kvfound: there is no command \"a\\nb\\x1B\"; see kvfound --help\n");
}

TEST(Program, PrintsItsVersion) { EXPECT_EQ(run("--version").out, "kvfound 1.0.0\n"); }

TEST(Program, ListsItsCommandsInItsHelp) {
  const Result result = run("--help");

  EXPECT_NE(result.out.find("\nCommands:\n  show                  Prints"), std::string::npos)
      << result.out;
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Program, PrintsTheHelpOfACommandByAnother) {
  for (const char* command : {"show", "merge", "help", "completion"}) {
    const std::string name = command;
    EXPECT_EQ(run("help " + name).out, run(name + " --help").out);
  }
  EXPECT_EQ(run("help").out, run("--help").out);
}

TEST(Program, PrintsTheHelpOfACommandWithAnExampleAtItsEnd) {
  EXPECT_EQ(
      run("show --help").out,
      "Prints the foundations of models, exchange documents, CSV and JSON, as a table or as data\n"
      "Usage: kvfound show [OPTIONS] [FILE...]\n"
      "\n"
      "Positionals:\n"
      "  FILE                  the documents; standard input when it is - or left out. Behind them "
      "may\n"
      "                        stand NUMBERS, such as 3,5-9: only foundations with these\n"
      "\n"
      "Options:\n"
      "  -h,--help             Print this help message and exit\n"
      "  --name PATTERN        only foundations whose name fits PATTERN, in which * stands for "
      "any\n"
      "                        characters and ? for one\n"
      "  --generated           only generated foundations\n"
      "  --part PART           area or line\n"
      "  --format FORMAT       table, json or csv\n"
      "  --unit-force UNIT     the unit of force that the values are labelled with, such as kN; "
      "nothing is\n"
      "                        converted\n"
      "  --unit-length UNIT    the unit of length that they are labelled with, such as m\n"
      "  --version VERSION     version of an exchange document; when left out, 1.0 if it "
      "holds a Bedding\n"
      "                        element, else the current one\n"
      "  --from FORM           what is read is a table, csv, or json, though its name does not "
      "end so\n"
      "  --separator CHARACTER what separates the cells of a table: comma, semicolon or tab\n"
      "  --decimal CHARACTER   what stands before the decimals in a table: point or comma\n"
      "  --messages FORM       how messages are told: text, or json, an object a line; text "
      "when left out\n"
      "  -q,--quiet            tell nothing on standard error but errors\n"
      "\n"
      "Example: kvfound show model.xml --format csv\n");
}

TEST(ProgramOutput, OnAFullDeviceIsAnError) {
  SKIP_WITHOUT_BASH();
  for (const std::string format : {"table", "json", "csv"}) {
    const Result result = runInBash("show " + example + " --format " + format + " >/dev/full");

    EXPECT_EQ(result.err, "kvfound: standard output cannot be written\n");
    EXPECT_EQ(result.status, 2);
  }
}

TEST(ProgramOutput, OnAFullDeviceIsAnErrorOfEveryCommand) {
  SKIP_WITHOUT_BASH();
  const std::string empty = "'" + makeModelFile("") + "'";
  for (const std::string& command :
       {"convert " + example + " - --to kvml", "report " + example, "diff " + example + " " + empty,
        "check " + beddings, "prune " + example + " - --generated"}) {
    const Result result = runInBash(command + " >/dev/full");

    EXPECT_NE(result.err.find("kvfound: standard output cannot be written\n"), std::string::npos)
        << command;
    EXPECT_EQ(result.status, 2) << command;
  }
}

TEST(ProgramOutput, EndsQuietlyWhenNobodyReadsIt) {
  SKIP_WITHOUT_BASH();
  const std::string show = "'" KVFOUND_PROGRAM "' show '" + makeLargeModel() +
                           "' | true\n"
                           "echo ${PIPESTATUS[0]}\n";
  for (const std::string preparation : {"", "trap '' PIPE\n"}) {
    const Result result = runScript(preparation + show);

    EXPECT_EQ(result.out, "141\n") << preparation;  // what bash makes of the signal
    EXPECT_EQ(result.err, "") << preparation;
  }
}

TEST(ProgramOutput, ThatIsClosedIsAnError) {
  SKIP_WITHOUT_BASH();
  const Result result = runInBash("show " + example + " >&-");

  EXPECT_EQ(result.err, "kvfound: standard output cannot be written\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ProgramOutput, MayBeClosedTogetherWithThatOfMessages) {
  SKIP_WITHOUT_BASH();
  EXPECT_EQ(runInBash("show " + example + " >&- 2>&-").status, 2);
  EXPECT_EQ(runInBash("show /no/such/file >&- 2>&- <&-").status, 2);
}

TEST(ProgramOutput, HoldsNoEscapeSequencesInAFile) {
  SKIP_WITHOUT_BASH();
  const Result result = runScript("TERM=xterm '" KVFOUND_PROGRAM "' show " + example);

  EXPECT_NE(result.out.find("\n*   3  Raft on stiff clay"), std::string::npos);
  EXPECT_EQ(result.out.find('\x1B'), std::string::npos);
}

// --- Commands, each with what it prints, says and returns

/// A model that is read from standard input.
std::string makeInput() {
  return makeModelFile("<FOUND NUMBER='3' NAME='A' FZAREA='7' IsGenerated='1'/>");
}

TEST(ProgramCommand, ShowsStandardInput) {
  const Result result = run("show --format csv", makeInput());

  EXPECT_EQ(result.out.substr(result.out.find('\n') + 1),
            "3,A,true,0,0,7,none,0,,,,,none,none,none,0,false\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(ProgramCommand, ConvertsStandardInputToStandardOutput) {
  const Result result = run("convert - - --to kvml", makeInput());

  EXPECT_EQ(
      result.out,
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<Kvml>\n"
      "  <Beddings>\n"
      "    <BeddingArea Number=\"3\" Name=\"A\" ksx=\"0.0\" ksy=\"0.0\" ksz=\"7.0\" Failure=\"No "
      "failure\" Tangential=\"0.00\" />\n"
      "  </Beddings>\n"
      "</Kvml>\n");
  EXPECT_EQ(result.err, "kvfound: standard output: number 3 \"A\": generated yes becomes no\n");
  EXPECT_EQ(result.status, 0);
}

TEST(ProgramCommand, ConvertsNothingThatWouldBeLostWhenItIsStrict) {
  const Result result = run("convert - - --to kvml --strict", makeInput());

  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.status, 1);
}

TEST(ProgramCommand, ChecksFilesAndStandardInput) {
  const Result result = run("check " + example + " -", makeModelFile("<FOUND NUMBER='1' X=''/>"));

  EXPECT_EQ(result.out,
            "standard input:3:32: warning: X is no attribute of <FOUND>; it is not read\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(run("check " + example).status, 0);
  EXPECT_EQ(run("check /no/such/file -", makeInput()).status, 2);
}

TEST(ProgramCommand, ComparesWithStandardInput) {
  const Result result = run("diff - " + example, makeInput());

  EXPECT_EQ(result.out.substr(0, 13), "~ number 3 \"A");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(run("diff " + example + " " + example).status, 0);
  EXPECT_EQ(run("diff - -").status, 2);
}

TEST(ProgramCommand, PrunesStandardInputToStandardOutput) {
  const Result result = run("prune - - --generated", makeInput());

  EXPECT_EQ(result.out, "<?xml version=\"1.0\"?>\n<SMOD>\n<FOUNDATIONS></FOUNDATIONS>\n</SMOD>\n");
  EXPECT_EQ(result.err, "removed: number 3 \"A\"\n1 removed, 0 kept\n");
  EXPECT_EQ(result.status, 0);
}

TEST(ProgramCommand, ReportsStandardInputToAFile) {
  const std::string out = makePath("out.html");
  const Result result = run("report -o '" + out + "'", makeInput());

  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(readFile(out).find("<h1>standard input</h1>"), std::string::npos);
}

TEST(ProgramCommand, ReadsAndWritesFilesWithBlanksAndUmlautsInTheirPaths) {
  const std::string in =
      makeFile("M\xFChle 1.xml", makeDocument("<FOUNDATIONS><FOUND/></FOUNDATIONS>"));
  const std::string out = makePath("aus der M\xFChle.kvml");
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(run("convert '" + in + "' '" + out + "' --to kvml").status, 0);

  EXPECT_NE(readFile(out).find("<Kvml"), std::string::npos);
}

TEST(ProgramCommand, ReadsAPipeByItsPath) {
  SKIP_WITHOUT_BASH();
  const Result result = runInBash("show /dev/stdin < <(cat '" + makeInput() + "')");

  EXPECT_NE(result.out.find("1 foundation, largest stiffness 7\n"), std::string::npos)
      << result.err;
  EXPECT_EQ(result.status, 0);
}

TEST(ProgramCommand, ReportsWithNoScriptButTheOneWhoseHashItTells) {
  SKIP_WITHOUT_BASH();
  const std::string page = run("report " + example).out;
  const auto cut = [&page](const std::string& start, const std::string& end) {
    const std::size_t from = page.find(start) + start.size();
    return page.substr(from, page.find(end, from) - from);
  };
  const std::string script = makeFile("script", cut("<script>", "</script>"));

  const Result hash = runScript("printf \"$(sha256sum <'" + script +
                                "' | cut -c 1-64 | sed 's/../\\\\x&/g')\" | base64");

  EXPECT_EQ(cut("script-src 'sha256-", "'\"") + "\n", hash.out);
}

}  // namespace
