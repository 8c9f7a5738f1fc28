#include "models/assigning.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include <fmt/format.h>

#include "files/user_error.h"
#include "spreadsheets/names.h"
#include "text/display_text.h"
#include "text/wording.h"

namespace Assigning {
namespace {

using Found::Foundation;

bool sets(const std::vector<Change>& changes, Fields::Type type) {
  return std::any_of(changes.begin(), changes.end(),
                     [type](const Change& change) { return change.field.type == type; });
}

[[noreturn]] void failAtTaken(const std::string& what, const std::string& holder) {
  throw UserError(fmt::format("{} is taken by {}; {}", what, holder, Wording::get().nothing));
}

}  // namespace

Change read(const std::string& field, const std::string& text) {
  if (field == "current") throw UserError("which foundation is current cannot be set");
  const Fields::Field* const known = Fields::find(field);
  if (known == nullptr) throw UserError(Spreadsheets::describeUnknown("field", field));
  try {
    return {*known, Fields::parse(*known, text)};
  } catch (const std::invalid_argument& error) {
    throw UserError(field + " cannot be \"" + DisplayText::fromName(text) + "\", only " +
                    error.what());
  }
}

void apply(const std::vector<Change>& changes, Foundation& foundation) {
  for (const Change& change : changes) change.field.set(foundation, change.value);
}

void requireNumbers(Documents::Form form, const std::string& shownPath,
                    const std::vector<Change>& changes) {
  if (form == Documents::Form::firstExchange && sets(changes, Fields::Type::integer))
    throw UserError(shownPath + ": documents of version 1.0 have no numbers that could be set");
}

void requireUnique(const Found::FoundationManager& manager,
                   const std::set<const Foundation*>& changed, const std::vector<Change>& changes) {
  const bool setsNumber = sets(changes, Fields::Type::integer);
  const bool setsName = sets(changes, Fields::Type::text);
  if (!setsNumber && !setsName) return;
  std::multiset<int> numbers;
  std::multiset<std::string_view> names;
  for (const Foundation* foundation : changed) {
    if (setsNumber) numbers.insert(foundation->getNumber());
    if (setsName) names.insert(foundation->getName());
  }
  for (const Foundation* foundation : manager.getFoundations()) {
    const std::size_t own = changed.count(foundation);  // it does not take these from itself
    const int number = foundation->getNumber();
    const std::string& name = foundation->getName();
    if (numbers.count(number) > own)
      failAtTaken(fmt::format("number {}", number), '"' + DisplayText::fromName(name) + '"');
    if (names.count(name) > own)
      failAtTaken(fmt::format("the name \"{}\"", DisplayText::fromName(name)),
                  fmt::format("number {}", number));
  }
}

}  // namespace Assigning
