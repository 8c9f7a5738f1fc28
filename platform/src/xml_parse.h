#pragma once

#include <iosfwd>

#include <pugixml.hpp>

namespace XmlParse {

enum class Root { optional, required };

/// Whether a document is printed with indentation or with the white space that it was parsed with.
enum class Layout { free, kept };

/// Parses `in` from its position to its end into `document`, which keeps every node but white
/// space between elements. Throws KvXmlError; `document` is then of no use.
Layout parse(std::istream& in, pugi::xml_document& document, Root root);

}  // namespace XmlParse
