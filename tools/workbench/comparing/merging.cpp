#include "comparing/merging.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>
#include <variant>

#include <fmt/format.h>

#include "documents/vocabulary.h"
#include "foundations/fields.h"
#include "foundations/numbers.h"
#include "foundations/parts.h"
#include "spreadsheets/names.h"
#include "text/display_text.h"

namespace Comparing {
namespace {

using Documents::Document;
using Documents::Form;
using Found::Foundation;

bool isOfArea(std::string_view field) { return field.substr(0, 4) == "area"; }
bool isOfLine(std::string_view field) { return field.substr(0, 4) == "line"; }

/// True when the element tells a stiffness of the area, or of the line, be it zero.
bool tellsStiffness(const Documents::Entry& entry, Form form, bool (*isOfPart)(std::string_view)) {
  if (form != Form::legacy && entry.element.getName() != Documents::Exchange::whole.name)
    return isOfPart == isOfArea ? entry.element.getName() == Documents::Exchange::surface.name
                                : entry.element.getName() == Documents::Exchange::curve.name;
  const Documents::ElementWord& word =
      form == Form::legacy ? Documents::Legacy::foundation : Documents::Exchange::whole;
  return std::any_of(word.attributes.begin(), word.attributes.end(),
                     [&](const Documents::AttributeWord& attribute) {
                       using Documents::Kind;
                       const bool isStiffness = attribute.kind == Kind::stiffness ||
                                                attribute.kind == Kind::lineStiffness;
                       return isStiffness && isOfPart(attribute.field) &&
                              entry.element.readText(attribute.name).has_value();
                     });
}

/// True where a row has a place for a stiffness of the part.
bool tellsStiffness(const Spreadsheets::FieldSet& row, bool (*isOfPart)(std::string_view)) {
  const std::vector<Fields::Field>& fields = Fields::list();
  return std::any_of(fields.begin(), fields.end(), [&](const Fields::Field& field) {
    return field.type == Fields::Type::stiffness && isOfPart(field.name) && row.has(field);
  });
}

bool isIdentity(std::string_view field) { return field == "number" || field == "name"; }

}  // namespace

Merger::Merger(Document& document, Editing::Draft& draft, OnClash onClash)
    : targetForm(document.getForm()), target(draft.getFoundations()), rule(onClash) {
  addPlaces(document);
  if (targetForm == Form::csv) {
    targetColumns.emplace();
    for (const auto& [field] : document.getSheet()->columns)
      if (field != nullptr) targetColumns->add(*field);
  }
  const std::vector<Foundation*>& read = document.getFoundations().getFoundations();
  for (std::size_t i = 0; i < read.size(); ++i) {
    Foundation& copy = draft.getCopy(i);
    places[&copy] = places[read[i]];
    numbers.emplace(copy.getNumber(), &copy);
    names.emplace(copy.getName(), &copy);
  }
}

void Merger::addPlaces(Document& document) {
  const std::string file = DisplayText::fromName(document.getShownPath());
  if (const Spreadsheets::Sheet* const sheet = document.getSheet()) {
    const std::vector<Foundation*>& read = document.getFoundations().getFoundations();
    for (std::size_t i = 0; i < read.size(); ++i)
      places.emplace(read[i], Place{file, {sheet->origins[i].line, sheet->origins[i].column}});
  }
  for (const Documents::Entries& entries : document.getEntries())
    for (const Documents::Entry& entry : entries)
      if (entry.foundation != nullptr)
        places.emplace(entry.foundation, Place{file, entry.element.getPosition()});
}

/// Models give an area of zeros to every foundation, so there these tell nothing.
void Merger::addParts(Document& source) {
  for (const Documents::Entries& entries : source.getEntries())
    for (const Documents::Entry& entry : entries) {
      if (entry.foundation == nullptr) continue;
      const Form form = source.getForm();
      if (tellsStiffness(entry, form, isOfLine)) withLine.insert(entry.foundation);
      const bool tellsArea = tellsStiffness(entry, form, isOfArea);
      if (tellsArea && (form != Form::legacy || Parts::hasArea(*entry.foundation)))
        withArea.insert(entry.foundation);
    }
}

/// What stands in a row comes, zeros as well. Where it has no stiffness of a part, although it has
/// the places for it, what it says of factors and failure modes of the part tells nothing, either.
void Merger::addSheet(Document& source) {
  const Spreadsheets::Sheet* const sheet = source.getSheet();
  if (sheet == nullptr) return;
  const std::vector<Foundation*>& read = source.getFoundations().getFoundations();
  for (std::size_t i = 0; i < read.size(); ++i) {
    const Spreadsheets::FieldSet& row = sheet->origins[i].told;
    rows.emplace(read[i], sheet->origins[i]);
    if (Parts::tellsArea(*read[i]) || !tellsStiffness(row, isOfArea)) withArea.insert(read[i]);
    if (Parts::tellsLine(*read[i]) || !tellsStiffness(row, isOfLine)) withLine.insert(read[i]);
  }
}

/// True where the target has a place for the field.
bool Merger::holds(const Fields::Field& field) const {
  return Documents::carries(targetForm, field.name) &&
         (!targetColumns || targetColumns->has(field));
}

/// True where the document says something of the field.
bool Merger::tells(const Foundation& source, const Fields::Field& field) const {
  const auto row = rows.find(&source);
  return row != rows.end() ? row->second.told.has(field)
                           : Documents::carries(sourceForm, field.name);
}

/// True for a field of a part that comes, which may be nothing.
bool Merger::comes(std::string_view field, Foundation& source) const {
  const Fields::Value value = Fields::find(field)->get(source);
  const bool isNothing = std::holds_alternative<std::monostate>(value);
  const auto row = rows.find(&source);
  if (row != rows.end() && row->second.blank.has(*Fields::find(field))) return false;
  if (isOfArea(field)) return withArea.count(&source) > 0 || (Parts::hasArea(source) && !isNothing);
  if (isOfLine(field)) return withLine.count(&source) > 0 || (Parts::hasLine(source) && !isNothing);
  return true;
}

void Merger::merge(Document& source) {
  addPlaces(source);
  addParts(source);
  addSheet(source);
  sourceForm = source.getForm();
  taken.clear();
  for (Foundation* foundation : source.getFoundations().getFoundations()) take(*foundation);
}

Foundation* Merger::find(int number) const {
  const auto found = numbers.find(number);
  return found != numbers.end() ? found->second : nullptr;
}

Foundation* Merger::find(const std::string& name) const {
  const auto found = names.find(name);
  return found != names.end() ? found->second : nullptr;
}

void Merger::take(Foundation& source) {
  // The first exchange version has no numbers, and tables may lack one of the two: what both tell
  // says what belongs together.
  const Fields::Field& number = *Fields::find("number");
  const Fields::Field& name = *Fields::find("name");
  const bool hasNumber = tells(source, number) && holds(number);
  const bool hasName = tells(source, name) && holds(name);
  Foundation* const byName = hasName ? find(source.getName()) : nullptr;
  Foundation* const byNumber = hasNumber ? find(source.getNumber()) : nullptr;
  if (!hasNumber || !hasName) {
    if (byName != nullptr || byNumber != nullptr)
      return change(byName != nullptr ? *byName : *byNumber, source);
    const int given = hasNumber ? source.getNumber() : Numbers::findFree(numbers);
    if (!holds(name)) return add(source, given, Spreadsheets::makeDefaultName(given));
    return add(source, given, hasName ? source.getName() : findDefaultName(source.getName()));
  }
  if (byNumber == nullptr && byName == nullptr)
    return add(source, source.getNumber(), source.getName());
  if (byNumber == byName) return change(*byNumber, source);
  for (Foundation* foundation : target.getFoundations())  // of several with the same number or name
    if (foundation->getNumber() == source.getNumber() && foundation->getName() == source.getName())
      return change(*foundation, source);
  resolve(source, byNumber, byName);
}

void Merger::resolve(Foundation& source, Foundation* byNumber, Foundation* byName) {
  switch (rule) {
    case OnClash::rename:
      if (byNumber == nullptr)
        return add(source, source.getNumber(), findFreeName(source.getName()));
      return refuse(source, *byNumber);
    case OnClash::renumber:
      if (byName == nullptr) return add(source, Numbers::findFree(numbers), source.getName());
      return refuse(source, *byName);
    case OnClash::skip:
      leftOut.push_back(makeRefusal(source, "is left out"));
      return;
    case OnClash::replace:
      if (byNumber == nullptr || byName == nullptr)
        return replace(byNumber != nullptr ? *byNumber : *byName, source);
      break;
    case OnClash::refuse:
      break;
  }
  if (byNumber != nullptr) refuse(source, *byNumber);
  if (byName != nullptr) refuse(source, *byName);
}

void Merger::change(Foundation& changed, Foundation& source) {
  if (!taken.insert(&changed).second) return refuse(source, changed);
  for (const Fields::Field& field : Fields::list()) {
    if (isIdentity(field.name) || !tells(source, field)) continue;
    if (!comes(field.name, source)) continue;
    const Fields::Value value = field.get(source);
    if (holds(field))
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
    if (isIdentity(field.name) || holds(field)) continue;
    const Fields::Value value = field.get(source);
    if (Fields::areAlike(value, field.get(none))) continue;
    field.set(*added, field.get(none));
    losses.push_back(Losses::describe(source, {field, value, field.get(none)}));
  }
  places[added.get()] = places[&source];
  taken.insert(added.get());
  numbers.emplace(number, added.get());
  names.emplace(name, added.get());
  target.add(std::move(added));
}

void Merger::replace(Foundation& changed, Foundation& source) {
  change(changed, source);
  if (find(changed.getNumber()) == &changed) numbers.erase(changed.getNumber());
  if (find(changed.getName()) == &changed) names.erase(changed.getName());
  changed.setNumber(source.getNumber());
  changed.setName(source.getName());
  numbers.emplace(changed.getNumber(), &changed);
  names.emplace(changed.getName(), &changed);
}

void Merger::refuse(const Foundation& source, const Foundation& other) {
  const auto& [file, position] = places.at(&other);
  clashes.push_back(
      makeRefusal(source, fmt::format("clashes with {} in {}:{}:{}", Fields::describe(other), file,
                                      position.line, position.column)));
}

Refusal Merger::makeRefusal(const Foundation& source, std::string sentence) const {
  const auto& [file, position] = places.at(&source);
  return {file, position, Fields::describe(source), std::move(sentence)};
}

std::string Merger::findDefaultName(const std::string& name) const {
  return find(name) == nullptr ? name : findFreeName(name);
}

std::string Merger::findFreeName(const std::string& name) const {
  int number = 1;
  while (find(fmt::format("{}_{}", name, number)) != nullptr) ++number;
  return fmt::format("{}_{}", name, number);
}

}  // namespace Comparing
