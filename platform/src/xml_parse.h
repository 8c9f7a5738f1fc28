#pragma once

#include <iosfwd>

#include <pugixml.hpp>

namespace XmlParse {

/// Parses `in` from its position to its end into `document`, which keeps every node but white
/// space between elements. Throws KvXmlError; `document` is then of no use.
void parse(std::istream& in, pugi::xml_document& document);

/// The root element, null when there is none.
pugi::xml_node findRoot(const pugi::xml_document& document);

}  // namespace XmlParse
