#include "spreadsheets/json_writer.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <ostream>
#include <string>
#include <variant>

#include <fmt/format.h>

#include "foundations/fields.h"
#include "spreadsheets/json_words.h"
#include "spreadsheets/sheet.h"
#include "text/display_text.h"

namespace Spreadsheets {
namespace {

using Found::Foundation;
using Found::FoundationManager;

void appendText(std::string& json, std::string_view text) {
  json += '"';
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (c == '\n') {
      json += "\\n";
    } else if (static_cast<unsigned char>(c) < 0x20) {
      fmt::format_to(std::back_inserter(json), "\\u{:04x}", static_cast<unsigned>(c));
    } else {
      json += c;
    }
  }
  json += '"';
}

struct Writer {
  void operator()(std::monostate) const { json += "null"; }
  void operator()(bool flag) const { json += flag ? "true" : "false"; }
  void operator()(int number) const { json += std::to_string(number); }
  void operator()(double number) const {
    if (!std::isfinite(number)) return appendText(json, DisplayText::fromNumber(number));
    const std::size_t begin = json.size();
    fmt::format_to(std::back_inserter(json), "{}", number);
    // A number with decimals stays one in languages that have whole numbers besides.
    const bool isWhole = std::none_of(json.begin() + static_cast<std::ptrdiff_t>(begin), json.end(),
                                      [](char c) { return c == '.' || c == 'e'; });
    if (isWhole) json += ".0";
  }
  void operator()(const std::string& text) const { appendText(json, text); }

  std::string& json;
};

void appendFoundation(std::string& json, Foundation& foundation, bool isCurrent) {
  json += "    {\n";
  for (const Fields::Field& field : Fields::list()) {
    json.append("      \"").append(field.name).append("\": ");
    std::visit(Writer{json}, field.get(foundation));
    json += ",\n";
  }
  json.append("      \"").append(currentField).append("\": ").append(isCurrent ? "true" : "false");
  json += "\n    }";
}

void appendUnits(std::string& json, const Units& units) {
  json += "  \"units\": {\n    \"force\": ";
  appendText(json, units.force);
  json += ",\n    \"length\": ";
  appendText(json, units.length);
  json += "\n  },\n";
}

}  // namespace

void writeJson(FoundationManager& manager, const Units& units, std::ostream& out) {
  manager.updateFoundationMaximum();
  std::string json = fmt::format("{{\n  \"{}\": \"{}\",\n  \"{}\": {},\n", formatMember, formatName,
                                 versionMember, formatVersion);
  if (!units.force.empty()) appendUnits(json, units);
  json.append("  \"").append(foundationsMember).append("\": [");
  const char* separator = "\n";
  for (Foundation* foundation : manager.getFoundations()) {
    json += separator;
    separator = ",\n";
    appendFoundation(json, *foundation, foundation == manager.getCurrentFoundation());
    out << json;
    json.clear();
  }
  json += manager.getFoundations().empty() ? "],\n" : "\n  ],\n";
  json.append("  \"").append(maximumMember).append("\": ");
  Writer{json}(manager.getMaxFoundationValue());
  out << json << "\n}\n";
}

}  // namespace Spreadsheets
