#pragma once

#include <cstdint>
#include <cstring>

namespace TestSupport {

/// Tells apart what == takes for equal, such as zeros of either sign, and finds a NaN in itself.
inline std::uint64_t bitsOf(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

inline double fromBits(std::uint64_t bits) {
  double value = 0.0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

}  // namespace TestSupport
