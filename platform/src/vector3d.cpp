#include "kv/vector3d.h"

#include <algorithm>
#include <cmath>

double KvVector3D::length() const {
  // In this range no square that matters overflows or underflows.
  const double squares = x * x + y * y + z * z;
  if (squares > 1e-200 && squares < 1e300) return std::sqrt(squares);

  // Scaled by a power of two, which is exact, so that the squares stay within range. For zero,
  // infinity and what is no number any exponent will do.
  int exponent = 0;
  std::frexp(std::max({std::fabs(x), std::fabs(y), std::fabs(z)}), &exponent);
  const double sx = std::scalbn(x, -exponent);
  const double sy = std::scalbn(y, -exponent);
  const double sz = std::scalbn(z, -exponent);
  return std::scalbn(std::sqrt(sx * sx + sy * sy + sz * sz), exponent);
}
