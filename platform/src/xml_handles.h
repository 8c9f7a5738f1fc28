#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

#include <pugixml.hpp>

#include "kv/xml_view.h"

// Inline, since a document of many foundations asks for millions of attributes.
namespace KvXmlView {

// Handles are the parser's own pointers under a type name that does not reveal the parser.
//
// A node or an attribute of the parser holds only such a pointer, so it can be copied out and in.
// The parser's own functions for that, and for comparing with null, are calls into another library.

constexpr std::size_t pointerSize = sizeof(void*);
static_assert(sizeof(pugi::xml_node) == pointerSize);
static_assert(sizeof(pugi::xml_attribute) == pointerSize);

template <class To, class From>
To copyPointer(const From& from) {
  static_assert(std::is_trivially_copyable_v<To> && std::is_trivially_copyable_v<From>);
  alignas(To) unsigned char copy[pointerSize];
  std::memcpy(copy, &from, pointerSize);
  return *reinterpret_cast<To*>(copy);
}

inline NodeHandle* toHandle(const pugi::xml_node& node) { return copyPointer<NodeHandle*>(node); }

inline pugi::xml_node fromHandle(NodeHandle* handle) { return copyPointer<pugi::xml_node>(handle); }

inline AttributeHandle* toHandle(const pugi::xml_attribute& attribute) {
  return copyPointer<AttributeHandle*>(attribute);
}

inline pugi::xml_attribute fromHandle(AttributeHandle* handle) {
  return copyPointer<pugi::xml_attribute>(handle);
}

template <class Object>
bool exists(const Object& object) {
  return toHandle(object) != nullptr;
}

}  // namespace KvXmlView
