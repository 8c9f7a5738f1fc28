#include "documents/entries.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

#include "documents/vocabulary.h"
#include "found/bedding_reader.h"
#include "foundations/fields.h"
#include "kv/version_text.h"

namespace Documents {
namespace {

using Fate = Entry::Fate;
using Found::Foundation;
using Found::FoundationManager;

/// The integer at the start of a text, after white space and at most one sign; the library reads
/// the same.
std::optional<int> startOfNumber(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
  if (first == text.npos) return std::nullopt;
  const char* begin = text.c_str() + first;
  if (*begin == '+' && begin[1] != '-') ++begin;
  int number = 0;
  if (std::from_chars(begin, text.c_str() + text.size(), number).ec != std::errc())
    return std::nullopt;
  return number;
}

/// The installed library may have other rules than these; throws when the results differ.
void requireAgreement(bool agree) {
  if (!agree) throw std::logic_error("the beddings are not read as they should be");
}

/// What the library reads from the bedding when it is the only one.
std::unique_ptr<Foundation> readAlone(const KvXmlN::Data& element) {
  KvXmlN::Document document(Exchange::container);
  KvXmlN::Data& copy = *document.getRoot().createChild(element.getName());
  for (const std::string& name : element.getAttributeNames())
    copy.setAttribute(name, element.findAttribute(name)->getData(), true);
  FoundationManager manager;
  const Tools::VersionText version(getVersion(Form::exchange));
  Found::Umo::BeddingReader(manager, version).read(document.getRoot());
  return std::make_unique<Foundation>(*manager.getFoundations().at(0));
}

/// Applies the library's rules for reading beddings once more, to find out which element became
/// which foundation and why others were skipped. The library reports skipped elements only by
/// messages, and each message takes time in proportion to the foundations read.
class BeddingRules {
 public:
  BeddingRules(Form form, const Charset& bytes, const std::vector<Foundation*>& foundations)
      : isFirstVersion(form == Form::firstExchange), charset(bytes), read(foundations) {}

  Entries list(const KvXmlN::Data& container) {
    Entries entries;
    int count = 0;
    for (const KvXmlN::Data* child : container.getChildren()) {
      Entry& entry = entries.emplace_back(Element(child, &charset));
      entry.fate = judge(entry, count);
      if (entry.fate == Fate::otherPart) join(entry, *child);
      if (entry.fate != Fate::read) continue;
      take(entry);
      ++count;
    }
    return entries;
  }

  bool isComplete() const { return taken == read.size(); }

 private:
  Fate judge(Entry& entry, int countInContainer) const {
    const std::string& name = entry.element.getName();
    if (name == Exchange::curve.name || name == Exchange::surface.name) {
      const Fate fate = judgeNumber(entry);
      return fate == Fate::read ? judgeName(entry) : fate;
    }
    if (name != Exchange::whole.name) return Fate::unknown;
    if (!isFirstVersion) return Fate::ofFirstVersion;
    // The number of its place, even when another foundation has that number.
    entry.number = countInContainer + 1;
    entry.numberHolder = findHolder(*entry.number);
    return judgeName(entry);
  }

  Fate judgeNumber(Entry& entry) const {
    entry.number = startOfNumber(entry.element.readText(Exchange::number).value_or(""));
    if (!entry.number) return Fate::numberMissing;
    if (*entry.number < 1) return Fate::numberTooSmall;
    entry.numberHolder = findHolder(*entry.number);
    if (entry.numberHolder == nullptr) return Fate::read;
    const bool isOther = areParts(entry.numberHolder->element, entry.element) &&
                         joined.count(entry.numberHolder->foundation) == 0;
    return isOther ? Fate::otherPart : Fate::numberTaken;
  }

  static Fate judgeName(const Entry& entry) {
    const std::optional<std::string> name = entry.element.readText(Exchange::name);
    if (!name) return Fate::nameMissing;
    return name->empty() ? Fate::nameEmpty : Fate::read;
  }

  /// True when the two elements, which have the same number, are the line and the area part of one
  /// foundation.
  static bool areParts(const Element& first, const Element& second) {
    return first.getName() != Exchange::whole.name && first.getName() != second.getName() &&
           first.readText(Exchange::name) == second.readText(Exchange::name);
  }

  const Entry* findHolder(int number) const {
    const auto holder = numbers.find(number);
    return holder == numbers.end() ? nullptr : holder->second;
  }

