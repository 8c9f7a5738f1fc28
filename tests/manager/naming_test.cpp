#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "found/foundation_manager.h"
#include "manager/manager_probe.h"
#include "support/allocation_faults.h"
#include "support/comma_locale.h"

namespace Found::Tests {
namespace {

using Names = std::vector<std::string>;
using Numbers = std::vector<int>;

/// Runs `task` on a stack of 256 KiB, where a call for each of thousands of names does not fit.
void runOnSmallStack(std::function<void()> task) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{256} * 1024), 0);
  pthread_t thread{};
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &task), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST(ManagerDefaultName, HasAtLeastFourDigitsFilledUpWithZeros) {
  const struct {
    int number;
    const char* expected;
  } rows[] = {{0, "Found0000"},
              {1, "Found0001"},
              {9, "Found0009"},
              {10, "Found0010"},
              {37, "Found0037"},
              {999, "Found0999"},
              {1000, "Found1000"},
              {1234, "Found1234"},
              {9999, "Found9999"},
              {10000, "Found10000"},
              {12345, "Found12345"},
              {1234567, "Found1234567"},
              {largestInt, "Found2147483647"}};
  const FoundationManager manager;
  for (const auto& row : rows)
    EXPECT_EQ(manager.giveNextFoundationName(row.number), row.expected) << row.number;
}

TEST(ManagerDefaultName, ZerosStandBeforeTheSignOfANegativeNumber) {
  const struct {
    int number;
    const char* expected;
  } rows[] = {{-1, "Found00-1"},
              {-5, "Found00-5"},
              {-10, "Found0-10"},
              {-999, "Found-999"},
              {-1000, "Found-1000"},
              {-12345, "Found-12345"},
              {smallestInt, "Found-2147483648"}};
  const FoundationManager manager;
  for (const auto& row : rows)
    EXPECT_EQ(manager.giveNextFoundationName(row.number), row.expected) << row.number;
}

TEST(ManagerDefaultName, IsTheSameUnderALocaleThatGroupsDigits) {
  const TestSupport::CommaLocale locale;
  std::ostringstream grouped;
  grouped << 12345;
  ASSERT_EQ(grouped.str(), "12.345");
  FoundationManager manager;

  EXPECT_EQ(manager.giveNextFoundationName(12345), "Found12345");
  EXPECT_EQ(manager.giveNextFoundationName(1000), "Found1000");
  EXPECT_EQ(manager.giveNextFoundationName(-12345), "Found-12345");

  addFoundation(manager, "Strip", 1234566);
  EXPECT_EQ(manager.giveFoundation(Foundation(), false)->getName(), "Found1234567");
}

TEST(ManagerNextName, StartsAtTheStartWhenThatIsGreaterThanEveryNumber) {
  FoundationManager manager;
  addFoundation(manager, "Strip", 7);

  EXPECT_EQ(manager.giveNextFoundationName(8), "Found0008");
  EXPECT_EQ(manager.giveNextFoundationName(100), "Found0100");
}

TEST(ManagerNextName, StartsAtTheHighestNumberItselfWhenThatIsGreater) {
  FoundationManager manager;
  addFoundation(manager, "Strip", 3);
  addFoundation(manager, "Raft", 7);
  addFoundation(manager, "Pile", 5);

  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0007");
  EXPECT_EQ(manager.giveNextFoundationName(7), "Found0007");
}

TEST(ManagerNextName, CountsUpFromATakenName) {
  FoundationManager manager;
  addFoundation(manager, "Found0009");
  addFoundation(manager, "Found0007", 7);
  addFoundation(manager, "Found0008");

  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0010");
}

TEST(ManagerNextName, TakesTheFirstGap) {
  FoundationManager manager;
  addFoundation(manager, "Found0001");
  addFoundation(manager, "Found0002");
  addFoundation(manager, "Found0004");

  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0003");
}

TEST(ManagerNextName, DoesNotGoBackToNamesBelow) {
  FoundationManager manager;
  addFoundation(manager, "Found0007", 7);

  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0008");
}

TEST(ManagerNextName, CountsFromNegativeThroughZero) {
  FoundationManager manager;
  addFoundation(manager, "Found00-1");
  EXPECT_EQ(manager.giveNextFoundationName(-5), "Found0000");

  addFoundation(manager, "Found0000");
  EXPECT_EQ(manager.giveNextFoundationName(-5), "Found0001");
}

