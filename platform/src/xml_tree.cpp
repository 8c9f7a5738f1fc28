#include "kv/xml_tree.h"

#include <stdexcept>
#include <utility>

#include "number_text.h"
#include "xml_parse.h"
#include "xml_print.h"
#include "xml_store.h"
#include "xml_tree_attributes.h"
#include "xml_value.h"

using KvXmlView::AttributeHandle;
using KvXmlView::fromHandle;
using Store = KvXmlView::Store<KvXmlData>;

KvXmlAttributeData::Text* KvXmlAttributeData::getText() const {
  return hasText() ? reinterpret_cast<Text*>(word & ~(anyText | ownText)) : nullptr;
}

void KvXmlAttributeData::deleteText() { delete getText(); }

AttributeHandle* KvXmlAttributeData::getAttribute() const {
  const Text* const text = getText();
  return text != nullptr ? text->attribute : reinterpret_cast<AttributeHandle*>(word);
}

const char* KvXmlAttributeData::getValue() const { return fromHandle(getAttribute()).value(); }

void KvXmlAttributeData::refer(AttributeHandle* attribute) {
  if (Text* const text = getText())
    text->attribute = attribute;
  else
    word = reinterpret_cast<std::uintptr_t>(attribute);
}

void KvXmlAttributeData::keepText(const CodePages::CodePage* page) const {
  if (hasText()) return;
  auto text = new Text{getAttribute(), page, XmlValue::resolve(getValue(), page)};
  word = reinterpret_cast<std::uintptr_t>(text) | anyText | ownText;
}

const std::string& KvXmlAttributeData::getData() const {
  // No code page: where that matters, findAttribute() has kept the text already.
  keepText(nullptr);
  Text& text = *getText();
  if (text.data == getValue() && XmlValue::isPlain(text.data)) return text.data;
  std::string meant = XmlValue::resolve(getValue(), text.page);
  if (text.data != meant) text.data = std::move(meant);
  return text.data;
}

int KvXmlAttributeData::getInteger() const { return XmlValue::readInteger(getValue()).value_or(0); }

double KvXmlAttributeData::getDouble() const {
  return XmlValue::readDouble(getValue()).value_or(0.0);
}

bool KvXmlAttributeData::checkValue(int value) const {
  return XmlValue::readInteger(getValue()) == value;
}

KvXmlData::KvXmlData() = default;

KvXmlData::KvXmlData(const std::string& name, KvXmlData* parent) {
  if (parent == nullptr) {
    Store::makeStandalone(*this, name);
    return;
  }
  parent->view.store->makeDetached(*this, name);
  view.parent = parent;
}

KvXmlData::~KvXmlData() { Store::release(*this); }

KvXmlData* KvXmlData::findTree(const std::string& name, bool flag) {
  const pugi::xml_node node = Store::getNode(*this);
  return Store::viewDescendant(
      *this, flag ? XmlNodes::findDescendant(node, name) : XmlNodes::findChild(node, name));
}

std::vector<KvXmlData*>& KvXmlData::getChildren() { return Store::viewChildren(*this); }

const std::string& KvXmlData::getName() const { return Store::getName(*this); }

KvXmlAttributeData* KvXmlData::findAttribute(const std::string& name) const {
  KvXmlView::AttributeCursor& cursor = Store::lookAt(*this);
  const std::size_t index = cursor.find(name);
  if (index == KvXmlView::AttributeCursor::none) return nullptr;
  KvXmlAttributeData* const found =
      view.store->attributes.give(view.attributes, cursor.getHandles(), index);
  view.store->attributes.keepText(*found, view.store->parsed.page);
  return found;
}

void KvXmlData::addChild(KvXmlData* child) {
  if (child == nullptr) throw std::invalid_argument("no element to add");
  Store& from = *child->view.store;
  Store& to = *view.store;
  Store::reserveChild(*this);  // first: when memory runs out here, nothing has moved
  if (&from != &to) {
    if (from.standalone != child)
      throw std::invalid_argument("the element was made for another document");
    to.takeOver(from);
  }
  if (to.standalone == child)
    throw std::invalid_argument("an element cannot be added to one that was made for it");
  if (!to.isDetached(*child)) throw std::invalid_argument("the element was added before");
  to.attach(*this, *child);
}

void KvXmlData::setAttribute(const std::string& name, int value, bool /*flag*/) {
  Store::setNumber(*this, name, NumberText::print(value).c_str());
}

void KvXmlData::setAttribute(const std::string& name, const std::string& value, bool /*flag*/) {
  Store::setText(*this, name, value);
}

void KvXmlData::removeChildren(const std::function<bool(const KvXmlData&)>& isUnwanted) {
  Store::removeChildren(*this, isUnwanted);
}

std::vector<std::string> KvXmlData::getAttributeNames() const {
  return Store::listAttributes(*this);
}

KvXmlPosition KvXmlData::getPosition() const { return Store::locate(*this); }

KvXmlPosition KvXmlData::getAttributePosition(const std::string& name) const {
  return Store::locateAttribute(*this, name);
}

KvXmlTree::KvXmlTree() : store(std::make_unique<Store>()) {}

KvXmlTree::KvXmlTree(std::istream& in) : KvXmlTree() {
  store->parsed = XmlParse::parse(in, store->document, XmlParse::Root::optional);
}

KvXmlTree::~KvXmlTree() = default;

KvXmlData* KvXmlTree::findRoot(const std::string& name, bool /*flag*/) const {
  KvXmlData* const root = store->getRoot();
  return root != nullptr && root->getName() == name ? root : nullptr;
}

KvXmlData* KvXmlTree::open(const std::string& name, bool /*flag*/) {
  if (current == nullptr)
    current = store->findRoot() ? findRoot(name, true) : store->createRoot(name);
  else if (KvXmlData* const child = current->findTree(name, false))
    current = child;
  else
    current = Store::appendChild(*current, name);
  return current;
}

void KvXmlTree::close() {
  if (current != nullptr) current = current->view.parent;
}

void KvXmlTree::flush() {}

void KvXmlTree::setAttribute(const std::string& name, double value) {
  if (current != nullptr) Store::setNumber(*current, name, NumberText::print(value).c_str());
}

KvXmlData* KvXmlTree::getCurrent() const { return current; }

void KvXmlTree::setCurrent(KvXmlData* element) { current = element; }

void KvXmlTree::putToStream(std::ostream& out) const {
  XmlPrint::print(store->document, store->nursery, store->parsed, out);
}
