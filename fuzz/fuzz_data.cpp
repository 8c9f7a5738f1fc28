#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bytes.h"
#include "kv/xml_n.h"
#include "property.h"
#include "tree_model.h"

// Operations on a document of the newer XML library, each done to a plain model as well. An input
// is the operations.

namespace {

using Fuzz::Bytes;
using Fuzz::require;
using KvXmlN::AttributeData;
using KvXmlN::Data;
using KvXmlN::Document;
using Node = Fuzz::Node<Data>;

class Session {
 public:
  explicit Session(Bytes& input) : bytes(input) {
    root.name = "r";
    switch (bytes.below(3)) {
      case 0:
        document = std::make_unique<Document>(root.name);
        break;
      case 1:
        standalone = std::make_unique<Data>(root.name);
        break;
      default:
        Fuzz::grow(root, bytes, 3);
        std::string text;
        Fuzz::spell(root, bytes, text);
        std::istringstream in(text);
        document = std::make_unique<Document>(in);
    }
    root.real = document != nullptr ? &document->getRoot() : standalone.get();
  }

  void run() {
    constexpr int most = 200;
    for (int i = 0; i < most && !bytes.isEmpty(); ++i) step();
    std::vector<Node*> nodes;
    root.list(nodes);
    for (Node* node : nodes) checkNode(*node);
    checkPrinted();
  }

 private:
  void step() {
    Node& node = pickNode();
    switch (bytes.below(9)) {
      case 0:
      case 1:
        return createChild(node);
      case 2:
        return setText(node);
      case 3:
        return setInteger(node);
      case 4:
        return setDouble(node);
      case 5:
        return setFormatted(node);
      case 6:
        return checkAttribute(node);
      case 7:
        return checkNode(node);
      default:
        return checkPrinted();
    }
  }

  /// Any element that is known to the host.
  Node& pickNode() {
    std::vector<Node*> nodes;
    root.list(nodes);
    Node& node = *nodes[bytes.take() % nodes.size()];
    return node.real != nullptr ? node : root;
  }

  void createChild(Node& node) {
    const std::string& name = Fuzz::pickName(bytes);
    Data* const created = node.real->createChild(name);
    require((created != nullptr) == Fuzz::isName(name), "a child is made of an XML name", name);
    if (created != nullptr) meet(*node.append(name), created);
  }

  template <class Set>
  void setAttribute(Node& node, const std::string& value, const Set& set) {
    const std::string& name = Fuzz::pickName(bytes);
    try {
      set(name);
    } catch (const std::invalid_argument&) {
      require(!Fuzz::isName(name), "only no XML name is refused", name);
      return;
    }
    require(Fuzz::isName(name), "what is no XML name is refused", name);
    node.set(name, value);
  }

  void setText(Node& node) {
    const std::string text = bytes.takeText(20);
    setAttribute(node, Fuzz::clean(text), [&](const std::string& name) {
      node.real->setAttribute(name, text, bytes.flip());
    });
  }

  void setInteger(Node& node) {
    const int value = Fuzz::pickInteger(bytes);
    setAttribute(node, std::to_string(value), [&](const std::string& name) {
      node.real->setAttribute(name, value, bytes.flip());
    });
  }

  void setDouble(Node& node) {
    const auto& [value, text] = Fuzz::pickDouble(bytes);
    setAttribute(node, text, [&, number = value](const std::string& name) {
      node.real->setAttribute(name, number);
    });
  }

  void setFormatted(Node& node) {
    static const char* const formats[] = {"%.1f", "%.2f", "%g", "<%e> & 'more'", "\x01%a\n"};
    const char* const format = bytes.pick(formats);
    const double value = Fuzz::pickDouble(bytes).first;
    char text[512];
    std::snprintf(text, sizeof text, format, value);
    setAttribute(node, Fuzz::clean(text),
                 [&](const std::string& name) { node.real->setAttribute(name, value, format); });
  }

  /// What an operation gave is what stands for `node`, now and from here on.
  static void meet(Node& node, Data* real) {
    require(real != nullptr, "an element is there");
    require(node.real == nullptr || node.real == real, "an element is found as the same again");
    node.real = real;
    require(real->getName() == node.name, "an element has its name", node.name);
  }

  /// Name, children and attributes; children are known from then on.
  static void checkNode(Node& node) {
    if (node.real == nullptr) return;
    require(node.real->getName() == node.name, "an element keeps its name", node.name);
    const std::vector<Data*>& children = node.real->getChildren();
    require(children.size() == node.children.size(), "an element has all its children");
    for (std::size_t i = 0; i < children.size(); ++i) meet(*node.children[i], children[i]);
    for (const auto& [name, value] : node.attributes) {
      const kvt::Nullable<std::string> read = KvXmlN::AttributeIn::readString(*node.real, name);
      require(read == value, "an attribute is kept", name);
    }
  }

  /// An attribute that was asked for once stays valid.
  void checkAttribute(Node& node) {
    const std::string& name = Fuzz::pickName(bytes);
    const std::string* const value = node.find(name);
    const AttributeData* const attribute = node.real->findAttribute(name);
    require((attribute != nullptr) == (value != nullptr), "an attribute is found where it is",
            name);
    const kvt::Nullable<std::string> read = KvXmlN::AttributeIn::readString(*node.real, name);
    require(read.has_value() == (value != nullptr), "an attribute is read where it is", name);
    if (value == nullptr) require(node.real->getAttributeDouble(name) == 0.0, "absent is 0", name);
    if (attribute != nullptr) known.emplace(std::make_pair(&node, name), attribute);
    for (const auto& [key, kept] : known)
      require(kept->getData() == *key.first->find(key.second), "an attribute follows its text");
    if (value != nullptr && Fuzz::toInteger(*value))
      require(node.real->getAttributeDouble(name) == *Fuzz::toInteger(*value),
              "an integer reads as a double", *value);
  }

  void checkPrinted() {
    if (document == nullptr) return;
    std::ostringstream out;
    document->putToStream(out);
    std::istringstream in(out.str());
    const Document again(in);
    compare(root, again.getRoot(), out.str());
  }

  static void compare(const Node& node, const Data& read, const std::string& text) {
    require(read.getName() == node.name, "what was printed has the element", text);
    const std::vector<Data*>& children = read.getChildren();
    require(children.size() == node.children.size(), "what was printed has the children", text);
    for (const auto& [name, value] : node.attributes)
      require(KvXmlN::AttributeIn::readString(read, name) == value,
              "what was printed has the attribute", text);
    for (std::size_t i = 0; i < children.size(); ++i)
      compare(*node.children[i], *children[i], text);
  }

  Bytes& bytes;
  Node root;
  std::unique_ptr<Document> document;
  std::unique_ptr<Data> standalone;
  std::map<std::pair<const Node*, std::string>, const AttributeData*> known;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  Session(bytes).run();
  return 0;
}
