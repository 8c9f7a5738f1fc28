#pragma once

#include <cstdint>
#include <string>

#include <pugixml.hpp>

#include "kv/xml_view.h"

// Inline, since a document of many foundations asks for millions of attributes.
namespace KvXmlView {

struct AttributeView::Text {
  pugi::xml_attribute_struct* attribute;
  std::string data;
};

inline AttributeView::Text* AttributeView::getText() const {
  return (word & 1) != 0 ? reinterpret_cast<Text*>(word & ~std::uintptr_t{1}) : nullptr;
}

inline pugi::xml_attribute_struct* AttributeView::getAttribute() const {
  const Text* const text = getText();
  return text != nullptr ? text->attribute : reinterpret_cast<pugi::xml_attribute_struct*>(word);
}

inline void AttributeView::refer(pugi::xml_attribute_struct* attribute) {
  if (Text* const text = getText())
    text->attribute = attribute;
  else
    word = reinterpret_cast<std::uintptr_t>(attribute);
}

inline const char* AttributeView::getValue() const {
  return pugi::xml_attribute(getAttribute()).value();
}

}  // namespace KvXmlView
