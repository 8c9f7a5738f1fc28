#pragma once

#include "xml_source.h"

/// What is looked for in the characters of a text before it is parsed.
namespace XmlRawCheck {

struct Traits {
  bool isAscii = true;
  // Whether white space between elements may be part of a text and must be parsed.
  bool mayHoldText = false;
};

/// Refuses, with KvXmlError, control characters that XML does not allow.
Traits check(const XmlSource::Text& text, const XmlSource::LineTable& lines);

}  // namespace XmlRawCheck
