#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "kv/xml_view.h"
#include "xml_attribute_text.h"
#include "xml_parse.h"
#include "xml_text.h"

namespace KvXmlView {

/// The children of an element that have a view. `complete` when all have, in document order.
template <class Element>
struct ChildList {
  std::vector<Element*> elements;
  bool complete = false;
};

/// Views of an element's attributes, in document order as of the time they were made. Handed-out
/// views must stay, so a block that no longer covers all attributes is kept behind the newer one.
template <class Attribute>
struct AttributeBlock {
  explicit AttributeBlock(const pugi::xml_node& element) {
    for (pugi::xml_attribute a = element.first_attribute(); a; a = a.next_attribute()) ++size;
    views.reset(new Attribute[size]);
    refer(element);
  }

  void refer(const pugi::xml_node& element) {
    std::uint32_t i = 0;
    for (pugi::xml_attribute a = element.first_attribute(); i < size; a = a.next_attribute())
      views[i++].refer(a.internal_object());
  }

  bool coversAll() const { return !get(size - 1).next_attribute(); }

  /// Attributes are mostly asked for in the order in which they stand, so the search goes on from
  /// where the last one ended.
  Attribute* find(const std::string& name) {
    for (std::uint32_t step = 0; step < size; ++step) {
      const std::uint32_t i = next;
      next = i + 1 < size ? i + 1 : 0;
      if (name == get(i).name()) return &views[i];
    }
    return nullptr;
  }

  pugi::xml_attribute get(std::uint32_t i) const {
    return pugi::xml_attribute(views[i].getAttribute());
  }

  std::unique_ptr<Attribute[]> views;
  std::unique_ptr<AttributeBlock> older;
  std::uint32_t size = 0;
  std::uint32_t next = 0;
};

template <class Element, class Attribute>
ElementView<Element, Attribute>::ElementView() = default;
template <class Element, class Attribute>
ElementView<Element, Attribute>::~ElementView() = default;

/// A document, or an element that stands for itself, with all its views. The document is the one
/// truth; a view is made when it is asked for and owned by the store.
template <class Element>
struct Store {
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  ~Store() {
    while (first != nullptr) {
      Element* const ended = first;
      first = ended->view.nextInStore;
      ended->view.store = nullptr;
      delete ended;
    }
  }

  // --- The document

  pugi::xml_node findRoot() const {
    for (pugi::xml_node node : document.children())
      if (node.type() == pugi::node_element && node != nursery) return node;
    return pugi::xml_node();
  }

  static pugi::xml_node getNode(const Element& element) {
    return pugi::xml_node(element.view.node);
  }

  static bool isElement(const pugi::xml_node& node, const std::string& name) {
    return node.type() == pugi::node_element && name == node.name();
  }

  static pugi::xml_node findChild(const pugi::xml_node& parent, const std::string& name) {
    for (pugi::xml_node node : parent.children())
      if (isElement(node, name)) return node;
    return pugi::xml_node();
  }

  static pugi::xml_node findDescendant(const pugi::xml_node& top, const std::string& name) {
    return top.find_node([&name](const pugi::xml_node& node) { return isElement(node, name); });
  }

  /// Throws std::invalid_argument when `name` is no XML name.
  static pugi::xml_node append(pugi::xml_node parent, const std::string& name) {
    if (!XmlText::isName(name)) throw std::invalid_argument("\"" + name + "\" is no XML name");
    pugi::xml_node child = parent.append_child(pugi::node_element);
    if (!child) throw std::bad_alloc();
    if (child.set_name(name.c_str())) return child;
    parent.remove_child(child);
    throw std::bad_alloc();
  }

  /// Leaf by leaf: however deep the element, the stack stays flat.
  void erase(const pugi::xml_node& top) {
    lastSetOn = nullptr;
    pugi::xml_node leaf = top;
    while (leaf) {
      while (leaf.first_child()) leaf = leaf.first_child();
      pugi::xml_node parent = leaf.parent();
      const bool isTop = leaf == top;
      parent.remove_child(leaf);
      if (isTop) return;
      leaf = parent;
    }
  }

