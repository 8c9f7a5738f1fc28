#include "kv/vector3d.h"

#include <algorithm>
#include <cmath>

double KvVector3D::length() const {
  // In this range no square that matters overflows or underflows.
  const double squares = x * x + y * y + z * z;
  if (squares > 1e-200 && squares < 1e300) return std::sqrt(squares);

  if (std::isnan(x) || std::isnan(y) || std::isnan(z)) return x + y + z;
  const double largest = std::max({std::fabs(x), std::fabs(y), std::fabs(z)});
  if (largest == 0.0 || std::isinf(largest)) return largest;

  // Scaled by a power of two, which is exact, so that the squares stay within range.
  const int exponent = std::ilogb(largest);
  const double sx = std::scalbn(x, -exponent);
  const double sy = std::scalbn(y, -exponent);
  const double sz = std::scalbn(z, -exponent);
  return std::scalbn(std::sqrt(sx * sx + sy * sy + sz * sz), exponent);
}
