#include <memory>

#include "found/foundation_user.h"
#include "properties/generators.h"

namespace PropertyTest {
namespace {

/// Entries of a live list, without a value where they are null.
using Entries = std::vector<rc::Maybe<Record>>;

rc::Gen<Entries> anyEntries() {
  const auto present =
      rc::gen::map(anyRecord(), [](const Record& record) { return rc::Maybe<Record>(record); });
  return rc::gen::container<Entries>(rc::gen::weightedOneOf<rc::Maybe<Record>>(
      {{1, rc::gen::just(rc::Maybe<Record>())}, {6, present}}));
}

void add(FoundationManager& manager, const Entries& entries) {
  for (const auto& entry : entries)
    manager.add(entry ? make(*entry) : std::unique_ptr<Foundation>());
}

std::vector<Foundation*> withoutNull(std::vector<Foundation*> list) {
  list.erase(std::remove(list.begin(), list.end(), nullptr), list.end());
  return list;
}

std::vector<std::string> describeList(const FoundationManager& manager) {
  std::vector<std::string> texts;
  for (Foundation* foundation : manager.getFoundations())
    texts.push_back(foundation != nullptr ? describe(*foundation) : "null");
  return texts;
}

std::set<std::string> namesOf(const FoundationManager& manager) {
  std::set<std::string> names;
  for (const Foundation* foundation : withoutNull(manager.getFoundations()))
    names.insert(foundation->getName());
  return names;
}

long long highestNumber(const FoundationManager& manager, long long floor) {
  for (const Foundation* foundation : withoutNull(manager.getFoundations()))
    floor = std::max<long long>(floor, foundation->getNumber());
  return floor;
}

// Find or create

RC_GTEST_PROP(GiveByValueProperty, TheSecondTimeFindsWhatTheFirstTimeGave, ()) {
  FoundationManager manager;
  add(manager, *anyEntries());
  const auto wanted = make(*anyRecord());
  RC_PRE(*wanted == *wanted);

  Foundation* const first = manager.giveFoundation(*wanted, true);
  const std::vector<std::string> before = describeList(manager);
  Foundation* const second = manager.giveFoundation(*wanted, true);

  RC_ASSERT(second == first);
  RC_ASSERT(*first == *wanted);
  RC_ASSERT(describeList(manager) == before);
}

RC_GTEST_PROP(GiveByValueProperty, FindsWhatIsListedAndLeavesTheListAlone, ()) {
  const Entries entries = *anyEntries();
  FoundationManager manager;
  add(manager, entries);
  const std::vector<Foundation*> listed = withoutNull(manager.getFoundations());
  RC_PRE(!listed.empty());
  const Foundation wanted(*listed[*rc::gen::inRange<std::size_t>(0, listed.size())]);
  RC_PRE(wanted == wanted);
  const std::vector<std::string> before = describeList(manager);

  Foundation* const found = manager.giveFoundation(wanted, true);

  RC_ASSERT(*found == wanted);
  RC_ASSERT(describeList(manager) == before);
}

RC_GTEST_PROP(GiveByValueProperty, WithoutLookingAppendsACopyNumberedAboveTheHighest, ()) {
  FoundationManager manager;
  add(manager, *anyEntries());
  Record record = *anyRecord();
  RC_PRE(!record.name.empty());
  std::vector<std::string> expected = describeList(manager);
  const long long next = highestNumber(manager, 0) + 1;
  const auto wanted = make(record);

  Foundation* const given = manager.giveFoundation(*wanted, false);

  record.number = next > largestInt ? largestInt : static_cast<int>(next);
  expected.push_back(describe(record));
  RC_ASSERT(describeList(manager) == expected);
  RC_ASSERT(given == manager.getFoundations().back());
}

RC_GTEST_PROP(GiveByNameProperty, TheSecondTimeFindsWhatTheFirstTimeGave, ()) {
  FoundationManager manager;
  add(manager, *anyEntries());
  const std::string name = *anyName();

  Foundation* const first = manager.giveFoundation(name);
  const std::vector<std::string> before = describeList(manager);
  Foundation* const second = manager.giveFoundation(name);

  RC_ASSERT(second == first);
  RC_ASSERT(first->getName() == name);
  RC_ASSERT(describeList(manager) == before);
}

RC_GTEST_PROP(GiveByNameProperty, OfDistinctNamesGivesAsManyFoundations, ()) {
  const auto names = *rc::gen::container<std::vector<std::string>>(anyName());
  FoundationManager manager;

  for (const std::string& name : names) manager.giveFoundation(name);

  const std::set<std::string> distinct(names.begin(), names.end());
  RC_ASSERT(namesOf(manager) == distinct);
  RC_ASSERT(manager.getFoundations().size() == distinct.size());
}

// Names

RC_GTEST_PROP(NextNameProperty, IsFreeAndChangesNothing, ()) {
  FoundationManager manager;
  add(manager, *anyEntries());
  const std::vector<std::string> before = describeList(manager);

  const std::string name = manager.giveNextFoundationName(*anyNumber());

  RC_ASSERT(namesOf(manager).count(name) == 0u);
  RC_ASSERT(describeList(manager) == before);
}

RC_GTEST_PROP(NextNameProperty, IsTheFirstFreeOneFromTheGreaterOfStartAndHighestNumber, ()) {
  FoundationManager manager;
  add(manager, *anyEntries());
  const int start = *rc::gen::inRange(0, 30);
  const std::set<std::string> taken = namesOf(manager);

  const std::string name = manager.giveNextFoundationName(start);

  long long number = highestNumber(manager, start);
  const auto makeName = [](long long n) {
    char text[40];
    std::snprintf(text, sizeof text, "Found%04lld", n);
    return std::string(text);
  };
  while (taken.count(makeName(number)) > 0) ++number;
  RC_ASSERT(name == makeName(number));
}

RC_GTEST_PROP(NextNameProperty, MakesUnnamedFoundationsDifferFromAllOthers, ()) {
  FoundationManager manager;
  add(manager, *anyEntries());
  const std::set<std::string> before = namesOf(manager);
  const auto count = *rc::gen::inRange<std::size_t>(0, 20);

  std::set<std::string> given;
  for (std::size_t i = 0; i < count; ++i)
    given.insert(manager.giveFoundation(Foundation(), false)->getName());

  RC_ASSERT(given.size() == count);
  for (const std::string& name : given) RC_ASSERT(before.count(name) == 0u);
}

// Pruning

class SetUser : public Found::FoundationUser {
 public:
  std::set<const Foundation*> used;

