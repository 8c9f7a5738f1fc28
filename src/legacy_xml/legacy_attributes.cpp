#include "legacy_xml/legacy_attributes.h"

#include <memory>

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

KvXmlData* findChild(KvXmlData& parent, const std::string& name, const std::string& key,
                     int value) {
  for (KvXmlData* child : parent.getChildren()) {
    if (child->getName() != name) continue;
    const KvXmlAttributeData* const attribute = child->findAttribute(key);
    if (attribute != nullptr && attribute->checkValue(value)) return child;
  }
  return nullptr;
}

KvXmlData* giveChild(KvXmlData& parent, const std::string& name, const std::string& key,
                     int value) {
  if (KvXmlData* const child = findChild(parent, name, key, value)) return child;

  auto created = std::make_unique<KvXmlData>(name, &parent);
  parent.addChild(created.get());
  KvXmlData* const child = created.release();  // the parent owns it from here on
  child->setAttribute(key, value, true);
  return child;
}

}  // namespace Found::LegacyAttributes
