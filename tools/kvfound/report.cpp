#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>

#include "check_rules.h"
#include "commands.h"
#include "documents.h"
#include "found/foundation_manager.h"
#include "output_file.h"
#include "report_page.h"
#include "user_error.h"

namespace {

struct Options {
  std::string in = "-";
  std::string out = "-";
  std::optional<std::string> version;
  ReportBars::Units units;
};

/// True for a document with beddings, whole or broken. In a page, such names stand escaped.
bool mentionsBeddings(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  for (const char* const start : {"<SMOD", "<Bedding", "<CurveBedding", "<SurfaceBedding"})
    if (text.find(start) != text.npos) return true;
  return false;
}

void report(const Options& options, std::ostream& notes) {
  if (options.units.force.empty() != options.units.length.empty())
    throw UserError(
        "--unit-force and --unit-length are given together or not at all; see kvfound report "
        "--help");
  OutputFile output(options.out);
  if (mentionsBeddings(output.getTarget()))
    throw UserError(output.getShownPath() +
                    ": this is a document, which the page would destroy; name another file");
  const Documents::Input in(options.in);
  Found::FoundationManager manager;
  Documents::read(in, options.version, manager, notes);
  manager.updateFoundationMaximum();
  const Documents::Tree tree = Documents::parse(in, options.version);
  Checks::Findings findings = Checks::find(tree, manager);
  output.create();
  std::ofstream page = output.open();
  ReportPage::print({tree, manager, findings, options.units}, page);
  output.close(page);
  output.commit();
}

}  // namespace

void Commands::addReport(CLI::App& program, Status& /*status*/) {
  const auto options = std::make_shared<Options>();
  CLI::App* const command = program.add_subcommand(
      "report",
      "Makes a page of HTML that shows the foundations of a document in pictures and in a table, "
      "with what check finds");
  command->add_option("FILE", options->in, "the document; standard input when it is - or left out");
  command
      ->add_option("-o,--output", options->out,
                   "the file to write; standard output when it is - or left out")
      ->type_name("OUT");
  command
      ->add_option("--unit-force", options->units.force,
                   "the unit of force that the values are labelled with, such as kN; nothing is "
                   "converted")
      ->type_name("UNIT");
  command
      ->add_option("--unit-length", options->units.length,
                   "the unit of length that they are labelled with, such as m")
      ->type_name("UNIT");
  command
      ->add_option("--version", options->version,
                   "version of an exchange document; when left out, 1.0 if it holds a Bedding "
                   "element, else the current one")
      ->type_name("VERSION");
  command->footer(
      "Example: kvfound report model.xml -o model.html --unit-force kN --unit-length m");
  command->callback([options] { report(*options, std::cerr); });
}
