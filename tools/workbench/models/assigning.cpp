#include "models/assigning.h"

#include <algorithm>
#include <stdexcept>

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
  for (const Foundation* foundation : manager.getFoundations())
    for (const Foundation* other : changed) {
      if (foundation == other) continue;
      if (setsNumber && foundation->getNumber() == other->getNumber())
        failAtTaken(fmt::format("number {}", other->getNumber()),
                    '"' + DisplayText::fromName(foundation->getName()) + '"');
      if (setsName && foundation->getName() == other->getName())
        failAtTaken(fmt::format("the name \"{}\"", DisplayText::fromName(other->getName())),
                    fmt::format("number {}", foundation->getNumber()));
    }
}

}  // namespace Assigning