  /// Sets an attribute to a text that XML can hold. Attributes are mostly set in the order in which
  /// they stand, so each is looked for behind the one set before.
  static void setAttribute(const Element& element, const std::string& name, const char* text) {
    if (!XmlText::isName(name)) throw std::invalid_argument("\"" + name + "\" is no XML name");
    Store& store = *element.view.store;
    pugi::xml_node node = getNode(element);
    if (store.lastSetOn != element.view.node) store.lastSet = pugi::xml_attribute();
    store.lastSetOn = element.view.node;

    pugi::xml_attribute attribute = node.attribute(name.c_str(), store.lastSet);
    if (attribute) {
      if (!attribute.set_value(text)) throw std::bad_alloc();
      return;
    }
    attribute = node.append_attribute(name.c_str());
    if (attribute && attribute.set_value(text)) return;
    node.remove_attribute(attribute);
    throw std::bad_alloc();
  }

  // --- Views

  /// Owns `element` from here on.
  void own(Element* element) {
    element->view.nextInStore = first;
    first = element;
  }

  Element* makeView(const pugi::xml_node& node, Element* parent) {
    auto* const element = new Element();
    own(element);
    element->view.store = this;
    element->view.node = node.internal_object();
    element->view.parent = parent;
    return element;
  }

  /// The view of the root element, or null.
  Element* getRoot() {
    if (root != nullptr) return root;
    const pugi::xml_node node = findRoot();
    if (node) root = makeView(node, nullptr);
    return root;
  }

  Element* createRoot(const std::string& name) {
    root = makeView(append(document, name), nullptr);
    return root;
  }

  static const std::string& getName(const Element& element) {
    if (element.view.name == nullptr)
      element.view.name = element.view.store->internName(getNode(element).name());
    return *element.view.name;
  }

  /// Neighbours mostly have the same name, so that is tried first.
  const std::string* internName(const char* name) {
    if (lastName == nullptr || *lastName != name) lastName = &*names.emplace(name).first;
    return lastName;
  }

  template <class Attribute>
  static Attribute* findAttribute(const ElementView<Element, Attribute>& view,
                                  const std::string& name) {
    if (view.attributes != nullptr) {
      if (Attribute* const known = view.attributes->find(name)) return known;
      if (view.attributes->coversAll()) return nullptr;
    }
    const pugi::xml_node node(view.node);
    if (!node.first_attribute()) return nullptr;
    auto block = std::make_unique<AttributeBlock<Attribute>>(node);
    block->older = std::move(view.attributes);
    view.attributes = std::move(block);
    return view.attributes->find(name);
  }

  static ChildList<Element>& getChildList(Element& element) {
    if (element.view.children == nullptr)
      element.view.children = std::make_unique<ChildList<Element>>();
    return *element.view.children;
  }

  static Element* viewChild(Element& parent, const pugi::xml_node& node) {
    ChildList<Element>& list = getChildList(parent);
    for (Element* child : list.elements)
      if (child->view.node == node.internal_object()) return child;
    Element* const child = parent.view.store->makeView(node, &parent);
    list.elements.push_back(child);
    return child;
  }

  /// The view of an element anywhere below `top`, by way of those between; null for no node.
  static Element* viewDescendant(Element& top, const pugi::xml_node& node) {
    if (!node) return nullptr;
    std::vector<pugi::xml_node> path;
    for (pugi::xml_node step = node; step != getNode(top); step = step.parent())
      path.push_back(step);
    Element* element = &top;
    for (auto step = path.rbegin(); step != path.rend(); ++step)
      element = viewChild(*element, *step);
    return element;
  }

  static std::vector<Element*>& viewChildren(Element& parent) {
    ChildList<Element>& list = getChildList(parent);
    if (list.complete) return list.elements;
    std::unordered_map<pugi::xml_node_struct*, Element*> known;
    for (Element* child : list.elements) known.emplace(child->view.node, child);
    std::vector<Element*> all;
    for (pugi::xml_node node : getNode(parent).children()) {
      if (node.type() != pugi::node_element) continue;
      const auto view = known.empty() ? known.end() : known.find(node.internal_object());
      all.push_back(view != known.end() ? view->second
                                        : parent.view.store->makeView(node, &parent));
    }
    list.elements = std::move(all);
    list.complete = true;
    return list.elements;
  }

  /// Makes room for one more child, so that noting it cannot fail once the document has it.
  static ChildList<Element>& reserveChild(Element& parent) {
    ChildList<Element>& list = getChildList(parent);
    if (list.elements.size() == list.elements.capacity())
      list.elements.reserve(2 * list.elements.size() + 4);
    return list;
  }

  /// Creates a child element behind all others.
  static Element* appendChild(Element& parent, const std::string& name) {
    ChildList<Element>& list = reserveChild(parent);
    Element* const child = parent.view.store->makeView(pugi::xml_node(), &parent);
    child->view.node = append(getNode(parent), name).internal_object();
    list.elements.push_back(child);
    return child;
  }

