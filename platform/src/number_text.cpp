#include "number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include <fast_float/fast_float.h>

namespace NumberText {
namespace {

constexpr const char* noFormat = "this is no format for one double";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

char toUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

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

/// The decimal exponent written in `text` behind 'e', cut off behind seven digits.
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

/// Converts `text`, all of which must be the number.
std::optional<int> convertInteger(std::string_view text) {
  const char* const end = text.data() + text.size();
  int value = 0;
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return value;
}

std::optional<double> convertDouble(std::string_view text) {
  const char* const end = text.data() + text.size();
  double value = 0.0;
  const auto result = fast_float::from_chars(text.data(), end, value);
  // Out of range `value` is an infinity or a zero, which versions of fast_float report or do not.
  if (result.ec == std::errc::invalid_argument || result.ptr != end) return std::nullopt;
  return value;
}

template <class Number>
std::string printNumber(Number value) {
  char buffer[32];  // the longest double takes 24 characters
  const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

/// How a format of printf() has a double printed.
struct Conversion {
  bool has(char flag) const { return flags.find(flag) != std::string_view::npos; }

  std::string_view flags;
  std::size_t width = 0;
  std::optional<int> precision;
  char letter = 'f';  // in lower case
  bool isUpperCase = false;
};

/// Takes the digits of a width or a precision off `c`; empty when there are more than three.
std::optional<int> takeSize(const char*& c) {
  const std::size_t digits = std::strspn(c, "0123456789");
  if (digits > 3) return std::nullopt;
  int size = 0;
  for (const char* const end = c + digits; c != end; ++c) size = size * 10 + (*c - '0');
  return size;
}

/// Takes off `c` what stands behind a '%'; empty when that is no conversion of a double and nothing
/// else.
std::optional<Conversion> takeConversion(const char*& c) {
  Conversion conversion;
  conversion.flags = std::string_view(c, std::strspn(c, "-+ #0"));
  c += conversion.flags.size();
  const std::optional<int> width = takeSize(c);
  if (!width) return std::nullopt;
  conversion.width = static_cast<std::size_t>(*width);
  if (*c == '.') {
    conversion.precision = takeSize(++c);
    if (!conversion.precision) return std::nullopt;
  }
  if (*c == 'l') ++c;  // makes no difference
  if (*c == '\0' || std::strchr("aAeEfFgG", *c) == nullptr) return std::nullopt;
  conversion.isUpperCase = *c < 'a';
  conversion.letter = toLower(*c++);
  return conversion;
}

std::string printDigits(double magnitude, std::chars_format form, std::optional<int> precision) {
  char buffer[1400];  // the longest has 309 digits before the point and 999 behind it
  char* const end = buffer + sizeof buffer;
  const std::to_chars_result result = precision
                                          ? std::to_chars(buffer, end, magnitude, form, *precision)
                                          : std::to_chars(buffer, end, magnitude, form);
  return std::string(buffer, result.ptr);
}

/// As "%#g" does: all `digits` that count, zeros at the end too.
std::string printAllDigits(double magnitude, int digits) {
  std::string text = printDigits(magnitude, std::chars_format::scientific, digits - 1);
  const long exponent = readExponent(text);
  if (exponent < -4 || exponent >= digits) return text;
  return printDigits(magnitude, std::chars_format::fixed, digits - 1 - static_cast<int>(exponent));
}

/// A number that is finite and not negative, without its "0x".
std::string printFinite(double magnitude, const Conversion& conversion) {
  constexpr int usualPrecision = 6;
  const int precision = conversion.precision.value_or(usualPrecision);
  std::string text;
  if (conversion.letter == 'f')
    text = printDigits(magnitude, std::chars_format::fixed, precision);
  else if (conversion.letter == 'e')
    text = printDigits(magnitude, std::chars_format::scientific, precision);
  else if (conversion.letter == 'a')
    text = printDigits(magnitude, std::chars_format::hex, conversion.precision);
  else if (conversion.has('#'))
    text = printAllDigits(magnitude, std::max(precision, 1));
  else
    text = printDigits(magnitude, std::chars_format::general, precision);

  if (conversion.has('#') && text.find('.') == std::string::npos) {
    const std::size_t exponent = text.find_first_of(conversion.letter == 'a' ? "p" : "e");
    text.insert(std::min(exponent, text.size()), ".");
  }
  return text;
}

std::string printConverted(double value, const Conversion& conversion) {
  const bool isFinite = std::isfinite(value);
  std::string sign = std::signbit(value) ? "-" : conversion.has('+') ? "+" : "";
  if (sign.empty() && conversion.has(' ')) sign = " ";
  if (isFinite && conversion.letter == 'a') sign += "0x";
  const double magnitude = std::fabs(value);
  std::string text = isFinite ? printFinite(magnitude, conversion) : printNumber(magnitude);

  const std::size_t used = sign.size() + text.size();
  const std::size_t missing = conversion.width > used ? conversion.width - used : 0;
  if (conversion.has('-'))
    text = sign + text + std::string(missing, ' ');
  else if (conversion.has('0') && isFinite)
    text = sign + std::string(missing, '0') + text;
  else
    text = std::string(missing, ' ') + sign + text;
  if (conversion.isUpperCase) std::transform(text.begin(), text.end(), text.begin(), toUpper);
  return text;
}

}  // namespace

std::optional<int> parseInteger(std::string_view text) {
  const std::optional<int> value = convertInteger(text);
  return value ? value : convertInteger(stripNumber(text));
}

std::optional<double> parseDouble(std::string_view text) {
  const std::optional<double> value = convertDouble(text);
  return value ? value : convertDouble(stripNumber(text));
}

std::string print(int value) { return printNumber(value); }

std::string print(double value) { return printNumber(value); }

std::string print(double value, const char* format) {
  std::string text;
  int conversions = 0;
  for (const char* c = format != nullptr ? format : ""; *c != '\0';) {
    const bool isConversion = *c == '%' && c[1] != '%';
    if (!isConversion) {
      if (*c == '%') ++c;
      text += *c++;
      continue;
    }
    const std::optional<Conversion> conversion = takeConversion(++c);
    if (!conversion || ++conversions > 1) throw std::invalid_argument(noFormat);
    text += printConverted(value, *conversion);
  }
  if (conversions == 0) throw std::invalid_argument(noFormat);
  return text;
}

}  // namespace NumberText
