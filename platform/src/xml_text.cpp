#include "xml_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace XmlText {
namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isNameStart(char c) { return isLetter(c) || c == '_' || c == ':' || (c & 0x80) != 0; }

bool isNamePart(char c) { return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

/// A range of characters that UTF-8 writes in the same number of bytes.
struct Utf8Range {
  unsigned char leadMask;
  unsigned char lead;
  std::size_t length;
  std::uint32_t lowest;  // below it the sequence is longer than need be
};

constexpr Utf8Range utf8Ranges[] = {
    {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

/// The length of the UTF-8 sequence of more than one byte that `text` starts with; 0 when it
/// starts with none that XML allows.
std::size_t measureSequence(std::string_view text) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  for (const Utf8Range& range : utf8Ranges) {
    if ((byteAt(0) & range.leadMask) != range.lead) continue;
    if (text.size() < range.length) return 0;
    std::uint32_t character = byteAt(0) & static_cast<unsigned char>(~range.leadMask);
    for (std::size_t i = 1; i < range.length; ++i) {
      if ((byteAt(i) & 0xC0) != 0x80) return 0;
      character = (character << 6) | (byteAt(i) & 0x3Fu);
    }
    return character >= range.lowest && isXmlCharacter(character) ? range.length : 0;
  }
  return 0;
}

/// The length of the plain ASCII that `text` starts with, eight bytes at a time while it lasts.
std::size_t measureAscii(std::string_view text) {
  constexpr std::uint64_t highBits = 0x8080808080808080u;
  std::size_t i = 0;
  for (std::uint64_t word = 0; i + sizeof word <= text.size(); i += sizeof word) {
    std::memcpy(&word, text.data() + i, sizeof word);
    if ((word & highBits) != 0) break;
  }
  while (i < text.size() && (text[i] & 0x80) == 0) ++i;
  return i;
}

/// `text` starts with a byte that is not ASCII.
bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = measureSequence(text);
    if (length == 0) return false;
    text.remove_prefix(length);
    text.remove_prefix(measureAscii(text));
  }
  return true;
}

}  // namespace

bool isForbidden(char c) {
  const bool isControl = static_cast<unsigned char>(c) < 0x20;
  return isControl && c != '\t' && c != '\n' && c != '\r';
}

bool isXmlCharacter(std::uint32_t character) {
  if (character < 0x20) return !isForbidden(static_cast<char>(character));
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  return !isSurrogate && character != 0xFFFE && character != 0xFFFF && character <= 0x10FFFF;
}

bool isName(std::string_view name) {
  return !name.empty() && isNameStart(name[0]) && std::all_of(name.begin(), name.end(), isNamePart);
}

std::string replaceForbidden(const std::string& text) {
  std::string result = text;
  std::replace_if(result.begin(), result.end(), isForbidden, '?');
  return result;
}

void EncodingChoice::add(std::string_view text) {
  text.remove_prefix(measureAscii(text));
  if (text.empty()) return;
  constexpr std::string_view undefinedIn1252 = "\x81\x8D\x8F\x90\x9D";
  fitsUtf8 = fitsUtf8 && isUtf8(text);
  fits1252 = fits1252 && text.find_first_of(undefinedIn1252) == std::string_view::npos;
}

const char* EncodingChoice::get() const {
  if (fitsUtf8) return "UTF-8";
  return fits1252 ? "windows-1252" : "ISO-8859-1";
}

}  // namespace XmlText
