#pragma once

#include <cstddef>

#include "xml_source.h"

namespace XmlRawCheck {

/// Refuses, with KvXmlError, what can no longer be seen once the text is parsed: control characters
/// that XML does not allow, and an '&' that starts no reference to a character that XML allows or
/// to one of its five entities. References are the parser's to resolve; one that it cannot resolve
/// would be printed as something else. The result is the number of references to '<', so that a
/// plain '<' in an attribute can be told from one that was resolved.
std::size_t check(const XmlSource::Text& text, const XmlSource::LineTable& lines);

}  // namespace XmlRawCheck
