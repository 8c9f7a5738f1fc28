#include "foundations/units.h"

#include <gtest/gtest.h>

namespace {

TEST(Units, AreTheSameWhenBothNamesAre) {
  const Units units = {"kN", "m"};

  EXPECT_TRUE(units == (Units{"kN", "m"}));
  EXPECT_FALSE(units != (Units{"kN", "m"}));
  EXPECT_TRUE(units != (Units{"N", "m"}));
  EXPECT_TRUE(units != (Units{"kN", "mm"}));
}

TEST(UnitNames, AreMadeOfThoseOfForceAndLength) {
  const Units units = {"kN", "m"};

  EXPECT_EQ(UnitNames::ofArea(units), "kN/m\xC2\xB3");
  EXPECT_EQ(UnitNames::ofLine(units), "kN/m\xC2\xB2");
  EXPECT_EQ(UnitNames::ofRotation(units), "kNm/m/rad");
}

TEST(UnitNames, PartTheForceFromALengthOfSeveralLetters) {
  EXPECT_EQ(UnitNames::ofRotation({"lbf", "ft"}),
            "lbf\xC2\xB7"
            "ft/ft/rad");
}

TEST(UnitNames, AreEmptyWhereNothingTellsThem) {
  EXPECT_EQ(UnitNames::ofArea({}) + UnitNames::ofLine({}) + UnitNames::ofRotation({}), "");
}

}  // namespace
