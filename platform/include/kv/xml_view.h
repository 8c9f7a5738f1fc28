#pragma once

/// @file
/// What the elements of both XML libraries share: they are views of a parsed document and hold only
/// what was asked for. Nothing here is for hosts.

#include <memory>
#include <string>

namespace KvXmlView {

/// What the parser keeps of an element and of an attribute.
struct NodeHandle;
struct AttributeHandle;

template <class Element>
struct Store;
template <class Element>
struct ChildList;
template <class Object>
class Pool;

/// One element: where it stands, and what was made of it so far.
template <class Element, class Attributes>
struct ElementView {
  ElementView();
  ElementView(const ElementView&) = delete;
  ElementView& operator=(const ElementView&) = delete;
  ~ElementView();

  Store<Element>* store = nullptr;
  NodeHandle* node = nullptr;
  Element* parent = nullptr;
  mutable const std::string* name = nullptr;
  mutable std::unique_ptr<ChildList<Element>> children;
  mutable Attributes* attributes = nullptr;  // those that were asked for, kept by the store
};

}  // namespace KvXmlView
