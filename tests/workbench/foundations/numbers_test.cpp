#include "foundations/numbers.h"

#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int largest = std::numeric_limits<int>::max();

/// The number that is free beside these.
int findFree(const std::vector<int>& taken) {
  Found::FoundationManager manager;
  for (const int number : taken) {
    auto foundation = std::make_unique<Found::Foundation>();
    foundation->setNumber(number);
    manager.add(std::move(foundation));
  }
  return Numbers::findFree(manager);
}

TEST(FreeNumber, FollowsTheHighest) {
  EXPECT_EQ(findFree({}), 1);
  EXPECT_EQ(findFree({-1, -7}), 1);
  EXPECT_EQ(findFree({7, 2, 7}), 8);
}

TEST(FreeNumber, IsBelowTheLargestThatThereCanBe) {
  EXPECT_EQ(findFree({largest}), largest - 1);
  EXPECT_EQ(findFree({largest - 1, largest}), largest - 2);
}

}  // namespace
