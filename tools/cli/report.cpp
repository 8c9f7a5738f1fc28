#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

#include "checks/rules.h"
#include "commands.h"
#include "documents/document.h"
#include "files/user_error.h"
#include "output.h"
#include "reading.h"
#include "report/page.h"
#include "report/text.h"
#include "text/display_text.h"

namespace {

/// A page takes the place of an older one and of nothing else.
void requireReplaceable(const OutputFile& output) {
  std::ifstream file(output.getTarget(), std::ios::binary);
  const std::string there(std::istreambuf_iterator<char>(file), {});
  if (!there.empty() && !Report::isPage(there))
    throw UserError(output.getShownPath() +
                    ": this is no page that kvfound made, and was not replaced; name another file");
}

/// A unit as it is shown; one that is blank counts as none.
std::string readUnit(const std::string& given) {
  std::string unit = DisplayText::fromName(given);
  return Report::isBlank(unit) ? "" : unit;
}

}  // namespace

namespace Commands {

Status report(const ReportOptions& options, Notes& notes) {
  const Report::Units units = {readUnit(options.units.force), readUnit(options.units.length)};
  if (units.force.empty() != units.length.empty())
    throw UserError(
        "--unit-force and --unit-length are given together or not at all; see kvfound report "
        "--help");
  OutputFile output = openOutput(options.out);
  requireReplaceable(output);
  Documents::Document document(Documents::readFile(options.in, options.reading.form),
                               options.reading);
  tellReading(document, notes);
  document.keep(options.selection);
  Found::FoundationManager& manager = document.getFoundations();
  manager.updateFoundationMaximum();
  const Checks::Findings findings = Checks::find(document);
  output.create();
  output.write(Report::makePage({document, manager, findings, units}));
  output.commit();
  return Status::done;
}

}  // namespace Commands
