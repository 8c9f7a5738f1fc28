#pragma once

#include <pugixml.hpp>

#include "xml_handles.h"

/// Calls `visit(node, level)` for `top`, at level 1, and for all nodes below it in document order.
/// Not recursive, so deep nodes need no deep stack.
template <class Visit>
void walkXml(const pugi::xml_node& top, const Visit& visit) {
  int level = 1;
  pugi::xml_node node = top;
  while (true) {
    visit(node, level);
    pugi::xml_node next = node.first_child();
    if (KvXmlView::exists(next)) {
      ++level;
    } else {
      for (; level > 1; --level) {
        next = node.next_sibling();
        if (KvXmlView::exists(next)) break;
        node = node.parent();
      }
      if (level == 1) return;
    }
    node = next;
  }
}
