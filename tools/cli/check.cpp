#include <algorithm>
#include <cstdio>
#include <optional>
#include <ostream>
#include <string>

#include "checks/findings.h"
#include "checks/rules.h"
#include "commands.h"
#include "documents/documents.h"
#include "files/user_error.h"
#include "terminal.h"
#include "text/display_text.h"

namespace {

using Commands::Status;
using Found::FoundationManager;

/// A line each.
void print(const Checks::Findings& findings, const std::string& shownPath, std::ostream& out) {
  const std::string file = DisplayText::fromName(shownPath);
  const std::string warning = Terminal::Painter(stdout).paint(Terminal::Style::yellow, "warning:");
  for (const Checks::Finding& finding : findings.list())
    out << file << ':' << finding.position.line << ':' << finding.position.column << ": " << warning
        << ' ' << finding.sentence << '\n';
}

Status checkOne(const std::string& path, const std::optional<std::string>& version,
                std::ostream& out, std::ostream& notes) {
  const Documents::Input input(path);
  const Documents::Tree tree = Documents::parse(input, version);
  FoundationManager manager;
  if (tree.form == Documents::Form::legacy) Documents::read(input, version, manager, notes);
  const Checks::Findings findings = Checks::find(tree, manager);
  print(findings, tree.shownPath, out);
  return findings.isEmpty() ? Status::done : Status::findings;
}

}  // namespace

Status Commands::check(const CheckOptions& options, std::ostream& out, std::ostream& notes) {
  Status status = Status::done;
  // A document that cannot be read does not keep the others from being checked.
  for (const std::string& path : options.paths) {
    try {
      status = std::max(status, checkOne(path, options.version, out, notes));
    } catch (const UserError& error) {
      notes << Terminal::Painter(stderr).paint(Terminal::Style::red, "kvfound:") << ' '
            << DisplayText::fromName(error.what()) << '\n';
      status = Status::error;
    }
  }
  return status;
}
