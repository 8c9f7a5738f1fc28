#pragma once

#include <cstddef>
#include <iosfwd>
#include <utility>

#include <pugixml.hpp>

#include "kv/xml_position.h"
#include "xml_source.h"

namespace XmlParse {

enum class Root { optional, required };

/// Whether a document is printed with indentation or with the white space that it was parsed with.
enum class Layout { free, kept };

/// Tells where in its file a name of a parsed document stood.
class Origin {
 public:
  /// That of a document that was not parsed.
  Origin() = default;
  /// Of one that was parsed in place from `text`.
  Origin(const char* text, std::size_t length, XmlSource::LineTable table)
      : begin(text), size(length), lines(std::move(table)) {}

  /// The position of `name`, less `before` characters that stand before it on the same line.
  KvXmlPosition find(const char* name, std::size_t before) const;

 private:
  const char* begin = nullptr;
  std::size_t size = 0;
  XmlSource::LineTable lines;
};

struct Parsed {
  Layout layout = Layout::free;
  Origin origin;
};

/// Parses `in` from its position to its end into `document`, which keeps every node but white
/// space between elements. Throws KvXmlError; `document` is then of no use.
Parsed parse(std::istream& in, pugi::xml_document& document, Root root);

}  // namespace XmlParse
