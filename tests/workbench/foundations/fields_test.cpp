#include "foundations/fields.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Fields::Value;
using Found::Foundation;

/// Every field as people read it.
std::vector<std::string> showAll(Foundation& foundation) {
  std::vector<std::string> texts;
  for (const Fields::Field& field : Fields::list())
    texts.push_back(std::string(field.name) + "=" + Fields::show(field.get(foundation)));
  return texts;
}

TEST(Fields, OfANewFoundationAreMostlyNone) {
  Foundation foundation;
  foundation.setNumber(1);

  EXPECT_EQ(showAll(foundation),
            (std::vector<std::string>{"number=1", "name=", "generated=no", "areaX=-", "areaY=-",
                                      "areaZ=-", "areaFailureZ=none", "areaFactor=0", "lineX=-",
                                      "lineY=-", "lineZ=-", "lineRotationX=-", "lineFailureX=none",
                                      "lineFailureY=none", "lineFailureZ=none", "lineFactor=0"}));
}

TEST(Fields, AreAllThatDocumentsHold) {
  const KvVector3D area(1.0, 2.0, 3.0);
  const KvVector3D line(4.0, 5.0, 6.0);
  const KvVector3D rotation(7.0, 0.0, 0.0);
  Foundation foundation(&area, &rotation);
  foundation.setDispLine(&line);
  foundation.setNumber(8);
  foundation.setName("N\xFC");
  foundation.setGenerated(true);
  foundation.setFailAreaZ(Foundation::Tension);
  foundation.setFactorArea(0.1);
  foundation.setFailLineX(Foundation::Compression);
  foundation.setFailLineY(Foundation::Tension);
  foundation.setFailLineZ(static_cast<Foundation::Failure>(7));
  foundation.setFactorLine(0.2);

  EXPECT_EQ(
      showAll(foundation),
      (std::vector<std::string>{"number=8", "name=N\xC3\xBC", "generated=yes", "areaX=1", "areaY=2",
                                "areaZ=3", "areaFailureZ=tension", "areaFactor=0.1", "lineX=4",
                                "lineY=5", "lineZ=6", "lineRotationX=7", "lineFailureX=compression",
                                "lineFailureY=tension", "lineFailureZ=7", "lineFactor=0.2"}));
}

TEST(FieldsAlike, AreAbsentAndZero) {
  EXPECT_TRUE(Fields::areAlike(Value(), Value()));
  EXPECT_TRUE(Fields::areAlike(Value(), Value(0.0)));
  EXPECT_TRUE(Fields::areAlike(Value(-0.0), Value()));
  EXPECT_FALSE(Fields::areAlike(Value(), Value(1e-300)));
}

TEST(FieldsAlike, AreExactlyTheSameNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(Fields::areAlike(Value(1.5), Value(1.5)));
  EXPECT_TRUE(Fields::areAlike(Value(nan), Value(nan)));
  EXPECT_FALSE(Fields::areAlike(Value(nan), Value(0.0)));
  EXPECT_FALSE(Fields::areAlike(Value(1.0), Value(1.0 + 1e-15)));
  EXPECT_FALSE(Fields::areAlike(Value(1), Value(2)));
  EXPECT_FALSE(Fields::areAlike(Value(true), Value(false)));
}

TEST(FieldsAlike, AreOnlyEqualNames) {
  EXPECT_TRUE(Fields::areAlike(Value(std::string("\xC3\xBC")), Value(std::string("\xC3\xBC"))));
  EXPECT_FALSE(Fields::areAlike(Value(std::string("a")), Value(std::string("A"))));
  EXPECT_FALSE(Fields::areAlike(Value(std::string("1")), Value(1)));
}

