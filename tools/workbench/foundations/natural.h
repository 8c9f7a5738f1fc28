#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// A whole number of up to 1,056 bits. What takes more bits is cut off.
class Natural {
 public:
  explicit Natural(std::uint64_t value) {
    words[0] = static_cast<std::uint32_t>(value);
    words[1] = static_cast<std::uint32_t>(value >> 32);
  }

  void multiply(std::uint64_t factor);
  void raise(unsigned base, int power);  // multiplies by base^power

  std::size_t countBits() const;
  /// At least as many bits as there are.
  void shiftTo(std::size_t bits);
  bool isZero() const;

  /// The next 32 bits of a quotient, whose first bit is that of 1/2, and what is left after them.
  /// `divisor` is larger, and has all bits of its highest word.
  std::uint32_t takeDigit(const Natural& divisor);

 private:
  static constexpr std::size_t mostWords = 33;

  void addProduct(const Natural& other, std::uint32_t factor, std::size_t shift);
  void subtract(const Natural& other);
  void shiftWords(std::size_t count);
  bool isLess(const Natural& other) const;

  std::array<std::uint32_t, mostWords> words{};  // the lowest first
  std::size_t size = 2;                          // of those that may not be 0
};