TEST(ManagerNextName, FoundationsThatAreNotNumberedCountAsMinusOne) {
  FoundationManager manager;
  addFoundation(manager, "Strip");

  EXPECT_EQ(manager.giveNextFoundationName(-5), "Found00-1");
  EXPECT_EQ(manager.giveNextFoundationName(-1), "Found00-1");
  EXPECT_EQ(manager.giveNextFoundationName(0), "Found0000");
}

TEST(ManagerNextName, GoesOnBehindTheLargestInt) {
  FoundationManager manager;
  addFoundation(manager, "Found2147483647", largestInt);
  EXPECT_EQ(manager.giveNextFoundationName(0), "Found2147483648");

  addFoundation(manager, "Found2147483648");
  EXPECT_EQ(manager.giveNextFoundationName(largestInt), "Found2147483649");
}

TEST(ManagerNextName, ANameInAnotherLetterCaseIsAnotherName) {
  FoundationManager manager;
  addFoundation(manager, "found0001");
  addFoundation(manager, "FOUND0001");

  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0001");
}

TEST(ManagerNextName, ALongerOrShorterNameIsAnotherName) {
  FoundationManager manager;
  for (const char* name : {"Found0001 ", " Found0001", "Found00011", "Found000", "Found1"})
    addFoundation(manager, name);
  addFoundation(manager, std::string("Found0001\0", 10));

  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0001");
}

TEST(ManagerNextName, DoesNotLookAtTheRemovedList) {
  FoundationManager manager;
  Foundation removed;
  removed.setName("Found0001");
  removed.setNumber(9);
  manager.remove(&removed, false, true);

  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0001");
}

TEST(ManagerNextName, PassesOverNullEntries) {
  FoundationManager manager;
  addNull(manager);
  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0001");

  addFoundation(manager, "Found0003", 3);
  addNull(manager);
  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0004");
}

TEST(ManagerNextName, ChangesNothing) {
  FoundationManager manager;
  Foundation removed;
  Foundation* const a = addFoundation(manager, "Found0005", 5);
  manager.remove(&removed, false, true);
  manager.setCurrentFoundation(a);
  manager.setMaxFoundationValue(7.0);

  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0006");
  EXPECT_EQ(manager.giveNextFoundationName(1), "Found0006");

  EXPECT_EQ(stateOf(manager), State({a}, {&removed}, a, 7.0, {5}, {"Found0005"}));
}

TEST(ManagerNextName, TwentyThousandTakenNamesInARowArePassedOverWithoutDeepRecursion) {
  FoundationManager manager;
  for (int number = 1; number <= 20000; ++number) {
    std::string digits = std::to_string(number);
    while (digits.size() < 4) digits.insert(0, "0");
    addFoundation(manager, "Found" + digits);
  }
  ASSERT_EQ(manager.getFoundations().back()->getName(), "Found20000");
  std::string name;

  runOnSmallStack([&] { name = manager.giveNextFoundationName(1); });

  EXPECT_EQ(name, "Found20001");
}

TEST(ManagerNextName, OutOfMemoryNothingChanges) {
  FoundationManager manager;
  addFoundation(manager, "Found2147483647", largestInt);
  std::string name;

  int failures = 0;
  while (runsOutOfMemory(failures + 1, [&] { name = manager.giveNextFoundationName(0); })) {
    ++failures;
    EXPECT_EQ(namesOf(manager), Names{"Found2147483647"});
  }

  EXPECT_EQ(name, "Found2147483648");
}

class ManagerGiveByValue : public ::testing::Test {
 protected:
  FoundationManager manager;
};

TEST_F(ManagerGiveByValue, AnEmptyManagerCreatesNumberOneWithADefaultName) {
  for (const bool findEqual : {false, true}) {
    FoundationManager empty;

    Foundation* const given = empty.giveFoundation(Foundation(), findEqual);

    EXPECT_EQ(stateOf(empty), State({given}, {}, nullptr, 0.0, {1}, {"Found0001"})) << findEqual;
  }
}

