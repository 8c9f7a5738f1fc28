#include "checks/rules.h"

#include <cstdlib>
#include <optional>
#include <string>

#include "checks/attributes.h"

namespace Checks {
namespace {

using Found::Foundation;
using Found::FoundationManager;
using KvXmlN::AttributeIn;
using KvXmlN::Data;

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
    if (child->getName() == Elements::foundations.name) return child;
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
    if (child->getName() == Elements::found.name && foundation != read.getFoundations().end())
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
  if (bedding.getName() == Elements::bedding.name) return true;
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

Findings find(const Documents::Tree& tree, const FoundationManager& read) {
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

}  // namespace Checks
