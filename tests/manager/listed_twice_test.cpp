#include <gtest/gtest.h>

#include "found/foundation_manager.h"
#include "manager/manager_probe.h"
#include "support/allocation_faults.h"

namespace Found::Tests {
namespace {

/// A foundation on both sides of another one.
class ManagerListedTwice : public testing::Test {
 protected:
  ManagerListedTwice() { manager.add(a); }
  ~ManagerListedTwice() override {
    for (int place = 0; place < 2; ++place) manager.remove(a, false, false);
  }

  FoundationManager manager;
  Foundation* const a = addFoundation(manager, "A", 5);
  Foundation* const b = addFoundation(manager, "B", 7);
  const Adopted owner{a};
};

TEST(ManagerListedTwiceAtTheEnd, TheOnePlaceThatIsLeftIsDeletedOnce) {
  auto* const a = new Foundation;
  const ReleaseLog log({a});
  {
    FoundationManager manager;
    manager.add(a);
    manager.add(a);
    manager.remove(a, false, false);
  }

  EXPECT_EQ(log.getReleased(), std::vector<int>{0});
}

TEST(ManagerListedTwiceAtTheEnd, TheSecondRemovalMayDelete) {
  FoundationManager manager;
  auto* const a = new Foundation;
  const ReleaseLog log({a});
  manager.add(a);
  manager.add(a);

  manager.remove(a, false, false);
  EXPECT_EQ(log.getReleased(), std::vector<int>());
  manager.remove(a, true, false);

  EXPECT_EQ(log.getReleased(), std::vector<int>{0});
  EXPECT_EQ(manager.getFoundations(), List());
}

TEST_F(ManagerListedTwice, RemovedTwiceForRedoItComesBackTwice) {
  manager.remove(a, false, true);
  manager.remove(a, false, true);
  EXPECT_EQ(manager.getFoundations(), List{b});
  EXPECT_EQ(manager.getRemovedFoundations(), (List{a, a}));

  manager.redo(a);
  manager.redo(a);

  EXPECT_EQ(manager.getFoundations(), (List{b, a, a}));
  EXPECT_EQ(manager.getRemovedFoundations(), List());
}

TEST_F(ManagerListedTwice, TheFirstRemovalAlreadyClearsTheCurrentFoundation) {
  manager.setCurrentFoundation(a);

  manager.remove(a, false, false);

  EXPECT_EQ(manager.getFoundations(), (List{b, a}));
  EXPECT_EQ(manager.getCurrentFoundation(), nullptr);
}

TEST_F(ManagerListedTwice, ItIsAskedAboutAndCountedForEachPlace) {
  Questions questions;
  RecordingUser user("user", questions, {a});
  manager.addUser(&user);

  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 2u);

  EXPECT_EQ(questions, (Questions{{"user", a}, {"user", b}, {"user", a}}));
}

TEST_F(ManagerListedTwice, RenumberingGivesItTheNumberOfItsLastPlace) {
  manager.removeAllGenerated();

  EXPECT_EQ(numbersOf(manager), (std::vector<int>{3, 2, 3}));
}

TEST_F(ManagerListedTwice, TheNextFoundationIsNumberedAboveTheHighest) {
  EXPECT_EQ(manager.giveFoundation("C")->getNumber(), 8);
}

}  // namespace
}  // namespace Found::Tests