  bool usesFoundation(const Foundation* foundation) override { return used.count(foundation) > 0; }
};

/// A manager whose foundations are used at random, and which does not delete what it gives up.
struct Pruned {
  explicit Pruned(const Entries& entries) {
    for (const auto& entry : entries) {
      owned.push_back(entry ? make(*entry) : nullptr);
      manager.add(owned.back().get());
      if (entry && *rc::gen::arbitrary<bool>()) user.used.insert(owned.back().get());
    }
    manager.addUser(&user);
  }
  ~Pruned() {
    while (!manager.getFoundations().empty())
      manager.remove(manager.getFoundations().front(), false, false);
  }

  /// The foundations that stay when those that `leaves` selects are taken out, null entries too.
  template <class Leaves>
  std::vector<Foundation*> filter(const Leaves& leaves) const {
    std::vector<Foundation*> rest;
    for (Foundation* foundation : manager.getFoundations())
      if (foundation == nullptr || !leaves(foundation)) rest.push_back(foundation);
    return rest;
  }

  bool isUsed(const Foundation* foundation) const { return user.used.count(foundation) > 0; }

  bool isNumberedDensely() const {
    int number = 0;
    for (const Foundation* foundation : withoutNull(manager.getFoundations()))
      if (foundation->getNumber() != ++number) return false;
    return true;
  }

