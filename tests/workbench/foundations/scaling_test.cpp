#include "foundations/scaling.h"

#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/double_bits.h"
#include "support/random.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;
using Scaling::Factor;
using Scaling::Ratio;
using Scaling::Scale;
using TestSupport::bitsOf;
using TestSupport::fromBits;

constexpr double infinity = std::numeric_limits<double>::infinity();

Ratio makeRatio(const char* over, const char* under = "1") {
  return {readDecimal(over), readDecimal(under)};
}

/// By force / length^power.
double scale(double value, const char* force, const char* length, int power) {
  return Factor(makeRatio(force), makeRatio(length), power).multiply(value);
}

// --- Values

// The products are computed with the fractions of Python.
TEST(ScalingFactor, RoundsTheExactProductOnce) {
  const struct {
    double value;
    const char* force;
    const char* length;
    int power;
    double product;
  } rows[] = {
      {45000.0, "1000", "1000", 3, 0.045},
      {0.1, "1000", "1000", 3, 1.0000000000000001e-07},
      {-0.1, "1000", "1000", 2, -0.0001},
      {0.1, "1000", "1000", 0, 100.0},
      {0.3333333333333333, "4.4482216152605", "0.3048", 3, 52.36248794874873},
      {1e+300, "0.1", "7", 2, 2.0408163265306123e+297},
      {1.7976931348623157e+308, "1", "1", 0, 1.7976931348623157e+308},
      {5e-324, "0.5", "1", 0, 0.0},
      {1.5e-323, "0.5", "1", 0, 1e-323},
      {5e-324, "0.50000000000000001", "1", 0, 5e-324},
      {5e-324, "1e-30", "1e30", 3, 0.0},
      {1.7976931348623157e+308, "1e-30", "1e30", 3, 1.7976931348623156e+188},
      {5e-324, "1e30", "1e-30", 3, 4.940656458412465e-204},
      {2.2250738585072014e-308, "0.99999999999999999", "1", 0, 2.2250738585072014e-308},
      {2.225073858507201e-308, "1.1", "1", 0, 2.4475812443579207e-308},
      {1.7976931348623157e+308, "1.0000000000000001", "1", 0, infinity},
      {1.7976931348623155e+308, "1.0000000000000002", "1", 0, infinity},
      {1.8014398509481984e+16, "0.5", "1", 0, 9007199254740992.0},
      {6755399441055745.0, "1.5", "1", 0, 1.0133099161583618e+16},
      {6755399441055747.0, "1.5", "1", 0, 1.013309916158362e+16},
      {1.0, "12345678901234567", "98765432109876543", 3, 1.2814453005345044e-35},
      {1.2345678901234567, "9.9999999999999999e29", "1.2345678901234567e-30", 3,
       6.561000118098003e+119},
      {1.2345678901234567e-200, "1.2345678901234567e-30", "9.9999999999999999e29", 3, 1.524e-320},
      {94786.53606090632, "1.69e-9", "6.2179419894e-11", 0, 0.0001601892459429317},
      {4.181721513707595e-06, "2.455824010e-11", "2.9552e-11", 3, 3979162855240774.5},
      {4.958931338977146e-08, "1.921773491e-8", "5.2420199e5", 0, 9.529942790935414e-16},
      {5.602572770128128e-10, "2.5101867206e-9", "9.618744967224e-11", 3, 1580295502388.8591},
      {-49641449511349.18, "7.8191851885296e6", "8.314329e-5", 0, -3.881556867562815e+20},
      {-0.008185501079576985, "9.46100527e11", "8.79818e-10", 0, -7744306885.146854},
      {1.6496210364357322, "3.474789259816835e-11", "2.5522547776203e-2", 3, 3.447788210997037e-06},
      {5.943698771050184e+16, "8.12e-4", "8.71571988763e-11", 3, 7.289588752938634e+43},
      {64712885.45276688, "5.976614537808e9", "6.8e-1", 0, 3.867639719805104e+17},
      {-4.9369299455698143e-08, "5.757e-5", "7.8330001e-10", 0, -2.842190569664542e-12},
      {0.00040164425633430414, "3.39185349816416e10", "7.715888e0", 0, 13623184.75865052},
      {-8.298469466133206e-13, "4.1002170859e3", "3.36954e-12", 0, -3.402552629185882e-09},
  };
  for (const auto& row : rows)
    EXPECT_EQ(scale(row.value, row.force, row.length, row.power), row.product)
        << row.value << " " << row.force << " " << row.length << " " << row.power;
}

