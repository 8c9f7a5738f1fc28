#pragma once

#include <cstdint>
#include <cstring>

namespace TestSupport {

/// The bits of a double: zeros of different sign differ in them, and a NaN equals itself.
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
