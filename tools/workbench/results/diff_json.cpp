#include "results/diff_json.h"

#include <utility>
#include <variant>

#include "results/json.h"

namespace Results {
namespace {

using Comparing::Difference;
using Found::Foundation;

constexpr int version = 1;  // changes when names do

/// Null for none.
Json makeIdentity(const Foundation* foundation) {
  if (foundation == nullptr) return nullptr;
  return {{"number", foundation->getNumber()}, {"name", foundation->getName()}};
}

Json makeField(const char* name, Json before, Json after) {
  return {{"field", name}, {"before", std::move(before)}, {"after", std::move(after)}};
}

/// All that a foundation holds that came, or went.
Json listFields(Foundation& foundation, bool isNew) {
  Json fields = Json::array();
  for (const Fields::Field& field : Fields::list()) {
    const Fields::Value value = field.get(foundation);
    if (std::holds_alternative<std::monostate>(value)) continue;
    Json there = toJson(value);
    fields.push_back(isNew ? makeField(field.name, nullptr, std::move(there))
                           : makeField(field.name, std::move(there), nullptr));
  }
  return fields;
}

Json listFields(const Difference& difference) {
  const auto [first, second] = difference.pair;
  if (first == nullptr) return listFields(*second, true);
  if (second == nullptr) return listFields(*first, false);
  Json fields = Json::array();
  for (const Fields::Difference& field : difference.fields)
    fields.push_back(makeField(field.field.name, toJson(field.first), toJson(field.second)));
  return fields;
}

Json makeDifference(const Difference& difference) {
  const auto [first, second] = difference.pair;
  Json json;
  json["change"] = first == nullptr ? "added" : second == nullptr ? "removed" : "changed";
  json["before"] = makeIdentity(first);
  json["after"] = makeIdentity(second);
  json["fields"] = listFields(difference);
  return json;
}

Json makeCurrent(Documents::Document& document) {
  return makeIdentity(document.getFoundations().getCurrentFoundation());
}

}  // namespace

std::string makeDiffJson(Documents::Document& first, Documents::Document& second,
                         const Comparing::Differences& differences, bool isComplete) {
  Json changes = Json::array();
  for (const Difference& difference : differences.foundations)
    changes.push_back(makeDifference(difference));
  Json json;
  json["format"] = "kvfound-diff";
  json["version"] = version;
  json["before"] = first.getShownPath();
  json["after"] = second.getShownPath();
  json["alike"] = differences.isEmpty();
  json["complete"] = isComplete;
  json["differences"] = std::move(changes);
  json["current"] = {{"changed", !differences.isCurrentSame},
                     {"before", makeCurrent(first)},
                     {"after", makeCurrent(second)}};
  return print(json);
}

}  // namespace Results
