#include "foundations/decimal.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string>
#include <system_error>

namespace {

[[noreturn]] void refuse() {
  throw std::invalid_argument(
      "it takes a number above 0 such as 1000 or 0.001, of at most 17 digits, from 1e-30 to 1e30");
}

/// The whole of `text`, which may have a sign.
int readExponent(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  int exponent = 0;
  const char* const end = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), end, exponent);
  if (error != std::errc() || read != end) refuse();
  return exponent;
}

/// Digits and the power of ten of the last.
struct Parts {
  std::string digits;
  long long exponent;
};

Parts split(std::string_view text) {
  const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
  const int written = mark < text.size() ? readExponent(text.substr(mark + 1)) : 0;
  text = text.substr(0, mark);
  const std::size_t point = std::min(text.find('.'), text.size());
  std::string digits(text.substr(0, point));
  if (point < text.size()) digits += text.substr(point + 1);
  if (digits.empty() || digits.find_first_not_of("0123456789") != digits.npos) refuse();
  const auto decimals = static_cast<long long>(digits.size() - point);
  return {digits, written - decimals};
}

}  // namespace

Decimal readDecimal(std::string_view text) {
  if (!text.empty() && text[0] == '+') text.remove_prefix(1);
  auto [digits, exponent] = split(text);
  digits.erase(0, digits.find_first_not_of('0'));
  if (digits.empty()) refuse();
  const std::size_t length = digits.find_last_not_of('0') + 1;
  exponent += static_cast<long long>(digits.size() - length);
  digits.erase(length);
  if (length > Decimal::mostDigits) refuse();
  const long long magnitude = exponent + static_cast<long long>(length) - 1;
  const bool isTooLarge =
      magnitude > Decimal::largest || (magnitude == Decimal::largest && digits != "1");
  if (isTooLarge || magnitude < -Decimal::largest) refuse();
  return {std::stoull(digits), static_cast<int>(exponent)};
}
