#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_program.h"

namespace {

using Variables = std::vector<std::pair<const char*, const char*>>;

[[noreturn]] void becomeProgram(std::vector<std::string> arguments, const Variables& variables) {
  unsetenv("NO_COLOR");
  setenv("TERM", "xterm", 1);
  for (const auto& [name, value] : variables) setenv(name, value, 1);
  std::vector<char*> pointers;
  arguments.insert(arguments.begin(), KVFOUND_PROGRAM);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  execv(KVFOUND_PROGRAM, pointers.data());
  _exit(127);
}

/// Writes `text` to a pipe with a name after a while, from another process. Returns its number.
pid_t writeLate(const std::string& pipe, const std::string& text) {
  const pid_t child = fork();
  if (child != 0) return child;
  std::ofstream file(pipe, std::ios::binary);
  usleep(2500000);  // much longer than the second after which progress is shown
  file << text;
  file.close();
  _exit(0);
}

/// What appears in a terminal with so many columns.
std::string runInTerminal(unsigned short columns, const std::vector<std::string>& arguments,
                          const Variables& variables = {}) {
  const winsize size{30, columns, 0, 0};
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
  if (child == 0) becomeProgram(arguments, variables);
  EXPECT_GT(child, 0);
  std::string text;
  char buffer[4096];
  for (ssize_t got = 0; (got = read(terminal, buffer, sizeof buffer)) > 0;)
    text.append(buffer, static_cast<std::size_t>(got));
  close(terminal);
  waitpid(child, nullptr, 0);
  std::string lines;
  for (const char c : text)
    if (c != '\r') lines += c;  // which the terminal puts before every line end
  return lines;
}

/// Skipped where the system gives no pseudo-terminal, as in a folder that became the root.
class InATerminal : public testing::Test {
 protected:
  void SetUp() override {
    int ends[2];
    if (openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr) != 0)
      GTEST_SKIP() << "there is no pseudo-terminal: " << std::strerror(errno);
    for (const int end : ends) close(end);
  }
};

std::string makeModel() {
  return makeFile("in.xml",
                  makeDocument("<FOUNDATIONS CURRENT='raft'><FOUND NAME='raft' FZAREA='2' "
                               "FZLINE='3'/><FOUND NAME='Foundation under the silo' "
                               "FXLINE='0.0000012345678901234567'/></FOUNDATIONS>"));
}

TEST_F(InATerminal, HeadingsAndTheCurrentFoundationAreBold) {
  EXPECT_EQ(runInTerminal(100, {"show", makeModel()}),
            "\x1B[1m   No  Name                       Gen  Part                         x  y  z  "
            "rot x  Fails  Factor\x1B[0m\n"
            "\x1B[1m*   1  raft                            area                         0  0  2  "
            "    -  -           0\x1B[0m\n"
            "\x1B[1m                                       line                         0  0  3  "
            "    -  -           0\x1B[0m\n"
            "    2  Foundation under the silo       line  0.0000012345678901234567  0  0      -  "
            "-           0\n"
            "\n"
            "* current   gen generated   T fails in tension   C fails in compression   - none\n"
            "2 foundations, largest stiffness 3\n");
}

const char* const narrow =
    "   No  Name              Gen  Part                         x\n"
    "*   1  raft                   area                         0\n"
    "                              line                         0\n"
    "    2  Foundation unde\xE2\x80\xA6       line  0.0000012345678901234567\n"
    "\n"
    "   No  Name              Gen  Part  y  z  rot x  Fails\n"
    "*   1  raft                   area  0  2      -  -\n"
    "                              line  0  3      -  -\n"
    "    2  Foundation unde\xE2\x80\xA6       line  0  0      -  -\n"
    "\n"
    "   No  Name              Gen  Part  Factor\n"
    "*   1  raft                   area       0\n"
    "                              line       0\n"
    "    2  Foundation unde\xE2\x80\xA6       line       0\n"
    "\n"
    "* current   gen generated   T fails in tension\n"
    "C fails in compression   - none\n"
    "2 foundations, largest stiffness 3\n";

