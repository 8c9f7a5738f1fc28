#pragma once

/// @file
/// What the elements and attributes of both XML libraries share: they are views of a parsed
/// document and hold only what was asked for. Nothing here is for hosts.

#include <cstdint>
#include <memory>
#include <string>

#include "kv/export.h"

namespace KvXmlView {

/// What the parser keeps of an element and of an attribute.
struct NodeHandle;
struct AttributeHandle;

template <class Element>
struct Store;
template <class Element>
struct ChildList;
template <class Attribute>
struct AttributeBlock;

/// One attribute. Of a document's memory the attributes are the greater part, so a view is a
/// single word: the attribute itself until its text was asked for as a string, then (lowest bit
/// set) a heap block that holds both.
class KV_API AttributeView {
 public:
  AttributeView() = default;
  ~AttributeView();
  AttributeView(const AttributeView&) = delete;
  AttributeView& operator=(const AttributeView&) = delete;

  /// The attribute's text. The reference stays valid as long as the element; after a change of the
  /// attribute, ask again.
  const std::string& getData() const;

 protected:
  const char* getValue() const;

 private:
  template <class Attribute>
  friend struct AttributeBlock;

  struct Text;
  Text* getText() const;
  AttributeHandle* getAttribute() const;
  void refer(AttributeHandle* attribute);

  mutable std::uintptr_t word = 0;
};

/// One element: where it stands, and what was made of it so far.
template <class Element, class Attribute>
struct ElementView {
  ElementView();
  ~ElementView();

  Store<Element>* store = nullptr;
  NodeHandle* node = nullptr;
  Element* parent = nullptr;
  Element* nextInStore = nullptr;
  mutable const std::string* name = nullptr;
  mutable std::unique_ptr<ChildList<Element>> children;
  mutable std::unique_ptr<AttributeBlock<Attribute>> attributes;
};

}  // namespace KvXmlView
