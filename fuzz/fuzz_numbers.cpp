#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <regex>
#include <stdexcept>
#include <string>

#include "../platform/src/number_text.h"
#include "property.h"
#include "support/double_bits.h"

// The conversions of numbers against those of the C library in the "C" locale. An input is a number
// and, behind the first '|', a format; where the number is none, its bytes are one.

namespace {

using Fuzz::require;
using TestSupport::bitsOf;

bool isSame(double a, double b) {
  if (std::isnan(a) || std::isnan(b))
    return std::isnan(a) && std::isnan(b) && std::signbit(a) == std::signbit(b);
  return bitsOf(a) == bitsOf(b);
}

#define BLANKS "[ \\t\\r\\n]*"

/// The number proper when `text` has the form of one. The C library would take more: hexadecimal
/// digits, white space of other kinds, and text behind the number.
std::optional<std::string> strip(const std::string& text, const std::regex& form) {
  std::smatch parts;
  return std::regex_match(text, parts, form) ? std::optional<std::string>(parts[1]) : std::nullopt;
}

std::optional<int> parseIntegerPlainly(const std::string& text) {
  static const std::regex form(BLANKS "(?:\\+(?!-))?(-?[0-9]+)" BLANKS);
  const std::optional<std::string> number = strip(text, form);
  if (!number) return std::nullopt;
  errno = 0;
  const long value = std::strtol(number->c_str(), nullptr, 10);
  const bool fits = errno == 0 && value >= std::numeric_limits<int>::min() &&
                    value <= std::numeric_limits<int>::max();
  return fits ? std::optional<int>(static_cast<int>(value)) : std::nullopt;
}

std::optional<double> parseDoublePlainly(const std::string& text) {
  static const std::regex form(BLANKS
                               "(?:\\+(?!-))?"
                               "(-?(?:(?:[0-9]+\\.?[0-9]*|\\.[0-9]+)(?:e[-+]?[0-9]+)?"
                               "|inf(?:inity)?|nan(?:\\([0-9a-z_]*\\))?))" BLANKS,
                               std::regex::icase);
  const std::optional<std::string> number = strip(text, form);
  return number ? std::optional<double>(std::strtod(number->c_str(), nullptr)) : std::nullopt;
}

void checkParsing(const std::string& text) {
  require(NumberText::parseInteger(text) == parseIntegerPlainly(text),
          "an integer reads as strtol() reads it", text);
  const std::optional<double> value = NumberText::parseDouble(text);
  const std::optional<double> plain = parseDoublePlainly(text);
  require(value.has_value() == plain.has_value() && (!value || isSame(*value, *plain)),
          "a double reads as strtod() reads it", text);
}

void checkShortest(double value) {
  const std::string text = NumberText::print(value);
  const std::optional<double> back = NumberText::parseDouble(text);
  require(back && isSame(*back, value), "a double reads back as it was", text);
  require(isSame(std::strtod(text.c_str(), nullptr), value), "strtod() reads it too", text);
  if (!std::isfinite(value) || value == 0.0) return;

  char plain[40];
  int digits = 0;  // behind the first, as many as it takes
  do {
    std::snprintf(plain, sizeof plain, "%.*e", digits++, value);
  } while (!isSame(std::strtod(plain, nullptr), value));
  require(text.size() <= std::strlen(plain), "no shorter text reads back", text);
}

void checkInteger(int value) {
  char plain[16];
  std::snprintf(plain, sizeof plain, "%d", value);
  require(NumberText::print(value) == plain, "an integer prints as printf() prints it", plain);
  require(NumberText::parseInteger(plain) == value, "an integer reads back as it was", plain);
}

void checkFormat(double value, const std::string& format) {
  static const std::regex allowed(
      "(?:[^%]|%%)*%[-+ #0]*[0-9]{0,3}(?:\\.[0-9]{0,3})?l?[aAeEfFgG](?:[^%]|%%)*");
  const bool isAllowed = std::regex_match(format, allowed);
  std::string text;
  try {
    text = NumberText::print(value, format.c_str());
  } catch (const std::invalid_argument&) {
    require(!isAllowed, "a format of one double is accepted", format);
    return;
  }
  require(isAllowed, "a format of anything else is refused", format);
  // glibc loses the zeros that '#' asks for where rounding adds a digit.
  static const std::regex keepsZeros("(?:[^%]|%%)*%[-+ #0]*#[-+ #0]*[0-9.l]*[gG](?:[^%]|%%)*");
  if (std::regex_match(format, keepsZeros)) return;
  char plain[2048];
  const int size = std::snprintf(plain, sizeof plain, format.c_str(), value);
  require(size >= 0 && text == std::string(plain, static_cast<std::size_t>(size)),
          "a format prints as printf() prints it", format);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t longest = 400;
  const std::string input(reinterpret_cast<const char*>(data), std::min(size, longest));
  const std::size_t bar = std::min(input.find('|'), input.size());
  const std::string number = input.substr(0, bar);
  checkParsing(number);

  double value = 0.0;
  std::memcpy(&value, number.data(), std::min(number.size(), sizeof value));
  int integer = 0;
  std::memcpy(&integer, number.data(), std::min(number.size(), sizeof integer));
  checkInteger(integer);
  checkShortest(value);
  if (const std::optional<double> read = NumberText::parseDouble(number)) {
    value = *read;
    checkShortest(value);
  }
  if (bar < input.size()) {
    constexpr std::size_t longestFormat = 64;
    const std::string format = input.substr(bar + 1, longestFormat);
    checkFormat(value, format.substr(0, format.find('\0')));
  }
  return 0;
}
