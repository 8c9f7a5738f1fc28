#include "documents/updating.h"

#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <utility>

#include "documents/containers.h"
#include "documents/vocabulary.h"
#include "found/bedding_writer.h"
#include "kv/version_text.h"
#include "text/encoding.h"

namespace Updating {
namespace {

namespace Exchange = Documents::Exchange;
namespace Legacy = Documents::Legacy;
using Documents::Document;
using Documents::Entries;
using Documents::Entry;
using Documents::Form;
using Found::Foundation;
using Found::FoundationManager;

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

template <class Tree>
std::string print(const Tree& tree) {
  std::ostringstream out;
  out.exceptions(std::ios::badbit);  // or the text would end where memory runs out
  tree.putToStream(out);
  return out.str();
}

// --- Legacy models

/// The number of each foundation that stands in a model, in their order, or none when it goes.
using Numbers = std::vector<std::optional<int>>;

std::vector<KvXmlData*> listFoundationElements(KvXmlData& foundations) {
  std::vector<KvXmlData*> elements;
  for (KvXmlData* child : foundations.getChildren())
    if (child->getName() == Legacy::foundation.name) elements.push_back(child);
  return elements;
}

/// Sets to 0 what the library writes only where there is something to write. 0 means the same as if
/// the attribute were not there.
void clear(KvXmlData& element) {
  using Documents::Kind;
  for (const Documents::AttributeWord& attribute : Legacy::foundation.attributes) {
    const bool isOptional = attribute.kind == Kind::stiffness ||
                            attribute.kind == Kind::lineStiffness ||
                            attribute.kind == Kind::failureNumber;
    if (isOptional && element.findAttribute(attribute.name) != nullptr)
      element.setAttribute(attribute.name, 0, true);
  }
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
    elements[i]->setAttribute(Legacy::number, *number, true);
    clear(*elements[i]);
  }
  foundations.removeChildren(
      [&unwanted](const KvXmlData& child) { return unwanted.count(&child) > 0; });
  if (foundations.findAttribute(Legacy::current) != nullptr)
    foundations.setAttribute(Legacy::current, std::string(), true);
}

std::string updateModel(KvXmlTree& tree, const Numbers& numbers, const FoundationManager& manager) {
  KvXmlData* const root = tree.findRoot(Legacy::root, true);
  tree.setCurrent(root);
  if (KvXmlData* const foundations = root->findTree(Legacy::list.name, true)) {
    prepare(*foundations, numbers, manager);
    tree.setCurrent(foundations);
    tree.close();
  }
  manager.updateXml(&tree);
  return print(tree);
}

std::string updateModel(Document& base, const FoundationManager& manager) {
  Numbers numbers;
  for (const Foundation* foundation : base.getFoundations().getFoundations())
    numbers.emplace_back(foundation->getNumber());
  return updateModel(*base.getModel(), numbers, manager);
}

std::string pruneModel(const Document& base, const std::vector<Change>& changes,
                       const FoundationManager& manager) {
  Numbers numbers;
  for (const Change& change : changes) numbers.push_back(change.after);
  return updateModel(*base.getModel(), numbers, manager);
}

// --- Exchange documents

/// The beddings all come into the first element that has some.
std::string updateExchange(const Document& base, const FoundationManager& manager) {
  const std::vector<KvXmlN::Data*>& containers = base.getContainers();
  for (KvXmlN::Data* container : containers) container->removeChildren(Documents::isBedding);
  const Tools::VersionText version(Documents::getVersion(base.getForm()));
  Found::Umo::BeddingWriter(manager, version).write(*containers.front());
  return print(*base.getExchange());
}

/// Finds what becomes of the foundation that a bedding belongs to.
class ChangeFinder {
 public:
  explicit ChangeFinder(const std::vector<Change>& list) : changes(list) {
    for (const Change& change : changes) byNumber.emplace(change.before, &change);
  }

  /// Null when it belongs to none. To be asked about every entry, in document order. A bedding that
  /// was skipped belongs to the foundation that has its number.
  const Change* find(const Entry& entry) {
    if (entry.foundation != nullptr) return &changes.at(passed++);
    const auto found = entry.number ? byNumber.find(*entry.number) : byNumber.end();
    return found != byNumber.end() ? found->second : nullptr;
  }

 private:
  const std::vector<Change>& changes;
  std::map<int, const Change*> byNumber;
  std::size_t passed = 0;
};

/// Changes the beddings of a container; `entries` are its children.
void pruneContainer(KvXmlN::Data& container, const Entries& entries, ChangeFinder& finder) {
  std::set<const KvXmlN::Data*> unwanted;
  auto child = container.getChildren().begin();
  for (const Entry& entry : entries) {
    KvXmlN::Data* const bedding = *child++;
    const Change* const change = finder.find(entry);
    if (change == nullptr) continue;
    if (!change->after)
      unwanted.insert(bedding);
    else if (!Documents::isWholeBedding(*bedding) && change->after != change->before)
      bedding->setAttribute(Exchange::number, *change->after, true);
  }
  container.removeChildren(
      [&unwanted](const KvXmlN::Data& bedding) { return unwanted.count(&bedding) > 0; });
}

std::string pruneExchange(Document& base, const std::vector<Change>& changes) {
  ChangeFinder finder(changes);
  auto entries = base.getEntries().begin();
  for (KvXmlN::Data* container : base.getContainers())
    pruneContainer(*container, *entries++, finder);
  return print(*base.getExchange());
}

}  // namespace

std::string update(Document& base, const FoundationManager& manager) {
  FoundationManager copied;
  copy(manager, Encoding::recognise(base.getContent().bytes), copied);
  std::string text =
      base.getForm() == Form::legacy ? updateModel(base, copied) : updateExchange(base, copied);
  base.forgetElements();
  return text;
}

std::string prune(Document& base, const std::vector<Change>& changes,
                  const FoundationManager& manager) {
  std::string text = base.getForm() == Form::legacy ? pruneModel(base, changes, manager)
                                                    : pruneExchange(base, changes);
  base.forgetElements();
  return text;
}

}  // namespace Updating
