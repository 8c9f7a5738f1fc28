#pragma once

#include <pugixml.hpp>

#include "xml_parse.h"
#include "xml_source.h"

namespace XmlInspection {

/// Refuses, with KvXmlError, what the parser lets pass in `document`, which was parsed in place
/// from the text at `begin`, and learns the shapes of its elements. What is let pass on purpose is
/// changed so that it can be printed. Of a document that is plain, see XmlPlain, elements need not
/// be looked at.
void inspect(pugi::xml_document& document, const char* begin, const XmlSource::LineTable& lines,
             XmlParse::Parsed& parsed, bool isPlain);

}  // namespace XmlInspection
