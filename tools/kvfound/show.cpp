#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "commands.h"
#include "documents.h"
#include "found/foundation_manager.h"
#include "show_formats.h"
#include "terminal.h"

namespace {

struct Options {
  std::string path = "-";
  std::string format = "table";
  std::optional<std::string> version;
};

void show(const Options& options, std::ostream& out, std::ostream& notes) {
  Found::FoundationManager manager;
  Documents::read(options.path, options.version, manager, notes);
  manager.updateFoundationMaximum();
  if (options.format == "json")
    ShowFormats::printJson(manager, out);
  else if (options.format == "csv")
    ShowFormats::printCsv(manager, out);
  else
    ShowFormats::printTable(manager, out, Terminal::getWidth(stdout), Terminal::Painter(stdout));
}

}  // namespace

void Commands::addShow(CLI::App& program, Status& /*status*/) {
  const auto options = std::make_shared<Options>();
  CLI::App* const command = program.add_subcommand(
      "show",
      "Prints the foundations of a legacy model or an exchange document, as a table or as data");
  command->add_option("FILE", options->path,
                      "the document; standard input when it is - or left out");
  command->add_option("--format", options->format, "table, json or csv")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"table", "json", "csv"}).description(""));
  command
      ->add_option("--version", options->version,
                   "version of an exchange document; when left out, 1.0 if it holds a Bedding "
                   "element, else the current one")
      ->type_name("VERSION");
  command->footer("Example: kvfound show model.xml --format csv");
  command->callback([options] { show(*options, std::cout, std::cerr); });
}
