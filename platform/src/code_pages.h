#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Encodings of 8-bit text, of which the lower half is ASCII.
namespace CodePages {

/// One of a byte a character.
struct CodePage {
  std::string_view name;       // in lower case, without '-' and '_'
  const char16_t* characters;  // of the bytes from `first` on; those below have their own numbers
  std::uint32_t first;
};

/// The code page that a document declares by this name or one of its usual aliases, in any letter
/// case; null when it is none of the usual ones.
const CodePage* find(std::string_view encoding);

/// True when bytes beyond ASCII mean something in the encoding of this name that neither UTF-8 nor
/// windows-1252 would say: in the code pages above, others of a byte a character, and the encodings
/// of East Asia that leave ASCII alone.
bool isOtherThanUtf8(std::string_view encoding);

/// The byte that stands for the character of this number, if there is one.
std::optional<char> encode(const CodePage& page, std::uint32_t character);

/// The number of the character that `byte` stands for, if there is one.
std::optional<std::uint32_t> decode(const CodePage& page, char byte);

}  // namespace CodePages