  std::vector<std::unique_ptr<Foundation>> owned;
  SetUser user;
  FoundationManager manager;
};

RC_GTEST_PROP(PruningProperty, OfGeneratedKeepsTheOrderAndNumbersFromOneOn, ()) {
  Pruned pruned(*anyEntries());
  const auto rest = pruned.filter([](const Foundation* f) { return f->isGenerated(); });

  pruned.manager.removeAllGenerated();

  RC_ASSERT(pruned.manager.getFoundations() == rest);
  RC_ASSERT(pruned.isNumberedDensely());
}

RC_GTEST_PROP(PruningProperty, OfUnusedGeneratedKeepsTheOrderAndNumbersFromOneOn, ()) {
  Pruned pruned(*anyEntries());
  const auto rest =
      pruned.filter([&](const Foundation* f) { return f->isGenerated() && !pruned.isUsed(f); });

  pruned.manager.removeAllNotUsedGenerated();

  RC_ASSERT(pruned.manager.getFoundations() == rest);
  RC_ASSERT(pruned.isNumberedDensely());
}

RC_GTEST_PROP(PruningProperty, OfUnusedKeepsTheOrderAndTheNumbers, ()) {
  Pruned pruned(*anyEntries());
  const auto rest = pruned.filter([&](const Foundation* f) { return !pruned.isUsed(f); });
  std::vector<int> numbers;
  for (const Foundation* foundation : withoutNull(rest)) numbers.push_back(foundation->getNumber());

  pruned.manager.removeAllNotUsed();

  RC_ASSERT(pruned.manager.getFoundations() == rest);
  std::vector<int> after;
  for (const Foundation* foundation : withoutNull(pruned.manager.getFoundations()))
    after.push_back(foundation->getNumber());
  RC_ASSERT(after == numbers);
  RC_ASSERT(pruned.manager.getNumberOfUsedFoundations() == withoutNull(rest).size());
}

RC_GTEST_PROP(PruningProperty, ClearsTheCurrentFoundationJustWhenItIsTakenOut, ()) {
  Pruned pruned(*anyEntries());
  const auto present = withoutNull(pruned.manager.getFoundations());
  RC_PRE(!present.empty());
  Foundation* const current = present[*rc::gen::inRange<std::size_t>(0, present.size())];
  pruned.manager.setCurrentFoundation(current);

  pruned.manager.removeAllNotUsed();

  RC_ASSERT(pruned.manager.getCurrentFoundation() == (pruned.isUsed(current) ? current : nullptr));
}

RC_GTEST_PROP(PruningProperty, ChangesNothingOfAFoundationButItsNumber, ()) {
  const Entries entries = *anyEntries();
  Pruned pruned(entries);

  pruned.manager.removeAllNotUsedGenerated();
  pruned.manager.removeAllNotUsed();
  pruned.manager.removeAllGenerated();

  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (!entries[i]) continue;
    Record expected = *entries[i];
    expected.number = pruned.owned[i]->getNumber();
    RC_ASSERT(describe(*pruned.owned[i]) == describe(expected));
  }
}

// The maximum

RC_GTEST_PROP(MaximumProperty, IsTheGreatestLengthAndNoneExceedsIt, ()) {
  const Entries entries = *anyEntries();
  FoundationManager manager;
  add(manager, entries);

  manager.updateFoundationMaximum();

  double expected = 0.0;
  for (const auto& entry : entries) {
    if (!entry) continue;
    for (const Vector* v : {&entry->dispArea, &entry->dispLine, &entry->rotLine})
      if (hasLength(*v)) expected = std::max(expected, (*v)->length());
  }
  RC_ASSERT(manager.getMaxFoundationValue() == expected);
}

}  // namespace
}  // namespace PropertyTest
