#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "manager/key_table.h"

namespace Found {

/// The child elements of one name, told apart by an attribute that is a whole number.
///
/// Children that were passed in one search are known in the next, so that updating a document takes
/// a time in proportion to its size. Only give() may add children in the meantime.
///
/// Which number an attribute has is for its library to say. One that equals its own integer counts
/// as having no other number. One that does not, such as a text that is no number, is doubtful: it
/// is asked about every number that is looked for.
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

  /// Takes note of the next child, and returns it when it has `number`.
  KvXmlData* passNext(int number);

  KvXmlData& parent;
  std::string name;
  std::string key;
  std::size_t passed = 0;
  KeyTable<int, Child> firsts;
  std::vector<Child> doubtful;
};

}  // namespace Found
