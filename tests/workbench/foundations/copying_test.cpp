#include "foundations/copying.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

using Found::Foundation;

TEST(FoundationCopy, HasAllThatTheOtherHas) {
  const KvVector3D stiffness(1.0, 2.0, 3.0);
  Foundation other(&stiffness, nullptr);
  other.setNumber(7);
  other.setName("A");
  other.setGenerated(true);
  other.setFactorArea(1.0);  // or a zero would stay as it is
  other.setFactorArea(-0.0);
  other.setChanged(false);

  const auto copy = Copying::duplicate(other);

  EXPECT_TRUE(*copy == other);
  EXPECT_EQ(copy->getNumber(), 7);
  EXPECT_EQ(copy->getName(), "A");
  EXPECT_TRUE(copy->isGenerated());
  EXPECT_TRUE(std::signbit(copy->getFactorArea()));
  EXPECT_FALSE(copy->getChanged());
}

TEST(FoundationCopy, LacksWhatTheOtherLacks) {
  const KvVector3D stiffness(1.0, 2.0, 3.0);
  Foundation foundation(&stiffness, nullptr);

  Copying::overwrite(foundation, Foundation());

  KvVector3D left;
  EXPECT_FALSE(foundation.getDispArea(left));
}

TEST(FoundationCopy, OfItselfChangesNothing) {
  const KvVector3D stiffness(1.0, 2.0, 3.0);
  Foundation foundation(&stiffness, nullptr);

  Copying::overwrite(foundation, foundation);

  KvVector3D left;
  EXPECT_TRUE(foundation.getDispArea(left));
}

}  // namespace
