#include "text/display_text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "text/charset.h"
#include "text/utf8.h"

namespace DisplayText {
namespace {

constexpr char32_t largestOfFourDigits = 0xFFFF;

/// Characters that end a line or change the direction of writing, all of four hexadecimal digits.
struct Range {
  char32_t first;
  char32_t last;
};
constexpr Range directing[] = {
    {0x061C, 0x061C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF}};

bool isDirecting(char32_t c) {
  return c <= largestOfFourDigits &&
         std::any_of(std::begin(directing), std::end(directing),
                     [c](const Range& range) { return c >= range.first && c <= range.last; });
}

void appendEscaped(std::string& text, char32_t c) {
  constexpr char digits[] = "0123456789ABCDEF";
  if (c == '\n')
    text += "\\n";
  else if (c == '\t')
    text += "\\t";
  else if (c < 0x20 || (c >= 0x7F && c < 0xA0))
    (((text += "\\x") += digits[c >> 4]) += digits[c & 15]);
  else if (isDirecting(c))
    ((((text += "\\u") += digits[c >> 12]) += digits[(c >> 8) & 15]) += digits[(c >> 4) & 15]) +=
        digits[c & 15];
  else
    Utf8::append(text, c);
}

/// The digits of a number, without sign, point, exponent and zeros at the end.
std::string listDigits(std::string_view number) {
  std::string digits;
  for (const char c : number.substr(0, number.find('e')))
    if (c >= '0' && c <= '9') digits += c;
  digits.erase(digits.find_last_not_of('0') + 1);
  return digits;
}

/// The text of a number with an exponent where std::to_chars() writes one: what prints it here
/// begins with exponents elsewhere.
std::string placeExponent(const std::string& text, double value) {
  const std::string sign = value < 0.0 ? "-" : "";
  const double magnitude = std::fabs(value);
  if (magnitude >= 1e15 && magnitude < 1e16) {
    std::string digits = listDigits(text);
    if (digits.size() > 1) digits.insert(1, ".");
    return sign + digits + "e+15";
  }
  if (magnitude >= 1e-6 && magnitude < 1e-4) {
    const auto zeros = static_cast<std::size_t>(text.back() - '1');  // behind 1.5e-05 are four
    return sign + "0." + std::string(zeros, '0') + listDigits(text);
  }
  return text;
}

}  // namespace

std::string fromName(const std::string& name) {
  const std::string utf8 = Charset::recognise("", name).toUtf8(name);
  std::string text;
  for (std::string_view rest = utf8; !rest.empty();) appendEscaped(text, Utf8::take(rest));
  return text;
}

std::string fromNumber(double value) {
  if (std::isnan(value)) return "nan";  // whatever its sign, which means nothing
  // Not every standard library prints doubles.
  return placeExponent(fmt::format("{}", value), value);
}

std::string shorten(const std::string& text, std::size_t width) {
  if (measure(text) <= width) return text;
  std::string_view rest = text;
  std::size_t kept = 0;
  for (std::size_t used = 0; !rest.empty(); kept = text.size() - rest.size()) {
    used += Utf8::measure(Utf8::take(rest));
    if (used >= width) break;
  }
  return text.substr(0, kept) + "\xE2\x80\xA6";
}

std::size_t measure(const std::string& text) {
  std::size_t width = 0;
  for (std::string_view rest = text; !rest.empty();) width += Utf8::measure(Utf8::take(rest));
  return width;
}

std::string wrap(const std::vector<std::string>& items, const std::string& separator,
                 std::size_t width) {
  std::string text;
  std::string line;
  for (const std::string& item : items) {
    const bool hasRoom = measure(line) + measure(separator) + measure(item) <= width;
    if (!line.empty() && !hasRoom) text += std::exchange(line, "") + "\n";
    line += (line.empty() ? "" : separator) + item;
  }
  return text + line;
}

}  // namespace DisplayText
