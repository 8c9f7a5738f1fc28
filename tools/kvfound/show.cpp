#include "show.h"

#include <initializer_list>
#include <ostream>

#include "display_text.h"
#include "documents.h"
#include "found/foundation_manager.h"
#include "table.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;

constexpr std::size_t longestName = 60;  // one long name must not stretch every row

std::string showComponent(bool isPresent, double value) {
  return isPresent ? DisplayText::fromNumber(value) : "-";
}

/// One direction that fails, such as "zT"; empty when it does not.
std::string showFailure(char direction, Foundation::Failure failure) {
  switch (failure) {
    case Foundation::None:
      return "";
    case Foundation::Tension:
      return {direction, 'T'};
    case Foundation::Compression:
      return {direction, 'C'};
  }
  return direction + std::to_string(static_cast<int>(failure));  // a document may hold any number
}

std::string join(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts)
    if (!part.empty()) text += (text.empty() ? "" : " ") + part;
  return text.empty() ? "-" : text;
}

Table makeTable() {
  constexpr auto right = Table::Align::right;
  return Table({{"", "", {}},
                {"", "No", right},
                {"", "Name", {}},
                {"", "Gen", {}},
                {"Area", "x", right},
                {"Area", "y", right},
                {"Area", "z", right},
                {"Area", "Fails", {}},
                {"Area", "Factor", right},
                {"Line", "x", right},
                {"Line", "y", right},
                {"Line", "z", right},
                {"Line", "rot x", right},
                {"Line", "Fails", {}},
                {"Line", "Factor", right}});
}

void addRow(Table& table, Foundation& foundation, bool isCurrent) {
  KvVector3D area;
  KvVector3D line;
  KvVector3D rotation;
  const bool hasArea = foundation.getDispArea(area);
  const bool hasLine = foundation.getDispLine(line);
  const bool hasRotation = foundation.getRotLine(rotation);
  table.addRow({isCurrent ? "*" : "", std::to_string(foundation.getNumber()),
                DisplayText::shorten(DisplayText::fromName(foundation.getName()), longestName),
                foundation.isGenerated() ? "gen" : "", showComponent(hasArea, area.x),
                showComponent(hasArea, area.y), showComponent(hasArea, area.z),
                join({showFailure('z', foundation.getFailAreaZ())}),
                DisplayText::fromNumber(foundation.getFactorArea()), showComponent(hasLine, line.x),
                showComponent(hasLine, line.y), showComponent(hasLine, line.z),
                showComponent(hasRotation, rotation.x),
                join({showFailure('x', foundation.getFailLineX()),
                      showFailure('y', foundation.getFailLineY()),
                      showFailure('z', foundation.getFailLineZ())}),
                DisplayText::fromNumber(foundation.getFactorLine())});
}

}  // namespace

void show(const std::string& path, const std::optional<std::string>& version, std::ostream& out,
          std::ostream& notes) {
  FoundationManager manager;
  Documents::read(path, version, manager, notes);
  manager.updateFoundationMaximum();
  const std::vector<Foundation*>& foundations = manager.getFoundations();
  if (!foundations.empty()) {
    Table table = makeTable();
    for (Foundation* foundation : foundations)
      addRow(table, *foundation, foundation == manager.getCurrentFoundation());
    table.print(out);
    out << "\n* current   gen generated   T fails in tension   C fails in compression   - none\n";
  }
  out << foundations.size() << (foundations.size() == 1 ? " foundation" : " foundations")
      << ", largest stiffness " << DisplayText::fromNumber(manager.getMaxFoundationValue()) << "\n";
}
