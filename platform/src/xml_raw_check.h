#pragma once

#include <string_view>

#include "xml_source.h"

/// Checks of the characters of a text before it is parsed.
namespace XmlRawCheck {

/// Refuses, with KvXmlError, control characters that XML does not allow. Returns whether the text
/// is ASCII.
bool check(const XmlSource::Text& text, const XmlSource::LineTable& lines);

/// Whether white space between elements may be part of a text and must be parsed.
bool mayHoldText(std::string_view text);

}  // namespace XmlRawCheck
