#include "number_text.h"

#include <charconv>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

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

/// Converts `text`, all of which must be the number.
template <class Number>
std::errc convert(std::string_view text, Number& value) {
  const char* const end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, value);
  return result.ptr == end ? result.ec : std::errc::invalid_argument;
}

template <class Number>
std::string printNumber(Number value) {
  char buffer[32];  // the longest double takes 24 characters
  const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

/// Moves `c` behind the digits of a width or a precision; false when there are more than three.
bool skipDigits(const char*& c) {
  const std::size_t digits = std::strspn(c, "0123456789");
  c += digits;
  return digits <= 3;
}

/// True when `format` holds exactly one conversion and that takes a double and nothing else.
bool isDoubleFormat(const char* format) {
  int conversions = 0;
  for (const char* c = format; *c != '\0'; ++c) {
    if (*c != '%') continue;
    ++c;
    if (*c == '%') continue;
    c += std::strspn(c, "-+ #0");
    if (!skipDigits(c)) return false;
    if (*c == '.' && !skipDigits(++c)) return false;
    if (*c == 'l') ++c;  // makes no difference
    if (*c == '\0' || std::strchr("aAeEfFgG", *c) == nullptr) return false;
    ++conversions;
  }
  return conversions == 1;
}

/// Prints in the "C" locale, whatever the process locale is.
class ClassicLocale {
 public:
#if defined(_WIN32)
  ClassicLocale() : classic(_create_locale(LC_ALL, "C")) {
    if (classic == nullptr) throw std::bad_alloc();
  }
  ~ClassicLocale() { _free_locale(classic); }

  int print(char* text, std::size_t size, const char* format, double value) const {
    return size == 0 ? _scprintf_l(format, classic, value)
                     : _snprintf_l(text, size, format, classic, value);
  }
#else
  ClassicLocale() : classic(newlocale(LC_ALL_MASK, "C", nullptr)) {
    if (classic == nullptr) throw std::bad_alloc();
    previous = uselocale(classic);
  }
  ~ClassicLocale() {
    uselocale(previous);
    freelocale(classic);
  }

  int print(char* text, std::size_t size, const char* format, double value) const {
    return std::snprintf(text, size, format, value);
  }
#endif
  ClassicLocale(const ClassicLocale&) = delete;
  ClassicLocale& operator=(const ClassicLocale&) = delete;

 private:
#if defined(_WIN32)
  _locale_t classic;
#else
  locale_t classic;
  locale_t previous = nullptr;
#endif
};

}  // namespace

std::optional<int> parseInteger(std::string_view text) {
  int value = 0;
  if (convert(text, value) == std::errc()) return value;
  text = stripNumber(text);
  if (convert(text, value) == std::errc()) return value;
  return std::nullopt;
}

std::optional<double> parseDouble(std::string_view text) {
  double value = 0.0;
  if (convert(text, value) == std::errc()) return value;
  text = stripNumber(text);
  const std::errc failure = convert(text, value);
  if (failure == std::errc()) return value;
  if (failure == std::errc::result_out_of_range) return limitOfRange(text);
  return std::nullopt;
}

std::string print(int value) { return printNumber(value); }

std::string print(double value) { return printNumber(value); }

std::string print(double value, const char* format) {
  if (format == nullptr || !isDoubleFormat(format))
    throw std::invalid_argument("this is no format for one double");
  const ClassicLocale classic;
  const int size = classic.print(nullptr, 0, format, value);
  if (size < 0) throw std::invalid_argument("this format cannot be printed");
  std::string text(static_cast<std::size_t>(size) + 1, '\0');
  classic.print(text.data(), text.size(), format, value);
  text.pop_back();
  return text;
}

}  // namespace NumberText
