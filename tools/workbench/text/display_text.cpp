#include "text/display_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <utility>

namespace DisplayText {
namespace {

// What windows-1252 puts where ISO-8859-1 has control characters. Five places are not defined.
constexpr std::uint16_t windows1252[32] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

constexpr char32_t invalid = 0xFFFFFFFF;

/// Takes one character off `text` at `place`; `invalid`, and nothing taken, when it is no UTF-8.
char32_t takeUtf8(const std::string& text, std::size_t& place) {
  const auto lead = static_cast<unsigned char>(text[place]);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length == 0 || place + length > text.size()) return invalid;
  char32_t character = length == 1 ? lead : lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[place + i]);
    if ((next & 0xC0) != 0x80) return invalid;
    character = (character << 6) | (next & 0x3Fu);
  }
  constexpr char32_t lowest[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < lowest[length] || isSurrogate || character > 0x10FFFF) return invalid;
  place += length;
  return character;
}

bool isUtf8(const std::string& text) {
  for (std::size_t place = 0; place < text.size();)
    if (takeUtf8(text, place) == invalid) return false;
  return true;
}

void appendUtf8(std::string& text, char32_t c) {
  const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (c < 0x80) return append(c);
  if (c < 0x800) {
    append(0xC0 | (c >> 6));
  } else if (c < 0x10000) {
    append(0xE0 | (c >> 12));
    append(0x80 | ((c >> 6) & 0x3F));
  } else {
    append(0xF0 | (c >> 18));
    append(0x80 | ((c >> 12) & 0x3F));
    append(0x80 | ((c >> 6) & 0x3F));
  }
  append(0x80 | (c & 0x3F));
}

/// Ranges of characters: those that take no place of their own, those that end a line or change the
/// direction of writing, and those that take two places.
struct Range {
  char32_t first;
  char32_t last;
};
constexpr Range combining[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD},
                               {0x0610, 0x061A}, {0x064B, 0x065F}, {0x1AB0, 0x1AFF},
                               {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x20D0, 0x20FF},
                               {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};
constexpr Range directing[] = {
    {0x061C, 0x061C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF}};
constexpr Range wide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x33FF},
                          {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},
                          {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
                          {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F},
                          {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

template <std::size_t Size>
bool isIn(const Range (&ranges)[Size], char32_t c) {
  return std::any_of(std::begin(ranges), std::end(ranges),
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
  else if (isIn(directing, c))
    ((((text += "\\u") += digits[c >> 12]) += digits[(c >> 8) & 15]) += digits[(c >> 4) & 15]) +=
        digits[c & 15];
  else
    appendUtf8(text, c);
}

/// Like takeUtf8(), but a byte that is no UTF-8 counts as a character of its own.
char32_t takeAny(const std::string& text, std::size_t& place) {
  const char32_t c = takeUtf8(text, place);
  if (c == invalid) ++place;
  return c;
}

std::size_t measureCharacter(char32_t c) { return isIn(combining, c) ? 0 : isIn(wide, c) ? 2 : 1; }

char32_t fromCodePage(char byte) {
  const auto c = static_cast<unsigned char>(byte);
  return c >= 0x80 && c < 0xA0 ? windows1252[c - 0x80] : c;
}

}  // namespace

std::string toUtf8(const std::string& name) {
  if (isUtf8(name)) return name;
  std::string text;
  for (const char byte : name) appendUtf8(text, fromCodePage(byte));
  return text;
}

std::string fromName(const std::string& name) {
  const std::string utf8 = toUtf8(name);
  std::string text;
  for (std::size_t place = 0; place < utf8.size();) appendEscaped(text, takeUtf8(utf8, place));
  return text;
}

std::string fromNumber(double value) {
  if (std::isnan(value)) return "nan";  // whatever its sign, which means nothing
  const double magnitude = std::fabs(value);
  const bool isPlain = magnitude == 0.0 || (magnitude >= 1e-6 && magnitude < 1e15);
  char buffer[64];
  const auto result =
      std::to_chars(buffer, std::end(buffer), value,
                    isPlain ? std::chars_format::fixed : std::chars_format::general);
  return std::string(buffer, result.ptr);
}

std::string shorten(const std::string& text, std::size_t width) {
  if (measure(text) <= width) return text;
  std::size_t place = 0;
  for (std::size_t used = 0; place < text.size();) {
    std::size_t next = place;
    used += measureCharacter(takeAny(text, next));
    if (used >= width) break;
    place = next;
  }
  return text.substr(0, place) + "\xE2\x80\xA6";
}

std::size_t measure(const std::string& text) {
  std::size_t width = 0;
  for (std::size_t place = 0; place < text.size();) width += measureCharacter(takeAny(text, place));
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
