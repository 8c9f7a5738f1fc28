#include "foundations/failures.h"

#include <gtest/gtest.h>

namespace {

using Found::Foundation;

TEST(Failures, HaveAWordEach) {
  EXPECT_EQ(Failures::getWord(Foundation::Tension), "tension");
  EXPECT_EQ(Failures::getWord(Foundation::None), "none");
  EXPECT_EQ(Failures::getWord(Foundation::Compression), "compression");
}

TEST(Failures, AreCalledByTheirNumberWhenTheyAreUnknown) {
  EXPECT_EQ(Failures::getWord(static_cast<Foundation::Failure>(-2)), "-2");
  EXPECT_EQ(Failures::getWord(static_cast<Foundation::Failure>(2)), "2");
}

TEST(Failures, AreFoundByTheirNumber) {
  EXPECT_EQ(Failures::find(Foundation::Tension)->letter, 'T');
  EXPECT_EQ(Failures::find(Foundation::Compression)->letter, 'C');
  EXPECT_EQ(Failures::find(static_cast<Foundation::Failure>(-2)), nullptr);
  EXPECT_EQ(Failures::find(static_cast<Foundation::Failure>(2)), nullptr);
}

TEST(Failures, AreFoundByTheirWordAlone) {
  EXPECT_EQ(Failures::find("tension")->value, Foundation::Tension);
  EXPECT_EQ(Failures::find("none")->value, Foundation::None);
  EXPECT_EQ(Failures::find("compression")->value, Foundation::Compression);
  for (const char* text : {"", "Tension", "tension ", "-1"})
    EXPECT_EQ(Failures::find(text), nullptr) << text;
}

}  // namespace
