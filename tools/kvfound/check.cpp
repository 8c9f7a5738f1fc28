#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <ostream>
#include <string>

#include "check_attributes.h"
#include "check_findings.h"
#include "check_rules.h"
#include "commands.h"
#include "display_text.h"
#include "documents.h"
#include "terminal.h"
#include "user_error.h"

namespace {

using Checks::Owners;
using Commands::Status;
using Found::Foundation;
using Found::FoundationManager;
using KvXmlN::AttributeIn;
using KvXmlN::Data;

Status checkOne(const std::string& path, const std::optional<std::string>& version,
                std::ostream& out, std::ostream& notes) {
  const Documents::Input input(path);
  const Documents::Tree tree = Documents::parse(input, version);
  FoundationManager manager;
  if (tree.form == Documents::Form::legacy) Documents::read(input, version, manager, notes);
  const Checks::Findings findings = Checks::find(tree, manager);
  findings.print(out, tree.shownPath, Terminal::Painter(stdout));
  return findings.isEmpty() ? Status::done : Status::findings;
}

/// All places of which a finding can tell.
void addOwner(const Data& element, const Foundation* foundation, Owners& owners) {
  const auto add = [&](KvXmlPosition place) { owners[{place.line, place.column}] = foundation; };
  add(element.getPosition());
  for (const std::string& name : element.getAttributeNames())
    add(element.getAttributePosition(name));
  for (const Data* child : element.getChildren()) add(child->getPosition());
}

/// The first list of foundations below `top`, which is the one that is read; null when there is
/// none.
const Data* findList(const Data& top) {
  for (const Data* child : top.getChildren()) {
    if (child->getName() == Checks::Elements::foundations.name) return child;
    if (const Data* const list = findList(*child)) return list;
  }
  return nullptr;
}

Owners listLegacyOwners(const Documents::Tree& tree, const FoundationManager& read) {
  Owners owners;
  const Data* const list = findList(tree.document->getRoot());
  if (list == nullptr) return owners;
  auto foundation = read.getFoundations().begin();
  for (const Data* child : list->getChildren())
    if (child->getName() == Checks::Elements::found.name &&
        foundation != read.getFoundations().end())
      addOwner(*child, *foundation++, owners);
  return owners;
}

/// True when `bedding` can have become `foundation`, which may have got another number in version
/// 1.0, and another name where its own was taken.
bool canBe(const Data& bedding, const Foundation& foundation) {
  const std::optional<std::string> name = AttributeIn::readString(bedding, "Name");
  if (!name) return false;
  const std::string& given = foundation.getName();
  if (given != *name && given.compare(0, name->size() + 1, *name + "_") != 0) return false;
  if (bedding.getName() == Checks::Elements::bedding.name) return true;
  const std::string number = AttributeIn::readString(bedding, "Number").value_or("");
  return std::strtol(number.c_str(), nullptr, 10) == foundation.getNumber();
}

/// Beddings are read in their order, and some are skipped.
Owners listExchangeOwners(const Documents::Tree& tree, const FoundationManager& read) {
  Owners owners;
  auto foundation = read.getFoundations().begin();
  for (const Data* container : tree.containers)
    for (const Data* child : container->getChildren())
      if (foundation != read.getFoundations().end() && canBe(*child, **foundation))
        addOwner(*child, *foundation++, owners);
  return owners;
}

}  // namespace

Checks::Findings Checks::find(const Documents::Tree& tree, const Found::FoundationManager& read) {
  Findings findings;
  if (tree.form == Documents::Form::legacy) {
    checkLegacy(tree, read, findings);
    findings.arrange(listLegacyOwners(tree, read));
  } else {
    checkExchange(tree, findings);
    findings.arrange(listExchangeOwners(tree, read));
  }
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
