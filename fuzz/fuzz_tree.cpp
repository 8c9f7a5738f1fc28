#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bytes.h"
#include "kv/xml_tree.h"
#include "property.h"
#include "tree_model.h"

// Operations on a tree of the legacy XML library and on elements that are to be added to it, each
// done to a plain model as well. An input is the operations.

namespace {

using Fuzz::Bytes;
using Fuzz::require;
using Node = Fuzz::Node<KvXmlData>;

/// An element that the host owns, in the model and really.
struct Detached {
  std::unique_ptr<Node> node;
  int home;         // where it can be added without more ado
  bool standalone;  // it is its home, and takes all that is there along
};

class Session {
 public:
  explicit Session(Bytes& input) : bytes(input) {
    if (bytes.flip()) parse();
    if (tree == nullptr) tree = std::make_unique<KvXmlTree>();
  }

  ~Session() {
    // Those that were made for another first: they must not outlive it.
    std::stable_partition(detached.begin(), detached.end(),
                          [](const Detached& d) { return !d.standalone; });
    for (const Detached& one : detached) delete one.node->real;
  }

  void run() {
    constexpr int most = 200;
    for (int i = 0; i < most && !bytes.isEmpty(); ++i) step();
    for (Node* node : listAll()) checkNode(*node);
    checkPrinted();
  }

 private:
  void step() {
    switch (bytes.below(16)) {
      case 0:
        return open();
      case 1:
        return close();
      case 2:
        return setCurrent();
      case 3:
        return setDouble();
      case 4:
        return setInteger();
      case 5:
        return setText();
      case 6:
        return findTree();
      case 7:
        return checkNodeOf(pickNode());
      case 8:
        return checkAttribute();
      case 9:
      case 10:
        return create();
      case 11:
      case 12:
        return add();
      case 13:
        return destroy();
      case 14:
        return findRoot();
      default:
        return checkPrinted();
    }
  }

  // --- Picking

  std::vector<Node*> listAll() {
    std::vector<Node*> nodes;
    if (root) root->list(nodes);
    for (const Detached& one : detached) one.node->list(nodes);
    return nodes;
  }

  /// Any element that is known to the host; null when there is none.
  Node* pickNode() {
    std::vector<Node*> nodes = listAll();
    nodes.erase(std::remove_if(nodes.begin(), nodes.end(),
                               [](const Node* node) { return node->real == nullptr; }),
                nodes.end());
    return nodes.empty() ? nullptr : nodes[bytes.take() % nodes.size()];
  }

  static Node& topOf(Node& node) {
    Node* top = &node;
    while (top->parent != nullptr) top = top->parent;
    return *top;
  }

  /// The place among the detached ones of the element that `node` is or is below.
  std::vector<Detached>::iterator findDetached(Node& node) {
    const Node* const top = &topOf(node);
    return std::find_if(detached.begin(), detached.end(),
                        [top](const Detached& d) { return d.node.get() == top; });
  }

  int homeOf(Node& node) {
    const auto place = findDetached(node);
    return place != detached.end() ? place->home : treeHome;
  }

  // --- The operations

  void parse() {
    root = std::make_unique<Node>();
    root->name = "r";
    Fuzz::grow(*root, bytes, 3);
    std::string text;
    Fuzz::spell(*root, bytes, text);
    std::istringstream in(text);
    tree = std::make_unique<KvXmlTree>(in);
  }

  void open() {
    const std::string& name = Fuzz::pickName(bytes);
    Node* expected = nullptr;
    bool isNew = false;
    if (cursor == nullptr) {
      isNew = root == nullptr;
      if (!isNew && root->name == name) expected = root.get();
    } else {
      expected = cursor->findChild(name);
      isNew = expected == nullptr;
    }
    KvXmlData* opened = nullptr;
    try {
      opened = tree->open(name, bytes.flip());
    } catch (const std::invalid_argument&) {
      require(isNew && !Fuzz::isName(name), "only an element of no XML name is refused", name);
      return checkCursor();
    }
    require(!isNew || Fuzz::isName(name), "no element of no XML name is made", name);
    if (isNew && cursor == nullptr) {
      root = std::make_unique<Node>();
      root->name = name;
      expected = root.get();
    } else if (isNew) {
      expected = cursor->append(name);
    }
    meet(expected, opened);
    if (cursor == nullptr || expected != nullptr) cursor = expected;
    checkCursor();
  }

