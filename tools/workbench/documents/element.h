#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "text/charset.h"

namespace Documents {

/// An element of a document of either XML library, which must outlive it. To be looked at only.
class Element {
 public:
  /// `bytes`: how those of the document stand for characters, UTF-8 when left out.
  explicit Element(KvXmlData* element, const Charset* bytes = nullptr)
      : data(element), charset(bytes) {}
  explicit Element(const KvXmlN::Data* element, const Charset* bytes = nullptr)
      : data(element), charset(bytes) {}

  const std::string& getName() const;
  std::vector<Element> listChildren() const;
  std::vector<std::string> listAttributeNames() const;

  /// The attribute of this name, as a text in UTF-8, or as the number that the platform reads from
  /// the whole of it; none when it is absent or no such number.
  std::optional<std::string> readText(const std::string& attribute) const;
  /// How many bytes the text of an attribute that there is has as the library reads it.
  std::size_t measureText(const std::string& attribute) const;
  std::optional<int> readInteger(const std::string& attribute) const;
  std::optional<double> readNumber(const std::string& attribute) const;

  /// Where the start tag stands.
  KvXmlPosition getPosition() const;
  /// Where the attribute stands, or the element when it has none of this name.
  KvXmlPosition locate(const std::string& attribute) const;

 private:
  std::variant<KvXmlData*, const KvXmlN::Data*> data;
  const Charset* charset;
};

}  // namespace Documents
