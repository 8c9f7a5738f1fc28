#include "xml_value.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "number_text.h"
#include "xml_text.h"

namespace XmlValue {
namespace {

struct Entity {
  std::string_view name;
  char character;
};

constexpr Entity entities[] = {
    {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

std::optional<std::uint32_t> readCharacterNumber(std::string_view digits, int base) {
  std::uint32_t character = 0;
  const char* const end = digits.data() + digits.size();
  const std::from_chars_result result = std::from_chars(digits.data(), end, character, base);
  const bool isNumber = result.ec == std::errc() && result.ptr == end;
  if (!isNumber || !XmlText::isXmlCharacter(character)) return std::nullopt;
  return character;
}

/// The character that a reference stands for, if there is one. `name` is its text between '&' and
/// ';'.
std::optional<std::uint32_t> findCharacter(std::string_view name) {
  if (name.substr(0, 2) == "#x") return readCharacterNumber(name.substr(2), 16);
  if (name.substr(0, 1) == "#") return readCharacterNumber(name.substr(1), 10);
  for (const Entity& entity : entities)
    if (entity.name == name) return static_cast<std::uint32_t>(entity.character);
  return std::nullopt;
}

struct Reference {
  std::uint32_t character;
  std::size_t length;  // in the text, with '&' and ';'
};

/// The reference at the start of `text`, which starts with '&'.
std::optional<Reference> readReference(std::string_view text) {
  const std::size_t end = text.find(';');
  if (end == text.npos) return std::nullopt;
  const std::optional<std::uint32_t> character = findCharacter(text.substr(1, end - 1));
  if (!character) return std::nullopt;
  return Reference{*character, end + 1};
}

void append(std::string& text, std::uint32_t character, const CodePages::CodePage* page) {
  const auto byte = page != nullptr ? CodePages::encode(*page, character) : std::nullopt;
  if (byte)
    text += *byte;
  else
    XmlText::appendUtf8(text, character);
}

bool hasReference(std::string_view written) { return written.find('&') != written.npos; }

/// How `c` is written, or null when it is written as itself.
const char* findEscape(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '"':
      return "&quot;";
    case '\t':
      return "&#09;";
    case '\n':
      return "&#10;";
    case '\r':
      return "&#13;";
    default:
      return XmlText::isForbidden(c) ? "?" : nullptr;
  }
}

}  // namespace

bool isPlain(std::string_view written) {
  return std::none_of(written.begin(), written.end(),
                      [](char c) { return c == '&' || static_cast<unsigned char>(c) < ' '; });
}

std::string resolve(std::string_view written, const CodePages::CodePage* page) {
  if (isPlain(written)) return std::string(written);
  std::string meant;
  meant.reserve(written.size());
  for (std::size_t at = 0; at < written.size();) {
    const std::string_view rest = written.substr(at);
    if (const auto reference = rest[0] == '&' ? readReference(rest) : std::nullopt) {
      append(meant, reference->character, page);
      at += reference->length;
      continue;
    }
    const bool isControl = static_cast<unsigned char>(rest[0]) < ' ';
    meant += isControl ? ' ' : rest[0];
    at += rest.substr(0, 2) == "\r\n" ? 2 : 1;
  }
  return meant;
}

std::optional<int> readInteger(std::string_view written) {
  const std::optional<int> number = NumberText::parseInteger(written);
  if (number || !hasReference(written)) return number;
  return NumberText::parseInteger(resolve(written, nullptr));
}

std::optional<double> readDouble(std::string_view written) {
  const std::optional<double> number = NumberText::parseDouble(written);
  if (number || !hasReference(written)) return number;
  return NumberText::parseDouble(resolve(written, nullptr));
}

bool isWrittenAsItIs(std::string_view meant) {
  return std::none_of(meant.begin(), meant.end(), [](char c) {
    return c == '&' || c == '<' || c == '"' || static_cast<unsigned char>(c) < ' ';
  });
}

std::string write(std::string_view meant) {
  std::string written;
  written.reserve(meant.size());
  for (const char c : meant) {
    const char* const escape = findEscape(c);
    if (escape != nullptr)
      written += escape;
    else
      written += c;
  }
  return written;
}

std::size_t findBadReference(std::string_view written) {
  for (std::size_t at = written.find('&'); at != written.npos; at = written.find('&', at + 1))
    if (!readReference(written.substr(at))) return at;
  return std::string_view::npos;
}

}  // namespace XmlValue
