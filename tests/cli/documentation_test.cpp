#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "cli/run_program.h"

namespace {

using Words = std::set<std::string>;

/// What the first group of the expression fits in the lines of a text.
Words findAll(const std::string& text, const std::string& expression) {
  const std::regex pattern(expression);
  Words words;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (std::regex_search(line, match, pattern)) words.insert(match[1]);
  }
  return words;
}

Words listCommands() {
  const std::string help = run("--help").out;
  return findAll(help.substr(help.find("\nCommands:")), "^  ([a-z]+)");
}

/// The long options of a command, or of the program.
Words listOptions(const std::string& command) {
  return findAll(run(command + " --help").out, "^  (?:-[a-z],)?(--[-a-z]+)");
}

/// Options as the manual page marks them, which has one dash of its own.
Words findMarked(const std::string& text, const std::string& line) {
  Words options;
  for (const std::string& option : findAll(text, line + "Fl (-[-a-z]+)"))
    options.insert("-" + option);
  return options;
}

/// What the manual page has beneath a heading.
std::string readSection(const std::string& heading) {
  const std::string page = readFile(KVFOUND_MANUAL);
  const std::size_t start = page.find("\n" + heading + "\n");
  EXPECT_NE(start, page.npos) << heading;
  if (start == page.npos) return "";
  const std::size_t end = std::min(page.find("\n.Sh ", start + 1), page.find("\n.Ss ", start + 1));
  return page.substr(start, end - start);
}

/// How the synopsis says a command is written.
std::string readSynopsis(const std::string& command) {
  const std::string synopsis = readSection(".Sh SYNOPSIS");
  const std::size_t start = synopsis.find("\n.Cm " + command + "\n");
  EXPECT_NE(start, synopsis.npos) << command;
  return start == synopsis.npos ? ""
                                : synopsis.substr(start, synopsis.find("\n.Nm", start) - start);
}

/// What bash offers for the last of these words.
Words complete(const std::string& words) {
  const Result result =
      runScript("source '" KVFOUND_COMPLETION
                "'\n"
                "COMP_WORDS=(kvfound " +
                words +
                ")\n"
                "COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                "_kvfound\n"
                "[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\"\n");
  EXPECT_EQ(result.err, "");
  return findAll(result.out, "^(.*)$");
}

TEST(Manual, DescribesEveryCommandWithItsOptions) {
  const Words commands = listCommands();
  EXPECT_EQ(commands.size(), 10U);
  for (const std::string& command : commands) {
    const std::string text = readSection(".Sh DESCRIPTION") + readSection(".Ss " + command);
    EXPECT_EQ(findMarked(text, "^\\.It .*"), listOptions(command)) << command;
  }
}

TEST(Manual, HasEveryOptionInItsSynopsisButThoseThatAllCommandsHave) {
  for (const std::string& command : listCommands()) {
    Words options = listOptions(command);
    for (const char* common : {"--help", "--messages", "--quiet"})
      EXPECT_EQ(options.erase(common), 1U) << command;
    EXPECT_EQ(findMarked(readSynopsis(command), "^\\.(?:Op )?"), options) << command;
  }
}

TEST(Manual, NamesEveryField) {
  const std::string fields = run("show '" KVFOUND_EXAMPLES_DIR "/model.xml' --format csv").out;
  std::istringstream header(fields.substr(0, fields.find('\n')));
  for (std::string field; std::getline(header, field, ',');)
    EXPECT_TRUE(std::regex_search(readSection(".Ss Fields"), std::regex("\\b" + field + "\\b")))
        << field;
}

TEST(Manual, IsCleanOfWarnings) {
  const Result result = runScript(
      "command -v mandoc >/dev/null || exit 3\n"
      "mandoc -T lint -W warning '" KVFOUND_MANUAL "'\n");
  if (result.status == 3) GTEST_SKIP() << "mandoc is not installed";

  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Completion, OffersEveryCommandInTheFirstPlace) {
  Words expected = listCommands();
  expected.merge(listOptions(""));

  EXPECT_EQ(complete("''"), expected);
}

TEST(Completion, OffersEveryOptionOfACommand) {
  for (const std::string& command : listCommands())
    EXPECT_EQ(complete(command + " file.xml -"), listOptions(command)) << command;
}

TEST(Completion, OffersWhatBeginsLikeTheWord) {
  EXPECT_EQ(complete("c"), (Words{"check", "convert"}));
  EXPECT_EQ(complete("prune --u"), Words{"--used-by"});
}

TEST(Completion, OffersTheValuesOfAnOption) {
  const Words formats = {"csv", "json", "table"};
  const Words forms = {"exchange", "exchange-1.0", "kvml", "legacy"};

  EXPECT_EQ(complete("show --format ''"), formats);
  EXPECT_EQ(complete("show --format ="), formats);
  EXPECT_EQ(complete("show --format = j"), Words{"json"});
  EXPECT_EQ(complete("convert a.xml b.xml --to ''"), forms);
}

TEST(Completion, OffersOnlyValuesThatAreTaken) {
  const std::string example = "'" KVFOUND_EXAMPLES_DIR "/model.xml' ";
  for (const std::string& format : complete("show --format ''"))
    EXPECT_EQ(run("show " + example + "--format " + format).status, 0) << format;
  for (const std::string& form : complete("convert --to ''"))
    EXPECT_EQ(run("convert " + example + "- --to " + form).status, 0) << form;
}

TEST(Completion, LeavesFilesToBash) {
  EXPECT_EQ(complete("show ''"), Words{});
  EXPECT_EQ(complete("prune --used-by ''"), Words{});
}

}  // namespace
