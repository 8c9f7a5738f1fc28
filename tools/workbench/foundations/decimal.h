#pragma once

#include <cstdint>
#include <string_view>

/// A positive number, exactly as it is written in decimals: digits * 10^exponent.
struct Decimal {
  std::uint64_t digits;  // of which the last is not 0
  int exponent;

  static constexpr int mostDigits = 17;
  static constexpr int largest = 30;  // from 1e-30 to 1e30
};

/// The number that `text` is, such as 1000, 0.3048 or 1e-3. Throws std::invalid_argument, which
/// tells what is taken instead, for one that is not above 0 or not within the limits.
Decimal readDecimal(std::string_view text);
