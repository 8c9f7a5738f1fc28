#include <exception>
#include <iostream>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "display_text.h"
#include "documents.h"
#include "show.h"

namespace {

constexpr int exitError = 2;

int run(int argc, char** argv) {
  CLI::App app("Looks at the beddings (foundations) of structural models.", "kvfound");
  app.set_version_flag("--version", "kvfound " KVFOUND_VERSION);
  app.require_subcommand(1);

  std::string path = "-";
  std::optional<std::string> version;
  CLI::App* const showCommand = app.add_subcommand(
      "show", "Prints the foundations of a legacy model or an exchange document as a table");
  showCommand->add_option("FILE", path, "the document; standard input when it is - or left out");
  showCommand->add_option("--version", version,
                          "version of an exchange document; when left out, 1.0 if it holds a "
                          "Bedding element, else the current one");
  showCommand->footer("Example: kvfound show model.xml");
  showCommand->callback([&] { show(path, version, std::cout, std::cerr); });

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const bool isAnswer = error.get_exit_code() == 0;  // --help and --version
    if (isAnswer) return app.exit(error);
    const bool isNoCommand = argc > 1 && argv[1][0] != '-' && app.get_subcommands().empty();
    const std::string reason = isNoCommand ? "there is no command \"" + std::string(argv[1]) + "\""
                                           : std::string(error.what());
    throw UserError(reason + "; see kvfound --help");
  }
  if (!std::cout.flush()) {
    std::cerr << "kvfound: standard output cannot be written\n";
    return exitError;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    // Names and paths from outside may hold anything.
    std::cerr << "kvfound: " << DisplayText::fromName(error.what()) << "\n";
    return exitError;
  }
}
