#include "completion.h"

#include <initializer_list>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "arguments.h"

namespace CommandLine {
namespace {

using Names = std::vector<std::string>;

/// What is completed of an option.
struct OptionWords {
  Names names;  // with their dashes
  std::string description;
  bool takesValue;
  Names choices;  // for the value, if it is one of these
};

struct CommandWords {
  std::string name;  // empty for the program itself
  std::string description;
  bool isHidden;
  std::vector<OptionWords> options;
  Names choices;  // for arguments, if they are no files
};

Names listNames(const CLI::Option& option) {
  Names names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

CommandWords describe(CLI::App& command, const std::string& name) {
  CommandWords words{name, command.get_description(), command.get_group().empty(), {}, {}};
  for (CLI::Option* option : command.get_options())
    if (!option->get_positional())
      words.options.push_back({listNames(*option), option->get_description(),
                               option->get_items_expected_max() > 0, listChoices(*option)});
    else if (const Names choices = listChoices(*option); !choices.empty())
      words.choices = choices;
  return words;
}

std::vector<CommandWords> describeCommands(CLI::App& program) {
  std::vector<CommandWords> commands;
  for (CLI::App* command : program.get_subcommands({}))
    commands.push_back(describe(*command, command->get_name()));
  return commands;
}

Names listCommands(const std::vector<CommandWords>& commands) {
  Names names;
  for (const CommandWords& command : commands)
    if (!command.isHidden) names.push_back(command.name);
  return names;
}

/// The long names, which say more.
Names listOptions(const CommandWords& command) {
  Names names;
  for (const OptionWords& option : command.options) names.push_back(option.names.back());
  return names;
}

std::string join(const Names& words) { return fmt::format("{}", fmt::join(words, " ")); }

/// `text` with a backslash before each of these characters.
std::string escape(const std::string& text, std::string_view characters) {
  std::string escaped;
  for (const char c : text) {
    if (characters.find(c) != characters.npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

/// Between single quotes, as bash and zsh read it.
std::string quote(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text)
    if (c == '\'')
      quoted += R"('\'')";
    else
      quoted += c;
  return quoted + "'";
}

// --- bash

std::string makeBashValues(const std::vector<CommandWords>& commands) {
  std::string lines;
  for (const CommandWords& command : commands)
    for (const OptionWords& option : command.options) {
      if (!option.takesValue) continue;
      std::string patterns;
      for (const std::string& name : option.names)
        patterns += fmt::format("{}{}:{}", patterns.empty() ? "" : " | ", command.name, name);
      lines += fmt::format("    {}) words={} ;;\n", patterns, quote(join(option.choices)));
    }
  return lines;
}

std::string makeBashOptions(const std::vector<CommandWords>& commands) {
  std::string lines;
  for (const CommandWords& command : commands)
    lines +=
        fmt::format("          {}) words={} ;;\n", command.name, quote(join(listOptions(command))));
  return lines;
}

std::string makeBashArguments(const std::vector<CommandWords>& commands) {
  std::string lines;
  for (const CommandWords& command : commands)
    if (!command.choices.empty())
      lines +=
          fmt::format("          {}) words={} ;;\n", command.name, quote(join(command.choices)));
  return lines;
}

std::string makeBash(const CommandWords& program, const std::vector<CommandWords>& commands) {
  return R"(# Completion of the command line of kvfound in bash.

_kvfound() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=
  # Bash takes --format=json for three words.
  if [[ $current == = ]]; then
    current=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi

  case ${COMP_WORDS[1]}:$previous in
)" + makeBashValues(commands) +
         R"(    *)
      if ((COMP_CWORD == 1)); then
        words=)" +
         quote(join(listCommands(commands)) + " " + join(listOptions(program))) + R"(
      elif [[ $current == -* ]]; then
        case ${COMP_WORDS[1]} in
)" + makeBashOptions(commands) +
         R"(        esac
      else
        case ${COMP_WORDS[1]} in
)" + makeBashArguments(commands) +
         R"(        esac
      fi
      ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

# Where there is nothing to choose from, a file is meant.
complete -o bashdefault -o default -F _kvfound kvfound
)";
}

