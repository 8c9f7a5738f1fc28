#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "xml_handles.h"
#include "xml_shapes.h"

namespace KvXmlView {

/// The attributes of the element that was looked at last. Mostly several of an element are asked
/// for or set, one after the other.
class AttributeCursor {
 public:
  static constexpr std::size_t none = Shape::none;

  void moveTo(NodeHandle* node, Shapes& shapes) {
    if (node == element) return;
    element = nullptr;  // as long as it is not known whole
    handles.clear();
    next = 0;
    const pugi::xml_node moved = fromHandle(node);
    shape = shapes.findEmpty(moved.name());
    for (pugi::xml_attribute a = moved.first_attribute(); exists(a); a = a.next_attribute()) {
      handles.push_back(toHandle(a));
      if (shape != nullptr) shape = shape->follow(a.name());
    }
    element = node;
  }

  /// To be called when nodes end or attributes move in memory.
  void reset() { element = nullptr; }

  /// Which attribute has this name, or none.
  std::size_t find(const std::string& name) {
    const std::size_t found = shape != nullptr ? shape->find(name, next) : findUnknown(name);
    if (found != none) next = found + 1;
    return found;
  }

  pugi::xml_attribute get(std::size_t index) const { return fromHandle(handles[index]); }
  const std::vector<AttributeHandle*>& getHandles() const { return handles; }

  /// True when it is known that `name` is an XML name and that no attribute has it.
  bool isKnownToBeNew(const std::string& name) {
    return shape != nullptr && shape->follow(name) != nullptr;
  }

  /// To be called before an attribute is appended to the element, so that noting it cannot fail
  /// once the document has it. `name` is an XML name that no attribute has.
  void prepareAppending(const std::string& name) {
    longer = shape != nullptr ? shape->extend(name) : nullptr;
    if (handles.size() == handles.capacity()) handles.reserve(2 * handles.size() + 8);
  }

  /// To be called when that attribute was appended.
  void append(const pugi::xml_attribute& attribute) {
    shape = longer;
    handles.push_back(toHandle(attribute));
  }

 private:
  std::size_t findUnknown(const std::string& name) const {
    for (std::size_t i = next; i < handles.size(); ++i)
      if (get(i).name() == name) return i;
    for (std::size_t i = 0; i < next && i < handles.size(); ++i)
      if (get(i).name() == name) return i;
    return none;
  }

  NodeHandle* element = nullptr;
  Shape* shape = nullptr;   // that of the element, where it is known
  Shape* longer = nullptr;  // that with the attribute that will be appended
  std::vector<AttributeHandle*> handles;
  std::size_t next = 0;  // the attribute that will probably be asked for
};

}  // namespace KvXmlView
