#include <cmath>
#include <iomanip>
#include <ostream>
#include <string>
#include <variant>

#include <nlohmann/json.hpp>

#include "foundations/fields.h"
#include "show_formats.h"
#include "text/display_text.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;
using Json = nlohmann::ordered_json;

constexpr const char* currentField = "current";

/// JSON has no way to write an infinity or what is not a number.
Json toJson(double number) {
  return std::isfinite(number) ? Json(number) : Json(DisplayText::fromNumber(number));
}

struct JsonMaker {
  Json operator()(std::monostate) const { return nullptr; }
  Json operator()(bool flag) const { return flag; }
  Json operator()(int number) const { return number; }
  Json operator()(double number) const { return toJson(number); }
  Json operator()(const std::string& text) const { return text; }
};

std::string quote(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == text.npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

struct CsvMaker {
  std::string operator()(std::monostate) const { return ""; }
  std::string operator()(bool flag) const { return flag ? "true" : "false"; }
  std::string operator()(int number) const { return std::to_string(number); }
  std::string operator()(double number) const { return DisplayText::fromNumber(number); }
  std::string operator()(const std::string& text) const { return quote(text); }
};

}  // namespace

void ShowFormats::printJson(const FoundationManager& manager, std::ostream& out) {
  Json foundations = Json::array();
  for (Foundation* foundation : manager.getFoundations()) {
    Json object;
    for (const Fields::Field& field : Fields::list())
      object[field.name] = std::visit(JsonMaker(), field.get(*foundation));
    object[currentField] = foundation == manager.getCurrentFoundation();
    foundations.push_back(std::move(object));
  }
  Json document;
  document["foundations"] = std::move(foundations);
  document["maximum"] = toJson(manager.getMaxFoundationValue());
  out << std::setw(2) << document << '\n';  // indented by two places
}

void ShowFormats::printCsv(const FoundationManager& manager, std::ostream& out) {
  for (const Fields::Field& field : Fields::list()) out << field.name << ',';
  out << currentField << '\n';
  for (Foundation* foundation : manager.getFoundations()) {
    for (const Fields::Field& field : Fields::list())
      out << std::visit(CsvMaker(), field.get(*foundation)) << ',';
    out << CsvMaker()(foundation == manager.getCurrentFoundation()) << '\n';
  }
}
