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
  if (const Spreadsheets::Sheet* const sheet = document.getSheet())
    for (std::size_t i = 0; i < sheet->origins.size(); ++i)
      owners[{sheet->origins[i].line, sheet->origins[i].column}] =
          document.getFoundations().getFoundations()[i];
  for (const Entries& entries : document.getEntries())
    for (const Entry& entry : entries)
      if (entry.foundation != nullptr) addOwner(entry, owners);
  return owners;
}

}  // namespace

Findings find(Documents::Document& document) {
  Findings findings;
  if (document.getSheet() != nullptr)
    checkSheet(document, findings);
  else if (document.getForm() == Documents::Form::legacy)
    checkLegacy(document, findings);
  else
    checkExchange(document, findings);
  findings.arrange(listOwners(document));
  return findings;
}

}  // namespace Checks
