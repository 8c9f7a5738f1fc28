#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "kv/xml_view.h"
#include "xml_attribute_cursor.h"
#include "xml_handles.h"
#include "xml_nodes.h"
#include "xml_parse.h"
#include "xml_pool.h"
#include "xml_text.h"
#include "xml_value.h"

namespace KvXmlView {

/// Keeps the attributes of all elements; each library has its own.
template <class Element>
class AttributePool;

/// The children of an element that have a view. `complete` when all children do; they are in
/// document order then.
template <class Element>
struct ChildList {
  std::vector<Element*> elements;
  bool complete = false;
};

template <class Element, class Attributes>
ElementView<Element, Attributes>::ElementView() = default;
template <class Element, class Attributes>
ElementView<Element, Attributes>::~ElementView() = default;

/// A document, or a standalone element, with all its views. Only the parser's document holds
/// content; a view is made when it is first asked for, and the store owns it.
template <class Element>
struct Store {
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  /// Deletes stores that were taken over from the last to the first: a store comes before those
  /// that it had taken over itself, and elements in these may still point to it.
  ~Store() {
    isEnding = true;
    for (Element* element : added) delete element;
    while (!takenOver.empty()) takenOver.pop_back();
  }

  // --- The document

  pugi::xml_node findRoot() const {
    for (pugi::xml_node node : document.children())
      if (node.type() == pugi::node_element && node != nursery) return node;
    return {};
  }

  static pugi::xml_node getNode(const Element& element) { return fromHandle(element.view.node); }

  void erase(const pugi::xml_node& top) {
    cursor.reset();
    XmlNodes::erase(top);
  }

  /// Throws std::invalid_argument when `name` is no XML name.
  void requireElementName(const std::string& name) {
    if (parsed.shapes.findEmpty(name) != nullptr) return;
    requireName(name);
    parsed.shapes.giveEmpty(name);
  }

  void requireName(const std::string& name) {
    if (!XmlText::isName(name, parsed.page))
      throw std::invalid_argument("\"" + name + "\" is no XML name");
    if (!XmlText::isAscii(name)) parsed.isAscii = false;
    if (name == "xml:space") parsed.mayHoldText = true;
  }

  /// Sets an attribute to a text.
  static void setText(const Element& element, const std::string& name, const std::string& text) {
    if (!XmlText::isAscii(text)) element.view.store->parsed.isAscii = false;
    if (XmlValue::isWrittenAsItIs(text)) return setWritten(element, name, text.c_str());
    setWritten(element, name, XmlValue::write(text).c_str());
  }

  /// Sets an attribute to the text of a number, which is written as it is.
  static void setNumber(const Element& element, const std::string& name, const char* number) {
    setWritten(element, name, number);
  }

  /// The cursor, on the attributes of `element`.
  static AttributeCursor& lookAt(const Element& element) {
    Store& store = *element.view.store;
    store.cursor.moveTo(element.view.node, store.parsed);
    return store.cursor;
  }

  /// The attribute of this name, or none.
  static pugi::xml_attribute lookUp(const Element& element, const std::string& name) {
    AttributeCursor& cursor = lookAt(element);
    const std::size_t found = cursor.find(name);
    return found != AttributeCursor::none ? cursor.get(found) : pugi::xml_attribute();
  }

  /// What an attribute means, or none when it is absent.
  static std::optional<std::string> readText(const Element& element, const std::string& name) {
    const pugi::xml_attribute found = lookUp(element, name);
    if (!found) return std::nullopt;
    return XmlValue::resolve(found.value(), element.view.store->parsed.page);
  }

  static std::vector<std::string> listAttributes(const Element& element) {
    std::vector<std::string> names;
    for (const pugi::xml_attribute a : getNode(element).attributes()) names.emplace_back(a.name());
    return names;
  }

  /// The position of the '<' of the element.
  static KvXmlPosition locate(const Element& element) {
    return element.view.store->parsed.origin.find(getNode(element).name(), 1);
  }

  static KvXmlPosition locateAttribute(const Element& element, const std::string& name) {
    return element.view.store->parsed.origin.find(lookUp(element, name).name(), 0);
  }

  // --- Views

  Element* makeView(const pugi::xml_node& node, Element* parent) {
    Element* const element = elements.make(1);
    bind(*element, node, parent);
    return element;
  }

