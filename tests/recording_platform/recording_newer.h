#pragma once

#include <string>
#include <utility>
#include <vector>

#include "kv/xml_n.h"
#include "recording.h"

/// What a test controls the recording newer XML library by. Nothing of this is recorded, and
/// nothing of it fails.
namespace Recording {

using Attributes = std::vector<std::pair<std::string, std::string>>;

/// Appends a child with these attributes.
KvXmlN::Data& addElement(KvXmlN::Data& parent, const std::string& name,
                         const Attributes& attributes = {});

/// Appends a null entry to the children.
void addNullElement(KvXmlN::Data& parent);

/// The elements in document order, one line each: one space a level, the name, then key=value for
/// each attribute. A null entry has the name "null".
std::vector<std::string> describe(const KvXmlN::Data& element);

/// While it lives, Data::createChild() creates nothing and gives null at the `n`-th call from its
/// construction, and only at that one.
class ChildRefusal {
 public:
  explicit ChildRefusal(int n);
  ~ChildRefusal();
  ChildRefusal(const ChildRefusal&) = delete;
  ChildRefusal& operator=(const ChildRefusal&) = delete;
};

/// While it lives, Data::getAttributeDouble() answers `value` for an attribute that is absent. At
/// all other times it answers 0.0.
class AbsentDouble {
 public:
  explicit AbsentDouble(double value);
  ~AbsentDouble();
  AbsentDouble(const AbsentDouble&) = delete;
  AbsentDouble& operator=(const AbsentDouble&) = delete;
};

}  // namespace Recording
