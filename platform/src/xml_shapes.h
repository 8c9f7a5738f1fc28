#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace KvXmlView {

/// The name of an element and those of its attributes, in their order: all are XML names, and no
/// attribute is there twice.
///
/// A document holds thousands of elements and a few shapes. What was found out about a shape holds
/// for all elements that have it.
class Shape {
 public:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  /// Which attribute has this name, or none. Looked for from `from` on, then from the first one:
  /// attributes are mostly asked for in the order in which they stand.
  std::size_t find(const std::string& name, std::size_t from) const {
    for (std::size_t i = from; i < attributes.size(); ++i)
      if (*attributes[i] == name) return i;
    for (std::size_t i = 0; i < from && i < attributes.size(); ++i)
      if (*attributes[i] == name) return i;
    return none;
  }

  /// The shape with one more attribute, where it is known, or null. Tried first is the one that was
  /// asked for last.
  Shape* follow(std::string_view name) {
    if (last != nullptr && last->lastName == name) return last;
    return followAnother(name);
  }

  /// The same; made when it is not known. `name` is an XML name that no attribute here has. Null
  /// where there are so many shapes already that knowing them is no gain.
  Shape* extend(std::string_view name);

 private:
  friend class Shapes;

  Shape* followAnother(std::string_view name);

  std::string lastName;  // of the element or of the last attribute
  std::vector<const std::string*> attributes;
  std::vector<std::unique_ptr<Shape>> longer;
  Shape* last = nullptr;         // of `longer`
  std::size_t* count = nullptr;  // of all shapes of the document
};

/// The shapes of one document.
class Shapes {
 public:
  Shapes();

  /// The shape of an element of this name without attributes, where it is known, or null.
  Shape* findEmpty(std::string_view element) { return start->follow(element); }
  /// The same; made when it is not known, see Shape::extend(). `element` is an XML name.
  Shape* giveEmpty(std::string_view element) { return start->extend(element); }

  /// The shape of `element` where it is known, or null.
  Shape* find(const pugi::xml_node& element) {
    Shape* shape = findEmpty(element.name());
    for (pugi::xml_attribute a = element.first_attribute(); a && shape != nullptr;
         a = a.next_attribute())
      shape = shape->follow(a.name());
    return shape;
  }

 private:
  std::unique_ptr<std::size_t> count;
  std::unique_ptr<Shape> start;  // followed by the names of elements
};

}  // namespace KvXmlView
