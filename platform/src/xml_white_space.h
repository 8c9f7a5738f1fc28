#pragma once

#include <cstring>

#include <pugixml.hpp>

/// White space between elements, which counts only where an element holds text or preserves it.
namespace XmlWhiteSpace {

/// True for a text of nothing but white space.
inline bool isWhiteSpace(const pugi::xml_node& node) {
  const char* const text = node.value();
  return node.type() == pugi::node_pcdata && text[std::strspn(text, " \t\r\n")] == '\0';
}

/// True when `element` holds nothing but a text, which counts whatever it is.
inline bool isTextAlone(const pugi::xml_node& element) {
  const pugi::xml_node first = element.first_child();
  return first.type() == pugi::node_pcdata && !first.next_sibling();
}

/// True when all white space in `element` counts, and all below it.
bool isKeptIn(const pugi::xml_node& element);

/// Removes the white space that does not count. When it stayed, it could be all that an element
/// holds once its children are removed, and would count then.
void drop(const pugi::xml_document& document);

}  // namespace XmlWhiteSpace