TEST_F(InATerminal, ATableFitsItsWidth) {
  EXPECT_EQ(runInTerminal(60, {"show", makeModel()}, {{"NO_COLOR", "1"}}), narrow);
}

TEST_F(InATerminal, ATableTakesAtLeastSixtyPlaces) {
  EXPECT_EQ(runInTerminal(20, {"show", makeModel()}, {{"NO_COLOR", "1"}}), narrow);
}

TEST_F(InATerminal, ATableTakesAHundredPlacesWhenTheWidthIsUnknown) {
  EXPECT_EQ(runInTerminal(0, {"show", makeModel()}), runInTerminal(100, {"show", makeModel()}));
}

TEST_F(InATerminal, AColumnThatHasNoRoomBesideTheKeysStaysWhole) {
  const std::string path =
      makeFile("wide.xml", makeDocument("<FOUNDATIONS><FOUND NUMBER='-2147483648' NAME='wall' "
                                        "FAILXLINE='-2147483648' FAILYLINE='-2147483648' "
                                        "FAILZLINE='-2147483648'/></FOUNDATIONS>"));

  EXPECT_EQ(runInTerminal(60, {"show", path}, {{"NO_COLOR", "1"}}),
            "           No  \xE2\x80\xA6  Gen  Part  x  y  z  rot x\n"
            "  -2147483648  \xE2\x80\xA6       line  -  -  -      -\n"
            "\n"
            "           No  \xE2\x80\xA6  Gen  Part  Fails\n"
            "  -2147483648  \xE2\x80\xA6       line  x-2147483648 y-2147483648 z-2147483648\n"
            "\n"
            "           No  \xE2\x80\xA6  Gen  Part  Factor\n"
            "  -2147483648  \xE2\x80\xA6       line       0\n"
            "\n"
            "* current   gen generated   T fails in tension\n"
            "C fails in compression   - none\n"
            "1 foundation, largest stiffness 0\n");
}

TEST_F(InATerminal, ANameIsShownInFullWhereThereIsRoom) {
  const std::string name(150, 'x');
  const std::string path =
      makeFile("long.xml", makeDocument("<FOUNDATIONS><FOUND NAME='" + name + "'/></FOUNDATIONS>"));

  EXPECT_NE(runInTerminal(198, {"show", path}).find("   1  " + name + "       area  0"),
            std::string::npos);
  EXPECT_NE(runInTerminal(197, {"show", path}).find("   1  " + name.substr(2) + "\xE2\x80\xA6"),
            std::string::npos);
}

TEST_F(InATerminal, NothingIsColouredWhereThatIsNotWanted) {
  const std::vector<std::string> show = {"show", makeModel()};

  EXPECT_EQ(runInTerminal(100, show, {{"NO_COLOR", "1"}}).find('\x1B'), std::string::npos);
  EXPECT_EQ(runInTerminal(100, show, {{"TERM", "dumb"}}).find('\x1B'), std::string::npos);
  EXPECT_NE(runInTerminal(100, show, {{"NO_COLOR", ""}}).find('\x1B'), std::string::npos);
}

TEST_F(InATerminal, ErrorsAreRed) {
  EXPECT_EQ(runInTerminal(100, {"bogus"}),
            "\x1B[1;31mkvfound:\x1B[0m there is no command \"bogus\"; see kvfound --help\n");
}

TEST_F(InATerminal, DataIsNotColoured) {
  const std::string path = makeModel();
  for (const char* format : {"json", "csv"})
    EXPECT_EQ(runInTerminal(100, {"show", path, "--format", format}),
              run("show '" + path + "' --format " + format).out);
}

