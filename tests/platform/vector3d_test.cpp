#include "kv/vector3d.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

double lengthOf(double x, double y, double z) { return KvVector3D(x, y, z).length(); }

/// Expects the length for every order and some signs of the components.
void expectLength(double a, double b, double c, double expected) {
  EXPECT_DOUBLE_EQ(lengthOf(a, b, c), expected);
  EXPECT_DOUBLE_EQ(lengthOf(a, c, b), expected);
  EXPECT_DOUBLE_EQ(lengthOf(b, a, c), expected);
  EXPECT_DOUBLE_EQ(lengthOf(-b, -c, -a), expected);
  EXPECT_DOUBLE_EQ(lengthOf(c, -a, b), expected);
  EXPECT_DOUBLE_EQ(lengthOf(-c, b, a), expected);
}

}  // namespace

TEST(Vector, IsZeroWhenDefaultConstructed) {
  const KvVector3D vector;

  EXPECT_EQ(vector.x, 0.0);
  EXPECT_EQ(vector.y, 0.0);
  EXPECT_EQ(vector.z, 0.0);
}

TEST(Vector, HoldsItsComponentsInOrder) {
  const KvVector3D vector(1.0, 2.0, 3.0);

  EXPECT_EQ(vector.x, 1.0);
  EXPECT_EQ(vector.y, 2.0);
  EXPECT_EQ(vector.z, 3.0);
}

TEST(Vector, ComponentsCanBeWritten) {
  KvVector3D vector(1.0, 2.0, 3.0);

  vector.x = 4.0;
  vector.y = 5.0;
  vector.z = 6.0;

  EXPECT_FALSE(vector != KvVector3D(4.0, 5.0, 6.0));
}

TEST(VectorLength, IsEuclidean) {
  expectLength(3.0, 4.0, 0.0, 5.0);
  expectLength(1.0, 2.0, 2.0, 3.0);
  expectLength(2.0, 3.0, 6.0, 7.0);
  expectLength(0.1, 0.2, 0.3, 0.37416573867739413);
}

TEST(VectorLength, RoundsEveryOperationToADouble) {
  EXPECT_EQ(lengthOf(0.1, 0.1, 0.8), 0.81240384046359615);
  EXPECT_EQ(lengthOf(0.1, 0.1, 1.9), 1.9052558883257651);
  EXPECT_EQ(lengthOf(0.1, 0.2, 1.7), 1.7146428199482244);
}

TEST(VectorLength, IsZeroOnlyForZero) {
  EXPECT_EQ(lengthOf(0.0, 0.0, 0.0), 0.0);
  EXPECT_FALSE(std::signbit(lengthOf(-0.0, -0.0, -0.0)));
  EXPECT_GT(lengthOf(smallest, 0.0, 0.0), 0.0);
  EXPECT_GT(lengthOf(0.0, -smallest, 0.0), 0.0);
  EXPECT_GT(lengthOf(0.0, 0.0, smallest), 0.0);
}

TEST(VectorLength, OfOneComponentIsItsMagnitude) {
  for (double value : {5e-324, 1e-320, 2.2250738585072014e-308, 1.1e-170, 1.1e-160, 1.1e-155,
                       1e-101, 1e-100, 1e-99, 1.0, 1e149, 1e150, 1e151, 1e200, 1e308, largest}) {
    EXPECT_EQ(lengthOf(value, 0.0, 0.0), value);
    EXPECT_EQ(lengthOf(0.0, -value, 0.0), value);
    EXPECT_EQ(lengthOf(0.0, 0.0, value), value);
  }
}

TEST(VectorLength, IsExactForThreeFourFiveInEveryMagnitude) {
  for (int exponent = -1074; exponent <= 1021; ++exponent) {
    const double three = std::ldexp(3.0, exponent);
    const double four = std::ldexp(4.0, exponent);
    const double five = std::ldexp(5.0, exponent);
    EXPECT_EQ(lengthOf(three, four, 0.0), five) << "exponent " << exponent;
    EXPECT_EQ(lengthOf(0.0, -three, four), five) << "exponent " << exponent;
    EXPECT_EQ(lengthOf(four, 0.0, -three), five) << "exponent " << exponent;
  }
}

TEST(VectorLength, DoesNotUnderflow) {
  expectLength(3e-170, 4e-170, 0.0, 5e-170);
  expectLength(1e-200, 2e-200, 2e-200, 3e-200);
  expectLength(2e-300, 3e-300, 6e-300, 7e-300);
  expectLength(5e-324, 5e-324, 5e-324, 1e-323);
}

TEST(VectorLength, DoesNotOverflowBeforeItMust) {
  expectLength(3e200, 4e200, 0.0, 5e200);
  expectLength(1e307, 2e307, 2e307, 3e307);
  expectLength(1e308, 1e308, 1e308, 1.7320508075688772e308);
}

