#pragma once

#include <cstddef>

#include "xml_source.h"

namespace XmlRawCheck {

/// What no longer shows once the text is parsed: how often the marks of markup stand in it.
struct MarkupCounts {
  std::size_t plain = 0;       // '<', all but those of end tags
  std::size_t ends = 0;        // of elements: "</" and "/>"
  std::size_t references = 0;  // to '<': "&lt;" and the like
  bool hasCdata = false;       // "<![CDATA[" occurs
};

/// Refuses, with KvXmlError, what can no longer be seen once the text is parsed: control characters
/// that XML does not allow, and an '&' that starts no reference to a character that XML allows or
/// to one of its five entities. References are the parser's to resolve; one that it cannot resolve
/// would be printed as something else.
MarkupCounts check(const XmlSource::Text& text, const XmlSource::LineTable& lines);

}  // namespace XmlRawCheck