// The exact products have 110 bits: 53, that of a half, 55 zeros and a last one.
TEST(ScalingFactor, SeesTheLastBitOfAProduct) {
  EXPECT_EQ(scale(8098702889625391.0, "86844470938566607", "1", 0), 7.033275677381577e+32);
  EXPECT_EQ(scale(8178343049569311.0, "90959370041710559", "1", 0), 7.438969317738266e+32);
}

// 1 / 4.4482216152605 is no decimal; computed like the others.
TEST(ScalingFactor, MayBeARatioOfDecimals) {
  const Ratio newtonInPounds = makeRatio("1", "4.4482216152605");
  const Ratio metreInFeet = makeRatio("1", "0.3048");

  EXPECT_EQ(Factor(newtonInPounds, metreInFeet, 3).multiply(1e6), 6365.880354264159);
  EXPECT_EQ(Factor(newtonInPounds, metreInFeet, 0).multiply(1e6), 224808.94309971048);
}

TEST(ScalingFactor, HasRoomForTheLongestNumbers) {
  const Ratio small = makeRatio("1.2345678901234567e-30", "9.9999999999999999e29");
  const Ratio large = makeRatio("9.9999999999999999e29", "1.2345678901234567e-30");

  EXPECT_EQ(Factor(large, small, 3).multiply(1.9999999999999998), 8.6093445099364e+239);
  EXPECT_EQ(Factor(small, large, 3).multiply(1.9999999999999998), 4.646114457823629e-240);
}

TEST(ScalingFactor, KeepsZerosAndWhatIsNoFiniteNumber) {
  const double nan = fromBits(0x7FF8000000000123);
  for (const double value : {0.0, -0.0, infinity, -infinity, nan})
    EXPECT_EQ(bitsOf(scale(value, "1000", "7", 3)), bitsOf(value)) << value;
}

TEST(ScalingFactor, KeepsTheSignOfWhatBecomesZero) {
  EXPECT_EQ(bitsOf(scale(-5e-324, "0.5", "1", 0)), bitsOf(-0.0));
}

// --- What holds of all values

/// Any double but those that are not finite.
double drawValue(TestSupport::Random& random) {
  const std::uint64_t high = random.bits();
  const std::uint64_t low = random.bits();
  const double value = fromBits(high << 32 | low);
  return std::isfinite(value) ? value : 1.0;
}

TEST(ScalingFactor, OfOneIsTheIdentity) {
  TestSupport::Random random(1);
  const Factor one(makeRatio("1"), makeRatio("1"), 3);
  const Factor same(makeRatio("4.4482216152605", "4.4482216152605"), makeRatio("3.048", "3.048"),
                    2);
  for (int i = 0; i < 10000; ++i) {
    const double value = drawValue(random);
    EXPECT_EQ(bitsOf(one.multiply(value)), bitsOf(value)) << value;
    EXPECT_EQ(bitsOf(same.multiply(value)), bitsOf(value)) << value;
  }
}

// ldexp() rounds to the nearest even one as well, where the product is a denormal.
TEST(ScalingFactor, OfAPowerOfTwoOnlyChangesTheExponent) {
  TestSupport::Random random(2);
  const Factor up(makeRatio("1024"), makeRatio("0.5"), 3);
  const Factor down(makeRatio("0.0009765625"), makeRatio("2"), 3);
  for (int i = 0; i < 10000; ++i) {
    const double value = drawValue(random);
    EXPECT_EQ(bitsOf(up.multiply(value)), bitsOf(std::ldexp(value, 13))) << value;
    EXPECT_EQ(bitsOf(down.multiply(value)), bitsOf(std::ldexp(value, -13))) << value;
  }
}

