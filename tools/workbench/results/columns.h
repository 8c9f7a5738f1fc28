#pragma once

#include <cstddef>
#include <string_view>

#include "kv/xml_position.h"
#include "text/charset.h"

namespace Results {

/// Tells places of a document in the columns of editors, which count UTF-16 code units. Quick for
/// places in the order of the document.
class Columns {
 public:
  /// The bytes must outlive it.
  Columns(std::string_view document, const Charset& encoding)
      : bytes(document), charset(encoding) {}

  /// The column, counted from 1, of a place in the document.
  std::size_t count(KvXmlPosition position);

 private:
  void goToLine(std::size_t wanted);

  std::string_view bytes;
  Charset charset;
  std::size_t line = 1;
  std::size_t lineBegin = 0;
  std::size_t done = 0;   // how many bytes of the line are counted
  std::size_t units = 0;  // which they are
};

}  // namespace Results
