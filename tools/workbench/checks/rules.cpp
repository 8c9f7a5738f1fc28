#include "checks/rules.h"

#include <string>

namespace Checks {
namespace {

using Documents::Element;
using Documents::Entries;
using Documents::Entry;

/// All places of which a finding can tell.
void addOwner(const Entry& entry, Owners& owners) {
  const auto add = [&](KvXmlPosition place) {
    owners[{place.line, place.column}] = entry.foundation;
  };
  add(entry.element.getPosition());
  for (const std::string& name : entry.element.listAttributeNames())
    add(entry.element.locate(name));
  for (const Element& child : entry.element.listChildren()) add(child.getPosition());
}

Owners listOwners(Documents::Document& document) {
  Owners owners;
  for (const Entries& entries : document.getEntries())
    for (const Entry& entry : entries)
      if (entry.foundation != nullptr) addOwner(entry, owners);
  return owners;
}

}  // namespace

Findings find(Documents::Document& document) {
  Findings findings;
  if (document.getForm() == Documents::Form::legacy)
    checkLegacy(document, findings);
  else
    checkExchange(document, findings);
  findings.arrange(listOwners(document));
  return findings;
}

}  // namespace Checks