  void bind(Element& element, const pugi::xml_node& node, Element* parent) {
    element.view.store = this;
    element.view.node = toHandle(node);
    element.view.parent = parent;
  }

  /// The view of the root element, or null.
  Element* getRoot() {
    if (root != nullptr) return root;
    const pugi::xml_node node = findRoot();
    if (node) root = makeView(node, nullptr);
    return root;
  }

  Element* createRoot(const std::string& name) {
    root = createElement(document, name, nullptr);
    return root;
  }

  /// Creates an element below `parentNode`, behind all others, and the view of it.
  Element* createElement(const pugi::xml_node& parentNode, const std::string& name,
                         Element* parent) {
    requireElementName(name);
    Element* const element = makeView(pugi::xml_node(), parent);
    element->view.node = toHandle(XmlNodes::append(parentNode, name));
    return element;
  }

  static const std::string& getName(const Element& element) {
    if (element.view.name == nullptr)
      element.view.name = element.view.store->internName(getNode(element).name());
    return *element.view.name;
  }

  /// Tries the last name first, since neighbours mostly have the same name.
  const std::string* internName(const char* name) {
    if (lastName == nullptr || *lastName != name) lastName = &*names.emplace(name).first;
    return lastName;
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

  /// The view of an element anywhere below `top`; makes views of the elements between, too. Null
  /// for no node.
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
    for (pugi::xml_node node = getNode(parent).first_child(); exists(node);
         node = node.next_sibling()) {
      if (node.type() != pugi::node_element) continue;
      const auto view = known.empty() ? known.end() : known.find(toHandle(node));
      all.push_back(view != known.end() ? view->second
                                        : parent.view.store->makeView(node, &parent));
    }
    list.elements = std::move(all);
    list.complete = true;
    return list.elements;
  }

  /// Makes room for one more child, so that recording it cannot fail once the document has it.
  static ChildList<Element>& reserveChild(Element& parent) {
    ChildList<Element>& list = getChildList(parent);
    reserveMore(list.elements, 1);
    return list;
  }

  /// Makes room for `count` more, growing in proportion.
  template <class Item>
  static void reserveMore(std::vector<Item>& list, std::size_t count) {
    if (list.capacity() - list.size() < count) list.reserve(2 * list.size() + count + 4);
  }

  /// Creates a child element behind all others.
  static Element* appendChild(Element& parent, const std::string& name) {
    ChildList<Element>& list = reserveChild(parent);
    Element* const child = parent.view.store->createElement(getNode(parent), name, &parent);
    list.elements.push_back(child);
    return child;
  }

  /// Erases the children of `parent` for which `isUnwanted` returns true, with everything below
  /// them. Their views stay in memory, but nothing refers to them.
  template <class Test>
  static void removeChildren(Element& parent, const Test& isUnwanted) {
    std::vector<Element*> kept;
    std::vector<Element*> unwanted;
    for (Element* child : viewChildren(parent))
      (isUnwanted(*child) ? unwanted : kept).push_back(child);
    for (const Element* child : unwanted) parent.view.store->erase(getNode(*child));
    getChildList(parent).elements = std::move(kept);
  }

  // --- Elements that have no parent yet

