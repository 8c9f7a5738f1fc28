#include "documents/updating.h"

#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

#include "found/bedding_writer.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "text/encoding.h"

namespace Updating {
namespace {

using Documents::Form;
using Documents::Input;
using Found::Foundation;
using Found::FoundationManager;

Encoding::Kind recogniseEncoding(const Input& base) {
  std::ifstream in = base.open();
  return Encoding::recognise({std::istreambuf_iterator<char>(in), {}});
}

/// A document with names in two encodings could be read by nobody.
void copy(const FoundationManager& from, Encoding::Kind encoding, FoundationManager& to) {
  for (const Foundation* foundation : from.getFoundations()) {
    auto copied = std::make_unique<Foundation>(*foundation);
    copied->setNumber(foundation->getNumber());
    copied->setName(Encoding::convert(foundation->getName(), encoding));
    if (foundation == from.getCurrentFoundation()) to.setCurrentFoundation(copied.get());
    to.add(std::move(copied));
  }
}

// --- Legacy models

/// The number of each foundation that stands in a model, in their order, or none when it goes.
using Numbers = std::vector<std::optional<int>>;

constexpr const char* numberKey = "NUMBER";
constexpr const char* currentKey = "CURRENT";
/// What the library writes only where there is something to write. Set to 0, each means the same as
/// if it were not there.
constexpr const char* optionalKeys[] = {"FXAREA",    "FYAREA",    "FZAREA",   "FXLINE",
                                        "FYLINE",    "FZLINE",    "FXX",      "FAILZAREA",
                                        "FAILXLINE", "FAILYLINE", "FAILZLINE"};

/// With what stands on the first line, which readers skip, where that is XML.
std::unique_ptr<KvXmlTree> parseModel(const Input& base) {
  try {
    std::ifstream in = base.open();
    return std::make_unique<KvXmlTree>(in);
  } catch (const KvXmlError&) {
    std::ifstream in = base.open();
    std::string firstLine;
    std::getline(in, firstLine);
    return std::make_unique<KvXmlTree>(in);
  }
}

std::vector<KvXmlData*> listFoundationElements(KvXmlData& foundations) {
  std::vector<KvXmlData*> elements;
  for (KvXmlData* child : foundations.getChildren())
    if (child->getName() == "FOUND") elements.push_back(child);
  return elements;
}

Numbers readNumbers(KvXmlData* root) {
  FoundationManager manager;
  manager.createFromXml(root);
  Numbers numbers;
  for (const Foundation* foundation : manager.getFoundations())
    numbers.emplace_back(foundation->getNumber());
  return numbers;
}

/// Makes ready for FoundationManager::updateXml(), which finds elements by their number and leaves
/// what it does not set: takes out those that no foundation will be written to, and lets nothing
/// stand in the others that is no longer true.
void prepare(KvXmlData& foundations, const Numbers& numbers, const FoundationManager& manager) {
  std::set<int> expected;
  for (const Foundation* wanted : manager.getFoundations()) expected.insert(wanted->getNumber());

  const std::vector<KvXmlData*> elements = listFoundationElements(foundations);
  std::set<const KvXmlData*> unwanted;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const std::optional<int> number = numbers.at(i);
    if (!number || expected.erase(*number) == 0) {
      unwanted.insert(elements[i]);
      continue;
    }
    elements[i]->setAttribute(numberKey, *number, true);
    for (const char* key : optionalKeys)
      if (elements[i]->findAttribute(key) != nullptr) elements[i]->setAttribute(key, 0, true);
  }
  foundations.removeChildren(
      [&unwanted](const KvXmlData& child) { return unwanted.count(&child) > 0; });
  if (foundations.findAttribute(currentKey) != nullptr)
    foundations.setAttribute(currentKey, std::string(), true);
}

void updateModel(KvXmlTree& tree, const Numbers& numbers, const FoundationManager& manager) {
  KvXmlData* const root = tree.findRoot(Documents::legacyRoot, true);
  tree.setCurrent(root);
  if (KvXmlData* const foundations = root->findTree("FOUNDATIONS", true)) {
    prepare(*foundations, numbers, manager);
    tree.setCurrent(foundations);
    tree.close();
  }
  manager.updateXml(&tree);
}

void updateModel(const Input& base, const FoundationManager& manager, std::ostream& out) {
  const std::unique_ptr<KvXmlTree> tree = parseModel(base);
  updateModel(*tree, readNumbers(tree->findRoot(Documents::legacyRoot, true)), manager);
  tree->putToStream(out);
}

void pruneModel(const Input& base, const std::vector<Change>& changes,
                const FoundationManager& manager, std::ostream& out) {
  Numbers numbers;
  for (const Change& change : changes) numbers.push_back(change.after);
  const std::unique_ptr<KvXmlTree> tree = parseModel(base);
  updateModel(*tree, numbers, manager);
  tree->putToStream(out);
}

// --- Exchange documents

/// The elements that hold beddings. They may change, since the document is the caller's own.
std::vector<KvXmlN::Data*> listContainers(KvXmlN::Document& document) {
  std::vector<KvXmlN::Data*> containers;
  for (const KvXmlN::Data* container : Documents::listContainers(document.getRoot()))
    containers.push_back(const_cast<KvXmlN::Data*>(container));
  return containers;
}

/// The beddings all come into the first element that has some.
void updateExchange(const Input& base, Form form, const FoundationManager& manager,
                    std::ostream& out) {
  std::ifstream in = base.open();
  KvXmlN::Document document(in);
  const std::vector<KvXmlN::Data*> containers = listContainers(document);
  for (KvXmlN::Data* container : containers) container->removeChildren(Documents::isBedding);
  const Tools::VersionText version(Documents::getVersion(form));
  Found::Umo::BeddingWriter(manager, version).write(*containers.front());
  document.putToStream(out);
}

bool hasNumber(const KvXmlN::Data& bedding) { return bedding.getName() != "Bedding"; }

/// Finds what becomes of the foundation that a bedding belongs to.
class ChangeFinder {
 public:
  ChangeFinder(Form form, const std::vector<Change>& list)
      : isFirstVersion(form == Form::firstExchange), changes(list) {
    for (const Change& change : changes) byNumber.emplace(change.before, &change);
  }

