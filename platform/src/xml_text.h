#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "code_pages.h"

/// What XML allows of names and characters.
namespace XmlText {

constexpr int greatestDepth =
    1000;  // levels of elements that can be read, the root being the first

// The characters of nearly all names in documents.
constexpr bool isPlainLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
constexpr bool isPlainPart(char c) {
  return isPlainLetter(c) || (c >= '0' && c <= '9') || c == '_';
}

/// True when `name` may name an element or an attribute. It may be in UTF-8 or in the code page of
/// its document; a null page stands for windows-1252. UTF-8 is always accepted, since a host may
/// set other bytes in a document with such names, and what is printed then must read back.
bool isName(std::string_view name, const CodePages::CodePage* page);

/// True for "xml" in any letter case, which names the declaration of a document and no instruction.
bool isReservedTarget(std::string_view target);

/// True for control characters that no XML document can hold, not even as a reference. Has no
/// branch, so that loops over whole documents are fast.
inline bool isForbidden(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < 0x20) & (byte != '\t') & (byte != '\n') & (byte != '\r');
}

/// True when XML allows the character of this number.
bool isXmlCharacter(std::uint32_t character);

/// Appends the character of this number in UTF-8.
void appendUtf8(std::string& text, std::uint32_t character);

/// True when all of `text` is ASCII.
bool isAscii(std::string_view text);

/// Chooses an encoding in which the bytes of all added texts are valid: "UTF-8" when they are UTF-8
/// of characters that XML allows, else "windows-1252", or "ISO-8859-1" when there are bytes that
/// windows-1252 does not define and all names are valid in it.
class EncodingChoice {
 public:
  void add(std::string_view text);
  /// Adds a name, in which the control characters of ISO-8859-1 are not allowed.
  void addName(std::string_view name);
  const char* get() const;

 private:
  bool fitsUtf8 = true;
  bool fits1252 = true;
  bool fitsLatin1 = true;
};

}  // namespace XmlText