  /// Makes `element` a detached element.
  void makeDetached(Element& element, const std::string& name) {
    detached.push_back(&element);
    try {
      requireElementName(name);
      if (!nursery) nursery = XmlNodes::append(document, "nursery");
      element.view.node = toHandle(XmlNodes::append(nursery, name));
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

  /// Makes `element` standalone, in a store of its own that is deleted with it.
  static void makeStandalone(Element& element, const std::string& name) {
    auto store = std::make_unique<Store>();
    store->makeDetached(element, name);
    store->standalone = &element;
    static_cast<void>(store.release());
  }

  /// Erases the node of `element`, or its store when it is standalone; nothing when the store is
  /// already being deleted.
  static void release(Element& element) {
    Store* const store = element.view.store;
    if (store == nullptr || store->isEnding) return;
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
    reserveMore(added, 1);
    if (!getNode(parent).append_move(getNode(child)))
      throw std::invalid_argument("an element cannot be added below itself");
    forgetDetached(child);
    added.push_back(&child);
    child.view.parent = &parent;
    list.elements.push_back(&child);
  }

  /// Takes over the store of a standalone element with everything that is detached there. Keeps the
  /// other store for its views, which do not move, and the stores that it had taken over.
  void takeOver(Store& other) {
    if (!nursery) nursery = XmlNodes::append(document, "nursery");
    const std::vector<Element*> moving = other.detached;
    std::vector<Element*> views;
    for (Element* element : moving) listViews(*element, views);
    reserveMore(detached, moving.size());
    reserveMore(added, 1);
    reserveMore(takenOver, other.takenOver.size() + 1);
    const std::vector<pugi::xml_node> copies = copyToNursery(moving);

    if (!other.parsed.isAscii) parsed.isAscii = false;
    if (other.parsed.mayHoldText) parsed.mayHoldText = true;
    takenOver.emplace_back(&other);
    for (std::unique_ptr<Store>& older : other.takenOver) takenOver.push_back(std::move(older));
    other.isEnding = true;
    for (std::size_t i = 0; i < moving.size(); ++i) {
      moving[i]->view.node = toHandle(copies[i]);
      detached.push_back(moving[i]);
    }
    for (Element* view : views) {
      view->view.store = this;
      rebind(*view);
    }
    other.document.reset();
  }

  pugi::xml_document document;
  XmlParse::Parsed parsed;
  pugi::xml_node nursery;  // holds detached elements; never found, never printed
  bool isEnding = false;
  Pool<Element> elements;
  AttributePool<Element> attributes;
  Element* root = nullptr;
  Element* standalone = nullptr;
  std::vector<Element*> detached;  // not owned
  std::vector<Element*> added;     // once detached, now owned
  std::set<std::string, std::less<>>
      names;  // of elements, each text once; no choice of them is slow
  std::vector<std::unique_ptr<Store>> takenOver;
  const std::string* lastName = nullptr;
  AttributeCursor cursor;

 private:
  static void setWritten(const Element& element, const std::string& name, const char* written) {
    AttributeCursor& cursor = lookAt(element);
    if (!cursor.isKnownToBeNew(name)) {
      const std::size_t found = cursor.find(name);
      if (found != AttributeCursor::none)
        return replaceWritten(*element.view.store, cursor.get(found), written);
      element.view.store->requireName(name);
    }
    cursor.prepareAppending(name);
    pugi::xml_node node = getNode(element);
    pugi::xml_attribute attribute = node.append_attribute(name.c_str());
    // When memory runs out, the parser may leave the name empty without an error.
    if (*attribute.name() != '\0' && attribute.set_value(written)) return cursor.append(attribute);
    node.remove_attribute(attribute);
    throw std::bad_alloc();
  }

  static void replaceWritten(const Store& store, pugi::xml_attribute attribute,
                             const char* written) {
    if (!attribute.set_value(written)) throw std::bad_alloc();
    XmlParse::resetQuote(attribute, store.parsed.origin);
  }

  /// Adds `top` and all views below it to `views`, parents first; each gets its list of children.
  static void listViews(Element& top, std::vector<Element*>& views) {
    std::size_t i = views.size();
    views.push_back(&top);
    for (; i < views.size(); ++i) {
      const std::vector<Element*>& children = viewChildren(*views[i]);
      views.insert(views.end(), children.begin(), children.end());
    }
  }

  std::vector<pugi::xml_node> copyToNursery(const std::vector<Element*>& originals) {
    std::vector<pugi::xml_node> copies;
    copies.reserve(originals.size());
    for (const Element* element : originals) {
      copies.push_back(nursery.append_copy(getNode(*element)));
      if (XmlNodes::isFullCopy(getNode(*element), copies.back())) continue;
      for (const pugi::xml_node& copy : copies) erase(copy);
      throw std::bad_alloc();
    }
    return copies;
  }

  /// Points the attributes and children to the current node of `element`.
  static void rebind(Element& element) {
    const pugi::xml_node node = getNode(element);
    AttributePool<Element>::rebind(element.view.attributes, node);
    auto child = element.view.children->elements.begin();
    for (pugi::xml_node childNode : node.children())
      if (childNode.type() == pugi::node_element) (*child++)->view.node = toHandle(childNode);
  }
};

}  // namespace KvXmlView
