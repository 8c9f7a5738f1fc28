#include "kv/xml_tree.h"

#include <charconv>
#include <istream>
#include <ostream>
#include <sstream>

#include <fast_float/fast_float.h>

#include "recording_legacy.h"

namespace {

std::string& getRefusedName() {
  static std::string name;
  return name;
}

int parseInteger(const std::string& text) {
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

/// "?5?7" is 5 as well as 7, which only checkValue() tells.
bool isOneOf(const std::string& text, int value) {
  return (text + "?").find("?" + Recording::print(value) + "?") != std::string::npos;
}

double parseDouble(const std::string& text) {
  double value = 0.0;
  fast_float::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace

namespace Recording {

/// The plain tree underneath, off the record.
struct TreeAccess {
  static KvXmlData* append(KvXmlData& parent, const std::string& name) {
    std::unique_ptr<KvXmlData> child(new KvXmlData(name));
    child->parent = &parent;
    parent.children.push_back(child.get());
    return child.release();
  }

  static KvXmlData* createRoot(KvXmlTree& tree, const std::string& name) {
    tree.root.reset(new KvXmlData(name));
    return tree.root.get();
  }

  static KvXmlAttributeData* find(const KvXmlData& element, const std::string& key) {
    for (const auto& attribute : element.attributes)
      if (attribute->name == key) return attribute.get();
    return nullptr;
  }

  static void set(KvXmlData& element, const std::string& key, const std::string& text) {
    if (KvXmlAttributeData* const attribute = find(element, key)) {
      attribute->text = text;
      return;
    }
    element.attributes.emplace_back(new KvXmlAttributeData(key, text));
  }

  static KvXmlData* findBelow(const KvXmlData& top, const std::string& name, bool anyDepth) {
    for (KvXmlData* child : top.children) {
      if (child->name == name) return child;
      if (!anyDepth) continue;
      if (KvXmlData* const found = findBelow(*child, name, true)) return found;
    }
    return nullptr;
  }

  static void parse(std::istream& in, KvXmlTree& tree) {
    std::vector<KvXmlData*> path;
    for (std::string line; std::getline(in, line);) {
      const std::size_t level = line.find_first_not_of(' ');
      if (level == std::string::npos) continue;
      std::istringstream words(line);
      std::string word;
      words >> word;
      path.resize(level);
      path.push_back(level == 0 ? createRoot(tree, word) : append(*path.back(), word));
      while (words >> word) {
        const std::size_t sign = word.find('=');
        set(*path.back(), word.substr(0, sign), word.substr(sign + 1));
      }
    }
  }

  static void describe(const KvXmlData& element, std::size_t level,
                       std::vector<std::string>& lines) {
    std::string line = std::string(level, ' ') + element.name;
    for (const auto& attribute : element.attributes)
      line += " " + attribute->name + "=" + attribute->text;
    lines.push_back(line);
    for (const KvXmlData* child : element.children) describe(*child, level + 1, lines);
  }

  static std::vector<std::string> describe(const KvXmlTree& tree) {
    std::vector<std::string> lines;
    if (tree.root != nullptr) describe(*tree.root, 0, lines);
    return lines;
  }

  static std::string getName(const KvXmlData* element) {
    return element != nullptr ? element->name : "none";
  }

  static KvXmlData* getParent(const KvXmlData& element) { return element.parent; }

  static KvXmlData* getCursor(const KvXmlTree& tree) { return tree.current; }
};

std::vector<std::string> describe(const KvXmlTree& tree) { return TreeAccess::describe(tree); }

std::string describeCursor(const KvXmlTree& tree) {
  return TreeAccess::getName(TreeAccess::getCursor(tree));
}

OpenRefusal::OpenRefusal(const std::string& name) { getRefusedName() = name; }

OpenRefusal::~OpenRefusal() { getRefusedName().clear(); }

}  // namespace Recording

using Recording::call;
using Recording::print;
using Recording::TreeAccess;

KvXmlAttributeData::KvXmlAttributeData(const std::string& attributeName,
                                       const std::string& attributeText)
    : name(attributeName), text(attributeText) {}

int KvXmlAttributeData::getInteger() const {
  call("getInteger " + name);
  return parseInteger(text);
}

double KvXmlAttributeData::getDouble() const {
  call("getDouble " + name);
  return parseDouble(text);
}

const std::string& KvXmlAttributeData::getData() const {
  call("getData " + name);
  return text;
}

bool KvXmlAttributeData::checkValue(int value) const {
  call("checkValue " + name + " " + print(value));
  return text[0] == '?' ? isOneOf(text, value) : parseInteger(text) == value;
}

KvXmlData::KvXmlData(const std::string& elementName) : name(elementName) {}

KvXmlData::KvXmlData(const std::string& elementName, KvXmlData* parentElement)
    : name(elementName), parent(parentElement) {
  call("KvXmlData " + name + " " + TreeAccess::getName(parent));
}

KvXmlData::~KvXmlData() {
  for (const KvXmlData* child : children) delete child;
}

KvXmlData* KvXmlData::findTree(const std::string& wanted, bool flag) {
  call("findTree " + name + " " + wanted + " " + print(flag));
  return TreeAccess::findBelow(*this, wanted, flag);
}

std::vector<KvXmlData*>& KvXmlData::getChildren() {
  call("getChildren " + name);
  return children;
}

const std::string& KvXmlData::getName() const {
  call("getName " + name);
  return name;
}

KvXmlAttributeData* KvXmlData::findAttribute(const std::string& wanted) const {
  call("findAttribute " + name + " " + wanted);
  return TreeAccess::find(*this, wanted);
}

void KvXmlData::addChild(KvXmlData* child) {
  call("addChild " + name + " " + TreeAccess::getName(child));
  children.push_back(child);
}

void KvXmlData::setAttribute(const std::string& key, int value, bool flag) {
  call("setAttribute " + name + " " + key + " int " + print(value) + " " + print(flag));
  TreeAccess::set(*this, key, print(value));
}

void KvXmlData::setAttribute(const std::string& key, const std::string& value, bool flag) {
  call("setAttribute " + name + " " + key + " text " + value + " " + print(flag));
  TreeAccess::set(*this, key, value);
}

KvXmlTree::KvXmlTree() { call("KvXmlTree"); }

KvXmlTree::KvXmlTree(std::istream& in) {
  call("KvXmlTree istream");
  TreeAccess::parse(in, *this);
}

KvXmlTree::~KvXmlTree() { Recording::note("~KvXmlTree"); }

KvXmlData* KvXmlTree::findRoot(const std::string& name, bool flag) const {
  call("findRoot " + name + " " + print(flag));
  return TreeAccess::getName(root.get()) == name ? root.get() : nullptr;
}

KvXmlData* KvXmlTree::open(const std::string& name, bool flag) {
  call("open " + name + " " + print(flag));
  if (name == getRefusedName()) {
    current = nullptr;
  } else if (current == nullptr) {
    const bool isRoot = TreeAccess::getName(root.get()) == name;
    current = isRoot ? root.get() : root == nullptr ? TreeAccess::createRoot(*this, name) : nullptr;
  } else {
    KvXmlData* const child = TreeAccess::findBelow(*current, name, false);
    current = child != nullptr ? child : TreeAccess::append(*current, name);
  }
  return current;
}

void KvXmlTree::close() {
  call("close");
  if (current != nullptr) current = TreeAccess::getParent(*current);
}

void KvXmlTree::flush() { call("flush"); }

void KvXmlTree::setAttribute(const std::string& name, double value) {
  call("setAttribute " + name + " double " + print(value));
  if (current != nullptr) TreeAccess::set(*current, name, print(value));
}

KvXmlData* KvXmlTree::getCurrent() const {
  call("getCurrent");
  return current;
}

void KvXmlTree::setCurrent(KvXmlData* element) {
  call("setCurrent " + TreeAccess::getName(element));
  current = element;
}

void KvXmlTree::putToStream(std::ostream& out) const {
  call("putToStream");
  for (const std::string& line : TreeAccess::describe(*this)) out << line << '\n';
}
