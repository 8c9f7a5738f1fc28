#pragma once

#include <pugixml.hpp>

#include "kv/xml_view.h"

// Inline, since a document of many foundations asks for millions of attributes.
namespace KvXmlView {

// Handles are the parser's own pointers under a name that does not tell which parser it is.

inline NodeHandle* toHandle(const pugi::xml_node& node) {
  return reinterpret_cast<NodeHandle*>(node.internal_object());
}

inline pugi::xml_node fromHandle(NodeHandle* handle) {
  return pugi::xml_node(reinterpret_cast<pugi::xml_node_struct*>(handle));
}

inline AttributeHandle* toHandle(const pugi::xml_attribute& attribute) {
  return reinterpret_cast<AttributeHandle*>(attribute.internal_object());
}

inline pugi::xml_attribute fromHandle(AttributeHandle* handle) {
  return pugi::xml_attribute(reinterpret_cast<pugi::xml_attribute_struct*>(handle));
}

}  // namespace KvXmlView