TEST(ScalingFactor, IsUndoneByItsInverseWhereTheProductIsExact) {
  TestSupport::Random random(3);
  const Factor there(makeRatio("1000"), makeRatio("0.1"), 2);  // 100,000
  const Factor back(makeRatio("0.001"), makeRatio("10"), 2);
  for (int i = 0; i < 10000; ++i) {
    const double value = random.bits();
    EXPECT_EQ(there.multiply(value), value * 100000);
    EXPECT_EQ(back.multiply(there.multiply(value)), value);
  }
}

// --- Foundations

TEST(Scaling, ScalesStiffnessOfEachKindByItsOwnDimension) {
  FoundationManager manager;
  auto owned = std::make_unique<Foundation>();
  Foundation& foundation = *owned;
  manager.add(std::move(owned));
  const KvVector3D area(1, 2, 3);
  const KvVector3D line(4, 5, 6);
  const KvVector3D rotation(7, 8, 9);
  foundation.setDispArea(&area);
  foundation.setDispLine(&line);
  foundation.setRotLine(&rotation);
  foundation.setName("Raft");
  foundation.setFactorArea(0.5);
  foundation.setFactorLine(0.25);
  foundation.setFailAreaZ(Foundation::Tension);

  Scaling::apply(Scale(makeRatio("1000"), makeRatio("1000")), manager);

  KvVector3D scaled;
  foundation.getDispArea(scaled);
  EXPECT_FALSE(scaled != KvVector3D(1e-6, 2e-6, 3e-6));
  foundation.getDispLine(scaled);
  EXPECT_FALSE(scaled != KvVector3D(0.004, 0.005, 0.006));
  foundation.getRotLine(scaled);
  EXPECT_FALSE(scaled != KvVector3D(7000, 8000, 9000));
  EXPECT_EQ(foundation.getName(), "Raft");
  EXPECT_EQ(foundation.getFactorArea(), 0.5);
  EXPECT_EQ(foundation.getFactorLine(), 0.25);
  EXPECT_EQ(foundation.getFailAreaZ(), Foundation::Tension);
}

TEST(Scaling, MakesNoPartOfOneThatIsAbsent) {
  FoundationManager manager;
  manager.add(std::make_unique<Foundation>());
  Foundation& foundation = *manager.getFoundations()[0];

  Scaling::apply(Scale(makeRatio("1000"), makeRatio("1000")), manager);

  KvVector3D ignored;
  EXPECT_FALSE(foundation.getDispArea(ignored));
  EXPECT_FALSE(foundation.getDispLine(ignored));
  EXPECT_FALSE(foundation.getRotLine(ignored));
}

/// Why a rotation cannot be scaled by the factor.
std::string tellRefusal(double stiffness, const char* factor) {
  FoundationManager manager;
  manager.add(std::make_unique<Foundation>());
  Foundation& foundation = *manager.getFoundations()[0];
  foundation.setNumber(3);
  foundation.setName("Raft");
  const KvVector3D rotation(stiffness, 0, 0);
  foundation.setRotLine(&rotation);
  try {
    Scaling::apply(Scale(makeRatio(factor), makeRatio("1")), manager);
  } catch (const std::range_error& error) {
    return error.what();
  }
  return "";
}

TEST(Scaling, RefusesAValueThatBecomesTooLarge) {
  EXPECT_EQ(tellRefusal(-1e306, "1000"),
            "number 3 \"Raft\": lineRotationX -1e+306 is too large to be scaled by 1000");
}

TEST(Scaling, RefusesAValueThatBecomesZero) {
  EXPECT_EQ(tellRefusal(-1e-300, "1e-30"),
            "number 3 \"Raft\": lineRotationX -1e-300 is too small to be scaled by 1e-30");
  EXPECT_EQ(tellRefusal(0.0, "1e-30"), "");
}

}  // namespace