TEST(VectorLength, BeyondTheRangeOfDoubleIsInfinite) {
  EXPECT_EQ(lengthOf(1.7e308, 1.7e308, 1.7e308), infinity);
  EXPECT_EQ(lengthOf(largest, largest, 0.0), infinity);
}

TEST(VectorLength, OfMixedMagnitudesIsThatOfTheLargest) {
  expectLength(1e308, 1e-308, 5e-324, 1e308);
  expectLength(1e-99, 1e-165, 0.0, 1e-99);
  expectLength(1.0, 1e-300, 5e-324, 1.0);
  expectLength(1e160, 1.0, 1e-160, 1e160);
}

TEST(VectorLength, IsInfiniteWhenAComponentIs) {
  for (double endless : {infinity, -infinity}) {
    EXPECT_EQ(lengthOf(endless, 0.0, 1.0), infinity);
    EXPECT_EQ(lengthOf(1.0, endless, largest), infinity);
    EXPECT_EQ(lengthOf(smallest, 0.0, endless), infinity);
    EXPECT_EQ(lengthOf(endless, -endless, endless), infinity);
  }
}

TEST(VectorLength, IsNotANumberWhenAComponentIsNone) {
  EXPECT_TRUE(std::isnan(lengthOf(notANumber, 0.0, 1.0)));
  EXPECT_TRUE(std::isnan(lengthOf(largest, notANumber, 0.0)));
  EXPECT_TRUE(std::isnan(lengthOf(0.0, smallest, -notANumber)));
  EXPECT_TRUE(std::isnan(lengthOf(notANumber, notANumber, notANumber)));
}

TEST(VectorLength, IsNotANumberWhenAnotherComponentIsInfinite) {
  EXPECT_TRUE(std::isnan(lengthOf(notANumber, infinity, 0.0)));
  EXPECT_TRUE(std::isnan(lengthOf(infinity, notANumber, 0.0)));
  EXPECT_TRUE(std::isnan(lengthOf(0.0, -infinity, notANumber)));
  EXPECT_TRUE(std::isnan(lengthOf(infinity, -infinity, notANumber)));
}

TEST(VectorNull, ToleranceIsTenToTheMinusTenth) {
  EXPECT_EQ(KvVector3D::getTolerance(), 0.0000000001);
}

TEST(VectorNull, HoldsBelowTheToleranceOnly) {
  EXPECT_TRUE(KvVector3D().isNull());
  EXPECT_TRUE(KvVector3D(smallest, smallest, smallest).isNull());
  EXPECT_TRUE(KvVector3D(0.0, std::nextafter(1e-10, 0.0), 0.0).isNull());
  EXPECT_FALSE(KvVector3D(0.0, 1e-10, 0.0).isNull());
  EXPECT_FALSE(KvVector3D(0.0, 0.0, -1e-10).isNull());
  EXPECT_FALSE(KvVector3D(1.0, 0.0, 0.0).isNull());
}

TEST(VectorNull, LooksAtTheLengthNotAtEachComponent) {
  EXPECT_FALSE(KvVector3D(0.6e-10, 0.6e-10, 0.6e-10).isNull());
}

TEST(VectorNull, DoesNotHoldForInfinityOrNotANumber) {
  EXPECT_FALSE(KvVector3D(infinity, 0.0, 0.0).isNull());
  EXPECT_FALSE(KvVector3D(0.0, notANumber, 0.0).isNull());
}

TEST(VectorDifference, LooksAtEachComponent) {
  const KvVector3D vector(1.0, 2.0, 3.0);

  EXPECT_FALSE(vector != KvVector3D(1.0, 2.0, 3.0));
  EXPECT_TRUE(vector != KvVector3D(9.0, 2.0, 3.0));
  EXPECT_TRUE(vector != KvVector3D(1.0, 9.0, 3.0));
  EXPECT_TRUE(vector != KvVector3D(1.0, 2.0, 9.0));
}

TEST(VectorDifference, IsExact) {
  EXPECT_TRUE(KvVector3D(1.0, 0.0, 0.0) != KvVector3D(std::nextafter(1.0, 2.0), 0.0, 0.0));
  EXPECT_TRUE(KvVector3D() != KvVector3D(0.0, 0.0, smallest));
}

TEST(VectorDifference, TakesBothZerosForTheSame) {
  EXPECT_FALSE(KvVector3D(0.0, -0.0, 0.0) != KvVector3D(-0.0, 0.0, -0.0));
}

TEST(VectorDifference, HoldsForNotANumberEvenAgainstItself) {
  const KvVector3D vector(0.0, notANumber, 0.0);

  EXPECT_TRUE(vector != vector);
}
