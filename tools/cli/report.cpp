#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

#include "checks/rules.h"
#include "commands.h"
#include "documents/documents.h"
#include "files/output_file.h"
#include "files/user_error.h"
#include "found/foundation_manager.h"
#include "report/page.h"
#include "report/text.h"
#include "text/display_text.h"

namespace {

/// True for a document with beddings, whole or broken. In a page, such names stand escaped.
bool mentionsBeddings(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  for (const char* const start : {"<SMOD", "<Bedding", "<CurveBedding", "<SurfaceBedding"})
    if (text.find(start) != text.npos) return true;
  return false;
}

/// A unit as it is shown; one that is blank counts as none.
std::string readUnit(const std::string& given) {
  std::string unit = DisplayText::fromName(given);
  return ReportText::isBlank(unit) ? "" : unit;
}

}  // namespace

namespace Commands {

Status report(const ReportOptions& options, std::ostream& notes) {
  const ReportBars::Units units = {readUnit(options.units.force), readUnit(options.units.length)};
  if (units.force.empty() != units.length.empty())
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
  const Checks::Findings findings = Checks::find(tree, manager);
  output.create();
  std::ofstream page = output.open();
  ReportPage::print({tree, manager, findings, units}, page);
  output.close(page);
  output.commit();
  return Status::done;
}

}  // namespace Commands
