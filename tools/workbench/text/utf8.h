#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Characters of text in UTF-8.
namespace Utf8 {

/// Some programs write it before a text.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The length of such a mark at the start of `bytes`; 0 where there is none.
constexpr std::size_t measureMark(std::string_view bytes) {
  return bytes.substr(0, byteOrderMark.size()) == byteOrderMark ? byteOrderMark.size() : 0;
}

/// Stands for a byte that is part of no character.
constexpr char32_t invalid = 0xFFFFFFFF;

/// Takes a character off the start of `text`, which is not empty, or a byte that is no UTF-8.
char32_t take(std::string_view& text);

void append(std::string& text, char32_t character);

bool isValid(std::string_view text);

bool isAscii(std::string_view text);

/// True for valid UTF-8 without characters that XML forbids or that end a line.
bool isXmlText(std::string_view text);

/// The text as it is searched for, whatever the case of its letters; what is no UTF-8 stays.
std::string fold(std::string_view text);

/// False for numbers that stand for no character.
bool isCharacter(std::uint32_t number);

/// How many places a character takes on a terminal: none where it stands over the one before it.
std::size_t measure(char32_t character);

/// True for characters without ink: spaces of all widths, and those that only say how others stand.
bool isBlank(char32_t character);
/// True for text that shows nothing.
bool isBlank(std::string_view text);
/// True for those of these characters that have no width either.
bool isHidden(char32_t character);

}  // namespace Utf8
