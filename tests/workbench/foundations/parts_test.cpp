#include "foundations/parts.h"

#include <gtest/gtest.h>

namespace {

using Found::Foundation;

/// As a legacy document gives one: with an area, which may be zero.
Foundation makeFoundation(double area, double line) {
  const KvVector3D areaVector(0.0, 0.0, area);
  const KvVector3D lineVector(0.0, 0.0, line);
  Foundation foundation(&areaVector, nullptr);
  foundation.setDispLine(line != 0.0 ? &lineVector : nullptr);
  return foundation;
}

TEST(Parts, OfAFoundationThatSupportsNothingAreTheAreaAlone) {
  Foundation foundation = makeFoundation(0.0, 0.0);

  EXPECT_TRUE(Parts::hasArea(foundation));
  EXPECT_FALSE(Parts::hasLine(foundation));
}

TEST(Parts, LeaveAnAreaOfZeroOutBesideALine) {
  Foundation foundation = makeFoundation(0.0, 5.0);

  EXPECT_FALSE(Parts::hasArea(foundation));
  EXPECT_TRUE(Parts::hasLine(foundation));
}

TEST(Parts, MayBeBoth) {
  Foundation foundation = makeFoundation(5.0, 5.0);

  EXPECT_TRUE(Parts::hasArea(foundation));
  EXPECT_TRUE(Parts::hasLine(foundation));
}

TEST(Parts, AreNoneOfANewFoundation) {
  Foundation foundation;

  EXPECT_FALSE(Parts::hasArea(foundation));
  EXPECT_FALSE(Parts::hasLine(foundation));
}

TEST(Parts, ShowByAFailureOrAFactorAlone) {
  Foundation failing = makeFoundation(0.0, 5.0);
  failing.setFailAreaZ(Foundation::Tension);
  EXPECT_TRUE(Parts::hasArea(failing));

  Foundation withFactor = makeFoundation(0.0, 5.0);
  withFactor.setFactorArea(0.5);
  EXPECT_TRUE(Parts::hasArea(withFactor));

  for (void (Foundation::*set)(Foundation::Failure) :
       {&Foundation::setFailLineX, &Foundation::setFailLineY, &Foundation::setFailLineZ}) {
    Foundation line;
    (line.*set)(Foundation::Compression);
    EXPECT_TRUE(Parts::hasLine(line));
    EXPECT_FALSE(Parts::hasArea(line));
  }
  Foundation line;
  line.setFactorLine(0.5);
  EXPECT_TRUE(Parts::hasLine(line));
}

TEST(Parts, CountARotationAsALine) {
  const KvVector3D rotation(0.0, 0.0, 0.0);
  Foundation foundation;
  foundation.setRotLine(&rotation);

  EXPECT_TRUE(Parts::hasLine(foundation));
}

}  // namespace
