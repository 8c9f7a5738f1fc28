#include "report/bars.h"

#include <cmath>

#include "foundations/parts.h"

namespace Report {
using Found::Foundation;

std::vector<Direction> listDirections(Part part, const Units& units) {
  if (part == Part::area) {
    const std::string unit = UnitNames::ofArea(units);
    return {{"x", unit, false}, {"y", unit, false}, {"z", unit, false}};
  }
  const std::string unit = UnitNames::ofLine(units);
  return {{"x", unit, false},
          {"y", unit, false},
          {"z", unit, false},
          {"rotation x", UnitNames::ofRotation(units), true}};
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
