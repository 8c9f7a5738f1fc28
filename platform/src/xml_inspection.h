#pragma once

#include <pugixml.hpp>

#include "xml_parse.h"
#include "xml_source.h"

namespace XmlInspection {

/// Refuses, with KvXmlError, malformed content that the parser accepts, and records the shapes of
/// elements. `document` was parsed in place from the text at `begin`. Malformed content that is
/// accepted on purpose is changed so that it can be printed. Elements of a plain document, see
/// XmlPlain, are not inspected.
void inspect(pugi::xml_document& document, const char* begin, const XmlSource::LineTable& lines,
             XmlParse::Parsed& parsed, bool isPlain);

}  // namespace XmlInspection
