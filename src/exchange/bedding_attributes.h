#pragma once

#include <optional>

#include "found/foundation.h"
#include "kv/xml_n.h"

/// Attributes of bedding elements that are more than a text or a double.
namespace Found::Umo {

/// The mode that the attribute names; `None` when it is absent, empty or misspelt.
Foundation::Failure readFailureAttribute(const KvXmlN::Data& element, const std::string& key);

/// The number that the attribute starts with: white space before it and a sign are accepted and
/// whatever follows the digits is ignored, so "7.9" is 7. None when the attribute is absent, does
/// not start with a number or does not fit an int.
std::optional<int> readNumberAttribute(const KvXmlN::Data& element, const std::string& key);

}  // namespace Found::Umo
