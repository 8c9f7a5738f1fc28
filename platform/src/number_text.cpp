#include "number_text.h"

#include <charconv>
#include <limits>

namespace NumberText {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view trim(std::string_view text) {
  constexpr const char* whiteSpace = " \t\r\n";
  const std::size_t first = text.find_first_not_of(whiteSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

/// The number proper: trimmed, without one leading '+'. A second sign stays and is refused later.
std::string_view stripNumber(std::string_view text) {
  text = trim(text);
  const bool signedTwice = text.size() > 1 && text[0] == '+' && text[1] == '-';
  if (!text.empty() && text[0] == '+' && !signedTwice) text.remove_prefix(1);
  return text;
}

/// The decimal exponent written in `text` behind 'e', cut off at a million either way.
long readExponent(std::string_view text) {
  const std::size_t mark = text.find_first_of("eE");
  if (mark == std::string_view::npos) return 0;
  constexpr long limit = 1000000;
  std::string_view digits = text.substr(mark + 1);
  const bool negative = digits[0] == '-';
  if (!isDigit(digits[0])) digits.remove_prefix(1);
  long exponent = 0;
  for (char c : digits)
    if (exponent < limit) exponent = exponent * 10 + (c - '0');
  return negative ? -exponent : exponent;
}

/// Of a well-formed number outside the range of double: true when it is too large, false when it
/// is too small. The place of the first digit that is not 0 tells.
bool isTooLarge(std::string_view text) {
  const std::size_t first = text.find_first_of("123456789");
  std::size_t point = text.find_first_of(".eE");
  if (point == std::string_view::npos) point = text.size();
  const long place = static_cast<long>(point) - static_cast<long>(first);
  return place + readExponent(text) > 0;
}

double limitOfRange(std::string_view text) {
  const double magnitude = isTooLarge(text) ? std::numeric_limits<double>::infinity() : 0.0;
  return text[0] == '-' ? -magnitude : magnitude;
}

template <class Number>
std::string printNumber(Number value) {
  char buffer[32];  // the longest double takes 24 characters
  const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

}  // namespace

std::optional<int> parseInteger(std::string_view text) {
  text = stripNumber(text);
  const char* const end = text.data() + text.size();
  int value = 0;
  const std::from_chars_result result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return value;
}

std::optional<double> parseDouble(std::string_view text) {
  text = stripNumber(text);
  const char* const end = text.data() + text.size();
  double value = 0.0;
  const std::from_chars_result result = std::from_chars(text.data(), end, value);
  if (result.ec == std::errc::invalid_argument || result.ptr != end) return std::nullopt;
  if (result.ec == std::errc::result_out_of_range) return limitOfRange(text);
  return value;
}

std::string print(int value) { return printNumber(value); }

std::string print(double value) { return printNumber(value); }

}  // namespace NumberText
