#include "xml_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace XmlText {
namespace {

/// A range of characters that UTF-8 writes in the same number of bytes.
struct Utf8Range {
  unsigned char leadMask;
  unsigned char lead;
  std::size_t length;
  std::uint32_t lowest;  // smaller characters have a shorter sequence
};

constexpr Utf8Range utf8Ranges[] = {
    {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

constexpr std::uint32_t noCharacter = 0xFFFFFFFF;

/// Removes one character of more than one byte from the start of `text` and returns it. Returns
/// `noCharacter` and removes nothing when `text` starts with no such character that XML allows.
std::uint32_t takeSequence(std::string_view& text) {
  const auto byteAt = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  for (const Utf8Range& range : utf8Ranges) {
    if ((byteAt(0) & range.leadMask) != range.lead) continue;
    if (text.size() < range.length) return noCharacter;
    std::uint32_t character = byteAt(0) & static_cast<unsigned char>(~range.leadMask);
    for (std::size_t i = 1; i < range.length; ++i) {
      if ((byteAt(i) & 0xC0) != 0x80) return noCharacter;
      character = (character << 6) | (byteAt(i) & 0x3Fu);
    }
    if (character < range.lowest || !isXmlCharacter(character)) return noCharacter;
    text.remove_prefix(range.length);
    return character;
  }
  return noCharacter;
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

/// `text` is empty or starts with a byte that is not ASCII.
bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    if (takeSequence(text) == noCharacter) return false;
    text.remove_prefix(measureAscii(text));
  }
  return true;
}

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

// What XML allows at the start of a name, and what it also allows after the first character.
constexpr Range nameStarts[] = {
    {':', ':'},       {'A', 'Z'},       {'_', '_'},       {'a', 'z'},
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
    {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range nameParts[] = {
    {'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t Size>
bool isIn(const Range (&ranges)[Size], std::uint32_t character) {
  return std::any_of(std::begin(ranges), std::end(ranges), [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
}

/// Removes one character from the start of `name`, which is UTF-8 when `page` is null.
std::uint32_t takeCharacter(std::string_view& name, const CodePages::CodePage* page) {
  if (page == nullptr && (name[0] & 0x80) != 0) return takeSequence(name);
  const char first = name[0];
  name.remove_prefix(1);
  if (page == nullptr) return static_cast<unsigned char>(first);
  return CodePages::decode(*page, first).value_or(noCharacter);
}

bool isNameIn(const CodePages::CodePage* page, std::string_view name) {
  if (!isIn(nameStarts, takeCharacter(name, page))) return false;
  while (!name.empty()) {
    const std::uint32_t character = takeCharacter(name, page);
    if (!isIn(nameStarts, character) && !isIn(nameParts, character)) return false;
  }
  return true;
}

constexpr std::string_view reserved = "xml";

}  // namespace

bool isXmlCharacter(std::uint32_t character) {
  if (character < 0x20) return !isForbidden(static_cast<char>(character));
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  return !isSurrogate && character != 0xFFFE && character != 0xFFFF && character <= 0x10FFFF;
}

bool isName(std::string_view name, const CodePages::CodePage* page) {
  if (name.empty()) return false;
  if (isPlainLetter(name[0]) && std::all_of(name.begin(), name.end(), isPlainPart)) return true;
  const bool asUtf8 = isUtf8(name.substr(measureAscii(name)));
  if (asUtf8 && isNameIn(nullptr, name)) return true;
  if (page == nullptr && !asUtf8) page = CodePages::find("windows-1252");
  return page != nullptr && isNameIn(page, name);
}

bool isReservedTarget(std::string_view target) {
  const auto isLike = [](char a, char b) { return (a | 0x20) == b; };
  return std::equal(target.begin(), target.end(), reserved.begin(), reserved.end(), isLike);
}

void appendUtf8(std::string& text, std::uint32_t character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  const Utf8Range* range = std::begin(utf8Ranges);
  while (std::next(range) != std::end(utf8Ranges) && character >= std::next(range)->lowest) ++range;
  std::size_t shift = 6 * (range->length - 1);
  text += static_cast<char>(range->lead | (character >> shift));
  while (shift > 0) {
    shift -= 6;
    text += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  }
}

bool isAscii(std::string_view text) { return measureAscii(text) == text.size(); }

void EncodingChoice::add(std::string_view text) {
  text.remove_prefix(measureAscii(text));
  constexpr std::string_view undefinedIn1252 = "\x81\x8D\x8F\x90\x9D";
  fitsUtf8 = fitsUtf8 && isUtf8(text);
  fits1252 = fits1252 && text.find_first_of(undefinedIn1252) == std::string_view::npos;
}

void EncodingChoice::addName(std::string_view name) {
  add(name);
  const auto isControl = [](char c) { return (c & 0xE0) == 0x80; };
  fitsLatin1 = fitsLatin1 && std::none_of(name.begin(), name.end(), isControl);
}

const char* EncodingChoice::get() const {
  if (fitsUtf8) return "UTF-8";
  return fits1252 || !fitsLatin1 ? "windows-1252" : "ISO-8859-1";
}

}  // namespace XmlText
