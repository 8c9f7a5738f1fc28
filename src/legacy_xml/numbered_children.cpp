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

KvXmlData* NumberedChildren::find(int number) {
  if (KvXmlData* const child = findPassed(number)) return child;
  while (passed < parent.getChildren().size())
    if (KvXmlData* const child = passNext(number)) return child;
  return nullptr;
}

KvXmlData* NumberedChildren::findPassed(int number) {
  const Child* const first = firsts.find(number);
  for (const Child& child : doubtful) {
    if (first != nullptr && first->place < child.place) break;
    if (child.element->findAttribute(key)->checkValue(number)) return child.element;
  }
  return first != nullptr ? first->element : nullptr;
}

KvXmlData* NumberedChildren::passNext(int number) {
  const Child child{parent.getChildren()[passed], passed};
  ++passed;
  if (child.element->getName() != name) return nullptr;
  const KvXmlAttributeData* const attribute = child.element->findAttribute(key);
  if (attribute == nullptr) return nullptr;

  const int own = attribute->getInteger();
  const bool isDoubtful = !attribute->checkValue(own);
  if (isDoubtful)
    doubtful.push_back(child);
  else
    firsts.add(own, child);
  const bool isWanted = isDoubtful ? attribute->checkValue(number) : own == number;
  return isWanted ? child.element : nullptr;
}

KvXmlData* NumberedChildren::give(int number) {
  if (KvXmlData* const child = find(number)) return child;

  auto created = std::make_unique<KvXmlData>(name, &parent);
  parent.addChild(created.get());
  KvXmlData* const child = created.release();  // the parent owns it from here on
  child->setAttribute(key, number, true);
  firsts.add(number, {child, passed++});
  return child;
}

}  // namespace Found
