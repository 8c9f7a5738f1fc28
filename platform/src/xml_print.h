#pragma once

#include <iosfwd>

#include <pugixml.hpp>

#include "xml_parse.h"

namespace XmlPrint {

/// Prints all of `document` but the top-level node `hidden`, after a declaration on a line of its
/// own, see KvXmlTree::putToStream().
void print(const pugi::xml_document& document, const pugi::xml_node& hidden,
           const XmlParse::Parsed& parsed, std::ostream& out);

}  // namespace XmlPrint
