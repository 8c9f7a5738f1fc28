#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// Where things start and end in the text of a document, without parsing it. Of text that is not
/// well-formed an answer may be anything within it.
namespace Markup {

/// Bytes from `begin` up to `end`.
struct Range {
  std::size_t begin;
  std::size_t end;
};

constexpr std::size_t nowhere = std::string_view::npos;

/// The end of the tag, comment, processing instruction, CDATA section or document type declaration
/// that starts at `start`; nowhere when it has none.
std::size_t findEnd(std::string_view text, std::size_t start);

/// The end of the element that starts at `start`, behind its end tag; nowhere when it has none.
std::size_t findElementEnd(std::string_view text, std::size_t start);

/// Where the root element starts, behind a byte order mark and all that may stand before it;
/// nowhere when something else stands there, or nothing does.
std::size_t findRoot(std::string_view text);

/// The name of the element that starts at `start`.
std::string_view readName(std::string_view text, std::size_t start);

/// An attribute in a start tag.
struct Attribute {
  std::string_view name;
  Range all;    // from the white space before its name to behind its closing quote
  Range value;  // between the quotes
  char quote;
};

struct StartTag {
  std::size_t begin;
  std::size_t nameEnd;
  std::vector<Attribute> attributes;
  std::size_t end;       // behind its '>'
  bool isEmpty = false;  // closed in itself

  /// Null when there is none.
  const Attribute* find(std::string_view name) const;
};

/// The tag that starts at `start`, which is that of an element in well-formed text.
StartTag readStartTag(std::string_view text, std::size_t start);

/// The encoding that the XML declaration at the start of `text` names; empty when it names none,
/// and when a byte order mark says that it is UTF-8.
std::string_view readEncoding(std::string_view text);

/// True for text that holds nothing but what may stand before a root element, each to its end.
bool isProlog(std::string_view text);

}  // namespace Markup
