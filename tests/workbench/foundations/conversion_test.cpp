#include "foundations/conversion.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

using Scaling::Factor;
using Scaling::readConversion;

double convertArea(const char* units) {
  const Scaling::Conversion conversion = readConversion(units);
  return Factor(conversion.force, conversion.length, 3).multiply(1.0);
}

double convertForce(const char* units) {
  return Factor(readConversion(units).force, {{1, 0}}, 0).multiply(1.0);
}

double convertLength(const char* units) {
  return Factor(readConversion(units).length, {{1, 0}}, 0).multiply(1.0);
}

std::string refuse(const char* units) {
  try {
    readConversion(units);
    return "";
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
}

TEST(UnitConversion, KnowsUnitsOfForce) {
  EXPECT_EQ(convertForce("kN,m:N,m"), 1000);
  EXPECT_EQ(convertForce("MN,m:kN,m"), 1000);
  EXPECT_EQ(convertForce("lbf,m:N,m"), 4.4482216152605);
  EXPECT_EQ(convertForce("kip,m:lbf,m"), 1000);
}

TEST(UnitConversion, KnowsUnitsOfLength) {
  EXPECT_EQ(convertLength("N,m:N,mm"), 1000);
  EXPECT_EQ(convertLength("N,m:N,cm"), 100);
  EXPECT_EQ(convertLength("N,dm:N,cm"), 10);
  EXPECT_EQ(convertLength("N,ft:N,m"), 0.3048);
  EXPECT_EQ(convertLength("N,ft:N,in"), 12);
}

TEST(UnitConversion, IsOneFactorForEachKind) {
  EXPECT_EQ(convertArea("kN,m:N,mm"), 1e-6);
  EXPECT_EQ(convertArea("kip,in:lbf,in"), 1000);
}

TEST(UnitConversion, NamesTheUnits) {
  const Scaling::Conversion conversion = readConversion("kN,m:N,mm");

  EXPECT_EQ(conversion.from, (Units{"kN", "m"}));
  EXPECT_EQ(conversion.to, (Units{"N", "mm"}));
}

TEST(UnitConversion, RefusesUnitsThatItDoesNotKnow) {
  EXPECT_EQ(refuse("kn,m:N,mm"), "there is no unit of force \"kn\"; did you mean kN?");
  EXPECT_EQ(refuse("kN,m:kips,ft"), "there is no unit of force \"kips\"; did you mean kip?");
  EXPECT_EQ(refuse("kN,m:N,inch"),
            "there is no unit of length \"inch\"; there are m, dm, cm, mm, ft, in");
}

TEST(UnitConversion, RefusesWhatIsNoPairOfUnits) {
  for (const char* units : {"", "kN,m", "kN:N", "kN,m:N,mm:kN,m", "kN,m,m:N,mm"})
    EXPECT_EQ(refuse(units), "it takes units of force and length such as kN,m:N,mm") << units;
}

}  // namespace
