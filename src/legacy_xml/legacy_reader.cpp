#include <algorithm>
#include <array>
#include <fstream>
#include <memory>
#include <string_view>
#include <utility>

#include "found/foundation_manager.h"
#include "kv/short_path.h"
#include "kv/xml_tree.h"
#include "legacy_xml/legacy_keys.h"
#include "manager/default_names.h"

namespace Found {
namespace {

constexpr int notNumbered = -1;

int readInteger(const KvXmlData& element, const std::string& key, int absent) {
  const KvXmlAttributeData* const attribute = element.findAttribute(key);
  return attribute != nullptr ? attribute->getInteger() : absent;
}

double readDouble(const KvXmlData& element, const std::string& key, double absent) {
  const KvXmlAttributeData* const attribute = element.findAttribute(key);
  return attribute != nullptr ? attribute->getDouble() : absent;
}

/// Converts the attribute and passes it to a setter of `foundation`. When the element has no
/// attribute of this name, leaves the foundation alone and returns false. So do the functions
/// below.
template <void (Foundation::*Setter)(double)>
bool readDouble(const KvXmlData& element, const std::string& key, Foundation& foundation) {
  const KvXmlAttributeData* const attribute = element.findAttribute(key);
  if (attribute != nullptr) (foundation.*Setter)(attribute->getDouble());
  return attribute != nullptr;
}

template <void (Foundation::*Setter)(bool)>
bool readFlag(const KvXmlData& element, const std::string& key, Foundation& foundation) {
  const KvXmlAttributeData* const attribute = element.findAttribute(key);
  if (attribute != nullptr) (foundation.*Setter)(attribute->getInteger() != 0);
  return attribute != nullptr;
}

template <void (Foundation::*Setter)(Foundation::Failure)>
bool readFailure(const KvXmlData& element, const std::string& key, Foundation& foundation) {
  const KvXmlAttributeData* const attribute = element.findAttribute(key);
  // Not checked against the known modes: an unknown one is kept as it is, and written back so.
  if (attribute != nullptr)
    (foundation.*Setter)(static_cast<Foundation::Failure>(attribute->getInteger()));
  return attribute != nullptr;
}

bool readName(const KvXmlData& element, const std::string& key, Foundation& foundation) {
  const KvXmlAttributeData* const attribute = element.findAttribute(key);
  if (attribute != nullptr) foundation.setName(attribute->getData());
  return attribute != nullptr;
}

KvVector3D readVector(const KvXmlData& element, const std::string& x, const std::string& y,
                      const std::string& z) {
  return KvVector3D{readDouble(element, x, 0.0), readDouble(element, y, 0.0),
                    readDouble(element, z, 0.0)};
}

const KvVector3D* nullIfZero(const KvVector3D& v) { return v.length() > 0.0 ? &v : nullptr; }

/// Everything that a "FOUND" element tells but its number.
std::unique_ptr<Foundation> readFoundation(const KvXmlData& element) {
  const LegacyKeys& keys = getLegacyKeys();
  const KvVector3D area = readVector(element, keys.areaX, keys.areaY, keys.areaZ);
  const KvVector3D line = readVector(element, keys.lineX, keys.lineY, keys.lineZ);
  const KvVector3D rotation(readDouble(element, keys.rotationX, 0.0), 0.0, 0.0);

  // A foundation that was read always has an area translation, if only a zero one; the other
  // vectors only where there is a value.
  auto created = std::make_unique<Foundation>(&area, nullIfZero(rotation));
  Foundation& foundation = *created;
  foundation.setDispLine(nullIfZero(line));

  readFailure<&Foundation::setFailAreaZ>(element, keys.failAreaZ, foundation);
  readFailure<&Foundation::setFailLineX>(element, keys.failLineX, foundation);
  readFailure<&Foundation::setFailLineY>(element, keys.failLineY, foundation);
  readFailure<&Foundation::setFailLineZ>(element, keys.failLineZ, foundation);
  readDouble<&Foundation::setFactorArea>(element, keys.factorArea, foundation);
  readDouble<&Foundation::setFactorLine>(element, keys.factorLine, foundation);
  readFlag<&Foundation::setGenerated>(element, keys.isGenerated, foundation);
  readName(element, keys.name, foundation);
  return created;
}

/// The file at `path`, or where that cannot be opened, at the short form of the path.
std::unique_ptr<std::ifstream> openFile(const std::string& path) {
  auto file = std::make_unique<std::ifstream>(path);
  if (!file->fail()) return file;

  constexpr unsigned long size = 4096;
  std::array<char, size> shortPath{};
  const auto length = GetShortPathNameA(path.c_str(), shortPath.data(), size);
  const bool hasShortPath = length > 0 && length < size;
  file = std::make_unique<std::ifstream>(hasShortPath ? shortPath.data() : path.c_str());
  return file;
}

char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Consumes the first line and looks for "xml" in it, in any letter case. A line longer than the
/// buffer leaves the stream failed, so that the document cannot be read.
bool startsAsXml(std::istream& in) {
  std::array<char, 1024> line{};
  in.getline(line.data(), line.size());
  std::transform(line.begin(), line.end(), line.begin(), toLower);
  return std::string_view(line.data(), line.size()).find("xml") != std::string_view::npos;
}

}  // namespace

void FoundationManager::createFromXml(KvXmlData* data) {
  const LegacyKeys& keys = getLegacyKeys();
  KvXmlData* const list = data != nullptr ? data->findTree(keys.foundations, true) : nullptr;

  reset();
  currentFoundation = nullptr;
  if (list == nullptr) return;

  // Each is numbered and named as giveFoundation() would, and then given the number it brings.
  DefaultNumbering numbering(foundations);
  for (const KvXmlData* element : list->getChildren()) {
    if (element->getName() != keys.foundation) continue;
    const int number = readInteger(*element, keys.number, notNumbered);
    std::unique_ptr<Foundation> created = readFoundation(*element);
    created->setNumber(number != notNumbered ? number : numbering.giveNumber());
    if (created->getName().empty()) created->setName(numbering.giveName());
    add(std::move(created));
    numbering.recordLast();
  }

  if (const KvXmlAttributeData* const current = list->findAttribute(keys.current))
    currentFoundation = findFoundation(current->getData());
}

bool FoundationManager::readXml(const std::string& path) {
  const std::unique_ptr<std::ifstream> file = openFile(path);
  if (!file->is_open()) return false;
  if (!startsAsXml(*file)) return false;

  // Parsed before anything is touched: a document that is not well-formed throws here and the
  // manager keeps what it has.
  const KvXmlTree tree(*file);
  createFromXml(tree.findRoot(getLegacyKeys().root, true));
  return true;
}

}  // namespace Found
