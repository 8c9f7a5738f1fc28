#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// Finds where things start and end in the text of a document without parsing it. In malformed text
/// the result may be any place.
namespace Markup {

/// Bytes from `begin` up to `end`.
struct Range {
  std::size_t begin;
  std::size_t end;
};

constexpr std::size_t nowhere = std::string_view::npos;

/// The end of the tag, comment, processing instruction, CDATA section or document type declaration
/// that starts at `start`; nowhere when it is not closed.
std::size_t findEnd(std::string_view text, std::size_t start);

/// The end of the element that starts at `start`, behind its end tag; nowhere when it is not
/// closed.
std::size_t findElementEnd(std::string_view text, std::size_t start);

/// The start of the root element, behind a byte order mark and everything else that may come before
/// it; nowhere when there is no root element, or when other text comes first.
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

/// The start tag that starts at `start`. The text must be well-formed.
StartTag readStartTag(std::string_view text, std::size_t start);

/// The encoding that the XML declaration at the start of `text` names; empty when it names none,
/// and when a byte order mark stands for UTF-8.
std::string_view readEncoding(std::string_view text);

/// True when `text` holds only what may come before a root element, and everything is closed.
bool isProlog(std::string_view text);

}  // namespace Markup
