#include "columns.h"

#include <string_view>
#include <variant>

#include "files/user_error.h"
#include "report/text.h"
#include "spreadsheets/names.h"

namespace Engine {
namespace {

constexpr const char* area = "Area";
constexpr const char* line = "Line";

struct Named {
  std::string_view field;
  Heading heading;
};

constexpr Named headings[] = {{"number", {"", "No"}},
                              {"name", {"", "Name"}},
                              {"generated", {"", "Generated"}},
                              {"areaX", {area, "x"}},
                              {"areaY", {area, "y"}},
                              {"areaZ", {area, "z"}},
                              {"areaFailureZ", {area, "fails z"}},
                              {"areaFactor", {area, "factor"}},
                              {"lineX", {line, "x"}},
                              {"lineY", {line, "y"}},
                              {"lineZ", {line, "z"}},
                              {"lineRotationX", {line, "rotation x"}},
                              {"lineFailureX", {line, "fails x"}},
                              {"lineFailureY", {line, "fails y"}},
                              {"lineFailureZ", {line, "fails z"}},
                              {"lineFactor", {line, "factor"}}};

}  // namespace

Heading getHeading(const Fields::Field& field) {
  for (const Named& named : headings)
    if (named.field == field.name) return named.heading;
  return {"", field.name};
}

std::string nameField(const Fields::Field& field) {
  const auto [group, label] = getHeading(field);
  return *group == '\0' ? label : std::string(group) + " " + label;
}

std::string nameUnit(const Fields::Field& field, const Units& units) {
  if (field.type != Fields::Type::stiffness) return "";
  const Units shown = Report::showUnits(units);
  const std::string_view name = field.name;
  if (name == "lineRotationX") return UnitNames::ofRotation(shown);
  return name.substr(0, 4) == "area" ? UnitNames::ofArea(shown) : UnitNames::ofLine(shown);
}

const Fields::Field& getField(const std::string& key) {
  const Fields::Field* const field = Fields::find(key);
  if (field == nullptr) throw UserError(Spreadsheets::describeUnknown("field", key));
  return *field;
}

std::string spell(const Fields::Value& value) {
  if (std::holds_alternative<std::monostate>(value)) return "";
  const std::string* const text = std::get_if<std::string>(&value);
  return text != nullptr ? *text : Fields::show(value);
}

}  // namespace Engine
