#include "xml_white_space.h"

#include "xml_value.h"

namespace XmlWhiteSpace {
namespace {

bool isText(const pugi::xml_node& node) {
  return node.type() == pugi::node_cdata ||
         (node.type() == pugi::node_pcdata && !isWhiteSpace(node));
}

/// The node that follows `node` and all below it in document order, or none.
pugi::xml_node skip(pugi::xml_node node) {
  while (node && !node.next_sibling()) node = node.parent();
  return node.next_sibling();
}

}  // namespace

bool isKeptIn(const pugi::xml_node& element) {
  if (isTextAlone(element)) return true;
  for (const pugi::xml_node child : element.children())
    if (isText(child)) return true;
  return XmlValue::resolve(element.attribute("xml:space").value(), nullptr) == "preserve";
}

// Not recursive, so deep documents need no deep stack.
void drop(const pugi::xml_document& document) {
  for (pugi::xml_node node = document.document_element(); node;) {
    const bool goesBelow = node.first_child() && !isKeptIn(node);
    const pugi::xml_node next = goesBelow ? node.first_child() : skip(node);
    if (isWhiteSpace(node)) node.parent().remove_child(node);
    node = next;
  }
}

}  // namespace XmlWhiteSpace
