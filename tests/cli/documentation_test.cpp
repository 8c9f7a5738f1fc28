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
  return findAll(run(command + " --help").out, "^  (?:-[a-zA-Z],)?(--[-a-z]+)");
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
      runScript("source <('" KVFOUND_PROGRAM
                "' completion bash)\n"
                "COMP_WORDS=(kvfound " +
                words +
                ")\n"
                "COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                "_kvfound\n"
                "[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\"\n");
  EXPECT_EQ(result.err, "");
  return findAll(result.out, "^(.*)$");
}

/// How documents are read, which every command that reads some can be told.
const Words readingOptions = {"--version", "--from", "--separator", "--decimal"};

TEST(Manual, DescribesEveryCommandWithItsOptions) {
  const Words commands = listCommands();
  EXPECT_EQ(commands.size(), 11U);
  for (const std::string& command : commands) {
    const std::string text = readSection(".Sh DESCRIPTION") + readSection(".Ss " + command);
    Words options = findMarked(text, "^\\.It .*");
    if (command == "help")  // it reads no document
      for (const std::string& option : readingOptions) options.erase(option);
    EXPECT_EQ(options, listOptions(command)) << command;
  }
}

TEST(Manual, HasEveryOptionInItsSynopsisButThoseThatAllCommandsHave) {
  for (const std::string& command : listCommands()) {
    Words options = listOptions(command);
    for (const char* common : {"--help", "--messages", "--quiet"})
      EXPECT_EQ(options.erase(common), 1U) << command;
    for (const std::string& option : readingOptions)
      if (option != "--version") options.erase(option);
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

/// The status of a script whose command is not installed here.
constexpr int lacksCommand = 3;

/// Runs a script of bash that needs a command.
Result runWith(const std::string& command, const std::string& script) {
  return runScript("command -v " + command + " >/dev/null || exit " + std::to_string(lacksCommand) +
                   "\n" + script);
}

TEST(Manual, IsCleanOfWarnings) {
  const Result result = runWith("mandoc", "mandoc -T lint -W warning '" KVFOUND_MANUAL "'\n");
  if (result.status == lacksCommand) GTEST_SKIP() << "mandoc is not installed";

  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(result.status, 0);
}

// --- Examples

/// The command lines that follow a mark in lines of a text.
Words findExamples(const std::string& text, const std::string& mark) {
  return findAll(text, mark + "(kvfound [^|#>]*)");
}

/// Runs an example in a folder with what the examples name. The status is 0, or 1 where something
/// is found.
void expectToWork(const std::string& example) {
  const Result result = runScript(
      "folder=$(mktemp -d)\n"
      "cd '" KVFOUND_EXAMPLES_DIR
      "'\n"
      "cp model.xml beddings.xml soil.csv \"$folder\"\n"
      "cp model.xml \"$folder/before.xml\"; cp beddings.xml \"$folder/after.xml\"\n"
      "cd \"$folder\"\n"
      "echo 3 >slabs.txt\n"
      "kvfound() { '" KVFOUND_PROGRAM "' \"$@\"; }\n" +
      example + "\nstatus=$?\nrm -r \"$folder\"\nexit $status\n");

  EXPECT_LE(result.status, 1) << example << "\n" << result.err;
}

TEST(Examples, OfTheHelpWork) {
  for (const std::string& command : listCommands()) {
    const Words examples = findExamples(run("help " + command).out, "^Example: ");
    EXPECT_EQ(examples.size(), 1U) << command;
    for (const std::string& example : examples) expectToWork(example);
  }
}

TEST(Examples, OfTheManualWork) {
  const Words examples = findExamples(readSection(".Sh EXAMPLES"), "^\\.Dl ");
  EXPECT_GE(examples.size(), 8U);
  for (const std::string& example : examples) expectToWork(example);
}

TEST(Examples, OfTheReadmeWork) {
  const Words examples = findExamples(readFile(KVFOUND_DOCUMENTS "/README.md"), "^");
  EXPECT_GE(examples.size(), 4U);
  for (const std::string& example : examples) expectToWork(example);
}

TEST(Examples, OfThePageOfTheProgramUseEveryCommand) {
  const std::string page = readFile(KVFOUND_DOCUMENTS "/docs/program.md");
  Words used = findAll(page, "^(?:\\$ )?kvfound ([a-z]+) ");
  used.insert("help");  // which the page tells of in words
  EXPECT_EQ(used, listCommands());
}

TEST(Examples, OfResultsWorkAndPrintWhatTheyShow) {
  const std::string page = readFile(KVFOUND_DOCUMENTS "/docs/results.md");
  for (const std::string& example : findExamples(page, "^")) expectToWork(example);
  const std::string here = "cd '" KVFOUND_DOCUMENTS "'; '" KVFOUND_PROGRAM "' ";

  const Result check = runScript(here + "check --format json examples/beddings.xml\n");
  EXPECT_NE(page.find("```json\n" + check.out + "```"), std::string::npos) << check.out;
  const Result messages =
      runScript(here + "convert examples/beddings.xml \"$0.kvml\" --to kvml --messages json\n");
  const std::string first = messages.err.substr(0, messages.err.find('\n') + 1);
  EXPECT_NE(page.find("```json\n" + first + "```"), std::string::npos) << first;
}

TEST(Results, AreDocumentedWithEveryRuleAndKind) {
  const std::string page = readFile(KVFOUND_DOCUMENTS "/docs/results.md");
  const std::string sarif = run("check --format sarif " + std::string(nothing)).out;
  const Words rules = findAll(sarif, "^ +\"id\": \"([a-z-]+)\"");
  EXPECT_EQ(rules.size(), 18U);
  for (const std::string& rule : rules)
    EXPECT_NE(page.find("| `" + rule + "` |"), std::string::npos) << rule;
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
  const Words forms = {"csv", "exchange", "exchange-1.0", "json", "kvml", "legacy"};

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

TEST(Completion, OffersTheValuesThatACommandTakesOfItsOwnOption) {
  EXPECT_EQ(complete("check --format ''"), (Words{"json", "sarif", "text"}));
  EXPECT_EQ(complete("diff --format ''"), (Words{"html", "json", "text"}));
}

TEST(Completion, OffersArgumentsThatAreNoFiles) {
  EXPECT_EQ(complete("help p"), Words{"prune"});
  EXPECT_EQ(complete("completion ''"), (Words{"bash", "fish", "zsh"}));
}

TEST(Completion, OffersCommandsAndValuesInFish) {
  const Result result =
      runWith("fish",
              "export HOME=\"$(mktemp -d)\"\n"
              "fish -c \"'" KVFOUND_PROGRAM
              "' completion fish | source; complete -C 'kvfound p'; "
              "complete -C 'kvfound check --format s'; complete -C 'kvfound show --gen'\"\n"
              "rm -r \"$HOME\"\n");
  if (result.status == lacksCommand) GTEST_SKIP() << "fish is not installed";

  EXPECT_EQ(findAll(result.out, "^([^\t]*)"), (Words{"prune", "sarif", "--generated"}));
  EXPECT_EQ(result.err, "");
}

TEST(Completion, LeavesFilesToFish) {
  const Result result = runWith("fish",
                                "export HOME=\"$(mktemp -d)\"\n"
                                "cd '" KVFOUND_EXAMPLES_DIR
                                "'\n"
                                "fish -c \"'" KVFOUND_PROGRAM
                                "' completion fish | source; complete -C 'kvfound show mod'\"\n"
                                "rm -r \"$HOME\"\n");
  if (result.status == lacksCommand) GTEST_SKIP() << "fish is not installed";

  EXPECT_EQ(findAll(result.out, "^([^\t]*)"), Words{"model.xml"});
}

TEST(Completion, IsAScriptOfZshWithEveryCommandOptionAndValue) {
  const Result result = runWith("zsh", "'" KVFOUND_PROGRAM
                                       "' completion zsh >\"$0.zsh\"\n"
                                       "zsh -n \"$0.zsh\" && cat \"$0.zsh\"\n");
  if (result.status == lacksCommand) GTEST_SKIP() << "zsh is not installed";

  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(findAll(result.out, "^      '([a-z]+):"), listCommands());
  EXPECT_NE(result.out.find("'--format=[text, json or sarif]:value:(text json sarif)'"),
            std::string::npos);
  EXPECT_NE(result.out.find("'--generated[only generated foundations]'"), std::string::npos);
}

/// What zsh hands to the function that completes options, which needs a terminal itself.
TEST(Completion, DescribesTheOptionsOfACommandToZsh) {
  const Result result = runWith(
      "zsh", "'" KVFOUND_PROGRAM
             "' completion zsh >\"$0.zsh\"\n"
             "zsh -f -c '_arguments() { print -l -- \"$@\" }; _describe() { : }; compdef() { : }\n"
             "source \"$1\"; words=(kvfound diff -); CURRENT=3; _kvfound' zsh \"$0.zsh\"\n");
  if (result.status == lacksCommand) GTEST_SKIP() << "zsh is not installed";

  EXPECT_EQ(result.err, "");
  EXPECT_EQ(findAll(result.out, "^(--[a-z]+)"), listOptions("diff"));
}

TEST(Completion, IsForNoOtherShell) {
  EXPECT_EQ(run("completion ksh").err,
            "kvfound: SHELL cannot be \"ksh\", only bash, zsh or fish; see kvfound completion "
            "--help\n");
}

TEST(Completion, LeavesFilesToBash) {
  EXPECT_EQ(complete("show ''"), Words{});
  EXPECT_EQ(complete("prune --used-by ''"), Words{});
}

}  // namespace
