#include "legacy_xml/legacy_attributes.h"

#include <memory>
#include <utility>

namespace Found::LegacyAttributes {
namespace {

/// Calls `take` with the attribute when the element has it.
template <class Take>
bool readAttribute(const KvXmlData& element, const std::string& key, const Take& take) {
  const KvXmlAttributeData* const attribute = element.findAttribute(key);
  if (attribute == nullptr) return false;
  take(*attribute);
  return true;
}

}  // namespace

int readInteger(const KvXmlData& element, const std::string& key, int absent) {
  int value = absent;
  readAttribute(element, key,
                [&](const KvXmlAttributeData& attribute) { value = attribute.getInteger(); });
  return value;
}

double readDouble(const KvXmlData& element, const std::string& key, double absent) {
  double value = absent;
  readAttribute(element, key,
                [&](const KvXmlAttributeData& attribute) { value = attribute.getDouble(); });
  return value;
}

bool readDouble(const KvXmlData& element, const std::string& key, Foundation& foundation,
                void (Foundation::*setter)(double)) {
  return readAttribute(element, key, [&](const KvXmlAttributeData& attribute) {
    (foundation.*setter)(attribute.getDouble());
  });
}

bool readFlag(const KvXmlData& element, const std::string& key, Foundation& foundation,
              void (Foundation::*setter)(bool)) {
  return readAttribute(element, key, [&](const KvXmlAttributeData& attribute) {
    (foundation.*setter)(attribute.getInteger() != 0);
  });
}

bool readFailure(const KvXmlData& element, const std::string& key, Foundation& foundation,
                 void (Foundation::*setter)(Foundation::Failure)) {
  // Not checked against the known modes: an unknown one is kept as it is, and written back so.
  return readAttribute(element, key, [&](const KvXmlAttributeData& attribute) {
    (foundation.*setter)(static_cast<Foundation::Failure>(attribute.getInteger()));
  });
}

bool readName(const KvXmlData& element, const std::string& key, Foundation& foundation) {
  return readAttribute(element, key, [&](const KvXmlAttributeData& attribute) {
    foundation.setName(attribute.getData());
  });
}

NumberedChildren::NumberedChildren(KvXmlData& parentElement, std::string elementName,
                                   std::string numberKey, std::size_t expected)
    : parent(parentElement), name(std::move(elementName)), key(std::move(numberKey)) {
  firsts.reserve(expected);
}

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
  if (number) firsts.emplace(*number, child);
  ++passed;
  return number;
}

KvXmlData* NumberedChildren::find(int number) {
  const auto first = firsts.find(number);
  if (first != firsts.end()) return first->second;
  while (passed < parent.getChildren().size())
    if (passNext() == number) return firsts.at(number);
  return nullptr;
}

KvXmlData* NumberedChildren::give(int number) {
  if (KvXmlData* const child = find(number)) return child;

  auto created = std::make_unique<KvXmlData>(name, &parent);
  parent.addChild(created.get());
  KvXmlData* const child = created.release();  // the parent owns it from here on
  child->setAttribute(key, number, true);
  firsts.emplace(number, child);
  ++passed;
  return child;
}

}  // namespace Found::LegacyAttributes