// --- zsh

/// Arguments of _arguments, one for each name.
std::string makeZshOption(const OptionWords& option) {
  std::string value;
  if (option.takesValue)
    value = option.choices.empty() ? ":value:_files" : ":value:(" + join(option.choices) + ")";
  const std::string description = escape(option.description, "[]:\\");
  const char* const sign = option.takesValue ? "=" : "";
  std::string lines;
  for (const std::string& name : option.names)
    lines += fmt::format(" \\\n        {}",
                         quote(fmt::format("{}{}[{}]{}", name, sign, description, value)));
  return lines;
}

std::string makeZshOptions(const CommandWords& command) {
  std::string lines;
  for (const OptionWords& option : command.options) lines += makeZshOption(option);
  return lines;
}

std::string makeZsh(const CommandWords& program, const std::vector<CommandWords>& commands) {
  std::string script = R"(#compdef kvfound
# Completion of the command line of kvfound in zsh.

_kvfound() {
  if ((CURRENT == 2)); then
    local -a commands=(
)";
  for (const CommandWords& command : commands)
    if (!command.isHidden)
      script +=
          fmt::format("      {}\n", quote(command.name + ":" + escape(command.description, ":\\")));
  script += "    )\n    _describe command commands\n    _arguments" + makeZshOptions(program) +
            R"(
    return
  fi
  local command=${words[2]}
  shift words
  ((CURRENT--))
  case $command in
)";
  for (const CommandWords& command : commands) {
    const std::string arguments =
        command.choices.empty() ? "*:file:_files" : "*:word:(" + join(command.choices) + ")";
    script += fmt::format("    {})\n      _arguments{} \\\n        {}\n      ;;\n", command.name,
                          makeZshOptions(command), quote(arguments));
  }
  return script + R"(  esac
}

if [[ $zsh_eval_context[-1] == loadautofunc ]]; then
  _kvfound "$@"
else
  compdef _kvfound kvfound
fi
)";
}

// --- fish

/// Between single quotes, as fish reads it.
std::string quoteForFish(const std::string& text) { return "'" + escape(text, "'\\") + "'"; }

std::string makeFishOption(const std::string& condition, const OptionWords& option) {
  std::string line = "complete -c kvfound -n " + quoteForFish(condition);
  for (const std::string& name : option.names)
    line += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
  if (option.takesValue && option.choices.empty()) line += " -r -F";
  if (!option.choices.empty()) line += " -x -a " + quoteForFish(join(option.choices));
  return line + " -d " + quoteForFish(option.description) + "\n";
}

std::string makeFish(const CommandWords& program, const std::vector<CommandWords>& commands) {
  std::string script = "# Completion of the command line of kvfound in fish.\n\n";
  for (const OptionWords& option : program.options)
    script += makeFishOption("__fish_use_subcommand", option);
  for (const CommandWords& command : commands) {
    if (!command.isHidden)
      script += fmt::format("complete -c kvfound -n __fish_use_subcommand -f -a {} -d {}\n",
                            command.name, quoteForFish(command.description));
    const std::string condition = "__fish_seen_subcommand_from " + command.name;
    for (const OptionWords& option : command.options) script += makeFishOption(condition, option);
    if (!command.choices.empty())
      script += fmt::format("complete -c kvfound -n {} -f -a {}\n", quoteForFish(condition),
                            quoteForFish(join(command.choices)));
  }
  return script;
}

}  // namespace

std::string makeCompletion(CLI::App& program, Shell shell) {
  const CommandWords itself = describe(program, "");
  const std::vector<CommandWords> commands = describeCommands(program);
  switch (shell) {
    case Shell::bash:
      break;
    case Shell::zsh:
      return makeZsh(itself, commands);
    case Shell::fish:
      return makeFish(itself, commands);
  }
  return makeBash(itself, commands);
}

}  // namespace CommandLine
