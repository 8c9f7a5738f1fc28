#include "kv/xml_n.h"

#include "number_text.h"
#include "xml_parse.h"
#include "xml_print.h"
#include "xml_store.h"
#include "xml_value.h"

/// Keeps only the attributes that were asked for.
template <>
class KvXmlView::AttributePool<KvXmlN::Data> : public Pool<KvXmlN::AttributeData> {};

namespace KvXmlN {

using Store = KvXmlView::Store<Data>;

const std::string& AttributeData::getData() const { return data; }

Data::Data() = default;

Data::Data(const std::string& name) { Store::makeStandalone(*this, name); }

Data::~Data() { Store::release(*this); }

const std::vector<Data*>& Data::getChildren() const {
  // Only views are made here; the document has the children already.
  return Store::viewChildren(const_cast<Data&>(*this));
}

const std::string& Data::getName() const { return Store::getName(*this); }

const AttributeData* Data::findAttribute(const std::string& name) const {
  const pugi::xml_attribute found = Store::lookUp(*this, name);
  if (!found) return nullptr;
  KvXmlView::AttributeHandle* const handle = KvXmlView::toHandle(found);
  for (const AttributeData* known = view.attributes; known != nullptr; known = known->next)
    if (known->attribute == handle) return known;
  AttributeData* const asked = view.store->attributes.make(1);
  asked->attribute = handle;
  asked->data = XmlValue::resolve(found.value(), view.store->parsed.page);
  asked->next = view.attributes;
  view.attributes = asked;
  return asked;
}

double Data::getAttributeDouble(const std::string& name) const {
  return XmlValue::readDouble(Store::lookUp(*this, name).value()).value_or(0.0);
}

Data* Data::createChild(const std::string& name) {
  return XmlText::isName(name, view.store->parsed.page) ? Store::appendChild(*this, name) : nullptr;
}

/// Updates the text of the attribute of this name, if it was asked for before.
void Data::refresh(const std::string& name, std::string& meant) noexcept {
  for (AttributeData* known = view.attributes; known != nullptr; known = known->next)
    if (KvXmlView::fromHandle(known->attribute).name() == name) known->data.swap(meant);
}

void Data::setAttribute(const std::string& name, const std::string& value, bool /*flag*/) {
  // Resolved first: when memory runs out here, nothing has changed.
  std::string meant;
  if (view.attributes != nullptr) meant = XmlValue::resolve(XmlValue::write(value), nullptr);
  Store::setText(*this, name, value);
  refresh(name, meant);
}

void Data::setAttribute(const std::string& name, int value, bool /*flag*/) {
  std::string text = NumberText::print(value);
  Store::setNumber(*this, name, text.c_str());
  refresh(name, text);
}

void Data::setAttribute(const std::string& name, double value) {
  std::string text = NumberText::print(value);
  Store::setNumber(*this, name, text.c_str());
  refresh(name, text);
}

void Data::setAttribute(const std::string& name, double value, const char* format) {
  setAttribute(name, NumberText::print(value, format), true);
}

void Data::removeChildren(const std::function<bool(const Data&)>& isUnwanted) {
  Store::removeChildren(*this, isUnwanted);
}

std::vector<std::string> Data::getAttributeNames() const { return Store::listAttributes(*this); }

KvXmlPosition Data::getPosition() const { return Store::locate(*this); }

KvXmlPosition Data::getAttributePosition(const std::string& name) const {
  return Store::locateAttribute(*this, name);
}

kvt::Nullable<std::string> AttributeIn::readString(const Data& data, const std::string& name) {
  return Store::readText(data, name);
}

kvt::Nullable<double> AttributeIn::readDouble(const Data& data, const std::string& name) {
  return XmlValue::readDouble(Store::lookUp(data, name).value());
}

kvt::Nullable<int> AttributeIn::readInteger(const Data& data, const std::string& name) {
  return XmlValue::readInteger(Store::lookUp(data, name).value());
}

Document::Document(const std::string& rootName) : store(std::make_unique<Store>()) {
  store->createRoot(rootName);
}

Document::Document(std::istream& in) : store(std::make_unique<Store>()) {
  store->parsed = XmlParse::parse(in, store->document, XmlParse::Root::required);
}

Document::~Document() = default;

Data& Document::getRoot() { return *store->getRoot(); }

const Data& Document::getRoot() const { return *store->getRoot(); }

void Document::putToStream(std::ostream& out) const {
  XmlPrint::print(store->document, store->nursery, store->parsed, out);
}

}  // namespace KvXmlN