  /// Adds the other part to the foundation that was read from the first part.
  void join(Entry& entry, const KvXmlN::Data& element) {
    Foundation& whole = *entry.numberHolder->foundation;
    entry.foundation = &whole;
    joined.insert(&whole);
    const std::unique_ptr<Foundation> part = readAlone(element);
    const bool isArea = entry.element.getName() == Exchange::surface.name;
    for (const AttributeWord& word : (isArea ? Exchange::surface : Exchange::curve).attributes)
      if (word.kind != Kind::identity) {
        const Fields::Field& field = *Fields::find(word.field);
        field.set(whole, field.get(*part));
      }
  }

  /// Assigns the next foundation that was read to its entry.
  void take(Entry& entry) {
    const std::string name = *entry.element.readText(Exchange::name);
    requireAgreement(!isComplete() && read[taken]->getNumber() == entry.number);
    entry.foundation = read[taken++];
    if (entry.element.getName() == Exchange::whole.name)
      entry.foundation->setNumber(static_cast<int>(taken));
    const auto holder = names.find(name);
    if (holder != names.end()) {
      entry.fate = Fate::renamed;
      entry.nameHolder = holder->second;
    }
    names.emplace(charset.toUtf8(entry.foundation->getName()), &entry);
    numbers.emplace(*entry.number, &entry);
  }

  const bool isFirstVersion;
  const Charset& charset;
  const std::vector<Foundation*>& read;
  std::size_t taken = 0;
  std::unordered_set<const Foundation*> joined;
  std::unordered_map<int, const Entry*> numbers;
  std::unordered_map<std::string, const Entry*> names;
};

/// Adds the beddings below `top`, or `top` itself, that are in no container, so nothing reads them.
void addOutside(const KvXmlN::Data& top, bool isRead,
                const std::unordered_set<const KvXmlN::Data*>& containers, const Charset& charset,
                Entries& entries) {
  if (!isRead && Exchange::findWord(top.getName()) != nullptr)
    entries.emplace_back(Element(&top, &charset)).fate = Fate::outside;
  for (const KvXmlN::Data* child : top.getChildren())
    addOutside(*child, containers.count(&top) > 0, containers, charset, entries);
}

/// True for an element with an attribute that only foundations have.
bool tellsStiffness(const KvXmlData& element) {
  return std::any_of(Legacy::foundation.attributes.begin(), Legacy::foundation.attributes.end(),
                     [&element](const AttributeWord& word) {
                       return word.kind != Kind::identity &&
                              element.findAttribute(word.name) != nullptr;
                     });
}

/// Adds the beddings below `top`, and the foundations that are not in `list`. Outside of all lists,
/// an element with the name of a foundation may be something else, so it must have a stiffness,
/// too.
void addOutside(KvXmlData& top, bool isInList, const KvXmlData* list, const Charset& charset,
                Entries& entries) {
  const bool isBelowList = isInList || top.getName() == Legacy::list.name;
  for (KvXmlData* child : top.getChildren()) {
    const std::string& name = child->getName();
    const bool isFoundation =
        name == Legacy::foundation.name && (isBelowList || tellsStiffness(*child));
    const bool isBedding = name == Exchange::curve.name || name == Exchange::surface.name;
    if ((isFoundation && &top != list) || isBedding)
      entries.emplace_back(Element(child, &charset)).fate = Fate::outside;
    addOutside(*child, isBelowList, list, charset, entries);
  }
}

}  // namespace

std::vector<Entries> readBeddings(KvXmlN::Data& root, const std::vector<KvXmlN::Data*>& containers,
                                  Form form, const Charset& charset, FoundationManager& manager) {
  const Tools::VersionText version(getVersion(form));
  Found::Umo::BeddingReader reader(manager, version);
  for (const KvXmlN::Data* container : containers) reader.read(*container);

  std::vector<Entries> entries;
  entries.reserve(containers.size() + 1);
  BeddingRules rules(form, charset, manager.getFoundations());
  for (const KvXmlN::Data* container : containers) entries.push_back(rules.list(*container));
  requireAgreement(rules.isComplete());

  addOutside(root, false, {containers.begin(), containers.end()}, charset, entries.emplace_back());
  return entries;
}

std::vector<Entries> readModel(KvXmlData& root, KvXmlData* list, const Charset& charset,
                               FoundationManager& manager) {
  manager.createFromXml(&root);
  std::vector<Entries> entries;
  if (list != nullptr) {
    entries.emplace_back();
    auto foundation = manager.getFoundations().begin();
    for (KvXmlData* child : list->getChildren()) {
      Entry& entry = entries.front().emplace_back(Element(child, &charset));
      if (child->getName() != Legacy::foundation.name) {
        entry.fate = Fate::unknown;
        continue;
      }
      entry.foundation = *foundation++;
      entry.number = entry.foundation->getNumber();
    }
  }
  addOutside(root, false, list, charset, entries.emplace_back());
  return entries;
}

}  // namespace Documents
