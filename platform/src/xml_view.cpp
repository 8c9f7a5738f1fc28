#include "kv/xml_view.h"

#include "xml_handles.h"

namespace KvXmlView {

AttributeView::~AttributeView() { delete getText(); }

const std::string& AttributeView::getData() const {
  if (getText() == nullptr)
    word = reinterpret_cast<std::uintptr_t>(new Text{getAttribute(), getValue()}) | 1;
  Text& text = *getText();
  if (text.data != getValue()) text.data = getValue();
  return text.data;
}

}  // namespace KvXmlView
