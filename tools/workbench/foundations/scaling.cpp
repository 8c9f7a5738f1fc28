#include "foundations/scaling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include <fmt/format.h>

#include "foundations/fields.h"
#include "text/display_text.h"

namespace Scaling {
namespace {

using Found::Foundation;

constexpr int mantissaBits = 53;
constexpr int leastExponent = -1074;  // of two, of the smallest double
constexpr std::size_t wordBits = 32;
constexpr std::size_t productBits = 64;  // by which a mantissa makes a product longer, at most

/// The nearest whole number to bits / 2^count, the even one of two.
std::uint64_t shiftOut(std::uint64_t bits, int count) {
  if (count > 64) return 0;
  const std::uint64_t kept = count == 64 ? 0 : bits >> count;
  const std::uint64_t rest = count == 64 ? bits : bits - (kept << count);
  const std::uint64_t half = std::uint64_t{1} << (count - 1);
  return rest > half || (rest == half && kept % 2 == 1) ? kept + 1 : kept;
}

/// The double nearest to bits * 2^exponent, where `bits` has 63 or 64 bits.
double round(std::uint64_t bits, int exponent) {
  const int length = bits >> 63 != 0 ? 64 : 63;
  const int unit = std::max(exponent + length - mantissaBits, leastExponent);
  return std::ldexp(static_cast<double>(shiftOut(bits, unit - exponent)), unit);
}

}  // namespace

Factor::Factor(const Ratio& force, const Ratio& length, int power)
    : exponent(force.over.exponent - force.under.exponent +
               power * (length.under.exponent - length.over.exponent)),
      numerator(force.over.digits),
      divisor(force.under.digits) {
  for (int i = 0; i < power; ++i) {
    numerator.multiply(length.under.digits);
    divisor.multiply(length.over.digits);
  }
  // 10^exponent is 5^exponent * 2^exponent.
  (exponent > 0 ? numerator : divisor).raise(5, std::abs(exponent));
  const std::size_t divisorBits = divisor.countBits();
  const std::size_t most = std::max(divisorBits, numerator.countBits() + productBits);
  bits = (most + wordBits - 1) / wordBits * wordBits;
  divisor.shiftTo(bits);
  exponent += static_cast<int>(bits - divisorBits);
}

double Factor::multiply(double value) const {
  if (value == 0.0 || !std::isfinite(value)) return value;
  int power = 0;
  const double fraction = std::frexp(std::abs(value), &power);
  Natural rest = numerator;
  rest.multiply(static_cast<std::uint64_t>(std::ldexp(fraction, mantissaBits)));
  // Between a quarter and all of the divisor, so that the quotient has 63 or 64 bits of 64.
  const std::size_t before = rest.countBits();
  rest.shiftTo(bits - 1);
  const auto shift = static_cast<int>(bits - 1 - before);
  const std::uint64_t high = rest.takeDigit(divisor);
  const std::uint64_t low = rest.takeDigit(divisor);
  // That something is left counts only where the bits before it are halfway between two doubles.
  const std::uint64_t quotient = high << 32 | low | (rest.isZero() ? 0U : 1U);
  const double product = round(quotient, exponent + power - mantissaBits - shift - 64);
  return std::copysign(product, value);
}

namespace {

double scaleComponent(const Factor& factor, double value, const char* field,
                      const Foundation& foundation) {
  const double product = factor.multiply(value);
  const bool isTooLarge = std::isfinite(value) && !std::isfinite(product);
  const bool isTooSmall = value != 0.0 && product == 0.0;
  if (isTooLarge || isTooSmall)
    throw std::range_error(
        fmt::format("{}: {} {} is too {} to be scaled by {}", Fields::describe(foundation), field,
                    DisplayText::fromNumber(value), isTooLarge ? "large" : "small",
                    DisplayText::fromNumber(factor.multiply(1.0))));
  return product;
}

using Names = std::array<const char*, 3>;
constexpr Names areaNames = {"areaX", "areaY", "areaZ"};
constexpr Names lineNames = {"lineX", "lineY", "lineZ"};
constexpr Names rotationNames = {"lineRotationX", "lineRotationY", "lineRotationZ"};

template <bool (Foundation::*Get)(KvVector3D&) const, void (Foundation::*Set)(const KvVector3D*)>
void scaleVector(const Factor& factor, const Names& fields, Foundation& foundation) {
  KvVector3D vector;
  if (!(foundation.*Get)(vector)) return;
  vector.x = scaleComponent(factor, vector.x, fields[0], foundation);
  vector.y = scaleComponent(factor, vector.y, fields[1], foundation);
  vector.z = scaleComponent(factor, vector.z, fields[2], foundation);
  (foundation.*Set)(&vector);
}

}  // namespace

void apply(const Scale& scale, const Found::FoundationManager& manager) {
  for (Foundation* foundation : manager.getFoundations()) {
    scaleVector<&Foundation::getDispArea, &Foundation::setDispArea>(scale.area, areaNames,
                                                                    *foundation);
    scaleVector<&Foundation::getDispLine, &Foundation::setDispLine>(scale.line, lineNames,
                                                                    *foundation);
    scaleVector<&Foundation::getRotLine, &Foundation::setRotLine>(scale.rotation, rotationNames,
                                                                  *foundation);
  }
}

}  // namespace Scaling
