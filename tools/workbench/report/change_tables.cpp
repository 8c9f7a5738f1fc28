#include "report/change_tables.h"

#include <cctype>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include <fmt/format.h>

#include "foundations/failures.h"
#include "report/descriptions.h"
#include "report/ratio.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Comparing::Difference;
using Fields::Type;
using Found::Foundation;

Entry makeEntry(const Foundation& foundation) {
  return {std::to_string(foundation.getNumber()), showName(foundation.getName()), {}};
}

/// "line rotation x" for lineRotationX, "fails in line x" for lineFailureX.
std::string nameField(const Fields::Field& field) {
  std::string words;
  for (const char c : std::string_view(field.name)) {
    const auto letter = static_cast<unsigned char>(c);
    if (std::isupper(letter) != 0) words += ' ';
    words += static_cast<char>(std::tolower(letter));
  }
  if (field.type != Type::failure) return words;
  const std::string failure = " failure";
  return "fails in " + words.erase(words.find(failure), failure.size());
}

std::string nameUnit(const Fields::Field& field, const Units& units) {
  if (field.type != Type::stiffness) return "";
  const std::string_view name = field.name;
  if (name == "lineRotationX") return UnitNames::ofRotation(units);
  return name.substr(0, 4) == "area" ? UnitNames::ofArea(units) : UnitNames::ofLine(units);
}

Cell makeCell(const Fields::Field& field, const Fields::Value& value) {
  if (std::holds_alternative<std::monostate>(value)) return {absent};
  const std::string* const text = std::get_if<std::string>(&value);
  if (text == nullptr) return {Fields::show(value)};
  if (field.type == Type::text) return {showName(*text), Kind::name};
  return {(Failures::find(*text) != nullptr ? "" : "mode ") + *text, Kind::words};
}

std::vector<Cell> makeRow(const Fields::Difference& change, const Units& units) {
  const std::optional<double> ratio = findRatio(change);
  return {{nameField(change.field), Kind::words},
          {nameUnit(change.field, units), Kind::words},
          makeCell(change.field, change.first),
          makeCell(change.field, change.second),
          {ratio ? showRatio(*ratio) : "", Kind::number, ratio}};
}

void addColumns(Part part, const Units& units, std::vector<Column>& columns) {
  const std::string name = part == Part::area ? "Area " : "Line ";
  for (const Direction& direction : listDirections(part, units))
    columns.push_back({name + direction.name, direction.unit, Kind::number, true});
  columns.push_back({name + "fails", "", Kind::words, true, false, "none"});
  columns.push_back({name + "factor", "", Kind::number, true, false, "0"});
}

void addCells(Part part, Foundation& foundation, std::vector<Cell>& cells) {
  const std::vector<Direction> directions = listDirections(part, {});
  const std::vector<Bar> bars = listBars(part, foundation);
  const bool isThere = hasPart(part, foundation);
  for (const Bar& bar : bars)
    cells.push_back({isThere && bar.isPresent ? DisplayText::fromNumber(bar.value) : absent});
  cells.push_back({isThere ? describeFailures(directions, bars) : absent, Kind::words});
  cells.push_back({isThere ? DisplayText::fromNumber(getFactor(part, foundation)) : absent});
}

}  // namespace

Listing listChanged(const std::vector<Difference>& changed, const Units& units) {
  Listing listing;
  listing.label = "Changed";
  listing.columns = {{"Field", "", Kind::words},
                     {"Unit", "", Kind::words, true},
                     {"Before", ""},
                     {"After", ""},
                     {"Ratio", "", Kind::number, true, true}};
  for (const Difference& difference : changed) {
    Entry& entry = listing.entries.emplace_back(makeEntry(*difference.pair.first));
    for (const Fields::Difference& change : difference.fields)
      entry.rows.push_back(makeRow(change, units));
  }
  return listing;
}

Listing listWhole(const std::string& label, const std::vector<Foundation*>& foundations,
                  const Foundation* current, const std::vector<Part>& parts, const Units& units) {
  Listing listing;
  listing.label = label;
  listing.columns.push_back({"Marks", "", Kind::words, true});
  for (const Part part : parts) addColumns(part, units, listing.columns);
  for (Foundation* const foundation : foundations) {
    std::vector<Cell> cells = {
        {listMarks(foundation == current, foundation->isGenerated()), Kind::words}};
    for (const Part part : parts) addCells(part, *foundation, cells);
    listing.entries.emplace_back(makeEntry(*foundation)).rows.push_back(std::move(cells));
  }
  return listing;
}

}  // namespace Report
