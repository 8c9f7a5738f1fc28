#include <algorithm>
#include <cstdio>
#include <optional>
#include <ostream>
#include <string>

#include "check_findings.h"
#include "check_rules.h"
#include "commands.h"
#include "display_text.h"
#include "documents.h"
#include "terminal.h"
#include "user_error.h"

namespace {

using Commands::Status;

Status checkOne(const std::string& path, const std::optional<std::string>& version,
                std::ostream& out, std::ostream& notes) {
  const Documents::Input input(path);
  const Documents::Tree tree = Documents::parse(input, version);
  Found::FoundationManager manager;
  if (tree.form == Documents::Form::legacy) Documents::read(input, version, manager, notes);
  Checks::Findings findings = Checks::find(tree, manager);
  findings.print(out, tree.shownPath, Terminal::Painter(stdout));
  return findings.isEmpty() ? Status::done : Status::findings;
}

}  // namespace

Checks::Findings Checks::find(const Documents::Tree& tree, const Found::FoundationManager& read) {
  Findings findings;
  if (tree.form == Documents::Form::legacy)
    checkLegacy(tree, read, findings);
  else
    checkExchange(tree, findings);
  return findings;
}

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
