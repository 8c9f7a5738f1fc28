#include "command_line.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "command_list.h"
#include "files/user_error.h"
#include "help.h"
#include "mistakes.h"

namespace CommandLine {

using Commands::Status;

Status run(int argc, const char* const* argv, Commands::Notes& notes) {
  CLI::App program("Looks at the beddings (foundations) of structural models.", "kvfound");
  program.allow_windows_style_options(false);  // a path may begin with a slash
  program.set_version_flag("-V,--version", "kvfound " KVFOUND_VERSION);
  program.require_subcommand(1);
  program.footer("kvfound COMMAND --help tells more. Example: kvfound show model.xml");
  Run run{Status::done, notes};
  for (const auto add : {addShow, addConvert, addCheck, addDiff, addMerge, addSet, addAdd,
                         addRemove, addPrune, addReport, addHelp, addCompletion})
    add(program, run);

  const auto help = std::make_shared<Help>();
  program.formatter(help);
  for (CLI::App* command : program.get_subcommands({}))
    command->group(command->get_name() == "completion" ? "" : "Commands")->formatter(help);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) throw UserError(describe(program, error, argv[argc - 1]));
    program.exit(error);  // prints the help or the version
  }
  return run.status;
}

}  // namespace CommandLine
