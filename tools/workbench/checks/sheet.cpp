#include <cmath>
#include <string>
#include <unordered_map>
#include <variant>

#include <fmt/format.h>

#include "checks/rules.h"
#include "foundations/failures.h"
#include "foundations/fields.h"

namespace Checks {
namespace {

using Fields::Field;
using Found::Foundation;

/// The rows of a table, or of data.
class SheetCheck {
 public:
  explicit SheetCheck(Findings& target) : findings(target) {}

  void check(Foundation& foundation, const Spreadsheets::Origin& origin) {
    here = {origin.line, origin.column};
    checkNumber(foundation);
    checkName(foundation);
    for (const Field& field : Fields::list()) checkField(field, foundation);
  }

 private:
  void checkNumber(const Foundation& foundation) {
    const int number = foundation.getNumber();
    if (number < 1)
      findings.add(
          Rules::numberBelowOne, here,
          fmt::format("the number {} is below 1; exchange documents skip the foundation", number));
    const auto [first, isNew] = numbers.emplace(number, here);
    if (!isNew)
      findings.add(Rules::sameNumber, here,
                   fmt::format("the number {} was given before, {}; both foundations will have it",
                               number, showPlace(first->second, here)));
  }

  void checkName(const Foundation& foundation) {
    const std::string& name = foundation.getName();
    if (name.empty())
      findings.add(Rules::missingName, here,
                   "the name is empty; exchange documents skip the foundation");
    const auto [first, isNew] = names.emplace(name, here);
    if (!isNew && !name.empty())
      findings.add(Rules::sameName, here,
                   fmt::format("the name {} was given before, {}; both foundations will have it",
                               quote(name), showPlace(first->second, here)));
  }

  void checkField(const Field& field, Foundation& foundation) {
    const Fields::Value value = field.get(foundation);
    if (const double* const number = std::get_if<double>(&value)) checkValue(field, *number);
    if (field.type != Fields::Type::failure) return;
    const auto& [tension, none, compression] = Failures::modes;
    if (Failures::find(std::get<std::string>(value)) == nullptr)
      findings.add(
          Rules::unknownFailure, here,
          fmt::format("{} {} is none of {}, {} and {}; it is kept as it is", field.name,
                      std::get<std::string>(value), tension.word, none.word, compression.word));
  }

  void checkValue(const Field& field, double number) {
    if (!std::isfinite(number))
      findings.add(Rules::infiniteValue, here,
                   fmt::format("{} is {}", field.name, Fields::show(number)));
    else if (number < 0.0)
      findings.add(
          Rules::negativeValue, here,
          fmt::format("{} {} is negative; it is read as it is", field.name, Fields::show(number)));
  }

  Findings& findings;
  KvXmlPosition here;
  std::unordered_map<int, KvXmlPosition> numbers;
  std::unordered_map<std::string, KvXmlPosition> names;
};

}  // namespace

void checkSheet(Documents::Document& document, Findings& findings) {
  SheetCheck check(findings);
  const std::vector<Spreadsheets::Origin>& origins = document.getSheet()->origins;
  const std::vector<Foundation*>& foundations = document.getFoundations().getFoundations();
  for (std::size_t i = 0; i < foundations.size(); ++i) check.check(*foundations[i], origins[i]);
}

}  // namespace Checks
