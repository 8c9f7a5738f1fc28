#include "foundations/conversion.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "text/display_text.h"
#include "text/near_name.h"

namespace Scaling {
namespace {

struct Unit {
  const char* name;
  Decimal size;
};

using Table = std::vector<Unit>;

const Table& listForces() {
  static const auto& forces = *new const Table{{"N", {1, 0}},  // of which the others are so many
                                               {"kN", {1, 3}},
                                               {"MN", {1, 6}},
                                               {"lbf", {44482216152605, -13}},
                                               {"kip", {44482216152605, -10}}};
  return forces;
}

const Table& listLengths() {
  static const auto& lengths = *new const Table{
      {"m", {1, 0}},  // of which the others are so many
      {"dm", {1, -1}}, {"cm", {1, -2}}, {"mm", {1, -3}}, {"ft", {3048, -4}}, {"in", {254, -4}}};
  return lengths;
}

char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string toLower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return toLower(c); });
  return text;
}

std::optional<std::string> findNear(const std::string& name,
                                    const std::vector<std::string>& names) {
  for (const std::string& known : names)
    if (toLower(known) == toLower(name)) return known;
  return findNearName(name, names);
}

const Decimal& findSize(const Table& table, const char* kind, const std::string& name) {
  std::vector<std::string> names;
  for (const Unit& unit : table) {
    if (unit.name == name) return unit.size;
    names.emplace_back(unit.name);
  }
  const std::optional<std::string> near = findNear(name, names);
  throw std::invalid_argument(fmt::format(
      "there is no unit of {} \"{}\"; {}", kind, DisplayText::fromName(name),
      near ? "did you mean " + *near + "?" : fmt::format("there are {}", fmt::join(names, ", "))));
}

/// What stands before and behind the only `mark`.
std::pair<std::string, std::string> cut(std::string_view text, char mark) {
  const std::size_t place = text.find(mark);
  if (place == text.npos || text.find(mark, place + 1) != text.npos)
    throw std::invalid_argument("it takes units of force and length such as kN,m:N,mm");
  return {std::string(text.substr(0, place)), std::string(text.substr(place + 1))};
}

Units readUnits(const std::string& text) {
  auto [force, length] = cut(text, ',');
  return {force, length};
}

}  // namespace

Conversion readConversion(std::string_view text) {
  const auto [before, after] = cut(text, ':');
  const Units from = readUnits(before);
  const Units to = readUnits(after);
  const auto makeRatio = [](const Table& table, const char* kind, const std::string& old,
                            const std::string& now) {
    return Ratio{findSize(table, kind, old), findSize(table, kind, now)};
  };
  return {makeRatio(listForces(), "force", from.force, to.force),
          makeRatio(listLengths(), "length", from.length, to.length), from, to};
}

}  // namespace Scaling
