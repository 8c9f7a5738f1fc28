#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kv/xml_position.h"
#include "request.h"
#include "text/charset.h"

namespace Engine {

/// The lines of a document, as people see them. The bytes must outlive it.
class Lines {
 public:
  explicit Lines(std::string_view document);

  std::size_t count() const { return begins.size(); }

  /// What stands around a place, which is marked: before, marked, after, isCutBefore, isCutAfter.
  Json cut(KvXmlPosition position) const;
  /// A whole line, unless it is very long: number, text, isCut.
  Json show(std::size_t line) const;
  /// The column of a place in UTF-16 code units.
  std::size_t countColumn(KvXmlPosition position) const;

 private:
  std::string_view get(std::size_t line) const;
  /// Some bytes in UTF-8, safe to show on one line.
  std::string makeVisible(std::string_view text) const;
  /// The first place from `place` on, which is in `text`, where a character starts.
  std::size_t align(std::string_view text, std::size_t place) const;

  std::string_view bytes;
  Charset charset;
  std::vector<std::size_t> begins;
};

}  // namespace Engine
