#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "kv/export.h"
#include "kv/nullable.h"
#include "kv/xml_error.h"
#include "kv/xml_position.h"
#include "kv/xml_view.h"

/// @file
/// The newer XML library: a document with a root, its elements and their attributes.
///
/// Text, references, numbers, memory and what parsing lets pass are as in the legacy XML library,
/// see kv/xml_tree.h. The `bool` arguments named `flag` have no effect.

namespace KvXmlN {

/// An attribute of an element, which owns it.
class KV_API AttributeData {
 public:
  AttributeData(const AttributeData&) = delete;
  AttributeData& operator=(const AttributeData&) = delete;

  /// What the attribute means, always as it stands now. The reference stays valid as long as the
  /// element.
  const std::string& getData() const;

 private:
  friend class Data;
  friend class KvXmlView::Pool<AttributeData>;
  AttributeData() = default;

  KvXmlView::AttributeHandle* attribute = nullptr;
  AttributeData* next = nullptr;  // of the same element
  std::string data;
};

/// An element. Pointers to it and to its attributes stay valid as long as its document.
class KV_API Data {
 public:
  /// An element outside any document. Throws std::invalid_argument when `name` is no XML name.
  explicit Data(const std::string& name);
  ~Data();
  Data(const Data&) = delete;
  Data& operator=(const Data&) = delete;

  /// The child elements in document order.
  const std::vector<Data*>& getChildren() const;

  const std::string& getName() const;  ///< of the element

  /// The attribute of this name, or null.
  const AttributeData* findAttribute(const std::string& name) const;

  /// The attribute as a number: white space around it and one leading '+' are accepted, and "inf"
  /// and "nan" are. 0.0 when the attribute is absent or anything else; an infinity or a zero of
  /// its sign when it is beyond the range of double.
  double getAttributeDouble(const std::string& name) const;

  /// Appends a new element and returns it, owned by this one; null when `name` is no XML name.
  Data* createChild(const std::string& name);

  /// Sets an attribute; one that exists keeps its place. A character that XML cannot hold (a
  /// control character other than tab and line break) is stored as '?'. Throws
  /// std::invalid_argument when `name` is no XML name.
  void setAttribute(const std::string& name, const std::string& value, bool flag);
  void setAttribute(const std::string& name, int value, bool flag);  ///< the same
  /// The same, in the shortest form that reads back as the same double.
  void setAttribute(const std::string& name, double value);
  /// The same, as std::printf() prints it in the "C" locale. Throws std::invalid_argument when
  /// `format` does not hold exactly one conversion, of a double, or when it leaves width or
  /// precision to an argument or gives one of more than three digits.
  void setAttribute(const std::string& name, double value, const char* format);

  /// Deletes the children for which `isUnwanted` returns true, with everything below them; do not
  /// use them any more. When `isUnwanted` throws, nothing has changed.
  void removeChildren(const std::function<bool(const Data&)>& isUnwanted);

  /// The names of the attributes, in their order.
  std::vector<std::string> getAttributeNames() const;

  /// Where in its file the start tag stood.
  KvXmlPosition getPosition() const;
  /// Where in its file the attribute of this name stood; 0 and 0 when there is none.
  KvXmlPosition getAttributePosition(const std::string& name) const;

 private:
  friend class Document;
  friend struct AttributeIn;
  friend struct KvXmlView::Store<Data>;
  friend class KvXmlView::Pool<Data>;
  Data();
  // In parentheses, since curses has a macro of this name that takes arguments.
  void(refresh)(const std::string& name, std::string& meant) noexcept;

  KvXmlView::ElementView<Data, AttributeData> view;
};

/// Reads attributes as values.
struct KV_API AttributeIn {
  /// The attribute's text, or none when it is absent.
  static kvt::Nullable<std::string> readString(const Data& data, const std::string& name);
  /// The attribute as a number, as for Data::getAttributeDouble(), or none when it is absent or
  /// anything else.
  static kvt::Nullable<double> readDouble(const Data& data, const std::string& name);
  /// The attribute as a whole number that fits an int, likewise.
  static kvt::Nullable<int> readInteger(const Data& data, const std::string& name);
};

/// A document, which owns its elements.
class KV_API Document {
 public:
  /// A document of nothing but a root. Throws std::invalid_argument when `rootName` is no XML name.
  explicit Document(const std::string& rootName);

  /// Parses from the stream's position to its end. Throws KvXmlError when the text has no root
  /// element, is not well-formed (this file's description tells what passes), has several roots or
  /// text outside the root, gives an attribute twice, nests deeper than 1,000 levels or holds a NUL
  /// character, or when the stream cannot be read.
  explicit Document(std::istream& in);

  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  Data& getRoot();              ///< owned by the document
  const Data& getRoot() const;  ///< owned by the document

  /// Prints the document as KvXmlTree::putToStream() does.
  void putToStream(std::ostream& out) const;

 private:
  std::unique_ptr<KvXmlView::Store<Data>> store;
};

}  // namespace KvXmlN
