#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
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
#include "xml_handles.h"
#include "xml_parse.h"
#include "xml_text.h"

namespace KvXmlView {

/// The children of an element that have a view. `complete` when all have, in document order.
template <class Element>
struct ChildList {
  std::vector<Element*> elements;
  bool complete = false;
};

/// Views of an element's attributes, in document order. Handed-out views must stay where they are,
/// so attributes that are set later get a block of their own.
template <class Attribute>
struct AttributeBlock {
  /// Views of `from`, which is the attribute of this index, and of all behind it.
  AttributeBlock(const pugi::xml_attribute& from, std::uint32_t index) : start(index) {
    for (pugi::xml_attribute a = from; a; a = a.next_attribute()) ++size;
    views.reset(new Attribute[size]);
    refer(from);
  }

  /// Block by block: however many there are, the stack stays flat.
  ~AttributeBlock() {
    while (older != nullptr) older = std::move(older->older);
  }

  void refer(pugi::xml_attribute a) {
    for (std::uint32_t i = 0; i < size; a = a.next_attribute()) views[i++].refer(toHandle(a));
  }

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

  /// The first attribute that has no view yet.
  pugi::xml_attribute findUncovered() const { return get(size - 1).next_attribute(); }

  pugi::xml_attribute get(std::uint32_t i) const { return fromHandle(views[i].getAttribute()); }

  std::unique_ptr<Attribute[]> views;
  std::unique_ptr<AttributeBlock> older;
  std::uint32_t start;
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

  static pugi::xml_node getNode(const Element& element) { return fromHandle(element.view.node); }

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
    element->view.node = toHandle(node);
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
    using Block = AttributeBlock<Attribute>;
    for (Block* block = view.attributes.get(); block != nullptr; block = block->older.get())
      if (Attribute* const known = block->find(name)) return known;

    Block* const newest = view.attributes.get();
    const pugi::xml_attribute uncovered =
        newest != nullptr ? newest->findUncovered() : fromHandle(view.node).first_attribute();
    if (!uncovered) return nullptr;
    auto block =
        std::make_unique<Block>(uncovered, newest != nullptr ? newest->start + newest->size : 0);
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
      if (child->view.node == toHandle(node)) return child;
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
    std::unordered_map<NodeHandle*, Element*> known;
    for (Element* child : list.elements) known.emplace(child->view.node, child);
    std::vector<Element*> all;
    for (pugi::xml_node node : getNode(parent).children()) {
      if (node.type() != pugi::node_element) continue;
      const auto view = known.empty() ? known.end() : known.find(toHandle(node));
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
    child->view.node = toHandle(append(getNode(parent), name));
    list.elements.push_back(child);
    return child;
  }

  // --- Elements that no other has taken yet

  /// Makes `element` a detached one.
  void makeDetached(Element& element, const std::string& name) {
    detached.push_back(&element);
    try {
      if (!nursery) nursery = append(document, "nursery");
      element.view.node = toHandle(append(nursery, name));
    } catch (...) {
      detached.pop_back();
      throw;
    }
    element.view.store = this;
  }

  bool isDetached(const Element& element) const { return getNode(element).parent() == nursery; }

  void forgetDetached(const Element& element) {
    const auto place = std::find(detached.begin(), detached.end(), &element);
    if (place != detached.end()) detached.erase(place);
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
    oldNames.reserve(oldNames.size() + 1 + other.oldNames.size());
    const std::vector<pugi::xml_node> copies = copyToNursery(moving);

    const std::unique_ptr<Store> emptied(&other);
    takeViews(other);
    for (std::size_t i = 0; i < moving.size(); ++i) {
      moving[i]->view.store = this;
      moving[i]->view.node = toHandle(copies[i]);
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
  std::vector<Element*> detached;                         // not owned
  std::unordered_set<std::string> names;                  // of elements, each text once
  std::vector<std::unordered_set<std::string>> oldNames;  // of stores taken over
  const std::string* lastName = nullptr;
  NodeHandle* lastSetOn = nullptr;
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

  /// Out of memory, the parser copies what it can and does not say so.
  static bool isFullCopy(pugi::xml_node node, pugi::xml_node copy) {
    const pugi::xml_node top = node;
    while (copy) {
      const bool isSame =
          std::strcmp(node.name(), copy.name()) == 0 &&
          std::strcmp(node.value(), copy.value()) == 0 &&
          std::equal(node.attributes_begin(), node.attributes_end(), copy.attributes_begin(),
                     copy.attributes_end(),
                     [](const pugi::xml_attribute& a, const pugi::xml_attribute& b) {
                       return std::strcmp(a.name(), b.name()) == 0 &&
                              std::strcmp(a.value(), b.value()) == 0;
                     });
      if (!isSame) return false;
      if (node.first_child()) {
        node = node.first_child();
        copy = copy.first_child();
        continue;
      }
      if (copy.first_child()) return false;
      while (node != top && !node.next_sibling()) {
        node = node.parent();
        copy = copy.parent();
      }
      if (node == top) return true;
      node = node.next_sibling();
      copy = copy.next_sibling();
    }
    return false;
  }

  std::vector<pugi::xml_node> copyToNursery(const std::vector<Element*>& elements) {
    std::vector<pugi::xml_node> copies;
    copies.reserve(elements.size());
    for (const Element* element : elements) {
      copies.push_back(nursery.append_copy(getNode(*element)));
      if (isFullCopy(getNode(*element), copies.back())) continue;
      for (const pugi::xml_node& copy : copies)
        if (copy) erase(copy);
      throw std::bad_alloc();
    }
    return copies;
  }

  void takeViews(Store& other) {
    oldNames.push_back(std::move(other.names));
    for (auto& older : other.oldNames) oldNames.push_back(std::move(older));
    while (other.first != nullptr) {
      Element* const element = other.first;
      other.first = element->view.nextInStore;
      own(element);
      element->view.store = this;
    }
  }

  /// Lets attributes and children refer to the node that `element` stands on now.
  static void rebind(Element& element) {
    const pugi::xml_node node = getNode(element);
    for (auto* block = element.view.attributes.get(); block != nullptr; block = block->older.get())
      block->refer(*std::next(node.attributes_begin(), block->start));
    auto child = element.view.children->elements.begin();
    for (pugi::xml_node childNode : node.children())
      if (childNode.type() == pugi::node_element) (*child++)->view.node = toHandle(childNode);
  }
};

}  // namespace KvXmlView
