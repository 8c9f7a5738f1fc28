#include "mistakes.h"

#include <vector>

#include "arguments.h"
#include "text/near_name.h"

namespace CommandLine {
namespace {

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
CLI::App& getCommand(CLI::App& program) {
  const std::vector<CLI::App*> named = program.get_subcommands();
  return named.empty() ? program : *named.back();
}

std::string describeUnknown(const CLI::App& command, const std::string& argument) {
  if (argument.size() > 1 && argument[0] == '-') {
    const std::string name = argument.substr(0, argument.find('='));
    return "there is no option \"" + name + "\"" +
           makeAdvice(command, findNearName(name, listOptions(command)));
  }
  const bool isCommand = command.get_parent() == nullptr && command.get_subcommands().empty();
  if (isCommand)
    return "there is no command \"" + argument + "\"" +
           makeAdvice(command, findNearName(argument, listCommands(command)));
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

/// Such as "a, b or c".
std::string join(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i)
    text += (i == 0 ? "" : i + 1 < names.size() ? ", " : " or ") + names[i];
  return text;
}

std::string describeWrongValue(CLI::App& command, const CLI::ParseError& error) {
  const std::string text = error.what();
  for (CLI::Option* option : command.get_options())
    if (text.rfind(option->get_name() + ":", 0) == 0)
      return option->get_name() + " cannot be \"" + option->results().front() + "\", only " +
             join(listChoices(*option)) + makeAdvice(command);
  return text + makeAdvice(command);
}

}  // namespace

std::string makeAdvice(const CLI::App& command, const std::optional<std::string>& near) {
  const CLI::App* const program = command.get_parent();
  const std::string help =
      (program != nullptr ? program->get_name() + " " : "") + command.get_name() + " --help";
  return near ? "; did you mean " + *near + "? See " + help : "; see " + help;
}

std::string describe(CLI::App& program, const CLI::ParseError& error,
                     const std::string& lastArgument) {
  CLI::App& command = getCommand(program);
  // Reported first: the user may have meant this one to be the argument that is missing.
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

}  // namespace CommandLine
