#include <iostream>
#include <memory>
#include <string>

#include "arguments.h"
#include "command_list.h"
#include "completion.h"

/// The commands about the command line itself.
namespace CommandLine {

void addHelp(CLI::App& program, Run& run) {
  std::vector<std::string> names;
  for (const CLI::App* command : program.get_subcommands({})) names.push_back(command->get_name());
  names.insert(names.end(), {"help", "completion"});  // which come behind
  const auto asked = std::make_shared<std::string>();
  CLI::App* const command =
      program.add_subcommand("help", "Prints the help of a command, as its option --help does");
  offerChoices(*command->add_option("COMMAND", *asked, "the command; all of them when left out"),
               names);
  addMessages(*command, run.notes);
  command->footer("Example: kvfound help show");
  command->callback([&program, asked] {
    if (asked->empty()) {
      std::cout << program.get_formatter()->make_help(&program, program.get_name(),
                                                      CLI::AppFormatMode::Normal);
      return;
    }
    std::cout << program.get_subcommand(*asked)->help(program.get_name());
  });
}

void addCompletion(CLI::App& program, Run& run) {
  const auto shell = std::make_shared<Shell>(Shell::bash);
  CLI::App* const command = program.add_subcommand(
      "completion", "Prints the script that completes command lines in a shell");
  addChoice<Shell>(*command, "SHELL", *shell,
                   {{"bash", Shell::bash}, {"zsh", Shell::zsh}, {"fish", Shell::fish}},
                   "bash, zsh or fish")
      ->required();
  addMessages(*command, run.notes);
  command->footer("Example: kvfound completion bash");
  command->callback([&program, shell] { std::cout << makeCompletion(program, *shell); });
}

}  // namespace CommandLine