TEST_F(ManagerGiveByValue, TheSameValuesTwiceAreOneFoundationWhenEqualOnesAreLookedFor) {
  const Foundation wanted(KvVector3D(1.0, 2.0, 3.0));
  Foundation* const first = manager.giveFoundation(wanted, true);

  EXPECT_EQ(manager.giveFoundation(wanted, true), first);

  EXPECT_EQ(namesOf(manager), Names{"Found0001"});
  EXPECT_EQ(numbersOf(manager), Numbers{1});
}

TEST_F(ManagerGiveByValue, TheSameValuesTwiceAreTwoFoundationsOtherwise) {
  const Foundation wanted(KvVector3D(1.0, 2.0, 3.0));
  Foundation* const first = manager.giveFoundation(wanted, false);

  Foundation* const second = manager.giveFoundation(wanted, false);

  EXPECT_EQ(manager.getFoundations(), (List{first, second}));
  EXPECT_EQ(namesOf(manager), (Names{"Found0001", "Found0002"}));
  EXPECT_EQ(numbersOf(manager), (Numbers{1, 2}));
}

TEST_F(ManagerGiveByValue, TheFirstEqualFoundationIsReturnedUnchanged) {
  addFoundation(manager, "Strip", 1);
  auto* const first = new Foundation;
  fill(*first);
  manager.add(first);
  auto* const second = new Foundation;
  fill(*second);
  manager.add(second);
  Foundation wanted;
  fill(wanted);
  wanted.setName("Wanted");
  wanted.setNumber(99);
  wanted.setGenerated(false);
  wanted.setChanged(true);

  EXPECT_EQ(manager.giveFoundation(wanted, true), first);

  EXPECT_EQ(recordOf(*first), Record("Raft", 12, false, true, filledValues));
  EXPECT_EQ(manager.getFoundations().size(), 3u);
}

TEST_F(ManagerGiveByValue, AnEqualFoundationWithoutANameStaysWithoutOne) {
  Foundation* const listed = addFoundation(manager);

  EXPECT_EQ(manager.giveFoundation(Foundation(), true), listed);

  EXPECT_EQ(recordOf(*listed), Record("", -1, false, false, noValues));
}

TEST_F(ManagerGiveByValue, TheNewFoundationIsACopyInEverythingButTheNumber) {
  for (const bool changed : {false, true}) {
    for (const bool generated : {false, true}) {
      FoundationManager empty;
      Foundation wanted;
      fill(wanted);
      wanted.setChanged(changed);
      wanted.setGenerated(generated);

      Foundation* const given = empty.giveFoundation(wanted, true);

      EXPECT_NE(given, &wanted);
      EXPECT_EQ(recordOf(*given), Record("Raft", 1, changed, generated, filledValues));
    }
  }
}

TEST_F(ManagerGiveByValue, NamingDoesNotMarkAsChanged) {
  EXPECT_FALSE(manager.giveFoundation(Foundation(), false)->getChanged());
}

TEST_F(ManagerGiveByValue, TheTemplateStaysAsItWas) {
  Foundation wanted;
  fill(wanted);
  wanted.setName("");

  manager.giveFoundation(wanted, false);

  EXPECT_EQ(recordOf(wanted), Record("", 12, false, true, filledValues));
}

TEST_F(ManagerGiveByValue, TheTemplateMayBeAListedFoundation) {
  auto* const listed = new Foundation;
  fill(*listed);
  manager.add(listed);

  EXPECT_EQ(manager.giveFoundation(*listed, true), listed);

  Foundation* const given = manager.giveFoundation(*listed, false);
  EXPECT_EQ(manager.getFoundations(), (List{listed, given}));
  EXPECT_EQ(recordOf(*given), Record("Raft", 13, false, true, filledValues));
}

TEST_F(ManagerGiveByValue, TheNewFoundationIsAppendedAndNumberedAboveTheHighest) {
  Foundation* const a = addFoundation(manager, "A", 5);
  Foundation* const b = addFoundation(manager, "B", 9);
  Foundation* const c = addFoundation(manager, "C", 2);

  Foundation* const given = manager.giveFoundation(Foundation(), false);

  EXPECT_EQ(manager.getFoundations(), (List{a, b, c, given}));
  EXPECT_EQ(numbersOf(manager), (Numbers{5, 9, 2, 10}));
  EXPECT_EQ(given->getName(), "Found0010");
}

