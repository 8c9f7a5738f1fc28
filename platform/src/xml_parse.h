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

  /// True when `place` lies in the text that was parsed.
  bool contains(const char* place) const {
    const std::less<> isBefore;
    return begin != nullptr && !isBefore(place, begin) && isBefore(place, begin + size);
  }

 private:
  const char* begin = nullptr;
  std::size_t size = 0;
  XmlSource::LineTable lines;
};

// Nobody reads the '<' before an element's name any more once that was parsed, but for a NUL there
// that ends a text. In documents without texts the number of the element's shape takes its place.

inline unsigned char getShapeNumber(const char* element) {
  return static_cast<unsigned char>(element[-1]);
}

inline void setShapeNumber(const char* element, unsigned char number) {
  const_cast<char*>(element)[-1] = static_cast<char>(number);
}

/// The quote that the value of an attribute stands between, which the parser leaves in its text.
inline char findQuote(const pugi::xml_attribute& attribute, const Origin& origin) {
  const char* const value = attribute.value();
  return origin.contains(value) ? value[-1] : '"';
}

/// Lets a value that is set anew stand between the usual quotes, also where the parser puts it in
/// the place of the one before.
inline void resetQuote(const pugi::xml_attribute& attribute, const Origin& origin) {
  const char* const value = attribute.value();
  if (origin.contains(value)) const_cast<char*>(value)[-1] = '"';
}

/// What is known of a document beside its nodes; as it stands here, of one that was not parsed.
struct Parsed {
  std::string encoding;                       // as declared; empty when it is not
  const CodePages::CodePage* page = nullptr;  // that of `encoding`, where it is a usual one
  bool isAscii = true;
  bool mayHoldText = false;  // other than in attributes
  Origin origin;
  KvXmlView::Shapes shapes;  // of its elements, as far as they are known
};

/// Parses `in` from its position to its end into `document`, which keeps all values and texts as
/// they are written, and every node but white space between elements that hold no text. Throws
/// KvXmlError; `document` is then of no use.
Parsed parse(std::istream& in, pugi::xml_document& document, Root root);

}  // namespace XmlParse
