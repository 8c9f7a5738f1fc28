#include "kv/xml_n.h"

#include <fast_float/fast_float.h>

#include "recording_newer.h"

namespace {

int& getCreationsUntilRefusal() {
  static int left = 0;  // 0: none is refused
  return left;
}

double& getAbsentDouble() {
  static double value = 0.0;
  return value;
}

bool isRefusalDue() {
  int& left = getCreationsUntilRefusal();
  return left > 0 && --left == 0;
}

}  // namespace

namespace Recording {

/// The plain element underneath, off the record.
struct DataAccess {
  static KvXmlN::Data* append(KvXmlN::Data& parent, const std::string& name) {
    auto child = std::make_unique<KvXmlN::Data>(name);
    parent.children.push_back(child.get());
    return child.release();
  }

  static void appendNull(KvXmlN::Data& parent) { parent.children.push_back(nullptr); }

  static KvXmlN::AttributeData* find(const KvXmlN::Data& element, const std::string& key) {
    for (const auto& attribute : element.attributes)
      if (attribute->name == key) return attribute.get();
    return nullptr;
  }

  static const std::string& getText(const KvXmlN::AttributeData& attribute) {
    return attribute.text;
  }

  static void set(KvXmlN::Data& element, const std::string& key, const std::string& text) {
    if (KvXmlN::AttributeData* const attribute = find(element, key)) {
      attribute->text = text;
      return;
    }
    element.attributes.emplace_back(new KvXmlN::AttributeData(key, text));
  }

  static const std::string& getName(const KvXmlN::Data& element) { return element.name; }

  static void describe(const KvXmlN::Data* element, std::size_t level,
                       std::vector<std::string>& lines) {
    std::string line = std::string(level, ' ') + (element != nullptr ? element->name : "null");
    if (element == nullptr) {
      lines.push_back(line);
      return;
    }
    for (const auto& attribute : element->attributes)
      line += " " + attribute->name + "=" + attribute->text;
    lines.push_back(line);
    for (const KvXmlN::Data* child : element->children) describe(child, level + 1, lines);
  }
};

KvXmlN::Data& addElement(KvXmlN::Data& parent, const std::string& name,
                         const Attributes& attributes) {
  KvXmlN::Data& child = *DataAccess::append(parent, name);
  for (const auto& [key, text] : attributes) DataAccess::set(child, key, text);
  return child;
}

void addNullElement(KvXmlN::Data& parent) { DataAccess::appendNull(parent); }

std::vector<std::string> describe(const KvXmlN::Data& element) {
  std::vector<std::string> lines;
  DataAccess::describe(&element, 0, lines);
  return lines;
}

ChildRefusal::ChildRefusal(int n) { getCreationsUntilRefusal() = n; }

ChildRefusal::~ChildRefusal() { getCreationsUntilRefusal() = 0; }

AbsentDouble::AbsentDouble(double value) { getAbsentDouble() = value; }

AbsentDouble::~AbsentDouble() { getAbsentDouble() = 0.0; }

}  // namespace Recording

namespace KvXmlN {

using Recording::call;
using Recording::DataAccess;
using Recording::print;

AttributeData::AttributeData(const std::string& attributeName, const std::string& attributeText)
    : name(attributeName), text(attributeText) {}

const std::string& AttributeData::getData() const {
  call("getData " + name);
  return text;
}

Data::Data(const std::string& elementName) : name(elementName) {}

Data::~Data() {
  for (const Data* child : children) delete child;
}

const std::vector<Data*>& Data::getChildren() const {
  call("getChildren " + name);
  return children;
}

const std::string& Data::getName() const {
  call("getName " + name);
  return name;
}

const AttributeData* Data::findAttribute(const std::string& wanted) const {
  call("findAttribute " + name + " " + wanted);
  return DataAccess::find(*this, wanted);
}

double Data::getAttributeDouble(const std::string& wanted) const {
  call("getAttributeDouble " + name + " " + wanted);
  const AttributeData* const attribute = DataAccess::find(*this, wanted);
  if (attribute == nullptr) return getAbsentDouble();
  const std::string& text = DataAccess::getText(*attribute);
  double value = 0.0;
  fast_float::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

Data* Data::createChild(const std::string& childName) {
  call("createChild " + name + " " + childName);
  return isRefusalDue() ? nullptr : DataAccess::append(*this, childName);
}

void Data::setAttribute(const std::string& key, const std::string& value, bool flag) {
  call("setAttribute " + name + " " + key + " text " + value + " " + print(flag));
  DataAccess::set(*this, key, value);
}

void Data::setAttribute(const std::string& key, int value, bool flag) {
  call("setAttribute " + name + " " + key + " int " + print(value) + " " + print(flag));
  DataAccess::set(*this, key, print(value));
}

void Data::setAttribute(const std::string& key, double value) {
  call("setAttribute " + name + " " + key + " double " + print(value));
  DataAccess::set(*this, key, print(value));
}

void Data::setAttribute(const std::string& key, double value, const char* format) {
  call("setAttribute " + name + " " + key + " double " + print(value) + " " + format);
  DataAccess::set(*this, key, print(value));
}

kvt::Nullable<std::string> AttributeIn::readString(const Data& data, const std::string& name) {
  call("readString " + DataAccess::getName(data) + " " + name);
  const AttributeData* const attribute = DataAccess::find(data, name);
  if (attribute == nullptr) return {};
  return DataAccess::getText(*attribute);
}

}  // namespace KvXmlN
