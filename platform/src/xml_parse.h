#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <utility>

#include <pugixml.hpp>

#include "code_pages.h"
#include "kv/xml_position.h"
#include "xml_shapes.h"
#include "xml_source.h"

namespace XmlParse {

enum class Root { optional, required };

/// Finds the place of a parsed name in its file.
class Origin {
 public:
  /// For a document that was not parsed.
  Origin() = default;
  /// For a document that was parsed in place from `text`.
  Origin(const char* text, std::size_t length, XmlSource::LineTable table)
      : begin(text), size(length), lines(std::move(table)) {}

  /// The position `before` characters before `name`, on the same line.
  KvXmlPosition find(const char* name, std::size_t before) const;

  /// True when `place` lies in the text that was parsed.
  bool contains(const char* place) const {
    const std::less<> isBefore;
    return !isBefore(place, begin) && isBefore(place, begin + size);
  }

 private:
  const char* begin = nullptr;
  std::size_t size = 0;
  XmlSource::LineTable lines;
};

// After parsing, the byte of the '<' before an element's name is free, unless it holds the NUL that
// ends a text. In documents without texts it holds the number of the element's shape.

inline unsigned char getShapeNumber(const char* element) {
  return static_cast<unsigned char>(element[-1]);
}

inline void setShapeNumber(const char* element, unsigned char number) {
  const_cast<char*>(element)[-1] = static_cast<char>(number);
}

/// The quote around the value of an attribute. The parser leaves it in the text.
inline char findQuote(const pugi::xml_attribute& attribute, const Origin& origin) {
  const char* const value = attribute.value();
  return origin.contains(value) ? value[-1] : '"';
}

/// Gives a value that is set anew the usual quotes, also when the parser writes it over the old
/// one.
inline void resetQuote(const pugi::xml_attribute& attribute, const Origin& origin) {
  const char* const value = attribute.value();
  if (origin.contains(value)) const_cast<char*>(value)[-1] = '"';
}

/// What is known of a document beside its nodes. The defaults describe one that was not parsed.
struct Parsed {
  std::string encoding;                       // as declared; empty when it is not
  const CodePages::CodePage* page = nullptr;  // that of `encoding`, where it is a usual one
  bool isAscii = true;
  bool mayHoldText = false;  // other than in attributes, or white space that an element preserves
  Origin origin;
  KvXmlView::Shapes shapes;  // of its elements, as far as they are known
};

/// Parses `in` from its position to its end into `document`. Keeps all values and texts as they are
/// written, and all nodes except white space between elements that hold no text. Throws KvXmlError;
/// `document` must not be used then.
Parsed parse(std::istream& in, pugi::xml_document& document, Root root);

}  // namespace XmlParse
