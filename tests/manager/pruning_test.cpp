#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "found/foundation_manager.h"
#include "manager/manager_probe.h"
#include "support/allocation_faults.h"

namespace Found::Tests {
namespace {

using Prune = void (FoundationManager::*)();

const struct Pruning {
  const char* name;
  Prune prune;
} prunings[] = {{"removeAllGenerated", &FoundationManager::removeAllGenerated},
                {"removeAllNotUsed", &FoundationManager::removeAllNotUsed},
                {"removeAllNotUsedGenerated", &FoundationManager::removeAllNotUsedGenerated}};

/// Records how many foundations the manager holds while it is asked; says no.
class CountingUser : public FoundationUser {
 public:
  explicit CountingUser(const FoundationManager& asked) : manager(&asked) {}
  bool usesFoundation(const Foundation* /*foundation*/) override {
    sizes.push_back(manager->getFoundations().size());
    return false;
  }
  std::vector<std::size_t> sizes;

 private:
  const FoundationManager* manager;
};

class ManagerPruning : public ::testing::Test {
 protected:
  Questions questions;
  FoundationManager manager;
};

TEST_F(ManagerPruning, AllGeneratedTakesOutTheGeneratedAndKeepsTheOrderOfTheRest) {
  const Adopted a(addGenerated(manager));
  Foundation* const b = addFoundation(manager);
  const Adopted c(addGenerated(manager));
  const Adopted d(addGenerated(manager));
  Foundation* const e = addFoundation(manager);

  manager.removeAllGenerated();

  EXPECT_EQ(manager.getFoundations(), (List{b, e}));
}

TEST_F(ManagerPruning, AllGeneratedTakesOutAFoundationThatIsUsed) {
  const Adopted a(addGenerated(manager));
  RecordingUser user("user", questions, {a.get()});
  manager.addUser(&user);

  manager.removeAllGenerated();

  EXPECT_TRUE(manager.getFoundations().empty());
}

TEST_F(ManagerPruning, AllGeneratedAsksNoUser) {
  const Adopted a(addGenerated(manager));
  addFoundation(manager);
  RecordingUser user("user", questions, {});
  manager.addUser(&user);

  manager.removeAllGenerated();

  EXPECT_EQ(questions, Questions());
}

TEST_F(ManagerPruning, AllGeneratedKeepsAFoundationThatNobodyUses) {
  Foundation* const a = addFoundation(manager);

  manager.removeAllGenerated();

  EXPECT_EQ(manager.getFoundations(), List{a});
}

TEST_F(ManagerPruning, AllGeneratedRenumbersTheRest) {
  addFoundation(manager, "", 5);
  const Adopted b(addGenerated(manager, 9));
  addFoundation(manager, "", 2);
  addFoundation(manager, "", -1);

  manager.removeAllGenerated();

  EXPECT_EQ(numbersOf(manager), (std::vector<int>{1, 2, 3}));
}

TEST_F(ManagerPruning, AllGeneratedRenumbersEvenWhenNothingIsGenerated) {
  addFoundation(manager, "", 5);
  addFoundation(manager, "", 9);

  manager.removeAllGenerated();

  EXPECT_EQ(numbersOf(manager), (std::vector<int>{1, 2}));
}

TEST_F(ManagerPruning, AllNotUsedTakesOutTheUnusedAndKeepsTheOrderOfTheRest) {
  const Adopted a(addFoundation(manager));
  Foundation* const b = addFoundation(manager);
  const Adopted c(addFoundation(manager));
  Foundation* const d = addFoundation(manager);
  RecordingUser first("first", questions, {d});
  RecordingUser second("second", questions, {b});
  manager.addUser(&first);
  manager.addUser(&second);

  manager.removeAllNotUsed();

  EXPECT_EQ(manager.getFoundations(), (List{b, d}));
}

TEST_F(ManagerPruning, AllNotUsedDoesNotLookAtGenerated) {
  Foundation* const a = addGenerated(manager);
  const Adopted b(addFoundation(manager));
  const Adopted c(addGenerated(manager));
  RecordingUser user("user", questions, {a});
  manager.addUser(&user);

  manager.removeAllNotUsed();

  EXPECT_EQ(manager.getFoundations(), List{a});
}

TEST_F(ManagerPruning, AllNotUsedAsksInOrderUntilTheFirstYes) {
  Foundation* const a = addFoundation(manager);
  const Adopted b(addFoundation(manager));
  RecordingUser first("first", questions, {a});
  RecordingUser second("second", questions, {});
  manager.addUser(&first);
  manager.addUser(&second);

  manager.removeAllNotUsed();

  EXPECT_EQ(questions, (Questions{{"first", a}, {"first", b.get()}, {"second", b.get()}}));
}

TEST_F(ManagerPruning, AllNotUsedKeepsTheNumbersGapsIncluded) {
  Foundation* const a = addFoundation(manager, "", 1);
  const Adopted b(addFoundation(manager, "", 2));
  Foundation* const c = addFoundation(manager, "", 3);
  RecordingUser user("user", questions, {a, c});
  manager.addUser(&user);

  manager.removeAllNotUsed();

  EXPECT_EQ(numbersOf(manager), (std::vector<int>{1, 3}));
}

TEST_F(ManagerPruning, AllNotUsedKeepsTheNumbersWhenEverythingIsUsed) {
  Foundation* const a = addFoundation(manager, "", 5);
  Foundation* const b = addFoundation(manager, "", -1);
  RecordingUser user("user", questions, {a, b});
  manager.addUser(&user);

  manager.removeAllNotUsed();

  EXPECT_EQ(numbersOf(manager), (std::vector<int>{5, -1}));
}

TEST_F(ManagerPruning, AllNotUsedWithoutUsersEmptiesTheListAndClearsTheCurrentFoundation) {
  const Adopted a(addFoundation(manager));
  const Adopted b(addGenerated(manager));
  manager.setCurrentFoundation(a.get());

  manager.removeAllNotUsed();

  EXPECT_TRUE(manager.getFoundations().empty());
  EXPECT_EQ(manager.getCurrentFoundation(), nullptr);
}

TEST_F(ManagerPruning, AllNotUsedWithNullUsersOnlyIsAsWithoutUsers) {
  const Adopted a(addFoundation(manager));
  manager.addUser(nullptr);

  manager.removeAllNotUsed();

  EXPECT_TRUE(manager.getFoundations().empty());
}

TEST_F(ManagerPruning, NotUsedGeneratedTakesOutWhatIsGeneratedAndUnused) {
  Foundation* const usedGenerated = addGenerated(manager);
  const Adopted unusedGenerated(addGenerated(manager));
  Foundation* const used = addFoundation(manager);
  Foundation* const unused = addFoundation(manager);
  RecordingUser user("user", questions, {usedGenerated, used});
  manager.addUser(&user);

  manager.removeAllNotUsedGenerated();

  EXPECT_EQ(manager.getFoundations(), (List{usedGenerated, used, unused}));
}

TEST_F(ManagerPruning, NotUsedGeneratedAsksAboutGeneratedFoundationsOnlyUntilTheFirstYes) {
  addFoundation(manager);
  Foundation* const used = addGenerated(manager);
  addFoundation(manager);
  const Adopted unused(addGenerated(manager));
  RecordingUser first("first", questions, {used});
  RecordingUser second("second", questions, {});
  manager.addUser(&first);
  manager.addUser(&second);

  manager.removeAllNotUsedGenerated();

  EXPECT_EQ(questions,
            (Questions{{"first", used}, {"first", unused.get()}, {"second", unused.get()}}));
}

TEST_F(ManagerPruning, NotUsedGeneratedWithoutUsersTakesOutExactlyTheGenerated) {
  Foundation* const a = addFoundation(manager);
  const Adopted b(addGenerated(manager));
  Foundation* const c = addFoundation(manager);

  manager.removeAllNotUsedGenerated();

  EXPECT_EQ(manager.getFoundations(), (List{a, c}));
}

TEST_F(ManagerPruning, NotUsedGeneratedRenumbersTheRest) {
  Foundation* const a = addFoundation(manager, "", 1);
  const Adopted b(addGenerated(manager, 2));
  Foundation* const c = addFoundation(manager, "", 3);
  RecordingUser user("user", questions, {a, c});
  manager.addUser(&user);

  manager.removeAllNotUsedGenerated();

  EXPECT_EQ(numbersOf(manager), (std::vector<int>{1, 2}));
}

TEST_F(ManagerPruning, NotUsedGeneratedRenumbersEvenWhenNothingIsTakenOut) {
  addFoundation(manager, "", 9);
  addFoundation(manager, "", -1);
  addFoundation(manager, "", 2);

  manager.removeAllNotUsedGenerated();

  EXPECT_EQ(numbersOf(manager), (std::vector<int>{1, 2, 3}));
}

TEST_F(ManagerPruning, RenumberingLeavesNamesFlagsAndValuesAlone) {
  for (const Prune prune :
       {&FoundationManager::removeAllGenerated, &FoundationManager::removeAllNotUsedGenerated}) {
    FoundationManager renumbered;
    auto* const f = new Foundation;
    fill(*f);
    f->setGenerated(false);
    f->setName("Found0007");
    renumbered.add(f);

    (renumbered.*prune)();

    EXPECT_EQ(recordOf(*f), Record("Found0007", 1, false, false, filledValues));
  }
}

TEST_F(ManagerPruning, RenumberingLeavesTheRemovedListAlone) {
  for (const Prune prune :
       {&FoundationManager::removeAllGenerated, &FoundationManager::removeAllNotUsedGenerated}) {
    FoundationManager renumbered;
    Foundation removed;
    removed.setNumber(9);
    renumbered.remove(&removed, false, true);
    addFoundation(renumbered, "", 5);

    (renumbered.*prune)();

    EXPECT_EQ(removed.getNumber(), 9);
  }
}

TEST_F(ManagerPruning, WhatIsTakenOutIsNeitherDeletedNorPutOnTheRemovedListNorChanged) {
  for (const Pruning& row : prunings) {
    FoundationManager pruned;
    const Adopted f(new Foundation);
    fill(*f);
    pruned.add(f.get());
    const ReleaseLog log({f.get()});

    (pruned.*row.prune)();

    EXPECT_TRUE(pruned.getFoundations().empty()) << row.name;
    EXPECT_TRUE(pruned.getRemovedFoundations().empty()) << row.name;
    EXPECT_EQ(log.getReleased(), std::vector<int>{}) << row.name;
    EXPECT_EQ(recordOf(*f), Record("Raft", 12, false, true, filledValues)) << row.name;
  }
}

TEST_F(ManagerPruning, RedoCannotBringBackWhatWasTakenOut) {
  for (const Pruning& row : prunings) {
    FoundationManager pruned;
    const Adopted f(addGenerated(pruned));
    (pruned.*row.prune)();

    pruned.redo(f.get());

    EXPECT_TRUE(pruned.getFoundations().empty()) << row.name;
  }
}

TEST_F(ManagerPruning, ACurrentFoundationThatIsTakenOutIsCleared) {
  for (const Pruning& row : prunings) {
    FoundationManager pruned;
    const Adopted a(addGenerated(pruned));
    const Adopted b(addGenerated(pruned));
    for (const Adopted* current : {&a, &b}) {
      pruned.setCurrentFoundation(current->get());
      (pruned.*row.prune)();
      EXPECT_EQ(pruned.getCurrentFoundation(), nullptr) << row.name;

      pruned.add(a.get());
      pruned.add(b.get());
    }
    (pruned.*row.prune)();
  }
}

TEST_F(ManagerPruning, ACurrentFoundationThatIsNotTakenOutStays) {
  for (const Pruning& row : prunings) {
    FoundationManager pruned;
    const Adopted a(addGenerated(pruned));
    Foundation* const current = addFoundation(pruned);
    RecordingUser user("user", questions, {current});
    pruned.addUser(&user);
    pruned.setCurrentFoundation(current);

    (pruned.*row.prune)();

    EXPECT_EQ(pruned.getCurrentFoundation(), current) << row.name;
    EXPECT_EQ(pruned.getFoundations(), List{current}) << row.name;
  }
}

TEST_F(ManagerPruning, AnEmptyListChangesNothingNotEvenTheCurrentFoundation) {
  for (const Pruning& row : prunings) {
    FoundationManager pruned;
    Foundation current;
    Foundation removed;
    current.setGenerated(true);
    removed.setGenerated(true);
    pruned.remove(&removed, false, true);
    pruned.setCurrentFoundation(&current);
    pruned.setMaxFoundationValue(7.0);

    (pruned.*row.prune)();

    EXPECT_EQ(stateOf(pruned), State({}, {&removed}, &current, 7.0, {}, {})) << row.name;
  }
}

TEST_F(ManagerPruning, UsersRemovedListAndMaximumStay) {
  for (const Pruning& row : prunings) {
    FoundationManager pruned;
    Foundation used;
    Foundation removed;
    removed.setGenerated(true);
    RecordingUser user("user", questions, {&used});
    pruned.addUser(&user);
    pruned.remove(&removed, false, true);
    pruned.setMaxFoundationValue(7.0);
    const Adopted a(addGenerated(pruned));

    (pruned.*row.prune)();

    EXPECT_EQ(stateOf(pruned), State({}, {&removed}, nullptr, 7.0, {}, {})) << row.name;
    EXPECT_TRUE(pruned.checkUsed(&used)) << row.name;
  }
}

TEST_F(ManagerPruning, EveryUserSeesTheWholeList) {
  for (const Prune prune :
       {&FoundationManager::removeAllNotUsed, &FoundationManager::removeAllNotUsedGenerated}) {
    FoundationManager pruned;
    const Adopted a(addGenerated(pruned));
    const Adopted b(addGenerated(pruned));
    const Adopted c(addGenerated(pruned));
    CountingUser user(pruned);
    pruned.addUser(&user);

    (pruned.*prune)();

    EXPECT_EQ(user.sizes, (std::vector<std::size_t>{3, 3, 3}));
    EXPECT_TRUE(pruned.getFoundations().empty());
  }
}

TEST_F(ManagerPruning, NullEntriesArePassedOverAndNeverAskedAbout) {
  for (const Pruning& row : prunings) {
    FoundationManager pruned;
    addNull(pruned);
    const Adopted a(addGenerated(pruned, 4));
    Foundation* const b = addFoundation(pruned, "", 1);
    addNull(pruned);
    questions.clear();
    RecordingUser user("user", questions, {b});
    pruned.addUser(&user);

    (pruned.*row.prune)();

    EXPECT_EQ(pruned.getFoundations(), (List{nullptr, b, nullptr})) << row.name;
    EXPECT_EQ(numbersOf(pruned), std::vector<int>{1}) << row.name;
    for (const auto& question : questions) EXPECT_NE(question.second, nullptr) << row.name;
  }
}

TEST_F(ManagerPruning, AFoundationListedTwiceIsTakenOutTwice) {
  for (const Pruning& row : prunings) {
    FoundationManager pruned;
    const Adopted a(addGenerated(pruned));
    Foundation* const b = addFoundation(pruned);
    pruned.add(a.get());
    RecordingUser user("user", questions, {b});
    pruned.addUser(&user);

    (pruned.*row.prune)();

    EXPECT_EQ(pruned.getFoundations(), List{b}) << row.name;
  }
}

TEST_F(ManagerPruning, AFoundationListedTwiceAndSelectedOnceLosesItsFirstPlace) {
  // Says no to the first question and yes to all others.
  struct SlowUser : FoundationUser {
    bool usesFoundation(const Foundation* /*foundation*/) override { return ++asked > 1; }
    int asked = 0;
  } user;
  Foundation* const a = addFoundation(manager);
  Foundation* const b = addFoundation(manager);
  manager.add(a);
  manager.addUser(&user);

  manager.removeAllNotUsed();

  EXPECT_EQ(manager.getFoundations(), (List{b, a}));
}

TEST_F(ManagerPruning, AUserThatThrowsLeavesListCurrentAndNumbersAlone) {
  for (const Prune prune :
       {&FoundationManager::removeAllNotUsed, &FoundationManager::removeAllNotUsedGenerated}) {
    for (const std::size_t place : {0u, 1u, 2u}) {
      FoundationManager pruned;
      addGenerated(pruned, 5);
      addGenerated(pruned, 9);
      addGenerated(pruned, 2);
      const List listed = pruned.getFoundations();
      pruned.setCurrentFoundation(listed[0]);
      ThrowingUser user(listed[place]);
      pruned.addUser(&user);

      EXPECT_THROW((pruned.*prune)(), NoAnswer);

      EXPECT_EQ(stateOf(pruned), State(listed, {}, listed[0], 0.0, {5, 9, 2}, {"", "", ""}))
          << "throws at " << place;
    }
  }
}

TEST_F(ManagerPruning, AUserThatThrewDoesNotHinderTheNextPruning) {
  const Adopted a(addGenerated(manager, 5));
  Foundation* const b = addFoundation(manager, "B", 9);
  ThrowingUser user(b);
  RecordingUser other("other", questions, {b});
  manager.addUser(&user);
  manager.addUser(&other);
  EXPECT_THROW(manager.removeAllNotUsed(), NoAnswer);

  manager.removeUser(&user);
  manager.removeAllNotUsed();

  EXPECT_EQ(manager.getFoundations(), List{b});
  EXPECT_EQ(numbersOf(manager), std::vector<int>{9});
}

TEST_F(ManagerPruning, OutOfMemoryListCurrentAndNumbersStay) {
  for (const Pruning& row : prunings) {
    for (int failing = 1;; ++failing) {
      FoundationManager pruned;
      addGenerated(pruned, 5);
      addGenerated(pruned, 9);
      addFoundation(pruned, "", 7);
      addGenerated(pruned, 2);
      const List listed = pruned.getFoundations();
      Foundation* const kept = listed[2];
      RecordingUser user("user", questions, {kept});
      questions.reserve(questions.size() + 8);  // so that the user itself needs no memory
      pruned.addUser(&user);
      pruned.setCurrentFoundation(listed[0]);

      if (!runsOutOfMemory(failing, [&] { (pruned.*row.prune)(); })) {
        EXPECT_GT(failing, 1) << row.name;
        EXPECT_EQ(pruned.getFoundations(), List{kept}) << row.name;
        for (Foundation* f : listed)
          if (f != kept) delete f;
        break;
      }

      EXPECT_EQ(stateOf(pruned), State(listed, {}, listed[0], 0.0, {5, 9, 7, 2}, {"", "", "", ""}))
          << row.name << ", allocation " << failing;
    }
  }
}

}  // namespace
}  // namespace Found::Tests
