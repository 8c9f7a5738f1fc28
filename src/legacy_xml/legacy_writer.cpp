#include <fstream>
#include <optional>

#include "found/foundation_manager.h"
#include "kv/xml_tree.h"
#include "legacy_xml/legacy_keys.h"
#include "legacy_xml/numbered_children.h"

namespace Found {
namespace {

template <class Value>
void writeAttribute(const KvXmlTree& tree, const std::string& key, const Value& value) {
  if (KvXmlData* const element = tree.getCurrent()) element->setAttribute(key, value, true);
}

void writeVector(KvXmlTree& tree, const std::string& x, const std::string& y, const std::string& z,
                 const KvVector3D& v) {
  tree.setAttribute(x, v.x);
  tree.setAttribute(y, v.y);
  tree.setAttribute(z, v.z);
}

/// `None` is not written: absent, it reads as `None`.
void writeFailure(const KvXmlTree& tree, const std::string& key, Foundation::Failure failure) {
  if (failure != Foundation::None) writeAttribute(tree, key, static_cast<int>(failure));
}

/// Writes everything but the number on the current element.
void writeFoundation(KvXmlTree& tree, Foundation& foundation) {
  const LegacyKeys& keys = getLegacyKeys();
  writeAttribute(tree, keys.name, foundation.getName());

  KvVector3D v;
  if (foundation.getDispArea(v)) writeVector(tree, keys.areaX, keys.areaY, keys.areaZ, v);
  if (foundation.getDispLine(v)) writeVector(tree, keys.lineX, keys.lineY, keys.lineZ, v);
  if (foundation.getRotLine(v)) tree.setAttribute(keys.rotationX, v.x);

  // The stored modes, whether or not failing is possible: the format has no place for that flag.
  writeFailure(tree, keys.failAreaZ, foundation.getFailAreaZ());
  writeFailure(tree, keys.failLineX, foundation.getFailLineX());
  writeFailure(tree, keys.failLineY, foundation.getFailLineY());
  writeFailure(tree, keys.failLineZ, foundation.getFailLineZ());

  tree.setAttribute(keys.factorArea, foundation.getFactorArea());
  tree.setAttribute(keys.factorLine, foundation.getFactorLine());
  writeAttribute(tree, keys.isGenerated, foundation.isGenerated() ? 1 : 0);
}

}  // namespace

void FoundationManager::updateXml(KvXmlTree* tree) const {
  if (tree == nullptr) return;
  const LegacyKeys& keys = getLegacyKeys();
  tree->open(keys.foundations, false);
  tree->flush();
  if (currentFoundation != nullptr)
    writeAttribute(*tree, keys.current, currentFoundation->getName());

  std::optional<NumberedChildren> elements;
  if (KvXmlData* const list = tree->getCurrent())
    elements.emplace(*list, keys.foundation, keys.number, foundations.size());
  for (Foundation* foundation : foundations) {
    if (foundation == nullptr) continue;
    if (elements) tree->setCurrent(elements->give(foundation->getNumber()));
    writeFoundation(*tree, *foundation);
    tree->close();
  }
  tree->close();
}

void FoundationManager::writeXml(std::ofstream& out) const {
  const LegacyKeys& keys = getLegacyKeys();
  KvXmlTree tree;
  tree.open(keys.root, false);
  tree.findRoot(keys.root, true);
  updateXml(&tree);
  tree.close();
  tree.putToStream(out);
}

}  // namespace Found
