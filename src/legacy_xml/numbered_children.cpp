#include "legacy_xml/numbered_children.h"

#include <memory>
#include <utility>

namespace Found {

NumberedChildren::NumberedChildren(KvXmlData& parentElement, std::string elementName,
                                   std::string numberKey, std::size_t expected)
    : parent(parentElement),
      name(std::move(elementName)),
      key(std::move(numberKey)),
      firsts(parent.getChildren().size() + expected) {}

std::optional<int> NumberedChildren::passNext() {
  KvXmlData* const child = parent.getChildren()[passed];
  std::optional<int> number;
  if (child->getName() == name) {
    const KvXmlAttributeData* const attribute = child->findAttribute(key);
    // An attribute has no other value than its integer; but a text that is no number reads as 0 and
    // is not the number 0, which only checkValue() tells.
    if (attribute != nullptr && attribute->checkValue(attribute->getInteger()))
      number = attribute->getInteger();
  }
  if (number) firsts.add(*number, child);
  ++passed;
  return number;
}

KvXmlData* NumberedChildren::find(int number) {
  if (KvXmlData* const* const first = firsts.find(number)) return *first;
  while (passed < parent.getChildren().size())
    if (passNext() == number) return *firsts.find(number);
  return nullptr;
}

KvXmlData* NumberedChildren::give(int number) {
  if (KvXmlData* const child = find(number)) return child;

  auto created = std::make_unique<KvXmlData>(name, &parent);
  parent.addChild(created.get());
  KvXmlData* const child = created.release();  // the parent owns it from here on
  child->setAttribute(key, number, true);
  firsts.add(number, child);
  ++passed;
  return child;
}

}  // namespace Found