TEST_F(ManagerGiveByValue, NumbersOfZeroAndBelowDoNotCount) {
  for (const int number : {smallestInt, -7, -1, 0}) {
    FoundationManager unnumbered;
    addFoundation(unnumbered, "A", number);

    Foundation* const given = unnumbered.giveFoundation(Foundation(), false);

    EXPECT_EQ(given->getNumber(), 1) << number;
    EXPECT_EQ(given->getName(), "Found0001") << number;
  }
}

TEST_F(ManagerGiveByValue, TheTemplatesOwnNumberDoesNotCount) {
  Foundation wanted;
  wanted.setNumber(99);

  EXPECT_EQ(manager.giveFoundation(wanted, false)->getNumber(), 1);
}

TEST_F(ManagerGiveByValue, ATakenDefaultNameIsPassedOverWithoutTouchingTheNumber) {
  addFoundation(manager, "Found0002", 1);

  Foundation* const given = manager.giveFoundation(Foundation(), false);

  EXPECT_EQ(given->getNumber(), 2);
  EXPECT_EQ(given->getName(), "Found0003");
}

TEST_F(ManagerGiveByValue, SkippedNumbersAreNotRemembered) {
  addFoundation(manager, "Found0002", 1);
  manager.giveFoundation(Foundation(), false);

  Foundation* const next = manager.giveFoundation(Foundation(), false);

  EXPECT_EQ(next->getNumber(), 3);
  EXPECT_EQ(next->getName(), "Found0004");
}

TEST_F(ManagerGiveByValue, AGivenNameIsTakenOverEvenWhenItIsTaken) {
  addFoundation(manager, "A", 1);
  Foundation wanted(KvVector3D(1.0, 2.0, 3.0));
  wanted.setName("A");

  Foundation* const given = manager.giveFoundation(wanted, true);

  EXPECT_EQ(namesOf(manager), (Names{"A", "A"}));
  EXPECT_EQ(given->getNumber(), 2);
}

TEST_F(ManagerGiveByValue, AnEqualNameAloneIsNoMatch) {
  Foundation* const listed = addFoundation(manager, "A", 1);
  Foundation wanted;
  wanted.setName("A");
  wanted.setFactorArea(0.5);

  EXPECT_NE(manager.giveFoundation(wanted, true), listed);
}

TEST_F(ManagerGiveByValue, ValuesThatNeverCompareEqualAlwaysCreate) {
  Foundation wanted;
  wanted.setFactorArea(notANumber);

  Foundation* const first = manager.giveFoundation(wanted, true);

  EXPECT_NE(manager.giveFoundation(wanted, true), first);
}

TEST_F(ManagerGiveByValue, BehindTheLargestIntTheNumberIsGivenAgainAndTheNameCountsOn) {
  addFoundation(manager, "Strip", largestInt - 1);

  Foundation* const first = manager.giveFoundation(Foundation(), false);
  Foundation* const second = manager.giveFoundation(Foundation(), false);
  Foundation* const third = manager.giveFoundation(Foundation(), false);

  EXPECT_EQ(numbersOf(manager), (Numbers{largestInt - 1, largestInt, largestInt, largestInt}));
  EXPECT_EQ(first->getName(), "Found2147483647");
  EXPECT_EQ(second->getName(), "Found2147483648");
  EXPECT_EQ(third->getName(), "Found2147483649");
}

TEST_F(ManagerGiveByValue, PassesOverNullEntries) {
  addNull(manager);
  Foundation* const listed = addFoundation(manager, "A", 4);
  addNull(manager);

  EXPECT_EQ(manager.giveFoundation(Foundation(), true), listed);
  EXPECT_EQ(manager.giveFoundation(Foundation(), false)->getNumber(), 5);
  EXPECT_EQ(manager.getFoundations().size(), 4u);
}

TEST_F(ManagerGiveByValue, NeitherReadsNorChangesRemovedListUsersCurrentAndMaximum) {
  Questions questions;
  Foundation removed;
  Foundation current;
  removed.setName("Found0001");
  removed.setNumber(9);
  RecordingUser user("user", questions, {&current});
  manager.remove(&removed, false, true);
  manager.setCurrentFoundation(&current);
  manager.setMaxFoundationValue(7.0);
  manager.addUser(&user);

  Foundation* const given = manager.giveFoundation(Foundation(), true);

  EXPECT_EQ(questions, Questions());
  EXPECT_EQ(stateOf(manager), State({given}, {&removed}, &current, 7.0, {1}, {"Found0001"}));
  EXPECT_TRUE(manager.checkUsed(&current));
}

