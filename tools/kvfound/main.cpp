#include <exception>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "command_line.h"
#include "commands.h"
#include "display_text.h"
#include "terminal.h"
#include "user_error.h"

namespace {

using Commands::Status;

Status run(int argc, char** argv) {
  CLI::App program("Looks at the beddings (foundations) of structural models.", "kvfound");
  program.allow_windows_style_options(false);  // a path may begin with a slash
  program.set_version_flag("--version", "kvfound " KVFOUND_VERSION);
  program.require_subcommand(1);
  program.footer("kvfound COMMAND --help tells more. Example: kvfound show model.xml");
  Status status = Status::done;
  Commands::addShow(program, status);
  Commands::addConvert(program, status);
  Commands::addCheck(program, status);
  Commands::addDiff(program, status);
  Commands::addPrune(program, status);
  Commands::addReport(program, status);

  CommandLine::run(program, argc, argv);
  if (!std::cout.flush()) throw UserError("standard output cannot be written");
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  Terminal::endOnClosedPipe();
  try {
    return static_cast<int>(run(argc, argv));
  } catch (const std::exception& error) {
    // Names and paths from outside may hold anything.
    std::cerr << Terminal::Painter(stderr).paint(Terminal::Style::red, "kvfound:") << " "
              << DisplayText::fromName(error.what()) << "\n";
    return static_cast<int>(Status::error);
  }
}
