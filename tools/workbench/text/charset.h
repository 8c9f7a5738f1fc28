#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "kv/code_page.h"

/// How the bytes of a document stand for characters. Text within the workbench is UTF-8.
class Charset {
 public:
  /// Of a document that declares `encoding`, which is empty where it declares none. One that holds
  /// no UTF-8, although it should, counts as windows-1252.
  static Charset recognise(std::string_view encoding, std::string_view bytes);

  bool isUtf8() const { return !isOther && !page; }

  /// `bytes` of the document in UTF-8. What is no character counts as one of windows-1252.
  std::string toUtf8(std::string_view bytes) const;

  /// The value of an attribute, which stands in the document as `written`, in UTF-8: references
  /// are resolved, and white space is blanks.
  std::string readValue(std::string_view written) const;

  /// How `text`, which is UTF-8, stands in the document as a value between quotes of this kind.
  /// Characters that the document cannot hold become references.
  std::string writeValue(std::string_view text, char quote) const;

 private:
  void append(std::string& written, char32_t character) const;

  std::optional<KvCodePage> page;
  bool isGuessed = false;    // the page; single values may be UTF-8 all the same
  bool isFalseUtf8 = false;  // it is declared, but not true
  bool isOther = false;      // an encoding that is not known here; ASCII stands for itself
};
