#include "xml_shapes.h"

namespace KvXmlView {
namespace {

// So many that ordinary documents never reach it.
constexpr std::size_t mostShapes = 1024;

}  // namespace

Shape* Shape::followAnother(std::string_view name) {
  for (const std::unique_ptr<Shape>& shape : longer) {
    if (shape->lastName != name) continue;
    last = shape.get();
    return last;
  }
  return nullptr;
}

Shape* Shape::extend(std::string_view name) {
  if (Shape* const known = follow(name)) return known;
  constexpr std::size_t mostLonger = 32;  // so few that looking at all costs little
  if (*count >= mostShapes || longer.size() >= mostLonger) return nullptr;

  auto shape = std::make_unique<Shape>();
  shape->lastName = name;
  shape->count = count;
  shape->attributes = attributes;
  shape->lastKey = NameKey(name);
  shape->attributes.push_back({shape->lastKey, &shape->lastName});
  shape->bits = bits | shape->lastKey.getBit();
  longer.push_back(std::move(shape));
  last = longer.back().get();
  ++*count;
  return last;
}

Shape* Shapes::giveEmpty(std::string_view element) {
  if (Shape* const known = findEmpty(element)) return known;
  if (*count >= mostShapes) return nullptr;
  Shape& shape = empty[std::string(element)];
  shape.lastName = element;
  shape.lastKey = NameKey(element);
  shape.count = count.get();
  last = &shape;
  ++*count;
  return last;
}

}  // namespace KvXmlView
