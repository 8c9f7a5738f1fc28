#pragma once

#include <array>
#include <limits>
#include <optional>
#include <string>
#include <tuple>

#include "found/foundation.h"

namespace Found::Tests {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double smallestSubnormal = std::numeric_limits<double>::denorm_min();
constexpr int smallestInt = std::numeric_limits<int>::min();
constexpr int largestInt = std::numeric_limits<int>::max();

/// Modes without a name, as a document may hold them.
constexpr auto unknownFailure = static_cast<Foundation::Failure>(7);
constexpr auto otherUnknownFailure = static_cast<Foundation::Failure>(-2);

/// A stiffness vector as a test compares and prints it.
using Stiffness = std::optional<std::array<double, 3>>;

constexpr Stiffness absent = std::nullopt;

inline Stiffness vec(double x, double y, double z) { return std::array<double, 3>{x, y, z}; }

/// One of the three stiffness vectors, so that a test can go through all of them.
struct VectorSlot {
  const char* name;
  bool (Foundation::*getter)(KvVector3D&) const;
  void (Foundation::*setter)(const KvVector3D*);

  Stiffness get(const Foundation& foundation) const {
    KvVector3D out;
    if (!(foundation.*getter)(out)) return absent;
    return vec(out.x, out.y, out.z);
  }
  void set(Foundation& foundation, const KvVector3D& v) const { (foundation.*setter)(&v); }
  void remove(Foundation& foundation) const { (foundation.*setter)(nullptr); }
};

constexpr VectorSlot areaSlot = {"dispArea", &Foundation::getDispArea, &Foundation::setDispArea};
constexpr VectorSlot lineSlot = {"dispLine", &Foundation::getDispLine, &Foundation::setDispLine};
constexpr VectorSlot rotSlot = {"rotLine", &Foundation::getRotLine, &Foundation::setRotLine};
constexpr VectorSlot vectorSlots[] = {areaSlot, lineSlot, rotSlot};

inline Stiffness areaOf(const Foundation& foundation) { return areaSlot.get(foundation); }
inline Stiffness lineOf(const Foundation& foundation) { return lineSlot.get(foundation); }
inline Stiffness rotOf(const Foundation& foundation) { return rotSlot.get(foundation); }

/// One of the two factors.
struct FactorSlot {
  const char* name;
  double (Foundation::*getter)() const;
  void (Foundation::*setter)(double);

  double get(const Foundation& foundation) const { return (foundation.*getter)(); }
  void set(Foundation& foundation, double value) const { (foundation.*setter)(value); }
};

constexpr FactorSlot factorSlots[] = {
    {"factorArea", &Foundation::getFactorArea, &Foundation::setFactorArea},
    {"factorLine", &Foundation::getFactorLine, &Foundation::setFactorLine}};

/// One of the four stored failure modes.
struct FailureSlot {
  const char* name;
  Foundation::Failure (Foundation::*getter)();
  void (Foundation::*setter)(Foundation::Failure);

  Foundation::Failure get(Foundation& foundation) const { return (foundation.*getter)(); }
  void set(Foundation& foundation, Foundation::Failure value) const { (foundation.*setter)(value); }
};

constexpr FailureSlot failureSlots[] = {
    {"failLineX", &Foundation::getFailLineX, &Foundation::setFailLineX},
    {"failLineY", &Foundation::getFailLineY, &Foundation::setFailLineY},
    {"failLineZ", &Foundation::getFailLineZ, &Foundation::setFailLineZ},
    {"failAreaZ", &Foundation::getFailAreaZ, &Foundation::setFailAreaZ}};

/// The bedding values: vectors, failPossible, failures (line x, y, z, area z), factors (area,
/// line).
using Values =
    std::tuple<Stiffness, Stiffness, Stiffness, bool, std::array<int, 4>, double, double>;

inline Values valuesOf(Foundation& foundation) {
  return {areaOf(foundation),
          lineOf(foundation),
          rotOf(foundation),
          foundation.getFailPossible(),
          {foundation.getFailLineX(), foundation.getFailLineY(), foundation.getFailLineZ(),
           foundation.getFailAreaZ()},
          foundation.getFactorArea(),
          foundation.getFactorLine()};
}

/// Everything: name, number, changed, generated and the values.
using Record = std::tuple<std::string, int, bool, bool, Values>;

inline Record recordOf(Foundation& foundation) {
  return {foundation.getName(), foundation.getNumber(), foundation.getChanged(),
          foundation.isGenerated(), valuesOf(foundation)};
}

inline const Values noValues = {absent, absent, absent, false, {0, 0, 0, 0}, 0.0, 0.0};

/// Gives every field a value of its own, so that a swapped one shows; `changed` ends clear.
inline void fill(Foundation& foundation) {
  foundation.setName("Raft");
  foundation.setNumber(12);
  foundation.setGenerated(true);
  foundation.setFailPossible(true);
  areaSlot.set(foundation, KvVector3D(1.0, 2.0, 3.0));
  lineSlot.set(foundation, KvVector3D(4.0, 5.0, 6.0));
  rotSlot.set(foundation, KvVector3D(7.0, 8.0, 9.0));
  foundation.setFailLineX(Foundation::Tension);
  foundation.setFailLineY(Foundation::Compression);
  foundation.setFailLineZ(unknownFailure);
  foundation.setFailAreaZ(otherUnknownFailure);
  foundation.setFactorArea(0.5);
  foundation.setFactorLine(0.25);
  foundation.setChanged(false);
}

/// The values that fill() gives.
inline const Values filledValues = {
    vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), vec(7.0, 8.0, 9.0), true, {-1, 1, 7, -2}, 0.5, 0.25};

}  // namespace Found::Tests
