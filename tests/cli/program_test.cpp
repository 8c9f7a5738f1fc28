#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_program.h"

namespace {

const std::string example = "'" KVFOUND_EXAMPLES_DIR "/model.xml'";

/// What a command line that is wrong makes the program say.
std::string complain(const std::string& arguments) {
  const Result result = run(arguments);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.status, 2);
  return result.err;
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
  EXPECT_EQ(complain("show a.xml b.xml"),
            "kvfound: \"b.xml\" is one argument too many; see kvfound show --help\n");
}

TEST(Program, TakesWhatFollowsTwoDashesForAFile) {
  EXPECT_EQ(complain("show -- --format"),
            "kvfound: --format: cannot be opened: No such file or directory\n");
  EXPECT_EQ(complain("show -- a.xml b.xml"),
            "kvfound: \"b.xml\" is one argument too many; see kvfound show --help\n");
}

TEST(Program, NamesAnArgumentTooManyBehindTwoDashes) {
  EXPECT_EQ(complain("show a.xml -- b.xml"),
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
  EXPECT_EQ(complain("convert a b --to json"),
            "kvfound: --to cannot be \"json\", only legacy, exchange, exchange-1.0 or kvml; see "
            "kvfound convert --help\n");
}

TEST(Program, ComplainsInOneLineWhateverWasWritten) {
  SKIP_WITHOUT_BASH();
  EXPECT_EQ(complain("$'a\\nb\\x1b'"),
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

TEST(Program, PrintsTheHelpOfACommandWithAnExampleAtItsEnd) {
  EXPECT_EQ(
      run("show --help").out,
      "Prints the foundations of a legacy model or an exchange document, as a table or as data\n"
      "Usage: kvfound show [OPTIONS] [FILE]\n"
      "\n"
      "Positionals:\n"
      "  FILE                  the document; standard input when it is - or left out\n"
      "\n"
      "Options:\n"
      "  -h,--help             Print this help message and exit\n"
      "  --format FORMAT       table, json or csv\n"
      "  --version VERSION     version of an exchange document; when left out, 1.0 if it "
      "holds a Bedding\n"
      "                        element, else the current one\n"
      "\n"
      "Example: kvfound show model.xml --format csv\n");
}

TEST(ProgramOutput, OnAFullDeviceIsAnError) {
  SKIP_WITHOUT_BASH();
  for (const std::string format : {"table", "json", "csv"}) {
    EXPECT_EQ(runTo("/dev/full", "show " + example + " --format " + format), 2);
    EXPECT_EQ(readFile(makePath("err")), "kvfound: standard output cannot be written\n");
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
  const Result result = run("show " + example + " >&-");

  EXPECT_EQ(result.err, "kvfound: standard output cannot be written\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ProgramOutput, MayBeClosedTogetherWithThatOfMessages) {
  SKIP_WITHOUT_BASH();
  EXPECT_EQ(run("show " + example + " >&- 2>&-").status, 2);
  EXPECT_EQ(run("show /no/such/file >&- 2>&- <&-").status, 2);
}

TEST(ProgramOutput, HoldsNoEscapeSequencesInAFile) {
  SKIP_WITHOUT_BASH();
  const Result result = runScript("TERM=xterm '" KVFOUND_PROGRAM "' show " + example);

  EXPECT_NE(result.out.find("\n*   3  Raft on stiff clay"), std::string::npos);
  EXPECT_EQ(result.out.find('\x1B'), std::string::npos);
}

}  // namespace
