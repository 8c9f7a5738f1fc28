#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "manager/manager_probe.h"
#include "support/allocation_faults.h"

namespace Found::Tests {
namespace {

TEST(UserInterface, IsAbstractWithAVirtualDestructorAndNoData) {
  EXPECT_TRUE(std::is_abstract_v<FoundationUser>);
  EXPECT_TRUE(std::has_virtual_destructor_v<FoundationUser>);
  EXPECT_EQ(sizeof(FoundationUser), sizeof(void*));
}

TEST(UserInterface, TheQuestionIsANonConstMember) {
  EXPECT_TRUE((std::is_same_v<decltype(&FoundationUser::usesFoundation),
                              bool (FoundationUser::*)(const Foundation*)>));
}

TEST(UserInterface, AUserIsDeletedThroughTheInterface) {
  struct Counted : FoundationUser {
    explicit Counted(int& counter) : destroyed(counter) {}
    ~Counted() override { ++destroyed; }
    bool usesFoundation(const Foundation* /*foundation*/) override { return false; }
    int& destroyed;
  };
  int destroyed = 0;
  std::unique_ptr<FoundationUser> user = std::make_unique<Counted>(destroyed);

  user.reset();

  EXPECT_EQ(destroyed, 1);
}

TEST(UserInterface, AssignmentReturnsTheUserItself) {
  Questions questions;
  RecordingUser first("first", questions, {});
  RecordingUser second("second", questions, {});
  FoundationUser& target = second;
  const FoundationUser& source = first;

  EXPECT_EQ(&(target = source), &second);
}

TEST(UserInterface, AssignmentCopiesNothing) {
  Questions questions;
  Foundation f;
  RecordingUser first("first", questions, {});
  RecordingUser second("second", questions, {&f});
  FoundationUser& target = second;
  const FoundationUser& source = first;

  target = source;

  EXPECT_TRUE(target.usesFoundation(&f));
  EXPECT_EQ(questions, (Questions{{"second", &f}}));
}

class ManagerUsers : public ::testing::Test {
 protected:
  Questions questions;
  FoundationManager manager;
  Foundation* const a = addFoundation(manager, "A", 1);
  Foundation* const b = addFoundation(manager, "B", 2);
  Foundation* const c = addFoundation(manager, "C", 3);
};

TEST_F(ManagerUsers, WithoutUsersNothingIsUsed) {
  for (const Foundation* f : {a, b, c}) EXPECT_FALSE(manager.checkUsed(f));
  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 0u);
}

TEST_F(ManagerUsers, AFoundationIsUsedWhenAnyUserSaysSo) {
  RecordingUser first("first", questions, {a});
  RecordingUser second("second", questions, {b});
  manager.addUser(&first);
  manager.addUser(&second);

  EXPECT_TRUE(manager.checkUsed(a));
  EXPECT_TRUE(manager.checkUsed(b));
  EXPECT_FALSE(manager.checkUsed(c));
}

TEST_F(ManagerUsers, UsersAreAskedInTheOrderOfRegistration) {
  RecordingUser first("first", questions, {});
  RecordingUser second("second", questions, {});
  RecordingUser third("third", questions, {});
  manager.addUser(&second);
  manager.addUser(&first);
  manager.addUser(&third);

  EXPECT_FALSE(manager.checkUsed(a));

  EXPECT_EQ(questions, (Questions{{"second", a}, {"first", a}, {"third", a}}));
}

TEST_F(ManagerUsers, TheFirstUserThatSaysYesIsTheLastAsked) {
  RecordingUser first("first", questions, {a});
  RecordingUser second("second", questions, {a});
  manager.addUser(&first);
  manager.addUser(&second);

  EXPECT_TRUE(manager.checkUsed(a));

  EXPECT_EQ(questions, (Questions{{"first", a}}));
}

TEST_F(ManagerUsers, AFoundationOutsideTheListCanBeChecked) {
  Foundation outside;
  RecordingUser user("user", questions, {&outside});
  manager.addUser(&user);

  EXPECT_TRUE(manager.checkUsed(&outside));
  EXPECT_EQ(questions, (Questions{{"user", &outside}}));
}

TEST_F(ManagerUsers, NullCanBeCheckedLikeAnyPointer) {
  RecordingUser user("user", questions, {nullptr});
  manager.addUser(&user);

  EXPECT_TRUE(manager.checkUsed(nullptr));
}

TEST_F(ManagerUsers, AUserRegisteredTwiceIsAskedTwice) {
  RecordingUser user("user", questions, {});
  manager.addUser(&user);
  manager.addUser(&user);

  EXPECT_FALSE(manager.checkUsed(a));

  EXPECT_EQ(questions, (Questions{{"user", a}, {"user", a}}));
}

TEST_F(ManagerUsers, AUserRegisteredTwiceAndRemovedOnceIsStillAsked) {
  RecordingUser user("user", questions, {a});
  manager.addUser(&user);
  manager.addUser(&user);

  manager.removeUser(&user);
  EXPECT_TRUE(manager.checkUsed(a));

  manager.removeUser(&user);
  EXPECT_FALSE(manager.checkUsed(a));
}

TEST_F(ManagerUsers, RemovingTakesTheFirstRegistrationAndKeepsTheOrderOfTheOthers) {
  RecordingUser first("first", questions, {});
  RecordingUser second("second", questions, {});
  RecordingUser third("third", questions, {});
  for (RecordingUser* user : {&first, &second, &third, &first}) manager.addUser(user);

  manager.removeUser(&first);

  manager.checkUsed(a);
  EXPECT_EQ(questions, (Questions{{"second", a}, {"third", a}, {"first", a}}));
}

TEST_F(ManagerUsers, RemovingAUserThatIsNotRegisteredChangesNothing) {
  RecordingUser user("user", questions, {a});
  RecordingUser stranger("stranger", questions, {});
  manager.removeUser(&stranger);
  manager.addUser(&user);

  manager.removeUser(&stranger);
  manager.removeUser(nullptr);

  EXPECT_TRUE(manager.checkUsed(a));
  EXPECT_EQ(questions, (Questions{{"user", a}}));
}

TEST_F(ManagerUsers, RemovingDoesNotDeleteTheUser) {
  const auto user =
      std::make_unique<RecordingUser>("user", questions, std::vector<const Foundation*>{});
  manager.addUser(user.get());
  const ReleaseLog log({user.get()});

  manager.removeUser(user.get());

  EXPECT_EQ(log.getReleased(), std::vector<int>{});
}

TEST_F(ManagerUsers, RegisteringAndRemovingAsksNothing) {
  RecordingUser user("user", questions, {a});

  manager.addUser(&user);
  manager.removeUser(&user);

  EXPECT_EQ(questions, Questions());
}

TEST_F(ManagerUsers, NullIsStoredButNeverAsked) {
  RecordingUser user("user", questions, {a});
  manager.addUser(nullptr);
  manager.addUser(&user);
  manager.addUser(nullptr);

  EXPECT_TRUE(manager.checkUsed(a));
  EXPECT_FALSE(manager.checkUsed(b));
  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 1u);
}

