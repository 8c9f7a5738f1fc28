#include "text/encoding.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "text/utf8.h"

namespace Encoding {
namespace {

// The characters of windows-1252 at the control characters of ISO-8859-1. Five are not defined.
constexpr std::uint16_t windows1252[32] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
constexpr char32_t firstOther = 0x80;
constexpr char32_t firstSame = 0xA0;  // as in ISO-8859-1, whose numbers are those of the bytes

char32_t fromCodePage(char byte) {
  const auto c = static_cast<unsigned char>(byte);
  return c >= firstOther && c < firstSame ? windows1252[c - firstOther] : c;
}

/// '?' for a character that the code page lacks.
char toCodePage(char32_t c) {
  if (c < firstOther || (c >= firstSame && c <= 0xFF)) return static_cast<char>(c);
  const auto* const found = std::find(std::begin(windows1252), std::end(windows1252), c);
  if (found == std::end(windows1252)) return '?';
  return static_cast<char>(firstOther + static_cast<char32_t>(found - std::begin(windows1252)));
}

}  // namespace

Kind recognise(const std::string& text) {
  const auto isAscii = [](char byte) { return (byte & 0x80) == 0; };
  if (std::all_of(text.begin(), text.end(), isAscii)) return Kind::ascii;
  return Utf8::isValid(text) ? Kind::utf8 : Kind::codePage;
}

std::string toUtf8(const std::string& name) {
  if (Utf8::isValid(name)) return name;
  std::string text;
  for (const char byte : name) Utf8::append(text, fromCodePage(byte));
  return text;
}

std::string convert(const std::string& name, Kind kind) {
  if (kind == Kind::ascii) return name;
  std::string utf8 = toUtf8(name);
  if (kind == Kind::utf8) return utf8;
  std::string text;
  for (std::string_view rest = utf8; !rest.empty();) text += toCodePage(Utf8::take(rest));
  return text;
}

}  // namespace Encoding