TEST_F(InATerminal, HelpFitsItsWidth) {
  EXPECT_EQ(runInTerminal(60, {"show", "--help"}),
            "Prints the foundations of models, exchange documents, CSV\n"
            "and JSON, as a table or as data\n"
            "Usage: kvfound show [OPTIONS] [FILE...]\n"
            "\n"
            "Positionals:\n"
            "  FILE                  the documents; standard input when\n"
            "                        it is - or left out. Behind them may\n"
            "                        stand NUMBERS, such as 3,5-9: only\n"
            "                        foundations with these\n"
            "\n"
            "Options:\n"
            "  -h,--help             Print this help message and exit\n"
            "  --name PATTERN        only foundations whose name fits\n"
            "                        PATTERN, in which * stands for any\n"
            "                        characters and ? for one\n"
            "  --generated           only generated foundations\n"
            "  --part PART           area or line\n"
            "  --format FORMAT       table, json or csv\n"
            "  --unit-force UNIT     the unit of force that the values\n"
            "                        are labelled with, such as kN;\n"
            "                        nothing is converted\n"
            "  --unit-length UNIT    the unit of length that they are\n"
            "                        labelled with, such as m\n"
            "  --version VERSION     version of an exchange document;\n"
            "                        when left out, 1.0 if it holds a\n"
            "                        Bedding element, else the current\n"
            "                        one\n"
            "  --from FORM           what is read is a table, csv, or\n"
            "                        json, though its name does not end\n"
            "                        so\n"
            "  --separator CHARACTER what separates the cells of a table:\n"
            "                        comma, semicolon or tab\n"
            "  --decimal CHARACTER   what stands before the decimals in a\n"
            "                        table: point or comma\n"
            "  --messages FORM       how messages are told: text, or\n"
            "                        json, an object a line; text when\n"
            "                        left out\n"
            "  -q,--quiet            tell nothing on standard error but\n"
            "                        errors\n"
            "\n"
            "Example: kvfound show model.xml --format csv\n");
}

// --- Work that takes longer than a second

class Progress : public InATerminal {};

/// A command that reads a pipe of the running test, which is slow.
std::string runSlowly(std::vector<std::string> arguments, const Variables& variables = {}) {
  const std::string pipe = makePath("pipe");
  std::remove(pipe.c_str());
  EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  arguments.push_back(pipe);
  const pid_t writer = writeLate(pipe, makeDocument("<FOUNDATIONS/>"));
  std::string text = runInTerminal(200, arguments, variables);
  waitpid(writer, nullptr, 0);
  return text;
}

TEST_F(Progress, TellsWhatIsDoneAndIsErased) {
  EXPECT_EQ(runSlowly({"show"}),
            "kvfound: reading " + makePath("pipe") + "\x1B[K0 foundations, largest stiffness 0\n");
}

TEST_F(Progress, CountsFiles) {
  EXPECT_EQ(runSlowly({"check", KVFOUND_EXAMPLES_DIR "/model.xml"}),
            "kvfound: file 2 of 2, reading " + makePath("pipe") + "\x1B[K");
}

TEST_F(Progress, IsErasedBeforeAnError) {
  EXPECT_EQ(runSlowly({"show", "--name", "x"}),
            "kvfound: reading " + makePath("pipe") + "\x1B[K\x1B[1;31mkvfound:\x1B[0m " +
                makePath("pipe") + ": no foundation is selected\n");
}

TEST_F(Progress, IsNotShownWhereNobodyWantsIt) {
  const std::string table = "0 foundations, largest stiffness 0\n";

  EXPECT_EQ(runSlowly({"show", "--quiet"}), table);
  EXPECT_EQ(runSlowly({"show", "--messages", "json"}), table);
  EXPECT_EQ(runSlowly({"show"}, {{"TERM", "dumb"}}), table);
}

TEST(ProgressInAPipe, IsNotShown) {
  const std::string pipe = makePath("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const pid_t writer = writeLate(pipe, makeDocument("<FOUNDATIONS/>"));

  EXPECT_EQ(run("show '" + pipe + "'").err, "");
  waitpid(writer, nullptr, 0);
}

TEST_F(Progress, IsNotShownForWorkThatIsDoneAtOnce) {
  EXPECT_EQ(runInTerminal(100, {"check", KVFOUND_EXAMPLES_DIR "/model.xml"}), "");
}

}  // namespace
