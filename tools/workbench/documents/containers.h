#pragma once

#include <vector>

#include "kv/xml_n.h"

/// Where beddings stand in an exchange document.
namespace Documents {

/// True for a bedding of any version.
bool isBedding(const KvXmlN::Data& element);

/// True for a bedding of the first version.
bool isWholeBedding(const KvXmlN::Data& element);

/// True when `test` returns true for any child of `element`.
bool hasChild(const KvXmlN::Data& element, bool (*test)(const KvXmlN::Data&));

/// All elements that hold beddings, in document order; when there are none, those named for them.
std::vector<KvXmlN::Data*> listContainers(KvXmlN::Data& root);

}  // namespace Documents
