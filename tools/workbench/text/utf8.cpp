#include "text/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include <utf8proc.h>

namespace Utf8 {
namespace {

utf8proc_int32_t toLibrary(char32_t character) { return static_cast<utf8proc_int32_t>(character); }

}  // namespace

char32_t take(std::string_view& text) {
  utf8proc_int32_t character = 0;
  const auto* const bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  const utf8proc_ssize_t length =
      utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &character);
  text.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : 1);
  return length > 0 ? static_cast<char32_t>(character) : invalid;
}

void append(std::string& text, char32_t character) {
  utf8proc_uint8_t bytes[4] = {};
  const utf8proc_ssize_t length = utf8proc_encode_char(toLibrary(character), bytes);
  text.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

bool isValid(std::string_view text) {
  while (!text.empty())
    if (take(text) == invalid) return false;
  return true;
}

bool isAscii(std::string_view text) {
  std::uint64_t word = 0;
  for (; text.size() >= sizeof word; text.remove_prefix(sizeof word)) {
    std::memcpy(&word, text.data(), sizeof word);
    if ((word & 0x8080808080808080U) != 0) return false;
  }
  return std::all_of(text.begin(), text.end(), [](char byte) { return (byte & 0x80) == 0; });
}

bool isXmlText(std::string_view text) {
  while (!text.empty()) {
    const char32_t c = take(text);
    if (c == invalid || c < 0x20 || c == 0x7F || c == 0xFFFE || c == 0xFFFF) return false;
  }
  return true;
}

std::string fold(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  while (!text.empty()) {
    const char byte = text.front();
    const char32_t character = take(text);
    if (character == invalid)
      folded += byte;
    else
      append(folded, static_cast<char32_t>(utf8proc_tolower(toLibrary(character))));
  }
  return folded;
}

bool isCharacter(std::uint32_t number) {
  return number <= 0x7FFFFFFF && utf8proc_codepoint_valid(static_cast<utf8proc_int32_t>(number));
}

std::size_t measure(char32_t character) {
  return character == invalid ? 1
                              : static_cast<std::size_t>(utf8proc_charwidth(toLibrary(character)));
}

bool isBlank(char32_t character) {
  return utf8proc_category(toLibrary(character)) == UTF8PROC_CATEGORY_ZS || isHidden(character);
}

bool isBlank(std::string_view text) {
  while (!text.empty())
    if (!isBlank(take(text))) return false;
  return true;
}

bool isHidden(char32_t character) {
  return utf8proc_category(toLibrary(character)) == UTF8PROC_CATEGORY_CF;
}

}  // namespace Utf8
