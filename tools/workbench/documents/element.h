#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "text/charset.h"

namespace Documents {

/// A read-only view of an element of either XML library. The document must outlive it.
class Element {
 public:
  /// `bytes` tells which characters the bytes of the document stand for; UTF-8 when left out.
  explicit Element(KvXmlData* element, const Charset* bytes = nullptr)
      : data(element), charset(bytes) {}
  explicit Element(const KvXmlN::Data* element, const Charset* bytes = nullptr)
      : data(element), charset(bytes) {}

  const std::string& getName() const;
  std::vector<Element> listChildren() const;
  std::vector<std::string> listAttributeNames() const;

  /// The attribute of this name as a text in UTF-8, or as the number that the platform reads from
  /// its whole text; none when it is absent or no such number.
  std::optional<std::string> readText(const std::string& attribute) const;
  /// The length in bytes of the attribute's text as the library reads it. The attribute must exist.
  std::size_t measureText(const std::string& attribute) const;
  std::optional<int> readInteger(const std::string& attribute) const;
  std::optional<double> readNumber(const std::string& attribute) const;

  /// The position of the start tag.
  KvXmlPosition getPosition() const;
  /// The position of the attribute, or of the element when it has none of this name.
  KvXmlPosition locate(const std::string& attribute) const;

 private:
  std::variant<KvXmlData*, const KvXmlN::Data*> data;
  const Charset* charset;
};

}  // namespace Documents
