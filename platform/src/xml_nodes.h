#pragma once

#include <algorithm>
#include <new>
#include <string>
#include <string_view>

#include <pugixml.hpp>

/// Operations on nodes of the parser that need no view.
namespace XmlNodes {

inline bool isElement(const pugi::xml_node& node, const std::string& name) {
  return node.type() == pugi::node_element && name == node.name();
}

inline pugi::xml_node findChild(const pugi::xml_node& parent, const std::string& name) {
  for (pugi::xml_node node : parent.children())
    if (isElement(node, name)) return node;
  return {};
}

inline pugi::xml_node findDescendant(const pugi::xml_node& top, const std::string& name) {
  return top.find_node([&name](const pugi::xml_node& node) { return isElement(node, name); });
}

/// Appends a new element, whose name must be an XML name.
inline pugi::xml_node append(pugi::xml_node parent, const std::string& name) {
  pugi::xml_node child = parent.append_child(pugi::node_element);
  if (!child) throw std::bad_alloc();
  if (child.set_name(name.c_str())) return child;
  parent.remove_child(child);
  throw std::bad_alloc();
}

inline bool haveSameTag(const pugi::xml_node& node, const pugi::xml_node& other) {
  const auto areSame = [](const pugi::xml_attribute& a, const pugi::xml_attribute& b) {
    return std::string_view(a.name()) == b.name() && std::string_view(a.value()) == b.value();
  };
  return std::string_view(node.name()) == other.name() &&
         std::equal(node.attributes_begin(), node.attributes_end(), other.attributes_begin(),
                    other.attributes_end(), areSame);
}

/// For elements that hold elements alone. When memory runs out, the parser makes a partial copy
/// without an error; it never copies too much.
inline bool isFullCopy(pugi::xml_node node, pugi::xml_node copy) {
  const pugi::xml_node top = node;
  while (copy) {
    if (!haveSameTag(node, copy)) return false;
    if (node.first_child()) {
      node = node.first_child();
      copy = copy.first_child();
      continue;
    }
    while (node != top && !node.next_sibling()) {
      node = node.parent();
      copy = copy.parent();
    }
    if (node == top) return true;
    node = node.next_sibling();
    copy = copy.next_sibling();
  }
  return false;
}

/// Erases an element leaf by leaf, not recursively, so deep elements need no deep stack.
inline void erase(const pugi::xml_node& top) {
  pugi::xml_node leaf = top;
  while (leaf) {
    while (leaf.first_child()) leaf = leaf.first_child();
    pugi::xml_node parent = leaf.parent();
    const bool isTop = leaf == top;
    parent.remove_child(leaf);
    if (isTop) return;
    leaf = parent;
  }
}

}  // namespace XmlNodes
