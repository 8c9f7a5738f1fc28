#include "kv/xml_view.h"

#include <cstring>

#include <pugixml.hpp>

namespace KvXmlView {

struct AttributeView::Text {
  pugi::xml_attribute_struct* attribute;
  std::string data;
};

AttributeView::~AttributeView() { delete getText(); }

AttributeView::Text* AttributeView::getText() const {
  return (word & 1) != 0 ? reinterpret_cast<Text*>(word & ~std::uintptr_t{1}) : nullptr;
}

pugi::xml_attribute_struct* AttributeView::getAttribute() const {
  const Text* const text = getText();
  return text != nullptr ? text->attribute : reinterpret_cast<pugi::xml_attribute_struct*>(word);
}

void AttributeView::refer(pugi::xml_attribute_struct* attribute) {
  if (Text* const text = getText())
    text->attribute = attribute;
  else
    word = reinterpret_cast<std::uintptr_t>(attribute);
}

const char* AttributeView::getValue() const { return pugi::xml_attribute(getAttribute()).value(); }

const std::string& AttributeView::getData() const {
  if (getText() == nullptr)
    word = reinterpret_cast<std::uintptr_t>(new Text{getAttribute(), getValue()}) | 1;
  Text& text = *getText();
  if (text.data != getValue()) text.data = getValue();
  return text.data;
}

}  // namespace KvXmlView
