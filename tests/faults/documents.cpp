#include "faults/documents.h"

#include <sstream>

namespace FaultTest {
namespace {

const Lines rootNames = {"SMOD", "FOUNDATIONS", "OTHER"};

const Lines legacyKeys = {"CURRENT",   "NUMBER",    "NAME",    "FXAREA",  "FYAREA",     "FZAREA",
                          "FXLINE",    "FYLINE",    "FZLINE",  "FXX",     "FAILZAREA",  "FAILXLINE",
                          "FAILYLINE", "FAILZLINE", "FACAREA", "FACLINE", "IsGenerated"};

const Lines newerKeys = {"Number",
                         "Name",
                         "SurfaceStiffnessX",
                         "SurfaceStiffnessY",
                         "SurfaceStiffnessZ",
                         "SurfaceStiffnessZFailure",
                         "TangentialSurfaceStiffnessXYFactor",
                         "CurveStiffnessX",
                         "CurveStiffnessY",
                         "CurveStiffnessZ",
                         "CurveStiffnessXX",
                         "CurveStiffnessYFailure",
                         "CurveStiffnessZFailure",
                         "TangentialCurveStiffnessX",
                         "StiffnessX",
                         "StiffnessY",
                         "StiffnessZ",
                         "StiffnessXX",
                         "StiffnessYFailure",
                         "StiffnessZFailure",
                         "TangentialStiffnessXFactor",
                         "TangentialStiffnessXYFactor",
                         "ksx",
                         "ksy",
                         "ksz",
                         "ksxx",
                         "Failure",
                         "Tangential"};

/// One line, taken apart.
struct Line {
  explicit Line(const std::string& text) : level(text.find_first_not_of(' ')) {
    std::istringstream words(text);
    words >> name;
    for (std::string word; words >> word;) {
      const std::size_t sign = word.find('=');
      attributes.emplace_back(word.substr(0, sign), word.substr(sign + 1));
    }
  }

  std::size_t level;
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes;
};

template <class Element>
void setAttributes(Element& element, const Line& line) {
  for (const auto& [key, text] : line.attributes) element.setAttribute(key, text, true);
}

void fill(KvXmlTree& tree, const Lines& lines) {
  std::vector<KvXmlData*> path;
  for (const std::string& text : lines) {
    const Line line(text);
    path.resize(line.level);
    if (path.empty()) {
      path.push_back(tree.open(line.name, false));
    } else {
      auto child = std::make_unique<KvXmlData>(line.name, path.back());
      path.back()->addChild(child.get());
      path.push_back(child.release());
    }
    setAttributes(*path.back(), line);
  }
}

std::string print(const Lines& lines) {
  KvXmlTree tree;
  fill(tree, lines);
  std::ostringstream out;
  tree.putToStream(out);
  return out.str();
}

KvXmlData* findRoot(const KvXmlTree& tree) {
  for (const std::string& name : rootNames)
    if (KvXmlData* const root = tree.findRoot(name, true)) return root;
  return nullptr;
}

template <class Element>
std::string describeBelow(Element& element, const Lines& keys, std::size_t level) {
  std::string text = std::string(level, ' ') + element.getName();
  for (const std::string& key : keys)
    if (const auto* const attribute = element.findAttribute(key))
      text += " " + key + "=" + attribute->getData();
  text += "|";
  for (auto* child : element.getChildren()) text += describeBelow(*child, keys, level + 1);
  return text;
}

}  // namespace

std::unique_ptr<KvXmlTree> makeTree(const Lines& lines, bool cursor) {
  std::istringstream in(print(lines));
  auto tree = std::make_unique<KvXmlTree>(in);
  if (cursor) tree->setCurrent(findRoot(*tree));
  return tree;
}

std::string makeFileText(const Lines& lines) {
  const std::string text = print(lines);
  return text.compare(0, 5, "<?xml") == 0 ? text : "xml\n" + text;
}

std::string describe(const KvXmlTree& tree) {
  KvXmlData* const root = findRoot(tree);
  return root != nullptr ? describeBelow(*root, legacyKeys, 0) : "";
}

std::string describe(const KvXmlN::Data& element) { return describeBelow(element, newerKeys, 0); }

void append(KvXmlN::Data& top, const Lines& lines) {
  std::vector<KvXmlN::Data*> path;
  for (const std::string& text : lines) {
    const Line line(text);
    path.resize(line.level);
    path.push_back(path.empty() ? &top : path.back()->createChild(line.name));
    setAttributes(*path.back(), line);
  }
}

}  // namespace FaultTest
