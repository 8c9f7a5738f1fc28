#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Encodings of 8-bit text whose lower half is ASCII.
namespace CodePages {

/// An encoding with one byte for each character.
struct CodePage {
  std::string_view name;       // in lower case, without '-' and '_'
  const char16_t* characters;  // of the bytes from `first` on; a lower byte is its own character
  std::uint32_t first;
};

/// The code page of this name or alias, in any letter case; null for an uncommon or unknown name.
const CodePage* find(std::string_view encoding);

/// True when bytes beyond ASCII have another meaning in the encoding of this name than in UTF-8 and
/// windows-1252. That holds for the code pages that find() knows, for other encodings with one byte
/// for each character, and for the East Asian encodings that extend ASCII.
bool isOtherThanUtf8(std::string_view encoding);

/// The byte that stands for the character of this number, if there is one.
std::optional<char> encode(const CodePage& page, std::uint32_t character);

/// The number of the character that `byte` stands for, if there is one.
std::optional<std::uint32_t> decode(const CodePage& page, char byte);

}  // namespace CodePages
