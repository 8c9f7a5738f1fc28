#include "foundations/units.h"

bool operator==(const Units& a, const Units& b) {
  return a.force == b.force && a.length == b.length;
}

bool operator!=(const Units& a, const Units& b) { return !(a == b); }

namespace UnitNames {
namespace {

std::string makeName(const Units& units, const char* power) {
  return units.force.empty() ? "" : units.force + "/" + units.length + power;
}

}  // namespace

std::string ofArea(const Units& units) { return makeName(units, "\xC2\xB3"); }

std::string ofLine(const Units& units) { return makeName(units, "\xC2\xB2"); }

std::string ofRotation(const Units& units) {
  if (units.force.empty()) return "";
  const std::string times = units.length.size() > 1 ? "\xC2\xB7" : "";  // a dot, as in lbf·ft
  return units.force + times + units.length + "/" + units.length + "/rad";
}

}  // namespace UnitNames