TEST_F(ManagerUsers, NullIsRemovedLikeAnyUser) {
  RecordingUser user("user", questions, {a});
  manager.addUser(nullptr);
  manager.addUser(&user);

  manager.removeUser(nullptr);

  EXPECT_TRUE(manager.checkUsed(a));
}

TEST_F(ManagerUsers, ACopyOfAUserIsNotRegistered) {
  RecordingUser user("user", questions, {});
  manager.addUser(&user);
  const RecordingUser copy(user);
  RecordingUser assigned("assigned", questions, {});
  assigned = user;

  manager.checkUsed(a);

  EXPECT_EQ(questions, (Questions{{"user", a}}));
}

TEST_F(ManagerUsers, ACopyOfAUserCanBeRegisteredAndAnswersItself) {
  RecordingUser user("user", questions, {a});
  RecordingUser copy(user);

  manager.addUser(&copy);

  EXPECT_TRUE(manager.checkUsed(a));
}

TEST_F(ManagerUsers, TheCountGoesThroughTheLiveListAndAsksUntilTheFirstYes) {
  RecordingUser first("first", questions, {c});
  RecordingUser second("second", questions, {a, c});
  manager.addUser(&first);
  manager.addUser(&second);

  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 2u);

  EXPECT_EQ(questions,
            (Questions{{"first", a}, {"second", a}, {"first", b}, {"second", b}, {"first", c}}));
}

TEST_F(ManagerUsers, TheCountCountsAFoundationOnceHoweverManyUseIt) {
  RecordingUser first("first", questions, {a, b, c});
  RecordingUser second("second", questions, {a, b, c});
  manager.addUser(&first);
  manager.addUser(&second);

  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 3u);
}

TEST_F(ManagerUsers, TheCountLeavesOutTheRemovedList) {
  RecordingUser user("user", questions, {a, b});
  manager.addUser(&user);
  manager.remove(a, false, true);
  const Adopted removed(a);

  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 1u);
}

TEST_F(ManagerUsers, TheCountPassesOverNullEntriesWithoutAsking) {
  RecordingUser user("user", questions, {nullptr, c});
  manager.addUser(&user);
  addNull(manager);

  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 1u);
  EXPECT_EQ(questions, (Questions{{"user", a}, {"user", b}, {"user", c}}));
}

TEST_F(ManagerUsers, TheCountOfAnEmptyListIsZero) {
  RecordingUser user("user", questions, {a});
  manager.addUser(&user);
  manager.reset();

  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 0u);
  EXPECT_EQ(questions, Questions());
}

TEST_F(ManagerUsers, TheCountIsAStdSize) {
  EXPECT_TRUE((std::is_same_v<decltype(&FoundationManager::getNumberOfUsedFoundations),
                              std::size_t (FoundationManager::*)() const>));
}

TEST_F(ManagerUsers, WhatAUserThrowsPassesThroughAndChangesNothing) {
  ThrowingUser user(b);
  manager.addUser(&user);
  manager.setCurrentFoundation(b);
  const State before = stateOf(manager);

  EXPECT_THROW(manager.checkUsed(b), NoAnswer);
  EXPECT_THROW(manager.getNumberOfUsedFoundations(), NoAnswer);

  EXPECT_EQ(stateOf(manager), before);
  EXPECT_FALSE(manager.checkUsed(a));
}

TEST_F(ManagerUsers, OutOfMemoryAUserIsNotRegistered) {
  RecordingUser user("user", questions, {a});

  EXPECT_TRUE(runsOutOfMemory(1, [&] { manager.addUser(&user); }));

  EXPECT_FALSE(manager.checkUsed(a));
}

TEST_F(ManagerUsers, OutOfMemoryTheUsersBeforeStayRegistered) {
  RecordingUser first("first", questions, {a});
  RecordingUser second("second", questions, {b});
  manager.addUser(&first);

  EXPECT_TRUE(runsOutOfMemory(1, [&] { manager.addUser(&second); }));

  EXPECT_TRUE(manager.checkUsed(a));
  EXPECT_FALSE(manager.checkUsed(b));
}

}  // namespace
}  // namespace Found::Tests