  void close() {
    tree->close();
    if (cursor != nullptr) cursor = cursor->parent;
    checkCursor();
  }

  void setCurrent() {
    Node* const node = pickNode();
    const bool isInTree = node != nullptr && &topOf(*node) == root.get();
    cursor = isInTree ? node : nullptr;
    tree->setCurrent(isInTree ? node->real : nullptr);
    checkCursor();
  }

  void checkCursor() { meet(cursor, tree->getCurrent()); }

  /// Calls `set` with a picked name; `node` then has the attribute.
  template <class Set>
  void setAttribute(Node* node, const std::string& value, const Set& set) {
    const std::string& name = Fuzz::pickName(bytes);
    try {
      set(name);
    } catch (const std::invalid_argument&) {
      require(node != nullptr && !Fuzz::isName(name), "only no XML name is refused", name);
      return;
    }
    require(node == nullptr || Fuzz::isName(name), "what is no XML name is refused", name);
    if (node != nullptr) node->set(name, value);
  }

  void setDouble() {
    const auto& [value, text] = Fuzz::pickDouble(bytes);
    setAttribute(cursor, text, [&, number = value](const std::string& name) {
      tree->setAttribute(name, number);
    });
  }

  void setInteger() {
    Node* const node = pickNode();
    if (node == nullptr) return;
    const int value = Fuzz::pickInteger(bytes);
    setAttribute(node, std::to_string(value),
                 [&](const std::string& name) { node->real->setAttribute(name, value, true); });
  }

  void setText() {
    Node* const node = pickNode();
    if (node == nullptr) return;
    const std::string text = bytes.takeText(20);
    setAttribute(node, Fuzz::clean(text),
                 [&](const std::string& name) { node->real->setAttribute(name, text, true); });
  }

  void findTree() {
    Node* const node = pickNode();
    if (node == nullptr) return;
    const std::string& name = Fuzz::pickName(bytes);
    const bool flag = bytes.flip();
    Node* const expected = flag ? node->findBelow(name) : node->findChild(name);
    meet(expected, node->real->findTree(name, flag));
  }

  void findRoot() {
    const std::string& name = Fuzz::pickName(bytes);
    const bool isRoot = root != nullptr && root->name == name;
    meet(isRoot ? root.get() : nullptr, tree->findRoot(name, bytes.flip()));
    if (root != nullptr) meet(root.get(), tree->findRoot(root->name, true));
  }

  void create() {
    Node* const parent = bytes.flip() ? pickNode() : nullptr;
    const std::string& name = Fuzz::pickName(bytes);
    auto node = std::make_unique<Node>();
    node->name = name;
    try {
      node->real = new KvXmlData(name, parent != nullptr ? parent->real : nullptr);
    } catch (const std::invalid_argument&) {
      require(!Fuzz::isName(name), "only no XML name is refused", name);
      return;
    }
    require(Fuzz::isName(name), "what is no XML name is refused", name);
    const int home = parent != nullptr ? homeOf(*parent) : ++lastHome;
    detached.push_back({std::move(node), home, parent == nullptr});
  }

  void add() {
    Node* const parent = pickNode();
    Node* const child = pickNode();
    if (parent == nullptr) return;
    KvXmlData* const real = bytes.below(8) != 7 ? child->real : nullptr;
    const auto place = findDetached(*child);
    const bool isAdded = place == detached.end() || place->node.get() != child;
    const int from = homeOf(*child);
    const int to = homeOf(*parent);
    const bool isOwnHome = place != detached.end() && place->standalone && from == to;
    const bool isAbove = &topOf(*parent) == child || isOwnHome;
    const bool isElsewhere = from != to && (isAdded || !place->standalone);
    try {
      parent->real->addChild(real);
    } catch (const std::invalid_argument&) {
      require(real == nullptr || isAdded || isAbove || isElsewhere,
              "only what cannot be is refused");
      return;
    }
    require(real != nullptr && !isAdded && !isAbove && !isElsewhere, "what cannot be is refused");
    for (Detached& one : detached)
      if (one.home == from) one.home = to;
    child->parent = parent;
    parent->children.push_back(std::move(place->node));
    detached.erase(place);
  }