TEST(FieldsDifferent, AreToldWithBothValues) {
  Foundation first;
  Foundation second;
  first.setName("A");
  second.setName("A");
  first.setFactorArea(0.5);
  second.setFailLineY(Foundation::Tension);

  std::vector<std::string> texts;
  for (const Fields::Difference& difference : Fields::compare(first, second))
    texts.push_back(std::string(difference.field.name) + ": " + Fields::show(difference.first) +
                    " -> " + Fields::show(difference.second));

  EXPECT_EQ(texts,
            (std::vector<std::string>{"areaFactor: 0.5 -> 0", "lineFailureY: none -> tension"}));
}

TEST(Fields, DescribeAFoundationByNumberAndName) {
  Foundation foundation;
  foundation.setNumber(3);
  foundation.setName("a\n");

  EXPECT_EQ(Fields::describe(foundation), "number 3 \"a\\n\"");
}

/// What a field of a foundation shows that was given a text.
std::string showSet(const char* name, const std::string& text) {
  Found::Foundation foundation;
  const Fields::Field& field = *Fields::find(name);
  field.set(foundation, Fields::parse(field, text));
  return Fields::show(field.get(foundation));
}

TEST(FieldsSet, TakeTextsOfTheirKind) {
  const struct {
    const char* field;
    const char* text;
    const char* shown;
  } rows[] = {{"number", "7", "7"},         {"name", "Raft", "Raft"},
              {"generated", "yes", "yes"},  {"generated", "true", "yes"},
              {"generated", "no", "no"},    {"generated", "", "no"},
              {"areaX", "1.5e3", "1500"},   {"lineY", "-2", "-2"},
              {"lineRotationX", "2", "2"},  {"lineRotationX", "", "-"},
              {"lineRotationX", "-", "-"},  {"areaFailureZ", "tension", "tension"},
              {"lineFailureX", "", "none"}, {"lineFailureY", "7", "7"},
              {"areaFactor", "0.1", "0.1"}, {"lineFactor", "", "0"}};
  for (const auto& row : rows) EXPECT_EQ(showSet(row.field, row.text), row.shown) << row.field;
}

TEST(FieldsSet, RefuseOtherTexts) {
  const struct {
    const char* field;
    std::string text;
    const char* expected;
  } rows[] = {{"number", "0", "a whole number from 1 on"},
              {"number", "1.5", "a whole number from 1 on"},
              {"name", "", "a text in UTF-8, without control characters"},
              {"name", "a\nb", "a text in UTF-8, without control characters"},
              {"name", "\xFC", "a text in UTF-8, without control characters"},
              {"generated", "1", "yes or no"},
              {"areaZ", "1,5", "a number such as 1500 or 2.5e4, or nothing"},
              {"areaZ", "nan", "a number such as 1500 or 2.5e4, or nothing"},
              {"areaFailureZ", "shear", "tension, compression or none"},
              {"areaFailureZ", "1x", "tension, compression or none"},
              {"areaFactor", "inf", "a number such as 0.1"}};
  for (const auto& row : rows) {
    try {
      Fields::parse(*Fields::find(row.field), row.text);
      ADD_FAILURE() << row.field << " takes " << row.text;
    } catch (const std::invalid_argument& error) {
      EXPECT_STREQ(error.what(), row.expected);
    }
  }
}

TEST(FieldsSet, TakeAVectorAwayWithItsLastComponent) {
  const KvVector3D both(1.0, 0.0, 2.0);
  Found::Foundation foundation;
  foundation.setDispArea(&both);
  KvVector3D area;

  Fields::find("areaX")->set(foundation, {});
  EXPECT_TRUE(foundation.getDispArea(area));
  Fields::find("areaZ")->set(foundation, {});
  EXPECT_FALSE(foundation.getDispArea(area));
}

TEST(FieldsFind, NothingByAnotherName) { EXPECT_EQ(Fields::find("areaQ"), nullptr); }

TEST(Fields, KeepTheSignOfAZeroFactor) {
  Foundation foundation;
  for (const char* name : {"areaFactor", "lineFactor"}) {
    const Fields::Field& field = *Fields::find(name);
    field.set(foundation, -0.0);
    EXPECT_EQ(Fields::show(field.get(foundation)), "-0");
  }
}

}  // namespace
