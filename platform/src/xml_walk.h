#pragma once

#include <pugixml.hpp>

/// Calls `visit(node, level)` for `top`, which is of level 1, and for all nodes below it, in
/// document order. However deep they are, the stack stays flat.
template <class Visit>
void walkXml(const pugi::xml_node& top, const Visit& visit) {
  int level = 1;
  pugi::xml_node node = top;
  while (true) {
    visit(node, level);
    if (node.first_child()) {
      node = node.first_child();
      ++level;
      continue;
    }
    while (node != top && !node.next_sibling()) {
      node = node.parent();
      --level;
    }
    if (node == top) return;
    node = node.next_sibling();
  }
}
