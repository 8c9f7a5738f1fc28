#pragma once

#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include "kv/xml_view.h"

namespace KvXmlView {

/// Knows that an attribute is not there without looking for it. Elements of a document are mostly
/// made alike: when a new one is given attributes in the order in which the one before got its own,
/// which were all different, each is new to it. Its name is then known to be an XML name, too.
class AttributeSuccession {
 public:
  /// `element` has no attributes yet.
  void start(const NodeHandle* element) {
    current = element;
    count = 0;
  }

  bool isNext(const NodeHandle* element, const std::string& name) const {
    return element == current && count < names.size() && names[count] == name;
  }

  /// Takes note of an attribute that was appended to `element`. Out of memory it only knows less.
  void note(const NodeHandle* element, const std::string& name) noexcept {
    if (element != current) return;
    if (!isNext(element, name)) names.resize(count);
    try {
      if (count == names.size()) names.push_back(name);
      ++count;
    } catch (const std::bad_alloc&) {
      start(nullptr);
    }
  }

 private:
  const NodeHandle* current = nullptr;
  std::vector<std::string> names;
  std::size_t count = 0;  // how many of them the current element has
};

}  // namespace KvXmlView
