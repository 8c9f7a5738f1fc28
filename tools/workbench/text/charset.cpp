#include "text/charset.h"

#include <charconv>
#include <system_error>

#include <fmt/format.h>

#include "text/utf8.h"

namespace {

struct Entity {
  std::string_view name;
  char32_t character;
};

constexpr Entity entities[] = {
    {"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}};

/// The character that `name`, which stands between '&' and ';', refers to.
std::optional<char32_t> findCharacter(std::string_view name) {
  for (const Entity& entity : entities)
    if (entity.name == name) return entity.character;
  if (name.substr(0, 1) != "#") return std::nullopt;
  const bool isHexadecimal = name.substr(1, 1) == "x";
  const std::string_view digits = name.substr(isHexadecimal ? 2 : 1);
  std::uint32_t character = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), character,
                                            isHexadecimal ? 16 : 10);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return Utf8::isCharacter(character) ? std::optional<char32_t>(character) : std::nullopt;
}

/// UTF-8 and the pages that cannot be told from it by their bytes, in lower case.
bool meansUtf8(std::string_view encoding) {
  std::string name;
  for (const char c : encoding)
    if (c != '-' && c != '_') name += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return name.empty() || name == "utf8" || name == "usascii" || name == "ascii";
}

const KvCodePage& getWindows1252() {
  static const KvCodePage page = *KvCodePage::find("windows-1252");
  return page;
}

char32_t decode(const KvCodePage& page, char byte) {
  const auto number = static_cast<unsigned char>(byte);
  return page.decode(byte).value_or(getWindows1252().decode(byte).value_or(number));
}

}  // namespace

Charset Charset::recognise(std::string_view encoding, std::string_view bytes) {
  Charset charset;
  charset.page = KvCodePage::find(std::string(encoding));
  if (charset.page || Utf8::isAscii(bytes)) return charset;
  charset.isOther = !meansUtf8(encoding);
  charset.isGuessed = !charset.isOther && !Utf8::isValid(bytes);
  if (charset.isGuessed) charset.page = getWindows1252();
  charset.isFalseUtf8 = charset.isGuessed && !encoding.empty();
  return charset;
}

std::string Charset::toUtf8(std::string_view bytes) const {
  if ((!page || isGuessed) && Utf8::isValid(bytes)) return std::string(bytes);
  std::string text;
  for (const char byte : bytes) Utf8::append(text, decode(page ? *page : getWindows1252(), byte));
  return text;
}

std::string Charset::readValue(std::string_view written) const {
  std::string text;
  while (!written.empty()) {
    const std::size_t special = written.find_first_of("&\t\n\r");
    text += toUtf8(written.substr(0, special));
    if (special == written.npos) break;
    written.remove_prefix(special);
    const std::size_t end = written.find(';');
    const auto character = written.front() == '&' && end != written.npos
                               ? findCharacter(written.substr(1, end - 1))
                               : std::nullopt;
    if (character) {
      Utf8::append(text, *character);
      written.remove_prefix(end + 1);
      continue;
    }
    text += written.front() == '&' ? '&' : ' ';
    written.remove_prefix(written.substr(0, 2) == "\r\n" ? 2 : 1);
  }
  return text;
}

void Charset::append(std::string& written, char32_t character) const {
  const bool isAscii = character < 0x80;
  if (isUtf8() || isAscii) return Utf8::append(written, character);
  const std::optional<char> byte = page && !isFalseUtf8 ? page->encode(character) : std::nullopt;
  written +=
      byte ? std::string(1, *byte) : fmt::format("&#{};", static_cast<std::uint32_t>(character));
}

std::string Charset::writeValue(std::string_view text, char quote) const {
  std::string written;
  while (!text.empty()) {
    const char first = text.front();
    const char32_t character = Utf8::take(text);
    if (first == '&')
      written += "&amp;";
    else if (first == '<')
      written += "&lt;";
    else if (first == quote)
      written += quote == '"' ? "&quot;" : "&apos;";
    else if (first == '\t' || first == '\n' || first == '\r')
      written += fmt::format("&#{};", static_cast<int>(first));
    else
      append(written, character);
  }
  return written;
}