  // --- Elements that no other has taken yet

  /// Makes `element` a detached one.
  void makeDetached(Element& element, const std::string& name) {
    detached.push_back(&element);
    try {
      if (!nursery) nursery = append(document, "nursery");
      element.view.node = append(nursery, name).internal_object();
    } catch (...) {
      detached.pop_back();
      throw;
    }
    element.view.store = this;
  }

  bool isDetached(const Element& element) const { return getNode(element).parent() == nursery; }

  void forgetDetached(const Element& element) {
    detached.erase(std::find(detached.begin(), detached.end(), &element));
  }

  /// Makes `element` stand for itself, in a store of its own, which ends with it.
  static void makeStandalone(Element& element, const std::string& name) {
    auto store = std::make_unique<Store>();
    store->makeDetached(element, name);
    store->standalone = &element;
    static_cast<void>(store.release());
  }

  /// Ends what `element` was, unless the store itself is ending it.
  static void release(Element& element) {
    Store* const store = element.view.store;
    if (store == nullptr) return;
    if (store->standalone == &element) {
      delete store;
      return;
    }
    store->forgetDetached(element);
    store->erase(getNode(element));
  }

  /// Makes a detached element the last child of `parent`.
  void attach(Element& parent, Element& child) {
    ChildList<Element>& list = reserveChild(parent);
    if (!getNode(parent).append_move(getNode(child)))
      throw std::invalid_argument("an element cannot be added below itself");
    forgetDetached(child);
    own(&child);
    child.view.parent = &parent;
    list.elements.push_back(&child);
  }

  /// Takes over another store, of an element that stood for itself, with all that is detached
  /// there.
  void takeOver(Store& other) {
    if (!nursery) nursery = append(document, "nursery");
    const std::vector<Element*> moving = other.detached;
    std::vector<Element*> views;
    for (Element* element : moving) listViews(*element, views);
    detached.reserve(detached.size() + moving.size());
    const std::vector<pugi::xml_node> copies = copyToNursery(moving);

    const std::unique_ptr<Store> emptied(&other);
    takeViews(other);
    for (std::size_t i = 0; i < moving.size(); ++i) {
      moving[i]->view.store = this;
      moving[i]->view.name = nullptr;
      moving[i]->view.node = copies[i].internal_object();
      detached.push_back(moving[i]);
    }
    for (Element* view : views) rebind(*view);
  }

  pugi::xml_document document;
  XmlParse::Layout layout = XmlParse::Layout::free;
  pugi::xml_node nursery;  // holds detached elements; never found, never printed
  Element* root = nullptr;
  Element* first = nullptr;
  Element* standalone = nullptr;
  std::vector<Element*> detached;         // not owned
  std::unordered_set<std::string> names;  // of elements, each text once
  const std::string* lastName = nullptr;
  pugi::xml_node_struct* lastSetOn = nullptr;
  pugi::xml_attribute lastSet;  // of that node

 private:
  /// Adds `top` and all views below it to `views`, parents first; each gets its list of children.
  static void listViews(Element& top, std::vector<Element*>& views) {
    std::size_t i = views.size();
    views.push_back(&top);
    for (; i < views.size(); ++i) {
      const std::vector<Element*>& children = viewChildren(*views[i]);
      views.insert(views.end(), children.begin(), children.end());
    }
  }

  std::vector<pugi::xml_node> copyToNursery(const std::vector<Element*>& elements) {
    std::vector<pugi::xml_node> copies;
    copies.reserve(elements.size());
    for (const Element* element : elements) {
      copies.push_back(nursery.append_copy(getNode(*element)));
      if (copies.back()) continue;
      copies.pop_back();
      for (const pugi::xml_node& copy : copies) erase(copy);
      throw std::bad_alloc();
    }
    return copies;
  }

  void takeViews(Store& other) {
    while (other.first != nullptr) {
      Element* const element = other.first;
      other.first = element->view.nextInStore;
      own(element);
      element->view.store = this;
      element->view.name = nullptr;
    }
  }

  /// Lets attributes and children refer to the node that `element` stands on now.
  static void rebind(Element& element) {
    const pugi::xml_node node = getNode(element);
    for (auto* block = element.view.attributes.get(); block != nullptr; block = block->older.get())
      block->refer(node);
    auto child = element.view.children->elements.begin();
    for (pugi::xml_node childNode : node.children())
      if (childNode.type() == pugi::node_element)
        (*child++)->view.node = childNode.internal_object();
  }
};

}  // namespace KvXmlView
