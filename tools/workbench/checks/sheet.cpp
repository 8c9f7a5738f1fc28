#include <cmath>
#include <string>
#include <unordered_map>
#include <utility>
#include <variant>

#include <fmt/format.h>

#include "checks/rules.h"
#include "foundations/failures.h"
#include "foundations/fields.h"
#include "spreadsheets/places.h"

namespace Checks {
namespace {

using Fields::Field;
using Found::Foundation;
using Spreadsheets::Origin;

/// The rows of a table, or of data.
class SheetCheck {
 public:
  SheetCheck(const Documents::Document& checked, Findings& target)
      : document(checked), findings(target) {}

  void check(Foundation& foundation, const Origin& origin) {
    here = &origin;
    checkNumber(foundation);
    checkName(foundation);
    for (const Field& field : Fields::list()) checkField(field, foundation);
  }

 private:
  void checkNumber(const Foundation& foundation) {
    const int number = foundation.getNumber();
    if (number < 1)
      add(Rules::numberBelowOne, numberField,
          fmt::format("the number {} is below 1; exchange documents skip the foundation", number));
    const auto [first, isNew] = numbers.emplace(number, here);
    if (!isNew)
      add(Rules::sameNumber, numberField,
          fmt::format("the number {} was given before, {}; both foundations will have it", number,
                      showFirst(numberField, *first->second)));
  }

  void checkName(const Foundation& foundation) {
    const std::string& name = foundation.getName();
    if (name.empty())
      add(Rules::missingName, nameField,
          "the name is empty; exchange documents skip the foundation");
    const auto [first, isNew] = names.emplace(name, here);
    if (!isNew && !name.empty())
      add(Rules::sameName, nameField,
          fmt::format("the name {} was given before, {}; both foundations will have it",
                      quote(name), showFirst(nameField, *first->second)));
  }

  void checkField(const Field& field, Foundation& foundation) {
    const Fields::Value value = field.get(foundation);
    if (const double* const number = std::get_if<double>(&value)) checkValue(field, *number);
    if (field.type != Fields::Type::failure) return;
    const auto& [tension, none, compression] = Failures::modes;
    if (Failures::find(std::get<std::string>(value)) == nullptr)
      add(Rules::unknownFailure, field,
          fmt::format("{} {} is none of {}, {} and {}; it is kept as it is", field.name,
                      std::get<std::string>(value), tension.word, none.word, compression.word));
  }

  void checkValue(const Field& field, double number) {
    if (!std::isfinite(number))
      add(Rules::infiniteValue, field, fmt::format("{} is {}", field.name, Fields::show(number)));
    else if (number < 0.0)
      add(Rules::negativeValue, field,
          fmt::format("{} {} is negative; it is read as it is", field.name, Fields::show(number)));
  }

  /// About a field of the foundation at hand.
  void add(const Rule& rule, const Field& field, std::string sentence) {
    findings.add(rule, locate(field, *here), std::move(sentence), {here->line, here->column});
  }

  std::string showFirst(const Field& field, const Origin& first) const {
    return showPlace(locate(field, first), locate(field, *here));
  }

  KvXmlPosition locate(const Field& field, const Origin& origin) const {
    return Spreadsheets::locate(field, origin, *document.getSheet(), document.getContent().bytes);
  }

  const Documents::Document& document;
  Findings& findings;
  const Field& numberField = *Fields::find("number");
  const Field& nameField = *Fields::find("name");
  const Origin* here = nullptr;                    // of the foundation at hand
  std::unordered_map<int, const Origin*> numbers;  // the first of each
  std::unordered_map<std::string, const Origin*> names;
};

}  // namespace

void checkSheet(Documents::Document& document, Findings& findings) {
  SheetCheck check(document, findings);
  const std::vector<Origin>& origins = document.getSheet()->origins;
  const std::vector<Foundation*>& foundations = document.getFoundations().getFoundations();
  for (std::size_t i = 0; i < foundations.size(); ++i) check.check(*foundations[i], origins[i]);
}

}  // namespace Checks
