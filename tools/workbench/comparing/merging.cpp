#include "comparing/merging.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <string_view>
#include <variant>

#include <fmt/format.h>

#include "documents/vocabulary.h"
#include "foundations/fields.h"
#include "foundations/parts.h"
#include "text/display_text.h"

namespace Comparing {
namespace {

using Documents::Document;
using Documents::Form;
using Found::Foundation;

/// True for a field of a part that `source` does not have.
bool isOfMissingPart(std::string_view field, Foundation& source) {
  if (field.substr(0, 4) == "area") return !Parts::hasArea(source);
  return field.substr(0, 4) == "line" && !Parts::hasLine(source);
}

bool isIdentity(std::string_view field) { return field == "number" || field == "name"; }

}  // namespace

Merger::Merger(Document& document, Editing::Draft& draft, OnClash onClash)
    : targetForm(document.getForm()), target(draft.getFoundations()), rule(onClash) {
  addPlaces(document);
  const std::vector<Foundation*>& read = document.getFoundations().getFoundations();
  for (std::size_t i = 0; i < read.size(); ++i) {
    Foundation& copy = draft.getCopy(i);
    places[&copy] = places[read[i]];
    numbers.emplace(copy.getNumber(), &copy);
    names.emplace(copy.getName(), &copy);
  }
}

void Merger::addPlaces(Document& document) {
  for (const Documents::Entries& entries : document.getEntries())
    for (const Documents::Entry& entry : entries) {
      if (entry.foundation == nullptr) continue;
      const KvXmlPosition position = entry.element.getPosition();
      places.emplace(entry.foundation,
                     fmt::format("{}:{}:{}", DisplayText::fromName(document.getShownPath()),
                                 position.line, position.column));
    }
}

void Merger::merge(Document& source) {
  addPlaces(source);
  for (Foundation* foundation : source.getFoundations().getFoundations())
    take(*foundation, source.getForm());
}

Foundation* Merger::find(int number) const {
  const auto found = numbers.find(number);
  return found != numbers.end() ? found->second : nullptr;
}

Foundation* Merger::find(const std::string& name) const {
  const auto found = names.find(name);
  return found != names.end() ? found->second : nullptr;
}

void Merger::take(Foundation& source, Form form) {
  Foundation* const byName = find(source.getName());
  // The first exchange version has no numbers: names alone tell what belongs together.
  if (form == Form::firstExchange || targetForm == Form::firstExchange) {
    if (byName != nullptr) return change(*byName, source, form);
    return add(source, findFreeNumber(), source.getName());
  }
  Foundation* const byNumber = find(source.getNumber());
  if (byNumber == nullptr && byName == nullptr)
    return add(source, source.getNumber(), source.getName());
  if (byNumber == byName) return change(*byNumber, source, form);
  for (Foundation* foundation : target.getFoundations())  // of several with the same number or name
    if (foundation->getNumber() == source.getNumber() && foundation->getName() == source.getName())
      return change(*foundation, source, form);
  resolve(source, form, byNumber, byName);
}

void Merger::resolve(Foundation& source, Form form, Foundation* byNumber, Foundation* byName) {
  switch (rule) {
    case OnClash::rename:
      if (byNumber == nullptr)
        return add(source, source.getNumber(), findFreeName(source.getName()));
      return refuse(source, *byNumber);
    case OnClash::renumber:
      if (byName == nullptr) return add(source, findFreeNumber(), source.getName());
      return refuse(source, *byName);
    case OnClash::skip:
      return;
    case OnClash::replace:
      if (byNumber == nullptr || byName == nullptr)
        return replace(byNumber != nullptr ? *byNumber : *byName, source, form);
      break;
    case OnClash::refuse:
      break;
  }
  if (byNumber != nullptr) refuse(source, *byNumber);
  if (byName != nullptr) refuse(source, *byName);
}

void Merger::change(Foundation& changed, Foundation& source, Form form) {
  for (const Fields::Field& field : Fields::list()) {
    if (isIdentity(field.name) || isOfMissingPart(field.name, source)) continue;
    if (!Documents::carries(form, field.name)) continue;
    const Fields::Value value = field.get(source);
    if (std::holds_alternative<std::monostate>(value)) continue;
    if (Documents::carries(targetForm, field.name))
      field.set(changed, value);
    else if (!Fields::areAlike(value, field.get(changed)))
      losses.push_back(Losses::describe(source, {field, value, field.get(changed)}));
  }
}

void Merger::add(Foundation& source, int number, const std::string& name) {
  auto added = std::make_unique<Foundation>(source);
  added->setNumber(number);
  added->setName(name);
  Foundation none;
  for (const Fields::Field& field : Fields::list()) {
    if (isIdentity(field.name) || Documents::carries(targetForm, field.name)) continue;
    const Fields::Value value = field.get(source);
    if (Fields::areAlike(value, field.get(none))) continue;
    field.set(*added, field.get(none));
    losses.push_back(Losses::describe(source, {field, value, field.get(none)}));
  }
  places[added.get()] = places[&source];
  numbers.emplace(number, added.get());
  names.emplace(name, added.get());
  target.add(std::move(added));
}

void Merger::replace(Foundation& changed, Foundation& source, Form form) {
  change(changed, source, form);
  if (find(changed.getNumber()) == &changed) numbers.erase(changed.getNumber());
  if (find(changed.getName()) == &changed) names.erase(changed.getName());
  changed.setNumber(source.getNumber());
  changed.setName(source.getName());
  numbers.emplace(changed.getNumber(), &changed);
  names.emplace(changed.getName(), &changed);
}

void Merger::refuse(const Foundation& source, const Foundation& other) {
  clashes.push_back(fmt::format("{}: {} clashes with {} in {}", places[&source],
                                Fields::describe(source), Fields::describe(other), places[&other]));
}

/// One above the highest number; below the highest that there can be.
int Merger::findFreeNumber() const {
  int number = numbers.empty() ? 0 : std::max(numbers.rbegin()->first, 0);
  if (number < std::numeric_limits<int>::max()) return number + 1;
  while (find(number) != nullptr) --number;
  return number;
}

std::string Merger::findFreeName(const std::string& name) const {
  int number = 1;
  while (find(fmt::format("{}_{}", name, number)) != nullptr) ++number;
  return fmt::format("{}_{}", name, number);
}

}  // namespace Comparing
