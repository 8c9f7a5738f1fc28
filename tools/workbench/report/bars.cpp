#include "report/bars.h"

#include <algorithm>
#include <cmath>

#include "foundations/parts.h"

namespace Report {
using Found::Foundation;

std::vector<Direction> listDirections(Part part, const Units& units) {
  if (part == Part::none) return {};
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
  if (part == Part::none) return {};
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
  if (part == Part::area) return Parts::hasArea(foundation);
  if (part == Part::line) return Parts::hasLine(foundation);
  return !Parts::hasArea(foundation) && !Parts::hasLine(foundation);
}

std::size_t countWith(const std::vector<Foundation*>& foundations, Part part) {
  return static_cast<std::size_t>(
      std::count_if(foundations.begin(), foundations.end(),
                    [part](Foundation* foundation) { return hasPart(part, *foundation); }));
}

double getFactor(Part part, const Foundation& foundation) {
  return part == Part::area ? foundation.getFactorArea() : foundation.getFactorLine();
}

const char* getName(Part part) {
  if (part == Part::none) return "none";
  return part == Part::area ? "area" : "line";
}

bool isDrawable(const Bar& bar) {
  return bar.isPresent && bar.value != 0.0 && !isBeyond(bar.value);
}

bool isBeyond(const Bar& bar) { return bar.isPresent && isBeyond(bar.value); }

bool isBeyond(double value) { return !(value >= 0.0) || std::isinf(value); }

}  // namespace Report
