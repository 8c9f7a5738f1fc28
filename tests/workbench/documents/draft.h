#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "documents/editing.h"
#include "foundations/fields.h"

/// What tests do to the foundations of a document.
namespace DraftTest {

using Editing::Draft;
using Found::Foundation;

/// What the tests expect of an edit that changes nothing.
constexpr const char* nothing = "nothing to write";

inline void set(Foundation& foundation, const char* field, const std::string& value) {
  const Fields::Field& found = *Fields::find(field);
  found.set(foundation, Fields::parse(found, value));
}

inline void set(Draft& draft, std::size_t place, const char* field, const std::string& value) {
  set(draft.getCopy(place), field, value);
}

inline void remove(Draft& draft, std::size_t place) { draft.remove(draft.getCopy(place)); }

inline Foundation& add(Draft& draft, int number, const std::string& name) {
  auto foundation = std::make_unique<Foundation>();
  Foundation& added = *foundation;
  added.setNumber(number);
  added.setName(name);
  draft.getFoundations().add(std::move(foundation));
  return added;
}

using Change = std::function<void(Draft&)>;

/// The bytes of a document after the change.
inline std::string edit(const std::string& bytes, const Change& change,
                        const std::optional<std::string>& version = std::nullopt) {
  Documents::Document base({"file", "", bytes}, {version, {}, {}});
  Draft draft(base);
  change(draft);
  const auto result = Editing::edit(base, draft.makeWish());
  return result != nullptr ? result->getContent().bytes : nothing;
}

}  // namespace DraftTest
