#include "kv/code_page.h"

#include "code_pages.h"

std::optional<KvCodePage> KvCodePage::find(const std::string& encoding) {
  const CodePages::CodePage* const found = CodePages::find(encoding);
  if (found == nullptr) return std::nullopt;
  return KvCodePage(*found);
}

std::optional<char32_t> KvCodePage::decode(char byte) const {
  const std::optional<std::uint32_t> character = CodePages::decode(*page, byte);
  if (!character) return std::nullopt;
  return static_cast<char32_t>(*character);
}

std::optional<char> KvCodePage::encode(char32_t character) const {
  return CodePages::encode(*page, character);
}
