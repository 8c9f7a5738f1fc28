#include <algorithm>
#include <cstdio>
#include <new>
#include <ostream>
#include <string>

#include "checks/findings.h"
#include "checks/rules.h"
#include "commands.h"
#include "documents/document.h"
#include "files/user_error.h"
#include "terminal.h"
#include "text/display_text.h"

namespace {

using Commands::Status;

/// A line each.
void print(const Checks::Findings& findings, const std::string& shownPath, std::ostream& out) {
  const std::string file = DisplayText::fromName(shownPath);
  const std::string warning = Terminal::Painter(stdout).paint(Terminal::Style::yellow, "warning:");
  for (const Checks::Finding& finding : findings.list())
    out << file << ':' << finding.position.line << ':' << finding.position.column << ": " << warning
        << ' ' << finding.sentence << '\n';
}

Status checkOne(const std::string& path, const Documents::ReadOptions& reading, std::ostream& out) {
  Documents::Document document(Documents::readFile(path, reading.form), reading);
  document.requireReadable();
  const Checks::Findings findings = Checks::find(document);
  print(findings, document.getShownPath(), out);
  return findings.isEmpty() ? Status::done : Status::findings;
}

}  // namespace

Status Commands::check(const CheckOptions& options, std::ostream& out, Notes& notes) {
  Status status = Status::done;
  // A document that cannot be read does not keep the others from being checked.
  for (const std::string& path : options.paths) {
    try {
      status = std::max(status, checkOne(path, options.reading, out));
    } catch (const UserError& error) {
      notes.tellError(error.what());
      status = Status::error;
    } catch (const std::bad_alloc&) {
      notes.tellError(path + ": is too large for the memory of this machine");
      status = Status::error;
    }
  }
  return status;
}
