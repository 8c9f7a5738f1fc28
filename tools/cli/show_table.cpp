#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

#include "foundations/failures.h"
#include "foundations/parts.h"
#include "show_formats.h"
#include "table.h"
#include "text/display_text.h"

namespace {

using DisplayText::fromNumber;
using Found::Foundation;
using Cells = std::vector<std::string>;

constexpr std::size_t leastName = 20;

const std::vector<std::string> legend = {"* current", "gen generated", "T fails in tension",
                                         "C fails in compression", "- none"};

std::string showComponent(bool isPresent, double value) {
  return isPresent ? fromNumber(value) : "-";
}

/// One direction that fails, such as "zT"; empty when it does not.
std::string showFailure(char direction, Foundation::Failure failure) {
  if (failure == Foundation::None) return "";
  const Failures::Mode* const mode = Failures::find(failure);
  return direction + (mode != nullptr ? std::string(1, mode->letter) : Failures::getWord(failure));
}

std::string join(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts)
    if (!part.empty()) text += (text.empty() ? "" : " ") + part;
  return text.empty() ? "-" : text;
}

Table makeTable() {
  constexpr auto left = Table::Align::left;
  constexpr auto right = Table::Align::right;
  return Table({{"", left, true},
                {"No", right, true},
                {"Name", left, true, leastName},
                {"Gen", left, true},
                {"Part", left, true},
                {"x", right},
                {"y", right},
                {"z", right},
                {"rot x", right},
                {"Fails", left},
                {"Factor", right}});
}

/// The cells from "Part" on.
Cells makeAreaCells(Foundation& foundation) {
  KvVector3D area;
  const bool isPresent = foundation.getDispArea(area);
  return {"area",
          showComponent(isPresent, area.x),
          showComponent(isPresent, area.y),
          showComponent(isPresent, area.z),
          "-",
          join({showFailure('z', foundation.getFailAreaZ())}),
          fromNumber(foundation.getFactorArea())};
}

Cells makeLineCells(Foundation& foundation) {
  KvVector3D line;
  KvVector3D rotation;
  const bool isPresent = foundation.getDispLine(line);
  const bool hasRotation = foundation.getRotLine(rotation);
  return {"line",
          showComponent(isPresent, line.x),
          showComponent(isPresent, line.y),
          showComponent(isPresent, line.z),
          showComponent(hasRotation, rotation.x),
          join({showFailure('x', foundation.getFailLineX()),
                showFailure('y', foundation.getFailLineY()),
                showFailure('z', foundation.getFailLineZ())}),
          fromNumber(foundation.getFactorLine())};
}

std::vector<Cells> listParts(Foundation& foundation) {
  std::vector<Cells> parts;
  if (Parts::hasArea(foundation)) parts.push_back(makeAreaCells(foundation));
  if (Parts::hasLine(foundation)) parts.push_back(makeLineCells(foundation));
  if (parts.empty()) parts.emplace_back(7, "-");
  return parts;
}

void addRows(Table& table, Foundation& foundation, bool isCurrent) {
  Cells keys = {isCurrent ? "*" : "", std::to_string(foundation.getNumber()),
                DisplayText::fromName(foundation.getName()), foundation.isGenerated() ? "gen" : ""};
  for (const Cells& part : listParts(foundation)) {
    Cells cells = keys;
    cells.insert(cells.end(), part.begin(), part.end());
    table.addRow(cells, isCurrent ? Terminal::Style::bold : Terminal::Style::plain);
    keys.assign(keys.size(), "");  // the second part does not repeat them
  }
}

/// Below the table, since areas and lines share its columns.
std::vector<std::string> listUnits(const Units& units) {
  std::vector<std::string> list = {"area in " + UnitNames::ofArea(units),
                                   "line in " + UnitNames::ofLine(units),
                                   "rot x in " + UnitNames::ofRotation(units)};
  for (std::string& item : list) item = DisplayText::fromName(item);
  return list;
}

}  // namespace

void ShowFormats::printTable(const Found::FoundationManager& manager, const Units& units,
                             std::ostream& out, std::size_t width,
                             const Terminal::Painter& painter) {
  const std::vector<Foundation*>& foundations = manager.getFoundations();
  if (!foundations.empty()) {
    Table table = makeTable();
    for (Foundation* foundation : foundations)
      addRows(table, *foundation, foundation == manager.getCurrentFoundation());
    table.print(out, width, painter);
    out << '\n' << DisplayText::wrap(legend, "   ", width) << '\n';
    if (!units.force.empty()) out << DisplayText::wrap(listUnits(units), "   ", width) << '\n';
  }
  out << foundations.size() << (foundations.size() == 1 ? " foundation" : " foundations")
      << ", largest stiffness " << fromNumber(manager.getMaxFoundationValue()) << '\n';
}
