#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "xml_handles.h"
#include "xml_parse.h"
#include "xml_shapes.h"

namespace KvXmlView {

/// The attributes of the element that was used last. Hosts mostly read or set several attributes of
/// an element in a row.
class AttributeCursor {
 public:
  static constexpr std::size_t none = Shape::none;

  void moveTo(NodeHandle* node, XmlParse::Parsed& parsed) {
    if (node == element) return;
    element = nullptr;  // until all of its attributes are known
    handles.clear();
    next = 0;
    const pugi::xml_node moved = fromHandle(node);
    for (pugi::xml_attribute a = moved.first_attribute(); exists(a); a = a.next_attribute())
      handles.push_back(toHandle(a));
    const char* const name = moved.name();
    const bool isMarked = !parsed.mayHoldText && parsed.origin.contains(name);
    marked = isMarked ? name : nullptr;
    const unsigned char number = isMarked ? XmlParse::getShapeNumber(name) : 0;
    shape = number != 0 ? parsed.shapes.getNumbered(number) : findShape(name, parsed.shapes);
    element = node;
  }

  /// To be called when nodes end or attributes move in memory.
  void reset() { element = nullptr; }

  /// The index of the attribute of this name, or none.
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

  /// To be called before an attribute is appended to the element, so that append() cannot fail once
  /// the document has it. `name` is an XML name that no attribute has.
  void prepareAppending(const std::string& name) {
    longer = shape != nullptr ? shape->extend(name) : nullptr;
    if (handles.size() == handles.capacity()) handles.reserve(2 * handles.size() + 8);
  }

  /// To be called after the document has appended that attribute.
  void append(const pugi::xml_attribute& attribute) {
    if (marked != nullptr) XmlParse::setShapeNumber(marked, 0);
    shape = longer;
    handles.push_back(toHandle(attribute));
  }

 private:
  /// The shape with the names of all attributes, where it is known, or null.
  Shape* findShape(const char* name, Shapes& shapes) const {
    Shape* found = shapes.findEmpty(name);
    for (std::size_t i = 0; i < handles.size() && found != nullptr; ++i)
      found = found->follow(get(i).name());
    return found;
  }

  std::size_t findUnknown(const std::string& name) const {
    for (std::size_t i = next; i < handles.size(); ++i)
      if (get(i).name() == name) return i;
    for (std::size_t i = 0; i < next; ++i)
      if (get(i).name() == name) return i;
    return none;
  }

  NodeHandle* element = nullptr;
  const char* marked = nullptr;  // name of the element, where the number of its shape is kept
  Shape* shape = nullptr;        // that of the element, where it is known
  Shape* longer = nullptr;       // that with the attribute that will be appended
  std::vector<AttributeHandle*> handles;
  std::size_t next = 0;  // the attribute that will probably be asked for, or the end
};

}  // namespace KvXmlView