  /// Ends an element that was not added, and before it those that were made for it.
  void destroy() {
    if (detached.empty()) return;
    const auto place =
        detached.begin() + static_cast<std::ptrdiff_t>(bytes.take() % detached.size());
    const Detached chosen = std::move(*place);
    detached.erase(place);
    for (auto one = detached.begin(); one != detached.end();) {
      const bool isEnding = chosen.standalone && one->home == chosen.home;
      if (isEnding) end(*one);
      one = isEnding ? detached.erase(one) : one + 1;
    }
    end(chosen);
  }

  void end(const Detached& ending) {
    forget(*ending.node);
    delete ending.node->real;
  }

  // --- The checks

  /// What an operation gave is what stands for `node`, now and from here on.
  static void meet(Node* node, KvXmlData* real) {
    require((node == nullptr) == (real == nullptr), "an element is found where there is one");
    if (node == nullptr) return;
    require(node->real == nullptr || node->real == real, "an element is found as the same again");
    node->real = real;
    require(real->getName() == node->name, "an element has its name", node->name);
  }

  static void checkNodeOf(Node* node) {
    if (node != nullptr) checkNode(*node);
  }

  /// Name, children and attributes; children are known from then on.
  static void checkNode(Node& node) {
    if (node.real == nullptr) return;
    require(node.real->getName() == node.name, "an element keeps its name", node.name);
    const std::vector<KvXmlData*>& children = node.real->getChildren();
    require(children.size() == node.children.size(), "an element has all its children");
    for (std::size_t i = 0; i < children.size(); ++i) meet(node.children[i].get(), children[i]);
    for (const auto& [name, value] : node.attributes) {
      const KvXmlAttributeData* const attribute = node.real->findAttribute(name);
      require(attribute != nullptr && attribute->getData() == value, "an attribute is kept", name);
    }
  }

  /// What is asked for once stays valid; its text is asked for now or later.
  void checkAttribute() {
    Node* const node = pickNode();
    if (node == nullptr) return;
    const std::string& name = Fuzz::pickName(bytes);
    const std::string* const value = node->find(name);
    KvXmlAttributeData* const attribute = node->real->findAttribute(name);
    require((attribute != nullptr) == (value != nullptr), "an attribute is found where it is",
            name);
    if (attribute != nullptr && known.count({node, name}) == 0) known[{node, name}] = attribute;
    const bool isText = bytes.flip();
    for (const auto& [key, kept] : known) {
      if (key.first != node) continue;
      const std::string& text = *node->find(key.second);
      const std::optional<int> number = Fuzz::toInteger(text);
      if (isText) require(kept->getData() == text, "an attribute follows its text", text);
      require(kept->getInteger() == number.value_or(0), "an attribute is its integer", text);
      require(kept->checkValue(number.value_or(0)) == number.has_value(), "an integer is told",
              text);
    }
  }

  /// The attributes of `node` and of all below it end.
  void forget(Node& node) {
    std::vector<Node*> ending;
    node.list(ending);
    for (const Node* one : ending)
      for (auto entry = known.begin(); entry != known.end();)
        entry = entry->first.first == one ? known.erase(entry) : std::next(entry);
  }

  void checkPrinted() {
    std::ostringstream out;
    tree->putToStream(out);
    std::istringstream in(out.str());
    KvXmlTree again(in);
    KvXmlData* const top = root != nullptr ? again.findRoot(root->name, true) : nullptr;
    require((top != nullptr) == (root != nullptr), "what was printed has the root", out.str());
    if (root != nullptr) compare(*root, *top, out.str());
  }

  static void compare(const Node& node, KvXmlData& read, const std::string& text) {
    require(read.getName() == node.name, "what was printed has the element", text);
    const std::vector<KvXmlData*>& children = read.getChildren();
    require(children.size() == node.children.size(), "what was printed has the children", text);
    for (const auto& [name, value] : node.attributes) {
      const KvXmlAttributeData* const attribute = read.findAttribute(name);
      require(attribute != nullptr && attribute->getData() == value,
              "what was printed has the attribute", text);
    }
    for (std::size_t i = 0; i < children.size(); ++i)
      compare(*node.children[i], *children[i], text);
  }

  static constexpr int treeHome = 0;

  Bytes& bytes;
  std::unique_ptr<KvXmlTree> tree;
  std::unique_ptr<Node> root;
  Node* cursor = nullptr;
  std::vector<Detached> detached;
  int lastHome = treeHome;
  std::map<std::pair<const Node*, std::string>, const KvXmlAttributeData*> known;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  Session(bytes).run();
  return 0;
}
