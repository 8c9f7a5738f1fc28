#pragma once

#include <cstddef>
#include <string_view>

/// Where things start and end in the text of a document, without parsing it. Of text that is not
/// well-formed an answer may be anything within it.
namespace Markup {

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

/// True for text that holds nothing but what may stand before a root element, each to its end.
bool isProlog(std::string_view text);

}  // namespace Markup
