#include "spreadsheets/places.h"

#include <algorithm>
#include <optional>

#include "spreadsheets/rows.h"

namespace Spreadsheets {
namespace {

/// Behind the text that starts with the quotation mark at `quote`.
std::size_t findTextEnd(std::string_view json, std::size_t quote) {
  std::size_t place = json.find_first_of("\"\\", quote + 1);
  while (json[place] == '\\') place = json.find_first_of("\"\\", place + 2);
  return place + 1;
}

/// The name of a member in an object that holds no others.
std::optional<std::size_t> findMember(std::string_view object, std::string_view name) {
  std::size_t place = object.find_first_of("\"}");
  while (object[place] == '"') {
    const std::size_t end = findTextEnd(object, place);
    const bool isName = object[object.find_first_not_of(" \t\r\n", end)] == ':';
    if (isName && object.substr(place + 1, end - place - 2) == name) return place;
    place = object.find_first_of("\"}", end);
  }
  return std::nullopt;
}

KvXmlPosition advance(KvXmlPosition from, std::string_view passed) {
  const std::size_t lastEnd = passed.rfind('\n');
  if (lastEnd == passed.npos) return {from.line, from.column + passed.size()};
  const auto lines = std::count(passed.begin(), passed.end(), '\n');
  return {from.line + static_cast<std::size_t>(lines), passed.size() - lastEnd};
}

}  // namespace

KvXmlPosition locate(const Fields::Field& field, const Origin& origin, const Sheet& sheet,
                     std::string_view bytes) {
  const KvXmlPosition whole{origin.line, origin.column};
  if (!origin.told.has(field)) return whole;
  const std::string_view text = bytes.substr(origin.begin);
  if (sheet.columns.empty()) {
    const std::optional<std::size_t> member = findMember(text, field.name);
    return member ? advance(whole, text.substr(0, *member)) : whole;
  }
  const auto column =
      std::find_if(sheet.columns.begin(), sheet.columns.end(),
                   [&field](const Column& candidate) { return candidate.field == &field; });
  return locateCell(text.substr(0, origin.end - origin.begin), origin.line,
                    *sheet.dialect.separator,
                    static_cast<std::size_t>(column - sheet.columns.begin()));
}

}  // namespace Spreadsheets
