#pragma once

#include <string>

/// How the units of stiffness are called. Both empty where nothing tells them.
struct Units {
  std::string force;   // such as kN
  std::string length;  // such as m
};

bool operator==(const Units& a, const Units& b);
bool operator!=(const Units& a, const Units& b);

/// How the units of each kind of stiffness are called, in UTF-8; empty where nothing tells them.
namespace UnitNames {

std::string ofArea(const Units& units);  // force by length cubed
std::string ofLine(const Units& units);  // force by length squared
/// Moment by length and radian, such as kNm/m/rad.
std::string ofRotation(const Units& units);

}  // namespace UnitNames