TEST_F(ManagerGiveByValue, ADefaultNameHandedOutAgainMeetsItsFormerOwnerAfterRedo) {
  Foundation* const former = manager.giveFoundation(Foundation(), false);
  manager.remove(former, false, true);
  manager.giveFoundation(Foundation(), false);

  manager.redo(former);

  EXPECT_EQ(namesOf(manager), (Names{"Found0001", "Found0001"}));
}

TEST_F(ManagerGiveByValue, OutOfMemoryTheListStaysAndNothingIsLeftBehind) {
  Foundation wanted;
  fill(wanted);
  wanted.setName("");
  Foundation* const listed = addFoundation(manager, "Found2147483647", largestInt);
  const long before = countLiveBlocks();

  int failures = 0;
  while (runsOutOfMemory(failures + 1, [&] { manager.giveFoundation(wanted, true); })) {
    ++failures;
    ASSERT_EQ(manager.getFoundations(), List{listed}) << "allocation " << failures;
    ASSERT_EQ(countLiveBlocks(), before) << "allocation " << failures;
  }

  // The foundation, its three vectors and the place in the list at least.
  EXPECT_GE(failures, 5);
  EXPECT_EQ(namesOf(manager), (Names{"Found2147483647", "Found2147483648"}));
}

TEST(ManagerGiveByName, AFoundationOfThatNameIsReturnedUnchanged) {
  FoundationManager manager;
  addFoundation(manager, "Strip", 1);
  auto* const raft = new Foundation;
  fill(*raft);
  manager.add(raft);

  EXPECT_EQ(manager.giveFoundation("Raft"), raft);

  EXPECT_EQ(recordOf(*raft), Record("Raft", 12, false, true, filledValues));
  EXPECT_EQ(manager.getFoundations().size(), 2u);
}

TEST(ManagerGiveByName, TheFirstOfSeveralWins) {
  FoundationManager manager;
  Foundation* const first = addFoundation(manager, "A", 1);
  addFoundation(manager, "A", 2);

  EXPECT_EQ(manager.giveFoundation("A"), first);
}

TEST(ManagerGiveByName, ANewFoundationHasNothingButNameAndNumber) {
  FoundationManager manager;
  Foundation* const a = addFoundation(manager, "A", 7);

  Foundation* const given = manager.giveFoundation("B");

  EXPECT_EQ(manager.getFoundations(), (List{a, given}));
  EXPECT_EQ(recordOf(*given), Record("B", 8, false, false, noValues));
}

TEST(ManagerGiveByName, AnEmptyManagerCreatesNumberOne) {
  FoundationManager manager;

  EXPECT_EQ(manager.giveFoundation("A")->getNumber(), 1);
}

TEST(ManagerGiveByName, NumbersOfZeroAndBelowDoNotCount) {
  for (const int number : {smallestInt, -7, -1, 0}) {
    FoundationManager manager;
    addFoundation(manager, "A", number);
    EXPECT_EQ(manager.giveFoundation("B")->getNumber(), 1) << number;
  }
}

TEST(ManagerGiveByName, ANameInAnotherLetterCaseOrWithSpacesIsAnotherName) {
  FoundationManager manager;
  Foundation* const beam = addFoundation(manager, "Beam", 1);

  for (const char* name : {"beam", "Beam ", " Beam"}) {
    Foundation* const given = manager.giveFoundation(name);
    EXPECT_NE(given, beam) << name;
    EXPECT_EQ(given->getName(), name);
  }
}

TEST(ManagerGiveByName, AnEmptyNameFindsTheFirstWithoutAName) {
  FoundationManager manager;
  addFoundation(manager, "A", 1);
  Foundation* const unnamed = addFoundation(manager, "", 2);

  EXPECT_EQ(manager.giveFoundation(""), unnamed);
}

TEST(ManagerGiveByName, AnEmptyNameStaysEmpty) {
  FoundationManager manager;
  addFoundation(manager, "A", 1);

  Foundation* const given = manager.giveFoundation("");

  EXPECT_EQ(recordOf(*given), Record("", 2, false, false, noValues));
}

