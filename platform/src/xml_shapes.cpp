#include "xml_shapes.h"

namespace KvXmlView {

Shape* Shape::followAnother(const char* name) {
  for (const std::unique_ptr<Shape>& shape : longer) {
    if (shape->lastName != name) continue;
    last = shape.get();
    return last;
  }
  return nullptr;
}

Shape* Shape::extend(const char* name) {
  if (Shape* const known = follow(name)) return known;
  // So many that ordinary documents never reach it, and so few that looking at all costs little.
  constexpr std::size_t mostShapes = 1024;
  constexpr std::size_t mostLonger = 32;
  if (*count >= mostShapes || longer.size() >= mostLonger) return nullptr;

  auto shape = std::make_unique<Shape>();
  shape->lastName = name;
  shape->count = count;
  shape->attributes = attributes;
  shape->bits = bits;
  const bool isAttribute = !lastName.empty();
  if (isAttribute) {
    shape->attributes.push_back({NameKey(shape->lastName), &shape->lastName});
    shape->bits |= NameKey(shape->lastName).getBit();
  }
  longer.push_back(std::move(shape));
  last = longer.back().get();
  ++*count;
  return last;
}

Shapes::Shapes() : count(std::make_unique<std::size_t>(0)), start(std::make_unique<Shape>()) {
  start->count = count.get();
}

}  // namespace KvXmlView
