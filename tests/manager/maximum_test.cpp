#include <gtest/gtest.h>

#include <cmath>

#include "found/foundation_manager.h"
#include "manager/manager_probe.h"

namespace Found::Tests {
namespace {

Foundation* addVector(FoundationManager& manager, const VectorSlot& slot, double x, double y,
                      double z) {
  Foundation* const added = addFoundation(manager);
  slot.set(*added, KvVector3D(x, y, z));
  return added;
}

double updatedMaximum(FoundationManager& manager) {
  manager.updateFoundationMaximum();
  return manager.getMaxFoundationValue();
}

TEST(ManagerMaximum, IsZeroAtFirst) { EXPECT_EQ(FoundationManager().getMaxFoundationValue(), 0.0); }

TEST(ManagerMaximum, IsStoredUnchecked) {
  FoundationManager manager;
  addVector(manager, areaSlot, 3.0, 4.0, 0.0);
  for (const double value : {-1.0, 0.0, 1e300, -1e300, smallestSubnormal, infinity, -infinity}) {
    manager.setMaxFoundationValue(value);
    EXPECT_EQ(manager.getMaxFoundationValue(), value);
  }

  manager.setMaxFoundationValue(notANumber);
  EXPECT_TRUE(std::isnan(manager.getMaxFoundationValue()));

  manager.setMaxFoundationValue(-0.0);
  EXPECT_TRUE(std::signbit(manager.getMaxFoundationValue()));
}

TEST(ManagerMaximum, OfAnEmptyListIsZeroWhateverItWasBefore) {
  for (const double before : {7.0, -1.0, infinity, notANumber}) {
    FoundationManager manager;
    manager.setMaxFoundationValue(before);
    EXPECT_EQ(updatedMaximum(manager), 0.0) << before;
  }
}

TEST(ManagerMaximum, OfFoundationsWithoutVectorsIsZeroWhateverItWasBefore) {
  FoundationManager manager;
  addFoundation(manager, "A", 100);
  addFoundation(manager, "B", 200);
  manager.setMaxFoundationValue(7.0);

  EXPECT_EQ(updatedMaximum(manager), 0.0);
}

TEST(ManagerMaximum, OfZeroVectorsIsZero) {
  FoundationManager manager;
  for (const VectorSlot& slot : vectorSlots) addVector(manager, slot, 0.0, -0.0, 0.0);

  EXPECT_EQ(updatedMaximum(manager), 0.0);
}

TEST(ManagerMaximum, IsTheLengthOfAVectorOfAnyKind) {
  for (const VectorSlot& slot : vectorSlots) {
    FoundationManager manager;
    addVector(manager, slot, -2.0, 3.0, -6.0);
    EXPECT_EQ(updatedMaximum(manager), 7.0) << slot.name;
  }
}

TEST(ManagerMaximum, IsTheLongestVectorOfAFoundation) {
  FoundationManager manager;
  addVector(manager, areaSlot, 3.0, 4.0, 0.0);
  rotSlot.set(*manager.getFoundations()[0], KvVector3D(0.0, 0.0, 10.0));

  EXPECT_EQ(updatedMaximum(manager), 10.0);
}

TEST(ManagerMaximum, AShorterVectorBehindTheLongestDoesNotLowerIt) {
  for (const VectorSlot& longest : vectorSlots) {
    FoundationManager manager;
    Foundation* const f = addFoundation(manager);
    for (const VectorSlot& slot : vectorSlots) slot.set(*f, KvVector3D(1.0, 0.0, 0.0));
    longest.set(*f, KvVector3D(9.0, 0.0, 0.0));

    EXPECT_EQ(updatedMaximum(manager), 9.0) << longest.name;
  }
}

TEST(ManagerMaximum, IsTakenOverAllFoundations) {
  for (const int longest : {0, 1, 2}) {
    FoundationManager manager;
    for (int i = 0; i < 3; ++i) addVector(manager, areaSlot, 0.0, i == longest ? 9.0 : 1.0, 0.0);
    EXPECT_EQ(updatedMaximum(manager), 9.0) << longest;
  }
}

TEST(ManagerMaximum, FactorsDoNotCount) {
  FoundationManager manager;
  Foundation* const f = addVector(manager, areaSlot, 0.0, 0.0, 1.0);
  f->setFactorArea(1000.0);
  f->setFactorLine(1000.0);

  EXPECT_EQ(updatedMaximum(manager), 1.0);
}

TEST(ManagerMaximum, TheSmallestLengthAboveZeroCounts) {
  FoundationManager manager;
  addVector(manager, areaSlot, smallestSubnormal, 0.0, 0.0);

  EXPECT_EQ(updatedMaximum(manager), smallestSubnormal);
}

TEST(ManagerMaximum, AnInfiniteLengthCounts) {
  FoundationManager manager;
  addVector(manager, areaSlot, 1.0, 0.0, 0.0);
  addVector(manager, lineSlot, -infinity, 0.0, 0.0);
  addVector(manager, rotSlot, 2.0, 0.0, 0.0);

  EXPECT_EQ(updatedMaximum(manager), infinity);
}

TEST(ManagerMaximum, ALengthThatIsNotANumberNeverCounts) {
  FoundationManager manager;
  addVector(manager, areaSlot, notANumber, 0.0, 0.0);
  EXPECT_EQ(updatedMaximum(manager), 0.0);

  addVector(manager, lineSlot, 5.0, 0.0, 0.0);
  addVector(manager, rotSlot, 100.0, notANumber, 0.0);
  EXPECT_EQ(updatedMaximum(manager), 5.0);
}

TEST(ManagerMaximum, PassesOverNullEntries) {
  FoundationManager manager;
  addNull(manager);
  addVector(manager, areaSlot, 5.0, 0.0, 0.0);
  addNull(manager);

  EXPECT_EQ(updatedMaximum(manager), 5.0);
}

TEST(ManagerMaximum, ARemovedFoundationDoesNotCount) {
  FoundationManager manager;
  addVector(manager, areaSlot, 5.0, 0.0, 0.0);
  const Adopted removed(addVector(manager, areaSlot, 9.0, 0.0, 0.0));
  manager.remove(removed.get(), false, true);

  EXPECT_EQ(updatedMaximum(manager), 5.0);
}

TEST(ManagerMaximum, UpdatingLeavesTheFoundationsAlone) {
  FoundationManager manager;
  auto* const f = new Foundation;
  fill(*f);
  manager.add(f);

  manager.updateFoundationMaximum();

  EXPECT_EQ(recordOf(*f), Record("Raft", 12, false, true, filledValues));
}

TEST(ManagerMaximum, IsNotKeptUpToDateWithTheFoundations) {
  FoundationManager manager;
  Foundation* const f = addVector(manager, areaSlot, 5.0, 0.0, 0.0);
  ASSERT_EQ(updatedMaximum(manager), 5.0);

  f->scaleValues(2.0);

  EXPECT_EQ(manager.getMaxFoundationValue(), 5.0);
  EXPECT_EQ(updatedMaximum(manager), 10.0);
}

TEST(ManagerMaximum, NoOtherOperationTouchesIt) {
  FoundationManager manager;
  manager.setMaxFoundationValue(-1.0);
  const auto expectUntouched = [&manager](const char* operation) {
    EXPECT_EQ(manager.getMaxFoundationValue(), -1.0) << operation;
  };

  Foundation* const f = addVector(manager, areaSlot, 5.0, 0.0, 0.0);
  expectUntouched("add");
  manager.remove(f, false, true);
  expectUntouched("remove");
  manager.redo(f);
  expectUntouched("redo");
  manager.giveFoundation(*f, false);
  expectUntouched("giveFoundation by value");
  manager.giveFoundation("Strip");
  expectUntouched("giveFoundation by name");
  manager.giveNextFoundationName(1);
  expectUntouched("giveNextFoundationName");

  const Adopted generated(addGenerated(manager));
  manager.removeAllGenerated();
  expectUntouched("removeAllGenerated");
  const Adopted notUsed(addGenerated(manager));
  manager.removeAllNotUsedGenerated();
  expectUntouched("removeAllNotUsedGenerated");

  std::vector<Adopted> pruned;
  for (Foundation* listed : manager.getFoundations()) pruned.emplace_back(listed);
  manager.removeAllNotUsed();
  expectUntouched("removeAllNotUsed");

  addVector(manager, areaSlot, 5.0, 0.0, 0.0);
  manager.reset();
  expectUntouched("reset");
  addVector(manager, areaSlot, 5.0, 0.0, 0.0);
  manager.createFromXml(nullptr);
  expectUntouched("createFromXml");

  EXPECT_EQ(updatedMaximum(manager), 0.0);
}

}  // namespace
}  // namespace Found::Tests