TEST(ManagerGiveByName, BehindTheLargestIntTheNumberIsGivenAgain) {
  FoundationManager manager;
  addFoundation(manager, "A", largestInt - 1);

  EXPECT_EQ(manager.giveFoundation("B")->getNumber(), largestInt);
  EXPECT_EQ(manager.giveFoundation("C")->getNumber(), largestInt);
}

TEST(ManagerGiveByName, PassesOverNullEntries) {
  FoundationManager manager;
  addNull(manager);
  addFoundation(manager, "A", 4);
  addNull(manager);

  Foundation* const given = manager.giveFoundation("");

  EXPECT_EQ(given->getNumber(), 5);
  EXPECT_EQ(manager.giveFoundation(""), given);
}

TEST(ManagerGiveByName, NeitherReadsNorChangesRemovedListUsersCurrentAndMaximum) {
  FoundationManager manager;
  Questions questions;
  Foundation removed;
  Foundation current;
  removed.setName("A");
  removed.setNumber(9);
  RecordingUser user("user", questions, {&current});
  manager.remove(&removed, false, true);
  manager.setCurrentFoundation(&current);
  manager.setMaxFoundationValue(7.0);
  manager.addUser(&user);

  Foundation* const given = manager.giveFoundation("A");

  EXPECT_EQ(questions, Questions());
  EXPECT_EQ(stateOf(manager), State({given}, {&removed}, &current, 7.0, {1}, {"A"}));
  EXPECT_TRUE(manager.checkUsed(&current));
}

TEST(ManagerGiveByName, OutOfMemoryTheListStaysAndNothingIsLeftBehind) {
  FoundationManager manager;
  Foundation* const listed = addFoundation(manager, "A", 1);
  const std::string name("A name that is too long to be stored inside the string itself");
  const long before = countLiveBlocks();

  int failures = 0;
  while (runsOutOfMemory(failures + 1, [&] { manager.giveFoundation(name); })) {
    ++failures;
    ASSERT_EQ(manager.getFoundations(), List{listed}) << "allocation " << failures;
    ASSERT_EQ(countLiveBlocks(), before) << "allocation " << failures;
  }

  // The foundation, its name and the place in the list at least.
  EXPECT_GE(failures, 3);
  EXPECT_EQ(namesOf(manager), (Names{"A", name}));
}

TEST(ManagerRenumbering, NumbersTheListFromOneInListOrder) {
  FoundationManager manager;
  addFoundation(manager, "A", 5);
  addFoundation(manager, "B", 9);
  addFoundation(manager, "C", 2);

  manager.removeAllGenerated();

  EXPECT_EQ(numbersOf(manager), (Numbers{1, 2, 3}));
  EXPECT_EQ(namesOf(manager), (Names{"A", "B", "C"}));
}

TEST(ManagerRenumbering, FreesTheNumbersUpToTheLargestInt) {
  FoundationManager manager;
  addFoundation(manager, "A", largestInt);
  addFoundation(manager, "B", smallestInt);
  addFoundation(manager, "C", largestInt);

  manager.removeAllGenerated();

  EXPECT_EQ(numbersOf(manager), (Numbers{1, 2, 3}));
  EXPECT_EQ(manager.giveFoundation("D")->getNumber(), 4);
}

TEST(ManagerRenumbering, DoesNothingToAnEmptyList) {
  FoundationManager manager;

  manager.removeAllGenerated();

  EXPECT_EQ(stateOf(manager), State({}, {}, nullptr, 0.0, {}, {}));
}

TEST(ManagerRenumbering, NullEntriesGetNoNumber) {
  FoundationManager manager;
  addNull(manager);
  addFoundation(manager, "A", 5);
  addNull(manager);
  addFoundation(manager, "B", 5);

  manager.removeAllGenerated();

  EXPECT_EQ(numbersOf(manager), (Numbers{1, 2}));
}

TEST(ManagerRenumbering, LeavesTheDigitsOfDefaultNamesAlone) {
  FoundationManager manager;
  const Adopted generated(addGenerated(manager, 1));
  Foundation* const given = manager.giveFoundation(Foundation(), false);

  manager.removeAllGenerated();

  EXPECT_EQ(given->getNumber(), 1);
  EXPECT_EQ(given->getName(), "Found0002");
}

}  // namespace
}  // namespace Found::Tests
