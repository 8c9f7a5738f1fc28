#pragma once

#include <pugixml.hpp>

#include "xml_raw_check.h"
#include "xml_source.h"

namespace XmlInspection {

/// Refuses, with KvXmlError, what the parser lets pass in `document`, which was parsed in place
/// from the text at `begin`.
void inspect(const pugi::xml_document& document, const char* begin,
             const XmlSource::LineTable& lines, const XmlRawCheck::MarkupCounts& counts);

}  // namespace XmlInspection
