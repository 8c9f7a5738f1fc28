#pragma once

#include <optional>
#include <string>

#include "kv/export.h"

namespace CodePages {
struct CodePage;
}

/// An encoding of a byte a character, of which the lower half is ASCII, for programs that edit
/// documents as bytes. A value; the tables behind it are constants.
class KV_API KvCodePage {
 public:
  /// What a document declares by this name or one of its usual aliases, in any letter case: one of
  /// ISO-8859, of Windows or of KOI8. None for all other names.
  static std::optional<KvCodePage> find(const std::string& encoding);

  /// The number of the character that `byte` stands for, if there is one.
  std::optional<char32_t> decode(char byte) const;

  /// The byte that stands for the character of this number, if there is one.
  std::optional<char> encode(char32_t character) const;

 private:
  explicit KvCodePage(const CodePages::CodePage& found) : page(&found) {}

  const CodePages::CodePage* page;
};
