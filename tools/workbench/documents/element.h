#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "kv/xml_n.h"
#include "kv/xml_tree.h"

namespace Documents {

/// An element of a document of either XML library, which must outlive it. To be looked at only.
class Element {
 public:
  explicit Element(KvXmlData* element) : data(element) {}
  explicit Element(const KvXmlN::Data* element) : data(element) {}

  const std::string& getName() const;
  std::vector<Element> listChildren() const;
  std::vector<std::string> listAttributeNames() const;

  /// The attribute of this name, as a text, or as the number that the platform reads from the whole
  /// of it; none when it is absent or no such number.
  std::optional<std::string> readText(const std::string& attribute) const;
  std::optional<int> readInteger(const std::string& attribute) const;
  std::optional<double> readNumber(const std::string& attribute) const;

  /// Where the start tag stands.
  KvXmlPosition getPosition() const;
  /// Where the attribute stands, or the element when it has none of this name.
  KvXmlPosition locate(const std::string& attribute) const;

 private:
  std::variant<KvXmlData*, const KvXmlN::Data*> data;
};

}  // namespace Documents
