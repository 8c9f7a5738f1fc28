#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "kv/xml_tree.h"
#include "manager/key_table.h"

namespace Found {

/// The child elements of one name, told apart by an attribute that is a whole number.
///
/// Children that were passed in one search are known in the next, so that updating a document takes
/// a time in proportion to its size. Only give() may add children in the meantime.
class NumberedChildren {
 public:
  /// `expected`: about how many numbers there are.
  NumberedChildren(KvXmlData& parentElement, std::string elementName, std::string numberKey,
                   std::size_t expected);

  /// The first child, in their order, that has this number, or null.
  KvXmlData* find(int number);

  /// The same; when there is none, a new last child with this number.
  KvXmlData* give(int number);

 private:
  /// Takes note of the next child and returns its number, if it has one.
  std::optional<int> passNext();

  KvXmlData& parent;
  std::string name;
  std::string key;
  std::size_t passed = 0;
  KeyTable<int, KvXmlData*> firsts;
};

}  // namespace Found
