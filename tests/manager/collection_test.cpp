#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "found/foundation_manager.h"
#include "manager/manager_probe.h"
#include "support/allocation_faults.h"

namespace Found::Tests {
namespace {

/// A manager with three foundations that share nothing but their (absent) values.
class ManagerWithFoundations : public ::testing::Test {
 protected:
  ManagerWithFoundations() {
    a = addFoundation(manager, "A", 1);
    b = addFoundation(manager, "B", 2);
    c = addFoundation(manager, "C", 3);
  }

  FoundationManager manager;
  Foundation* a = nullptr;
  Foundation* b = nullptr;
  Foundation* c = nullptr;
};

TEST(ManagerConstruction, ANewManagerIsEmpty) {
  const FoundationManager manager;

  EXPECT_EQ(stateOf(manager), State({}, {}, nullptr, 0.0, {}, {}));
}

TEST(ManagerConstruction, ANewManagerHasNoUsers) {
  const FoundationManager manager;
  const Foundation foundation;

  EXPECT_FALSE(manager.checkUsed(&foundation));
}

TEST(ManagerConstruction, TheListsAreReadWithoutACopy) {
  using Getter = const List& (FoundationManager::*)() const;

  EXPECT_TRUE((std::is_same_v<decltype(&FoundationManager::getFoundations), Getter>));
  EXPECT_TRUE((std::is_same_v<decltype(&FoundationManager::getRemovedFoundations), Getter>));
}

TEST(ManagerAdd, AppendsInTheOrderOfTheCalls) {
  FoundationManager manager;
  auto* const a = new Foundation;
  auto* const b = new Foundation;

  manager.add(a);
  manager.add(b);

  EXPECT_EQ(manager.getFoundations(), (List{a, b}));
}

TEST(ManagerAdd, LeavesNameNumberFlagsAndValuesAlone) {
  FoundationManager manager;
  auto* const filled = new Foundation;
  fill(*filled);
  auto* const fresh = new Foundation;

  manager.add(filled);
  manager.add(fresh);

  EXPECT_EQ(recordOf(*filled), Record("Raft", 12, false, true, filledValues));
  EXPECT_EQ(recordOf(*fresh), Record("", -1, false, false, noValues));
}

TEST(ManagerAdd, LeavesChangedAlone) {
  FoundationManager manager;
  auto* const marked = new Foundation;
  marked->setChanged(true);

  manager.add(marked);

  EXPECT_TRUE(marked->getChanged());
}

TEST(ManagerAdd, AcceptsEqualNamesNumbersAndValues) {
  FoundationManager manager;

  addFoundation(manager, "A", 1);
  addFoundation(manager, "A", 1);

  EXPECT_EQ(namesOf(manager), (std::vector<std::string>{"A", "A"}));
  EXPECT_EQ(numbersOf(manager), (std::vector<int>{1, 1}));
}

TEST(ManagerAdd, AcceptsTheSameFoundationTwice) {
  FoundationManager manager;
  Foundation* const a = addFoundation(manager);

  manager.add(a);

  EXPECT_EQ(manager.getFoundations(), (List{a, a}));
  manager.remove(a, false, false);
}

TEST(ManagerAdd, AcceptsNull) {
  FoundationManager manager;

  manager.add(static_cast<Foundation*>(nullptr));
  manager.add(std::unique_ptr<Foundation>());

  EXPECT_EQ(manager.getFoundations(), (List{nullptr, nullptr}));
}

TEST(ManagerAdd, AnOwningPointerHandsItsObjectOver) {
  FoundationManager manager;
  auto owned = std::make_unique<Foundation>();
  fill(*owned);
  Foundation* const f = owned.get();

  addFoundation(manager, "first");
  manager.add(std::move(owned));

  EXPECT_EQ(owned, nullptr);
  ASSERT_EQ(manager.getFoundations().size(), 2u);
  EXPECT_EQ(manager.getFoundations()[1], f);
  EXPECT_EQ(recordOf(*f), Record("Raft", 12, false, true, filledValues));
}

TEST(ManagerAdd, TouchesNothingButTheLiveList) {
  FoundationManager manager;
  Foundation removed;
  Foundation current;
  manager.remove(&removed, false, true);
  manager.setCurrentFoundation(&current);
  manager.setMaxFoundationValue(7.0);

  Foundation* const a = addFoundation(manager, "A", 1);

  EXPECT_EQ(stateOf(manager), State({a}, {&removed}, &current, 7.0, {1}, {"A"}));
}

TEST(ManagerAdd, OutOfMemoryTheListIsUnchangedAndThePlainPointerStaysWithTheCaller) {
  FoundationManager manager;
  auto owned = std::make_unique<Foundation>();
  const ReleaseLog log({owned.get()});

  EXPECT_TRUE(runsOutOfMemory(1, [&] { manager.add(owned.get()); }));

  EXPECT_TRUE(manager.getFoundations().empty());
  EXPECT_EQ(log.getReleased(), std::vector<int>{});
}

TEST(ManagerAdd, OutOfMemoryTheListIsUnchangedAndTheOwningPointerDeletesItsObject) {
  FoundationManager manager;
  auto owned = std::make_unique<Foundation>();
  const ReleaseLog log({owned.get()});

  EXPECT_TRUE(runsOutOfMemory(1, [&] { manager.add(std::move(owned)); }));

  EXPECT_TRUE(manager.getFoundations().empty());
  EXPECT_EQ(log.getReleased(), std::vector<int>{0});
}

TEST_F(ManagerWithFoundations, DestructionDeletesTheLiveFoundationsInListOrder) {
  auto doomed = std::make_unique<FoundationManager>();
  Foundation* const first = addFoundation(*doomed);
  addNull(*doomed);
  Foundation* const second = addFoundation(*doomed);
  Foundation* const third = addFoundation(*doomed);
  const ReleaseLog log({third, second, first, a});

  doomed.reset();

  EXPECT_EQ(log.getReleased(), (std::vector<int>{2, 1, 0}));
}

TEST(ManagerDestruction, DoesNotDeleteRemovedFoundations) {
  auto doomed = std::make_unique<FoundationManager>();
  Foundation* const a = addFoundation(*doomed, "A", 1);
  doomed->remove(a, false, true);
  const Adopted adopted(a);
  const ReleaseLog log({a});

  doomed.reset();

  EXPECT_EQ(log.getReleased(), std::vector<int>{});
  EXPECT_EQ(a->getName(), "A");
}

TEST(ManagerDestruction, DoesNotDeleteACurrentFoundationThatIsNotInTheList) {
  auto doomed = std::make_unique<FoundationManager>();
  const auto current = std::make_unique<Foundation>();
  doomed->setCurrentFoundation(current.get());
  const ReleaseLog log({current.get()});

  doomed.reset();

  EXPECT_EQ(log.getReleased(), std::vector<int>{});
}

TEST(ManagerDestruction, NeitherDeletesNorAsksUsers) {
  Questions questions;
  auto doomed = std::make_unique<FoundationManager>();
  addFoundation(*doomed);
  const auto user =
      std::make_unique<RecordingUser>("user", questions, std::vector<const Foundation*>{});
  doomed->addUser(user.get());
  const ReleaseLog log({user.get()});

  doomed.reset();

  EXPECT_EQ(log.getReleased(), std::vector<int>{});
  EXPECT_EQ(questions, Questions());
}

TEST(ManagerDestruction, ReleasesTheStorageOfTheThreeLists) {
  Foundation removed;
  Questions questions;
  RecordingUser user("user", questions, {});
  const long before = countLiveBlocks();

  {
    FoundationManager manager;
    addFoundation(manager);
    manager.remove(&removed, false, true);
    manager.addUser(&user);
    EXPECT_EQ(countLiveBlocks(), before + 4);
  }

  EXPECT_EQ(countLiveBlocks(), before);
}

TEST_F(ManagerWithFoundations, ResetDeletesTheLiveFoundationsInListOrderAndEmptiesTheList) {
  const ReleaseLog log({c, b, a});

  manager.reset();

  EXPECT_EQ(log.getReleased(), (std::vector<int>{2, 1, 0}));
  EXPECT_TRUE(manager.getFoundations().empty());
}

TEST(ManagerReset, PassesOverNullEntries) {
  FoundationManager manager;
  addNull(manager);
  Foundation* const a = addFoundation(manager);
  addNull(manager);
  const ReleaseLog log({a});

  manager.reset();

  EXPECT_EQ(log.getReleased(), std::vector<int>{0});
  EXPECT_TRUE(manager.getFoundations().empty());
}

TEST(ManagerReset, AnEmptyManagerStaysEmpty) {
  FoundationManager manager;

  manager.reset();

  EXPECT_EQ(stateOf(manager), State({}, {}, nullptr, 0.0, {}, {}));
}

TEST_F(ManagerWithFoundations, ResetKeepsRemovedListMaximumAndEvenACurrentFoundationItDeletes) {
  Foundation removed;
  manager.remove(&removed, false, true);
  manager.setMaxFoundationValue(7.0);
  manager.setCurrentFoundation(b);
  Foundation* const formerB = manager.getCurrentFoundation();

  manager.reset();

  EXPECT_EQ(stateOf(manager), State({}, {&removed}, formerB, 7.0, {}, {}));
}

TEST_F(ManagerWithFoundations, ResetKeepsTheUsersAndAsksThemNothing) {
  Questions questions;
  Foundation other;
  RecordingUser user("user", questions, {&other});
  manager.addUser(&user);

  manager.reset();

  EXPECT_EQ(questions, Questions());
  EXPECT_TRUE(manager.checkUsed(&other));
}

TEST_F(ManagerWithFoundations, AfterResetFoundationsCanBeAddedAgain) {
  manager.reset();

  Foundation* const d = addFoundation(manager);

  EXPECT_EQ(manager.getFoundations(), List{d});
}

/// Two managers may share foundations, but only one may own them: at the end of a test the other
/// one lets go of them.
void letGo(FoundationManager& manager) {
  const List shared = manager.getFoundations();
  for (Foundation* foundation : shared) manager.remove(foundation, false, false);
}

TEST_F(ManagerWithFoundations, ACopySharesFoundationsRemovedListCurrentAndMaximum) {
  Foundation removed;
  manager.remove(&removed, false, true);
  manager.setCurrentFoundation(b);
  manager.setMaxFoundationValue(7.0);

  FoundationManager copy(manager);

  const State expected({a, b, c}, {&removed}, b, 7.0, {1, 2, 3}, {"A", "B", "C"});
  EXPECT_EQ(stateOf(copy), expected);
  EXPECT_EQ(stateOf(manager), expected);
  letGo(copy);
}

TEST_F(ManagerWithFoundations, ACopyAsksTheSameUsers) {
  Questions questions;
  RecordingUser user("user", questions, {b});
  manager.addUser(&user);

  FoundationManager copy(manager);

  EXPECT_TRUE(copy.checkUsed(b));
  EXPECT_FALSE(copy.checkUsed(a));
  EXPECT_EQ(questions, (Questions{{"user", b}, {"user", a}}));
  letGo(copy);
}

TEST_F(ManagerWithFoundations, ACopyHasListsOfItsOwn) {
  FoundationManager copy(manager);

  copy.remove(b, false, true);
  copy.setCurrentFoundation(c);
  copy.setMaxFoundationValue(7.0);

  EXPECT_EQ(stateOf(manager), State({a, b, c}, {}, nullptr, 0.0, {1, 2, 3}, {"A", "B", "C"}));
  letGo(copy);
}

TEST_F(ManagerWithFoundations, AFoundationChangedThroughACopyIsChangedInTheOriginal) {
  FoundationManager copy(manager);

  copy.getFoundations()[1]->setName("Strip");

  EXPECT_EQ(namesOf(manager), (std::vector<std::string>{"A", "Strip", "C"}));
  letGo(copy);
}

TEST_F(ManagerWithFoundations, AssignmentSharesFoundationsRemovedListUsersCurrentAndMaximum) {
  Questions questions;
  RecordingUser user("user", questions, {b});
  Foundation removed;
  manager.addUser(&user);
  manager.remove(&removed, false, true);
  manager.setCurrentFoundation(b);
  manager.setMaxFoundationValue(7.0);
  FoundationManager target;

  EXPECT_EQ(&(target = manager), &target);

  EXPECT_EQ(stateOf(target), State({a, b, c}, {&removed}, b, 7.0, {1, 2, 3}, {"A", "B", "C"}));
  EXPECT_TRUE(target.checkUsed(b));
  letGo(target);
}

TEST_F(ManagerWithFoundations, AssignmentOverwritesWithoutDeleting) {
  Questions questions;
  Foundation other;
  RecordingUser user("user", questions, {&other});
  FoundationManager target;
  const Adopted dropped(addFoundation(target));
  Foundation removed;
  target.remove(&removed, false, true);
  target.addUser(&user);
  target.setCurrentFoundation(dropped.get());
  target.setMaxFoundationValue(7.0);
  const ReleaseLog log({dropped.get()});

  target = manager;

  EXPECT_EQ(log.getReleased(), std::vector<int>{});
  EXPECT_EQ(stateOf(target), State({a, b, c}, {}, nullptr, 0.0, {1, 2, 3}, {"A", "B", "C"}));
  EXPECT_FALSE(target.checkUsed(&other));
  letGo(target);
}

TEST_F(ManagerWithFoundations, AssignmentToItselfChangesNothing) {
  manager.setCurrentFoundation(b);
  const FoundationManager& same = manager;

  manager = same;

  EXPECT_EQ(stateOf(manager), State({a, b, c}, {}, b, 0.0, {1, 2, 3}, {"A", "B", "C"}));
}

TEST_F(ManagerWithFoundations, CopyingOutOfMemoryLeavesNothingBehind) {
  Questions questions;
  RecordingUser user("user", questions, {});
  Foundation removed;
  manager.remove(&removed, false, true);
  manager.addUser(&user);
  const ReleaseLog log({a, b, c});
  const long before = countLiveBlocks();

  for (int failing = 1; failing <= 3; ++failing) {
    EXPECT_TRUE(runsOutOfMemory(failing, [&] { const FoundationManager copy(manager); }));
    EXPECT_EQ(countLiveBlocks(), before) << "allocation " << failing;
  }

  EXPECT_EQ(log.getReleased(), std::vector<int>{});
}

TEST_F(ManagerWithFoundations, AssignmentOutOfMemoryLeavesTheTargetAsItWas) {
  Questions questions;
  Foundation used;
  Foundation usedBefore;
  RecordingUser user("user", questions, {&used});
  RecordingUser userBefore("user before", questions, {&usedBefore});
  Foundation removed;
  manager.remove(&removed, false, true);
  manager.addUser(&user);
  manager.setMaxFoundationValue(7.0);
  manager.setCurrentFoundation(b);
  for (int failing = 1;; ++failing) {
    FoundationManager target;
    target.addUser(&userBefore);
    target.setMaxFoundationValue(3.0);
    target.setCurrentFoundation(&used);

    if (!runsOutOfMemory(failing, [&] { target = manager; })) {
      EXPECT_GT(failing, 1);
      letGo(target);
      break;
    }

    EXPECT_EQ(stateOf(target), State({}, {}, &used, 3.0, {}, {})) << "allocation " << failing;
    EXPECT_TRUE(target.checkUsed(&usedBefore)) << "allocation " << failing;
    EXPECT_FALSE(target.checkUsed(&used)) << "allocation " << failing;
    letGo(target);
  }
}

class ManagerFindByValue : public ::testing::Test {
 protected:
  FoundationManager manager;
};

TEST_F(ManagerFindByValue, FindsEqualValuesWhateverNameAndNumber) {
  addFoundation(manager, "Strip", 1);
  auto* const raft = new Foundation;
  fill(*raft);
  manager.add(raft);
  Foundation wanted;
  fill(wanted);
  wanted.setName("Another");
  wanted.setNumber(99);

  EXPECT_EQ(manager.findFoundation(wanted), raft);
}

TEST_F(ManagerFindByValue, TheFirstOfSeveralWins) {
  manager.add(new Foundation(KvVector3D(9.0, 9.0, 9.0)));
  auto* const first = new Foundation(KvVector3D(1.0, 2.0, 3.0));
  manager.add(first);
  manager.add(new Foundation(KvVector3D(1.0, 2.0, 3.0)));

  EXPECT_EQ(manager.findFoundation(Foundation(KvVector3D(1.0, 2.0, 3.0))), first);
}

TEST_F(ManagerFindByValue, IsNullWhenNothingMatches) {
  EXPECT_EQ(manager.findFoundation(Foundation()), nullptr);

  addFoundation(manager, "Strip", 1);
  EXPECT_EQ(manager.findFoundation(Foundation(KvVector3D(1.0, 2.0, 3.0))), nullptr);
}

TEST_F(ManagerFindByValue, DoesNotFindAFoundationThatDoesNotEqualItself) {
  addFoundation(manager)->setFactorArea(notANumber);

  EXPECT_EQ(manager.findFoundation(*manager.getFoundations()[0]), nullptr);
}

TEST_F(ManagerFindByValue, PassesOverNullEntries) {
  addNull(manager);
  EXPECT_EQ(manager.findFoundation(Foundation()), nullptr);

  Foundation* const a = addFoundation(manager);
  EXPECT_EQ(manager.findFoundation(Foundation()), a);
}

TEST_F(ManagerFindByValue, DoesNotSearchTheRemovedList) {
  const Adopted removed(addFoundation(manager));
  manager.remove(removed.get(), false, true);

  EXPECT_EQ(manager.findFoundation(Foundation()), nullptr);
}

TEST(ManagerFindByName, ComparesTheWholeNameByteForByte) {
  FoundationManager manager;
  Foundation* const beam = addFoundation(manager, "Beam");

  EXPECT_EQ(manager.findFoundation("Beam"), beam);
  for (const char* other : {"beam", "BEAM", "Bea", "Beams", " Beam", "Beam ", "Beam\t", "", "eam"})
    EXPECT_EQ(manager.findFoundation(other), nullptr) << "'" << other << "'";
}

TEST(ManagerFindByName, LooksBehindZeroBytes) {
  FoundationManager manager;
  Foundation* const b = addFoundation(manager, std::string("a\0b", 3));
  Foundation* const c = addFoundation(manager, std::string("a\0c", 3));

  EXPECT_EQ(manager.findFoundation(std::string("a\0b", 3)), b);
  EXPECT_EQ(manager.findFoundation(std::string("a\0c", 3)), c);
  EXPECT_EQ(manager.findFoundation("a"), nullptr);
}

TEST(ManagerFindByName, TellsBytesAboveAsciiApart) {
  FoundationManager manager;
  Foundation* const codePage = addFoundation(manager,
                                             "S\xFC"
                                             "d");
  Foundation* const utf8 = addFoundation(manager,
                                         "S\xC3\xBC"
                                         "d");

  EXPECT_EQ(manager.findFoundation("S\xFC"
                                   "d"),
            codePage);
  EXPECT_EQ(manager.findFoundation("S\xC3\xBC"
                                   "d"),
            utf8);
  EXPECT_EQ(manager.findFoundation("S\xDC"
                                   "d"),
            nullptr);
}

TEST(ManagerFindByName, TheFirstOfSeveralWins) {
  FoundationManager manager;
  addFoundation(manager, "Strip");
  Foundation* const first = addFoundation(manager, "Beam", 1);
  addFoundation(manager, "Beam", 2);

  EXPECT_EQ(manager.findFoundation("Beam"), first);
}

TEST(ManagerFindByName, TheEmptyNameFindsTheFirstWithoutAName) {
  FoundationManager manager;
  addFoundation(manager, "Beam");
  EXPECT_EQ(manager.findFoundation(""), nullptr);

  Foundation* const unnamed = addFoundation(manager);
  addFoundation(manager);
  EXPECT_EQ(manager.findFoundation(""), unnamed);
}

TEST(ManagerFindByName, PassesOverNullEntries) {
  FoundationManager manager;
  addNull(manager);
  EXPECT_EQ(manager.findFoundation(""), nullptr);

  Foundation* const unnamed = addFoundation(manager);
  EXPECT_EQ(manager.findFoundation(""), unnamed);
}

TEST(ManagerFindByName, DoesNotSearchTheRemovedList) {
  FoundationManager manager;
  const Adopted removed(addFoundation(manager, "Beam"));
  manager.remove(removed.get(), false, true);

  EXPECT_EQ(manager.findFoundation("Beam"), nullptr);
}

TEST_F(ManagerWithFoundations, FindByNumberFindsThatNumber) {
  EXPECT_EQ(manager.findFoundation(1), a);
  EXPECT_EQ(manager.findFoundation(2), b);
  EXPECT_EQ(manager.findFoundation(3), c);
  for (const int number : {smallestInt, -1, 0, 4, largestInt})
    EXPECT_EQ(manager.findFoundation(number), nullptr) << number;
}

TEST(ManagerFindByNumber, TheFirstOfSeveralWins) {
  FoundationManager manager;
  addFoundation(manager, "A", 6);
  Foundation* const first = addFoundation(manager, "B", 7);
  addFoundation(manager, "C", 7);

  EXPECT_EQ(manager.findFoundation(7), first);
}

TEST(ManagerFindByNumber, MinusOneFindsTheFirstThatIsNotNumbered) {
  FoundationManager manager;
  addFoundation(manager, "A", 1);
  Foundation* const unnumbered = addFoundation(manager, "B");
  addFoundation(manager, "C");

  EXPECT_EQ(manager.findFoundation(-1), unnumbered);
}

TEST(ManagerFindByNumber, PassesOverNullEntries) {
  FoundationManager manager;
  addNull(manager);
  EXPECT_EQ(manager.findFoundation(-1), nullptr);

  Foundation* const unnumbered = addFoundation(manager);
  EXPECT_EQ(manager.findFoundation(-1), unnumbered);
}

TEST(ManagerFindByNumber, DoesNotSearchTheRemovedList) {
  FoundationManager manager;
  const Adopted removed(addFoundation(manager, "A", 7));
  manager.remove(removed.get(), false, true);

  EXPECT_EQ(manager.findFoundation(7), nullptr);
}

TEST_F(ManagerWithFoundations, TheCurrentFoundationIsStoredWithoutAnyCheck) {
  Foundation elsewhere;

  for (Foundation* const f : {b, &elsewhere, static_cast<Foundation*>(nullptr)}) {
    manager.setCurrentFoundation(f);
    EXPECT_EQ(manager.getCurrentFoundation(), f);
    EXPECT_EQ(manager.getFoundations(), (List{a, b, c}));
  }
}

TEST_F(ManagerWithFoundations, RemovingKeepsTheOrderOfTheOthers) {
  Foundation* const d = addFoundation(manager, "D", 4);

  manager.remove(b, true, false);
  EXPECT_EQ(manager.getFoundations(), (List{a, c, d}));

  manager.remove(a, true, false);
  EXPECT_EQ(manager.getFoundations(), (List{c, d}));

  manager.remove(d, true, false);
  EXPECT_EQ(manager.getFoundations(), List{c});
}

TEST_F(ManagerWithFoundations, RemovedWithoutDeletingOrKeepingItBelongsToTheCaller) {
  const ReleaseLog log({b});

  manager.remove(b, false, false);
  const Adopted adopted(b);

  EXPECT_EQ(stateOf(manager), State({a, c}, {}, nullptr, 0.0, {1, 3}, {"A", "C"}));
  EXPECT_EQ(log.getReleased(), std::vector<int>{});
}

TEST_F(ManagerWithFoundations, RemovedWithDeletingItIsDestroyed) {
  const ReleaseLog log({b});

  manager.remove(b, true, false);

  EXPECT_EQ(stateOf(manager), State({a, c}, {}, nullptr, 0.0, {1, 3}, {"A", "C"}));
  EXPECT_EQ(log.getReleased(), std::vector<int>{0});
}

TEST_F(ManagerWithFoundations, RemovedWithKeepingItGoesOnTheRemovedList) {
  const ReleaseLog log({b});

  manager.remove(b, false, true);
  const Adopted adopted(b);

  EXPECT_EQ(stateOf(manager), State({a, c}, {b}, nullptr, 0.0, {1, 3}, {"A", "C"}));
  EXPECT_EQ(log.getReleased(), std::vector<int>{});
}

TEST_F(ManagerWithFoundations, KeepingWinsOverDeleting) {
  const ReleaseLog log({a});

  manager.remove(a, true, true);
  const Adopted adopted(a);

  EXPECT_EQ(stateOf(manager), State({b, c}, {a}, nullptr, 0.0, {2, 3}, {"B", "C"}));
  EXPECT_EQ(log.getReleased(), std::vector<int>{});
  EXPECT_EQ(a->getName(), "A");
}

TEST_F(ManagerWithFoundations, TheRemovedListIsInTheOrderOfRemoval) {
  manager.remove(c, false, true);
  manager.remove(a, false, true);
  const Adopted adoptedC(c);
  const Adopted adoptedA(a);

  EXPECT_EQ(manager.getRemovedFoundations(), (List{c, a}));
}

TEST_F(ManagerWithFoundations, RemovingTheCurrentFoundationClearsIt) {
  for (const bool keep : {false, true}) {
    for (const bool destroy : {false, true}) {
      auto* const current = new Foundation;
      manager.add(current);
      manager.setCurrentFoundation(current);
      // Whatever survives is deleted at the end.
      Adopted adopted(destroy && !keep ? nullptr : current);

      manager.remove(current, destroy, keep);

      EXPECT_EQ(manager.getCurrentFoundation(), nullptr) << destroy << keep;
    }
  }
}

TEST_F(ManagerWithFoundations, RemovingAnotherFoundationKeepsTheCurrentOne) {
  manager.setCurrentFoundation(b);

  manager.remove(a, true, false);

  EXPECT_EQ(manager.getCurrentFoundation(), b);
}

TEST_F(ManagerWithFoundations, RemovingNeitherRenumbersNorMarks) {
  manager.remove(a, true, false);

  EXPECT_EQ(numbersOf(manager), (std::vector<int>{2, 3}));
  EXPECT_FALSE(b->getChanged());
}

TEST_F(ManagerWithFoundations, RemovingDoesNotAskUsers) {
  Questions questions;
  RecordingUser user("user", questions, {a});
  manager.addUser(&user);

  manager.remove(a, true, false);

  EXPECT_EQ(questions, Questions());
}

TEST_F(ManagerWithFoundations, TheRemovedFoundationItselfStaysAsItWas) {
  fill(*b);

  manager.remove(b, false, true);
  const Adopted adopted(b);

  EXPECT_EQ(recordOf(*b), Record("Raft", 12, false, true, filledValues));
}

TEST_F(ManagerWithFoundations, AFoundationOutsideTheListIsStillPutOnTheRemovedList) {
  Foundation outside;

  manager.remove(&outside, false, true);

  EXPECT_EQ(manager.getFoundations(), (List{a, b, c}));
  EXPECT_EQ(manager.getRemovedFoundations(), List{&outside});
}

TEST_F(ManagerWithFoundations, AFoundationOutsideTheListIsStillDeleted) {
  auto* const outside = new Foundation;
  const ReleaseLog log({outside});

  manager.remove(outside, true, false);

  EXPECT_EQ(log.getReleased(), std::vector<int>{0});
  EXPECT_EQ(manager.getFoundations(), (List{a, b, c}));
}

TEST_F(ManagerWithFoundations, AFoundationOutsideTheListIsStillClearedAsCurrent) {
  Foundation outside;
  manager.setCurrentFoundation(&outside);

  manager.remove(&outside, false, false);

  EXPECT_EQ(manager.getCurrentFoundation(), nullptr);
  EXPECT_EQ(manager.getFoundations(), (List{a, b, c}));
  EXPECT_TRUE(manager.getRemovedFoundations().empty());
}

TEST(ManagerRemove, OfAFoundationListedTwiceTakesTheFirstPlace) {
  FoundationManager manager;
  Foundation* const a = addFoundation(manager);
  Foundation* const b = addFoundation(manager);
  manager.add(a);

  manager.remove(a, false, false);

  EXPECT_EQ(manager.getFoundations(), (List{b, a}));
}

TEST_F(ManagerWithFoundations, RemovingNullTakesTheFirstNullEntry) {
  addNull(manager);
  Foundation* const d = addFoundation(manager);
  addNull(manager);

  manager.remove(nullptr, true, false);

  EXPECT_EQ(manager.getFoundations(), (List{a, b, c, d, nullptr}));
  EXPECT_TRUE(manager.getRemovedFoundations().empty());
}

TEST_F(ManagerWithFoundations, RemovingNullWithKeepingPutsANullEntryOnTheRemovedList) {
  manager.remove(nullptr, true, true);

  EXPECT_EQ(manager.getFoundations(), (List{a, b, c}));
  EXPECT_EQ(manager.getRemovedFoundations(), List{nullptr});
}

TEST_F(ManagerWithFoundations, RemovingNullKeepsTheCurrentFoundation) {
  manager.setCurrentFoundation(b);

  manager.remove(nullptr, false, false);

  EXPECT_EQ(manager.getCurrentFoundation(), b);
}

TEST_F(ManagerWithFoundations, RemovingOutOfMemoryChangesNothing) {
  manager.setCurrentFoundation(b);
  const ReleaseLog log({b});

  EXPECT_TRUE(runsOutOfMemory(1, [&] { manager.remove(b, true, true); }));

  EXPECT_EQ(stateOf(manager), State({a, b, c}, {}, b, 0.0, {1, 2, 3}, {"A", "B", "C"}));
  EXPECT_EQ(log.getReleased(), std::vector<int>{});
}

TEST_F(ManagerWithFoundations, RedoAppendsAtTheEndOfTheLiveList) {
  manager.remove(a, false, true);

  manager.redo(a);

  EXPECT_EQ(manager.getFoundations(), (List{b, c, a}));
  EXPECT_TRUE(manager.getRemovedFoundations().empty());
}

TEST_F(ManagerWithFoundations, RedoKeepsTheOrderOfTheRemovedList) {
  manager.remove(a, false, true);
  manager.remove(b, false, true);
  manager.remove(c, false, true);
  const Adopted adoptedA(a);
  const Adopted adoptedC(c);

  manager.redo(b);

  EXPECT_EQ(manager.getFoundations(), List{b});
  EXPECT_EQ(manager.getRemovedFoundations(), (List{a, c}));
}

TEST_F(ManagerWithFoundations, RedoTakesTheFirstOfTwoPlacesOnTheRemovedList) {
  manager.remove(a, false, true);
  manager.remove(b, false, true);
  manager.remove(a, false, true);
  const Adopted adoptedB(b);

  manager.redo(a);

  EXPECT_EQ(manager.getFoundations(), (List{c, a}));
  EXPECT_EQ(manager.getRemovedFoundations(), (List{b, a}));
}

TEST_F(ManagerWithFoundations, RedoKeepsNameNumberFlagsAndValues) {
  fill(*a);
  manager.remove(a, false, true);

  manager.redo(a);

  EXPECT_EQ(recordOf(*a), Record("Raft", 12, false, true, filledValues));
  EXPECT_EQ(numbersOf(manager), (std::vector<int>{2, 3, 12}));
}

TEST_F(ManagerWithFoundations, RedoDoesNotCheckWhetherTheNameIsStillUnique) {
  manager.remove(a, false, true);
  b->setName("A");

  manager.redo(a);

  EXPECT_EQ(namesOf(manager), (std::vector<std::string>{"A", "C", "A"}));
}

TEST_F(ManagerWithFoundations, RedoDoesNotSetTheCurrentFoundation) {
  manager.setCurrentFoundation(a);
  manager.remove(a, false, true);

  manager.redo(a);

  EXPECT_EQ(manager.getCurrentFoundation(), nullptr);
}

TEST_F(ManagerWithFoundations, RedoKeepsAnotherCurrentFoundation) {
  manager.setCurrentFoundation(b);
  manager.remove(a, false, true);

  manager.redo(a);

  EXPECT_EQ(manager.getCurrentFoundation(), b);
}

TEST_F(ManagerWithFoundations, RedoOfAFoundationThatWasNotRemovedChangesNothing) {
  Foundation outside;
  manager.remove(c, false, true);
  const Adopted adopted(c);
  const State before = stateOf(manager);

  manager.redo(&outside);
  EXPECT_EQ(stateOf(manager), before);

  manager.redo(a);
  EXPECT_EQ(stateOf(manager), before);
}

TEST_F(ManagerWithFoundations, RedoOfNullChangesNothingEvenWhenNullWasRemoved) {
  manager.redo(nullptr);
  EXPECT_EQ(manager.getFoundations(), (List{a, b, c}));

  manager.remove(nullptr, false, true);
  manager.redo(nullptr);
  EXPECT_EQ(manager.getFoundations(), (List{a, b, c}));
  EXPECT_EQ(manager.getRemovedFoundations(), List{nullptr});
}

TEST(ManagerRedo, OutOfMemoryTheFoundationStaysOnTheRemovedList) {
  FoundationManager manager;
  Foundation removed;
  manager.remove(&removed, false, true);

  EXPECT_TRUE(runsOutOfMemory(1, [&] { manager.redo(&removed); }));

  EXPECT_EQ(stateOf(manager), State({}, {&removed}, nullptr, 0.0, {}, {}));
}

}  // namespace
}  // namespace Found::Tests