  /// Null when it belongs to none. To be asked about every bedding, in document order.
  const Change* find(const KvXmlN::Data& bedding) {
    if (isFirstVersion) return &changes.at(passed++);
    if (!hasNumber(bedding)) return nullptr;
    const auto found = byNumber.find(readNumber(bedding));
    return found != byNumber.end() ? found->second : nullptr;
  }

 private:
  /// The number that the text starts with, which is what the reader takes. 0, which is the number
  /// of no bedding, when there is none.
  static int readNumber(const KvXmlN::Data& bedding) {
    try {
      return std::stoi(KvXmlN::AttributeIn::readString(bedding, "Number").value_or(""));
    } catch (const std::logic_error&) {
      return 0;
    }
  }

  bool isFirstVersion;
  const std::vector<Change>& changes;
  std::map<int, const Change*> byNumber;
  std::size_t passed = 0;
};

void pruneExchange(const Input& base, Form form, const std::vector<Change>& changes,
                   std::ostream& out) {
  std::ifstream in = base.open();
  KvXmlN::Document document(in);
  ChangeFinder finder(form, changes);
  for (KvXmlN::Data* container : listContainers(document)) {
    std::set<const KvXmlN::Data*> unwanted;
    for (KvXmlN::Data* child : container->getChildren()) {
      const Change* const change = Documents::isBedding(*child) ? finder.find(*child) : nullptr;
      if (change == nullptr) continue;
      if (!change->after)
        unwanted.insert(child);
      else if (hasNumber(*child) && change->after != change->before)
        child->setAttribute("Number", *change->after, true);
    }
    container->removeChildren(
        [&unwanted](const KvXmlN::Data& child) { return unwanted.count(&child) > 0; });
  }
  document.putToStream(out);
}

}  // namespace

void update(const Input& base, Form form, const FoundationManager& manager, std::ostream& out) {
  FoundationManager copied;
  copy(manager, recogniseEncoding(base), copied);
  if (form == Form::legacy) return updateModel(base, copied, out);
  updateExchange(base, form, copied, out);
}

void prune(const Input& base, Form form, const std::vector<Change>& changes,
           const FoundationManager& manager, std::ostream& out) {
  if (form == Form::legacy) return pruneModel(base, changes, manager, out);
  pruneExchange(base, form, changes, out);
}

}  // namespace Updating
