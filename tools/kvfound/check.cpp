#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check_findings.h"
#include "check_rules.h"
#include "commands.h"
#include "display_text.h"
#include "documents.h"
#include "terminal.h"
#include "user_error.h"

namespace {

using Commands::Status;

Status check(const std::string& path, const std::optional<std::string>& version, std::ostream& out,
             std::ostream& notes) {
  const Documents::Input input(path);
  const Documents::Tree tree = Documents::parse(input, version);
  Found::FoundationManager manager;
  if (tree.form == Documents::Form::legacy) Documents::read(input, version, manager, notes);
  Checks::Findings findings = Checks::find(tree, manager);
  findings.print(out, tree.shownPath, Terminal::Painter(stdout));
  return findings.isEmpty() ? Status::done : Status::findings;
}

/// A document that cannot be read does not keep the others from being checked.
Status checkAll(const std::vector<std::string>& paths, const std::optional<std::string>& version,
                std::ostream& out, std::ostream& errors) {
  Status status = Status::done;
  for (const std::string& path : paths) {
    try {
      status = std::max(status, check(path, version, out, errors));
    } catch (const UserError& error) {
      errors << Terminal::Painter(stderr).paint(Terminal::Style::red, "kvfound:") << ' '
             << DisplayText::fromName(error.what()) << '\n';
      status = Status::error;
    }
  }
  return status;
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

void Commands::addCheck(CLI::App& program, Status& status) {
  struct Options {
    std::vector<std::string> paths = {"-"};
    std::optional<std::string> version;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* const command = program.add_subcommand(
      "check",
      "Warns of what a reader of legacy models or exchange documents accepts in silence; exits "
      "with 1 when it found something, with 2 when a document cannot be read");
  command->add_option("FILE", options->paths,
                      "the documents; standard input when it is - or left out");
  command
      ->add_option("--version", options->version,
                   "version of exchange documents; when left out, 1.0 for one that holds a Bedding "
                   "element, else the current one")
      ->type_name("VERSION");
  command->footer("Example: kvfound check model.xml beddings.xml");
  command->callback([options, &status] {
    status = checkAll(options->paths, options->version, std::cout, std::cerr);
  });
}
