#include "number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include <fast_float/fast_float.h>
#include <fmt/compile.h>
#include <fmt/format.h>

namespace NumberText {
namespace {

constexpr const char* noFormat = "this is no format for one double";

char lowerLetter(char letter) { return static_cast<char>(letter | 0x20); }

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
  const bool signedTwice = text.substr(0, 2) == "+-";
  if (text.substr(0, 1) == "+" && !signedTwice) text.remove_prefix(1);
  return text;
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
  // Out of range `value` is an infinity or a zero; only some versions of fast_float report an
  // error.
  if (result.ec == std::errc::invalid_argument || result.ptr != end) return std::nullopt;
  return value;
}

/// As fmt::format(), but faster for what is short enough.
template <class Format, class... Arguments>
std::string printShort(const Format& format, const Arguments&... arguments) {
  char buffer[1400];  // the longest double has 309 digits before the point and 999 behind it
  return std::string(buffer, fmt::format_to(buffer, format, arguments...));
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Rewrites a number with an exponent: 1200000 as 1.2e+06, 0.0001 as 1e-04. `text` has no exponent,
/// and digits other than 0 on one side of its point only.
std::string addExponent(std::string_view text) {
  constexpr const char* significant = "123456789";
  const std::size_t first = text.find_first_of(significant);
  const std::size_t size = text.find_last_of(significant) + 1 - first;
  const int point = static_cast<int>(std::min(text.find('.'), text.size()));
  const int place = point - static_cast<int>(first);
  return fmt::format("{}{}{}{}e{:+03}", text[0] == '-' ? "-" : "", text[first], size > 1 ? "." : "",
                     text.substr(first + 1, size - 1), place > 0 ? place - 1 : place);
}

std::string printInteger(double value) {
  constexpr double limit = 9223372036854775808.0;  // of long long, which is much faster
  if (std::fabs(value) < limit) return printShort(FMT_COMPILE("{}"), static_cast<long long>(value));
  return printShort(FMT_COMPILE("{:.0f}"), value);
}

/// How a format of printf() prints a double.
struct Conversion {
  bool has(char flag) const { return flags.find(flag) != std::string_view::npos; }

  std::string_view flags;
  std::size_t width;
  std::optional<int> precision;
  char letter;  // in lower case
  bool isUpperCase;
};

/// Reads a width or a precision and moves `c` past its digits, but not past a fourth one, which
/// starts no conversion.
int takeSize(const char*& c) {
  constexpr std::size_t longest = 3;
  const std::size_t digits = std::min(std::strspn(c, "0123456789"), longest);
  int size = 0;
  for (const char* const end = c + digits; c != end; ++c) size = size * 10 + (*c - '0');
  return size;
}

/// Moves `c` past the conversion behind a '%'. Empty when that is not the conversion of a double.
std::optional<Conversion> takeConversion(const char*& c) {
  const std::string_view flags(c, std::strspn(c, "-+ #0"));
  c += flags.size();
  const auto width = static_cast<std::size_t>(takeSize(c));
  std::optional<int> precision;
  if (*c == '.') precision = takeSize(++c);
  if (*c == 'l') ++c;  // makes no difference
  const char letter = *c;
  if (letter == '\0' || std::strchr("aAeEfFgG", letter) == nullptr) return std::nullopt;
  ++c;
  return Conversion{flags, width, precision, lowerLetter(letter), letter < 'a'};
}

// fmt::sprintf() differs from std::printf(): its "%#g" may have a digit too many, its "%a" comes
// from the C library with the locale's point or rounds otherwise, and zeros or digits are missing
// behind the first 767. So {fmt} finds the digits here, and the rest is done by hand.
constexpr int mostDigits = 767;  // that a double has

int readExponent(const std::string& text) { return std::stoi(text.substr(text.find('e') + 1)); }

std::string printScientific(double magnitude, int precision) {
  const int printed = std::min(precision, mostDigits - 1);
  std::string text = printShort(FMT_COMPILE("{:.{}e}"), magnitude, printed);
  text.insert(text.find('e'), static_cast<std::size_t>(precision - printed), '0');
  return text;
}

std::string printFixed(double magnitude, int precision) {
  constexpr int longestInteger = 309;
  if (precision <= mostDigits - longestInteger)
    return printShort(FMT_COMPILE("{:.{}f}"), magnitude, precision);
  // Rounding to so many digits keeps the exponent: no double starts with twenty nines.
  const int exponent = readExponent(printScientific(magnitude, mostDigits));
  const std::string text = printScientific(magnitude, precision + exponent);
  std::string digits(static_cast<std::size_t>(std::max(-exponent, 0)), '0');
  digits += text[0] + text.substr(2, text.find('e') - 2);
  const auto point = static_cast<std::size_t>(std::max(exponent, 0)) + 1;
  digits.insert(point, ".");
  return digits;
}

/// As "%#g" does: all `digits` that count, zeros at the end too.
std::string printAllDigits(double magnitude, int digits) {
  std::string text = printScientific(magnitude, digits - 1);
  const int exponent = readExponent(text);
  if (exponent < -4 || exponent >= digits) return text;
  return printFixed(magnitude, digits - 1 - exponent);
}

std::string printHexadecimal(double magnitude, std::optional<int> precision) {
  constexpr int allPlaces = 13;
  constexpr int smallestExponent = -1022;
  const int exponent = magnitude == 0.0 ? 0 : std::max(std::ilogb(magnitude), smallestExponent);
  int places = std::min(precision.value_or(allPlaces), allPlaces);
  const double scaled = std::nearbyint(std::ldexp(magnitude, 4 * places - exponent));
  auto digits = static_cast<std::uint64_t>(scaled);
  if (!precision)
    for (; places > 0 && digits % 16 == 0; digits /= 16) --places;
  std::string text = fmt::format("{:0{}x}", digits, places + 1);
  text.append(static_cast<std::size_t>(precision.value_or(places) - places), '0');
  if (text.size() > 1) text.insert(1, ".");
  return text + fmt::format("p{:+}", exponent);
}

/// A number that is finite and not negative, without its "0x".
std::string printFinite(double magnitude, const Conversion& conversion) {
  constexpr int usualPrecision = 6;
  const int precision = conversion.precision.value_or(usualPrecision);
  std::string text;
  if (conversion.letter == 'f')
    text = printFixed(magnitude, precision);
  else if (conversion.letter == 'e')
    text = printScientific(magnitude, precision);
  else if (conversion.letter == 'a')
    text = printHexadecimal(magnitude, conversion.precision);
  else if (conversion.has('#'))
    text = printAllDigits(magnitude, std::max(precision, 1));
  else
    text = printShort(FMT_COMPILE("{:.{}g}"), magnitude, precision);

  if (conversion.has('#') && text.find('.') == std::string::npos) {
    const std::size_t exponent = text.find(conversion.letter == 'a' ? 'p' : 'e');
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
  std::string text = isFinite ? printFinite(magnitude, conversion) : print(magnitude);

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

std::string print(int value) { return fmt::format(FMT_COMPILE("{}"), value); }

// Prints the shorter of the two notations; when both are equally long, the one without an exponent.
// {fmt} finds the digits, but chooses the notation by the size of the number.
std::string print(double value) {
  std::string text = printShort(FMT_COMPILE("{}"), value);
  const double magnitude = std::fabs(value);
  std::string other;
  if (text.find('e') != std::string::npos) {
    if (magnitude > 1.0 && magnitude < 1e22) other = printInteger(value);
    if (other.empty() || other.size() > text.size()) return text;
  } else {
    const bool isSmall = magnitude > 0.0 && magnitude < 0.001;
    if (isSmall || endsWith(text, "00000")) other = addExponent(text);
    if (other.empty() || other.size() >= text.size()) return text;
  }
  return other;
}

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
