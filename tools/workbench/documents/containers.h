#pragma once

#include <vector>

#include "kv/xml_n.h"

/// Where beddings stand in an exchange document.
namespace Documents {

/// True for the elements of all versions.
bool isBedding(const KvXmlN::Data& element);

/// True for a bedding of the first version.
bool isWholeBedding(const KvXmlN::Data& element);

/// True when some child of `element` is one that `test` is true of.
bool hasChild(const KvXmlN::Data& element, bool (*test)(const KvXmlN::Data&));

/// All elements that hold beddings, in document order, or else those made for them.
std::vector<KvXmlN::Data*> listContainers(KvXmlN::Data& root);

}  // namespace Documents
