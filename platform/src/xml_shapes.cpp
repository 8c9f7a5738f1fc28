#include "xml_shapes.h"

#include <limits>

namespace KvXmlView {
namespace {

// Ordinary documents never reach this.
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
  constexpr std::size_t mostLonger = 32;  // few enough to search them one by one
  if (common->count >= mostShapes || longer.size() >= mostLonger) return nullptr;

  auto shape = std::make_unique<Shape>();
  shape->lastName = name;
  shape->common = common;
  shape->attributes = attributes;
  shape->lastKey = NameKey(name);
  shape->attributes.push_back({shape->lastKey, &shape->lastName});
  shape->bits = bits | shape->lastKey.getBit();
  longer.push_back(std::move(shape));
  last = longer.back().get();
  ++common->count;
  return last;
}

unsigned char Shape::giveNumber() {
  constexpr std::size_t mostNumbers = std::numeric_limits<unsigned char>::max();
  if (number == 0 && common->numbered.size() < mostNumbers) {
    common->numbered.push_back(this);
    number = static_cast<unsigned char>(common->numbered.size());
  }
  return number;
}

Shape* Shapes::giveEmpty(std::string_view element) {
  if (Shape* const known = findEmpty(element)) return known;
  if (common->count >= mostShapes) return nullptr;
  Shape& shape = empty[std::string(element)];
  shape.lastName = element;
  shape.lastKey = NameKey(element);
  shape.common = common.get();
  last = &shape;
  ++common->count;
  return last;
}

}  // namespace KvXmlView
