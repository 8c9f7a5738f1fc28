#pragma once

#include <string>

#include "found/foundation.h"
#include "kv/xml_tree.h"

/// Attributes of legacy elements.
namespace Found::LegacyAttributes {

/// The attribute as a number; `absent` when the element has none of this name.
int readInteger(const KvXmlData& element, const std::string& key, int absent);
double readDouble(const KvXmlData& element, const std::string& key, double absent);

/// These hand the attribute, converted, to a setter of `foundation`. When the element has none of
/// this name they leave the foundation alone and return false.
bool readDouble(const KvXmlData& element, const std::string& key, Foundation& foundation,
                void (Foundation::*setter)(double));
bool readFlag(const KvXmlData& element, const std::string& key, Foundation& foundation,
              void (Foundation::*setter)(bool));
bool readFailure(const KvXmlData& element, const std::string& key, Foundation& foundation,
                 void (Foundation::*setter)(Foundation::Failure));
bool readName(const KvXmlData& element, const std::string& key, Foundation& foundation);

/// The first child of this element name whose attribute `key` is the number `value`, or null.
KvXmlData* findChild(KvXmlData& parent, const std::string& name, const std::string& key, int value);

/// The same; when there is none, a new last child with that attribute.
KvXmlData* giveChild(KvXmlData& parent, const std::string& name, const std::string& key, int value);

}  // namespace Found::LegacyAttributes
