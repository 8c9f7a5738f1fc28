#pragma once

#include <cstddef>

#include "found/foundation_manager.h"
#include "foundations/decimal.h"
#include "foundations/natural.h"

/// Converts stiffness to other units: of areas, which is force by length cubed, of lines, force by
/// length squared, and against rotation, which is moment by length and radian and so a force.
namespace Scaling {

/// How many of a new unit an old one is: `over` / `under`.
struct Ratio {
  Decimal over;
  Decimal under = {1, 0};
};

/// An exact factor, force / length^power. It rounds each product once, to the nearest double, and
/// to the even one of two.
class Factor {
 public:
  Factor(const Ratio& force, const Ratio& length, int power);

  /// Zeros, infinities and what is not a number stay. An infinity where the product is too large.
  double multiply(double value) const;

 private:
  std::size_t bits = 0;  // of the divisor, and room for a product
  int exponent;          // of two, beside numerator / divisor
  Natural numerator;
  Natural divisor;
};

/// The factors of all kinds of stiffness.
struct Scale {
  Scale(const Ratio& force, const Ratio& length)
      : area(force, length, 3), line(force, length, 2), rotation(force, length, 0) {}

  Factor area;
  Factor line;
  Factor rotation;
};

/// Scales the stiffness of all foundations. Throws std::range_error, which names foundation and
/// field, where a value becomes too large, or zero; some have been scaled then.
void apply(const Scale& scale, const Found::FoundationManager& manager);

}  // namespace Scaling
