#pragma once

#include <iosfwd>

#include <pugixml.hpp>

namespace XmlParse {

enum class Root { optional, required };

/// Parses `in` from its position to its end into `document`, which keeps every node but white
/// space between elements. Throws KvXmlError; `document` is then of no use.
void parse(std::istream& in, pugi::xml_document& document, Root root);

}  // namespace XmlParse
