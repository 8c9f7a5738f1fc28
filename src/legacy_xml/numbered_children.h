#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "manager/key_table.h"

namespace Found {

/// The child elements of one name, told apart by an attribute that is a whole number.
///
/// Each search remembers the children that it passes, so that updating a document takes time in
/// proportion to its size. Only give() may add children in the meantime.
///
/// The XML library decides which numbers an attribute equals. One that equals its own integer is
/// taken to equal no other number. Any other one, such as a text that is no number, is doubtful:
/// it is asked about every number that is searched for.
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
  struct Child {
    KvXmlData* element;
    std::size_t place;  // in the order of the children
  };

  /// Null when there is none among those that were passed.
  KvXmlData* findPassed(int number);

  /// Records the next child, and returns it when it has `number`.
  KvXmlData* passNext(int number);

  KvXmlData& parent;
  std::string name;
  std::string key;
  std::size_t passed = 0;
  KeyTable<int, Child> firsts;
  std::vector<Child> doubtful;
};

}  // namespace Found
