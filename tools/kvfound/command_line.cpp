#include "command_line.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "display_text.h"
#include "terminal.h"
#include "user_error.h"

namespace CommandLine {
namespace {

/// The help of the program and its commands, in lines that the terminal has room for.
class Help : public CLI::Formatter {
 public:
  Help() {
    column_width(24);
    label("SUBCOMMAND", "COMMAND");
  }

  std::string make_description(const CLI::App* app) const override {
    return wrap(app->get_description(), width) + "\n";
  }

  std::string make_option_desc(const CLI::Option* option) const override {
    return wrap(option->get_description(), width - get_column_width());
  }

  /// Only what a value is called: which arguments must be given, the line of usage tells.
  std::string make_option_opts(const CLI::Option* option) const override {
    if (option->get_positional() || option->get_type_size() == 0) return "";
    const std::string type = option->get_type_name();
    return " " + type.substr(type.find(':') + 1) + (option->get_required() ? " (required)" : "");
  }

  std::string make_subcommand(const CLI::App* command) const override {
    std::ostringstream out;
    CLI::detail::format_help(out, command->get_name(),
                             wrap(command->get_description(), width - get_column_width()),
                             get_column_width());
    return out.str();
  }

 private:
  static std::string wrap(const std::string& text, std::size_t places) {
    return DisplayText::wrap(CLI::detail::split(text, ' '), " ", places);
  }

  std::size_t width = Terminal::getWidth(stdout);
};

/// How many letters must be put in, left out, replaced, or swapped with their neighbour.
std::size_t measureDistance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> distances(a.size() + 1,
                                                  std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) distances[i][0] = i;
  for (std::size_t j = 0; j <= b.size(); ++j) distances[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i)
    for (std::size_t j = 1; j <= b.size(); ++j) {
      std::size_t& distance = distances[i][j];
      distance = std::min({distances[i - 1][j] + 1, distances[i][j - 1] + 1,
                           distances[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        distance = std::min(distance, distances[i - 2][j - 2] + 1);
    }
  return distances[a.size()][b.size()];
}

/// The name that was most likely meant, when at least two letters in three are right.
std::optional<std::string> findNear(const std::string& asked,
                                    const std::vector<std::string>& names) {
  const auto isNearer = [&asked](const std::string& a, const std::string& b) {
    return measureDistance(asked, a) < measureDistance(asked, b);
  };
  const auto near = std::min_element(names.begin(), names.end(), isNearer);
  if (near == names.end() || measureDistance(asked, *near) * 3 > near->size()) return {};
  return *near;
}

std::vector<std::string> listOptions(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options())
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  return names;
}

std::vector<std::string> listCommands(const CLI::App& program) {
  std::vector<std::string> names;
  for (const CLI::App* command : program.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

/// The command that was named, or the program when there was none.
const CLI::App& getCommand(const CLI::App& program) {
  const std::vector<CLI::App*> named = program.get_subcommands();
  return named.empty() ? program : *named.back();
}

/// Where the user finds out more.
std::string makeAdvice(const CLI::App& command, const std::optional<std::string>& near = {}) {
  const CLI::App* const program = command.get_parent();
  const std::string help =
      (program != nullptr ? program->get_name() + " " : "") + command.get_name() + " --help";
  return near ? "; did you mean " + *near + "? See " + help : "; see " + help;
}

std::string describeUnknown(const CLI::App& command, const std::string& argument) {
  if (argument.size() > 1 && argument[0] == '-') {
    const std::string name = argument.substr(0, argument.find('='));
    return "there is no option \"" + name + "\"" +
           makeAdvice(command, findNear(name, listOptions(command)));
  }
  const bool isCommand = command.get_parent() == nullptr && command.get_subcommands().empty();
  if (isCommand)
    return "there is no command \"" + argument + "\"" +
           makeAdvice(command, findNear(argument, listCommands(command)));
  return "\"" + argument + "\" is one argument too many" + makeAdvice(command);
}

std::string describeMissing(const CLI::App& command) {
  for (const CLI::Option* option : command.get_options())
    if (option->get_required() && option->count() == 0)
      return option->get_name() + " is missing" + makeAdvice(command);
  return "a command is missing" + makeAdvice(command);
}

/// An option that was given twice, or stands at the end without its value.
std::string describeMismatch(const CLI::App& command, const std::string& lastArgument) {
  for (const CLI::Option* option : command.get_options())
    if (option->count() > 1 && option->get_expected_max() == 1)
      return option->get_name() + " is given more than once" + makeAdvice(command);
  return lastArgument + " needs a value" + makeAdvice(command);
}

/// The option's help text is a list of its values.
std::string describeWrongValue(const CLI::App& command, const CLI::ParseError& error) {
  const std::string text = error.what();
  for (const CLI::Option* option : command.get_options())
    if (text.rfind(option->get_name() + ":", 0) == 0)
      return option->get_name() + " cannot be \"" + option->results().front() + "\", only " +
             option->get_description() + makeAdvice(command);
  return text + makeAdvice(command);
}

std::string describe(const CLI::App& program, const CLI::ParseError& error,
                     const std::string& lastArgument) {
  const CLI::App& command = getCommand(program);
  // Told first: an argument that is missing may be what this one was meant to be.
  for (const CLI::App* app : {&program, &command})
    for (const std::string& argument : app->remaining())
      if (argument != "--") return describeUnknown(*app, argument);
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) return describeMissing(command);
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
    return describeMismatch(command, lastArgument);
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr)
    return describeWrongValue(command, error);
  return error.what() + makeAdvice(command);
}

}  // namespace

void run(CLI::App& program, int argc, const char* const* argv) {
  const auto help = std::make_shared<Help>();
  program.formatter(help);
  for (CLI::App* command : program.get_subcommands({})) command->group("Commands")->formatter(help);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) throw UserError(describe(program, error, argv[argc - 1]));
    program.exit(error);  // prints the help or the version
  }
}

}  // namespace CommandLine
