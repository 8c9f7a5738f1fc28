#include "report/bars.h"

#include <cmath>

#include "foundations/parts.h"

namespace Report {
namespace {

using Found::Foundation;

std::string makeUnit(const Units& units, const std::string& perLength) {
  return units.force.empty() ? "" : units.force + "/" + units.length + perLength;
}

/// Moment by length and radian, such as kNm/m/rad.
std::string makeRotationUnit(const Units& units) {
  if (units.force.empty()) return "";
  const std::string times = units.length.size() > 1 ? "\xC2\xB7" : "";  // a dot, as in lbf·ft
  return units.force + times + units.length + "/" + units.length + "/rad";
}

}  // namespace

std::vector<Direction> listDirections(Part part, const Units& units) {
  if (part == Part::area) {
    const std::string unit = makeUnit(units, "\xC2\xB3");  // cubed
    return {{"x", unit, false}, {"y", unit, false}, {"z", unit, false}};
  }
  const std::string unit = makeUnit(units, "\xC2\xB2");  // squared
  return {{"x", unit, false},
          {"y", unit, false},
          {"z", unit, false},
          {"rotation x", makeRotationUnit(units), true}};
}

std::vector<Bar> listBars(Part part, Foundation& foundation) {
  KvVector3D moved;
  if (part == Part::area) {
    const bool isPresent = foundation.getDispArea(moved);
    return {{isPresent, moved.x, Foundation::None},
            {isPresent, moved.y, Foundation::None},
            {isPresent, moved.z, foundation.getFailAreaZ()}};
  }
  KvVector3D turned;
  const bool isPresent = foundation.getDispLine(moved);
  const bool hasRotation = foundation.getRotLine(turned);
  return {{isPresent, moved.x, foundation.getFailLineX()},
          {isPresent, moved.y, foundation.getFailLineY()},
          {isPresent, moved.z, foundation.getFailLineZ()},
          {hasRotation, turned.x, Foundation::None}};
}

bool hasPart(Part part, Foundation& foundation) {
  return part == Part::area ? Parts::hasArea(foundation) : Parts::hasLine(foundation);
}

const char* getName(Part part) { return part == Part::area ? "area" : "line"; }

bool isDrawable(const Bar& bar) {
  return bar.isPresent && bar.value > 0.0 && std::isfinite(bar.value);
}

bool isBeyond(const Bar& bar) { return bar.isPresent && bar.value != 0.0 && !isDrawable(bar); }

}  // namespace Report
