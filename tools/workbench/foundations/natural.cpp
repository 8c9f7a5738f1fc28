#include "foundations/natural.h"

#include <algorithm>

namespace {

constexpr std::size_t wordBits = 32;

std::uint32_t getLow(std::uint64_t value) { return static_cast<std::uint32_t>(value); }

}  // namespace

void Natural::addProduct(const Natural& other, std::uint32_t factor, std::size_t shift) {
  std::uint64_t carry = 0;
  size = std::min(std::max(size, other.size + shift) + 1, mostWords);
  for (std::size_t i = shift; i < size; ++i) {
    const std::uint64_t digit = i - shift < other.size ? other.words[i - shift] : 0;
    carry += words[i] + digit * factor;  // at most 2^64 - 1
    words[i] = getLow(carry);
    carry >>= wordBits;
  }
  while (size > 1 && words[size - 1] == 0) --size;
}

void Natural::multiply(std::uint64_t factor) {
  Natural product(0);
  product.addProduct(*this, getLow(factor), 0);
  product.addProduct(*this, getLow(factor >> wordBits), 1);
  *this = product;
}

void Natural::raise(unsigned base, int power) {
  for (; power > 0; --power) multiply(base);
}

std::size_t Natural::countBits() const {
  std::size_t bits = size * wordBits;
  while (bits > 0 && (words[(bits - 1) / wordBits] >> ((bits - 1) % wordBits) & 1) == 0) --bits;
  return bits;
}

void Natural::shiftWords(std::size_t count) {
  size = std::min(size + count, mostWords);
  for (std::size_t i = size; i-- > 0;) words[i] = i >= count ? words[i - count] : 0;
}

void Natural::shiftTo(std::size_t bits) {
  const std::size_t shift = bits - countBits();
  multiply(std::uint64_t{1} << shift % wordBits);
  shiftWords(shift / wordBits);
}

bool Natural::isZero() const {
  return std::all_of(words.begin(), words.end(), [](std::uint32_t word) { return word == 0; });
}

bool Natural::isLess(const Natural& other) const {
  for (std::size_t i = std::max(size, other.size); i-- > 0;)
    if (words[i] != other.words[i]) return words[i] < other.words[i];
  return false;
}

void Natural::subtract(const Natural& other) {
  std::uint64_t borrow = 0;
  for (std::size_t i = 0; i < size; ++i) {
    const std::uint64_t difference = std::uint64_t{words[i]} - other.words[i] - borrow;
    words[i] = getLow(difference);
    borrow = difference >> 63;
  }
}

std::uint32_t Natural::takeDigit(const Natural& divisor) {
  const std::size_t top = divisor.size - 1;
  shiftWords(1);
  const std::uint64_t high = (std::uint64_t{words[top + 1]} << wordBits) + words[top];
  // The highest words give a digit that is right or up to 2 too large.
  std::uint32_t digit = getLow(std::min<std::uint64_t>(high / divisor.words[top], UINT32_MAX));
  Natural product(0);
  product.addProduct(divisor, digit, 0);
  for (; isLess(product); --digit) product.subtract(divisor);
  subtract(product);
  return digit;
}
