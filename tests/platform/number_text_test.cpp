#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "platform/support.h"
#include "support/comma_locale.h"
#include "support/double_bits.h"

using TestSupport::bitsOf;
using TestSupport::fromBits;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Numbers by way of one attribute; C++ streams write and read them with commas meanwhile.
class Number : public testing::Test {
 protected:
  Number() : element(tree.open("numbers", false)) {}

  KvXmlAttributeData* store(const std::string& text) {
    element->setAttribute("value", text, true);
    return element->findAttribute("value");
  }

  int readInteger(const std::string& text) { return store(text)->getInteger(); }
  double readDouble(const std::string& text) { return store(text)->getDouble(); }

  std::string write(double value) {
    tree.setAttribute("value", value);
    return element->findAttribute("value")->getData();
  }

  std::string write(int value) {
    element->setAttribute("value", value, true);
    return element->findAttribute("value")->getData();
  }

  /// What comes back of a double that is written, down to the last bit.
  double passThrough(double value) {
    tree.setAttribute("value", value);
    return element->findAttribute("value")->getDouble();
  }

  void expectDoubles(const std::vector<std::pair<std::string, double>>& rows) {
    for (const auto& row : rows)
      EXPECT_EQ(bitsOf(readDouble(row.first)), bitsOf(row.second))
          << '"' << row.first.substr(0, 60) << "\" reads as " << readDouble(row.first);
  }

  void expectIntegers(const std::vector<std::pair<std::string, int>>& rows) {
    for (const auto& row : rows)
      EXPECT_EQ(readInteger(row.first), row.second) << '"' << row.first.substr(0, 60) << '"';
  }

  TestSupport::CommaLocale locale;
  KvXmlTree tree;
  KvXmlData* element;
};

using IntegerReading = Number;
using IntegerCheck = Number;
using IntegerWriting = Number;
using DoubleReading = Number;
using DoubleWriting = Number;
using DoubleRoundTrip = Number;

std::string zeros(std::size_t count) { return std::string(count, '0'); }

/// 1234.5 as `format` has it printed.
std::string format(const char* format) {
  KvXmlN::Data data("number");
  data.setAttribute("value", 1234.5, format);
  return data.findAttribute("value")->getData();
}

int countDigits(const std::string& text) {
  const std::string mantissa = text.substr(0, text.find('e'));
  std::string digits;
  std::copy_if(mantissa.begin(), mantissa.end(), std::back_inserter(digits),
               [](unsigned char c) { return std::isdigit(c) != 0; });
  const std::size_t first = digits.find_first_not_of('0');
  const std::size_t last = digits.find_last_not_of('0');
  return first == std::string::npos ? 1 : static_cast<int>(last - first + 1);
}

}  // namespace

TEST_F(IntegerReading, TakesPlainNumbers) {
  expectIntegers({{"0", 0}, {"7", 7}, {"-7", -7}, {"-0", 0}, {"123456", 123456}});
}

TEST_F(IntegerReading, TakesLeadingZerosAsDecimal) {
  expectIntegers({{"007", 7}, {"-010", -10}, {"08", 8}, {zeros(400) + "12", 12}});
}

TEST_F(IntegerReading, TakesWhiteSpaceAround) {
  expectIntegers({{" 7", 7}, {"7 ", 7}, {" \t\r\n7\n\r\t ", 7}, {" -7 ", -7}});
}

TEST_F(IntegerReading, TakesOneLeadingPlus) { expectIntegers({{"+7", 7}, {" +7 ", 7}, {"+0", 0}}); }

TEST_F(IntegerReading, TakesBothLimitsOfInt) {
  expectIntegers({{"2147483647", INT_MAX},
                  {"+2147483647", INT_MAX},
                  {"2147483646", INT_MAX - 1},
                  {"-2147483648", INT_MIN},
                  {"-2147483647", INT_MIN + 1}});
}

TEST_F(IntegerReading, GivesZeroBeyondTheLimitsOfInt) {
  expectIntegers({{"2147483648", 0},
                  {"-2147483649", 0},
                  {"4294967297", 0},
                  {"18446744073709551617", 0},
                  {"1" + zeros(400), 0},
                  {"-1" + zeros(400), 0}});
}

TEST_F(IntegerReading, GivesZeroForMoreThanOneSign) {
  expectIntegers({{"++7", 0}, {"+-7", 0}, {"-+7", 0}, {"--7", 0}, {"+", 0}, {"-", 0}, {"+ 7", 0}});
}

TEST_F(IntegerReading, GivesZeroForFractionsAndExponents) {
  expectIntegers({{"7.5", 0}, {"7.0", 0}, {"7.", 0}, {"1e3", 0}, {"1,5", 0}, {"1.234", 0}});
}

TEST_F(IntegerReading, GivesZeroUnlessTheWholeTextIsTheNumber) {
  expectIntegers({{"12abc", 0},
                  {"abc12", 0},
                  {"1 2", 0},
                  {"12X", 0},
                  {"X12", 0},
                  {"12;", 0},
                  {"0x10", 0},
                  {"", 0},
                  {"   ", 0},
                  {"inf", 0},
                  {"nan", 0},
                  {"true", 0}});
}

TEST_F(IntegerReading, GivesZeroForOtherWhiteSpace) {
  element->setAttribute("value", std::string("\xC2\xA0") + "7", true);  // no-break space

  EXPECT_EQ(element->findAttribute("value")->getInteger(), 0);
}

TEST_F(IntegerReading, WorksOnParsedText) {
  const auto parsed = PlatformTest::parse("<a plain='12' spaced='\n +13 ' wrong='12abc'/>");
  const KvXmlData* const root = parsed->findRoot("a", true);

  EXPECT_EQ(root->findAttribute("plain")->getInteger(), 12);
  EXPECT_EQ(root->findAttribute("spaced")->getInteger(), 13);
  EXPECT_EQ(root->findAttribute("wrong")->getInteger(), 0);
}

TEST_F(IntegerCheck, ComparesTheValueNotTheText) {
  for (const char* text : {"7", "+7", " 7 ", "007"})
    EXPECT_TRUE(store(text)->checkValue(7)) << '"' << text << '"';
  EXPECT_TRUE(store("-7")->checkValue(-7));
  EXPECT_TRUE(store("-0")->checkValue(0));
}

TEST_F(IntegerCheck, RefusesOtherValues) {
  EXPECT_FALSE(store("7")->checkValue(-7));
  EXPECT_FALSE(store("7")->checkValue(70));
  EXPECT_FALSE(store("70")->checkValue(7));
}

TEST_F(IntegerCheck, RefusesWhatIsNoIntegerEvenForZero) {
  for (const char* text : {"", " ", "abc", "0abc", "0.0", "0e0", "7.5", "1,5", "+-0", "2147483648"})
    EXPECT_FALSE(store(text)->checkValue(0)) << '"' << text << '"';
}

TEST_F(IntegerCheck, GoesToBothLimitsOfInt) {
  EXPECT_TRUE(store("2147483647")->checkValue(INT_MAX));
  EXPECT_TRUE(store("-2147483648")->checkValue(INT_MIN));
  EXPECT_FALSE(store("4294967295")->checkValue(-1));
}

TEST_F(IntegerWriting, HasNoGrouping) {
  EXPECT_EQ(write(0), "0");
  EXPECT_EQ(write(-1), "-1");
  EXPECT_EQ(write(1234567), "1234567");
  EXPECT_EQ(write(INT_MAX), "2147483647");
  EXPECT_EQ(write(INT_MIN), "-2147483648");
}

TEST_F(DoubleReading, TakesPlainNumbers) {
  expectDoubles({{"0", 0.0},
                 {"-0", -0.0},
                 {"7", 7.0},
                 {"1.5", 1.5},
                 {"-1.5", -1.5},
                 {".5", 0.5},
                 {"5.", 5.0},
                 {"1.234", 1.234},
                 {"0.1", 0.1}});
}

TEST_F(DoubleReading, TakesExponents) {
  expectDoubles({{"1e3", 1000.0},
                 {"1E3", 1000.0},
                 {"1e+3", 1000.0},
                 {"25e-1", 2.5},
                 {"1e0003", 1000.0},
                 {"-1.5E-7", -1.5e-7}});
}

TEST_F(DoubleReading, TakesWhiteSpaceAround) {
  expectDoubles({{" 1.5", 1.5}, {"1.5 ", 1.5}, {" \t\r\n1.5\n\r\t ", 1.5}});
}

TEST_F(DoubleReading, TakesOneLeadingPlus) {
  expectDoubles({{"+1.5", 1.5}, {" +1.5 ", 1.5}, {"+.5", 0.5}, {"+0", 0.0}, {"+1e3", 1000.0}});
}

TEST_F(DoubleReading, GivesZeroForMoreThanOneSign) {
  expectDoubles({{"++1", 0.0},
                 {"+-1", 0.0},
                 {"-+1", 0.0},
                 {"--1", 0.0},
                 {"+", 0.0},
                 {"-", 0.0},
                 {"+ 1", 0.0},
                 {"- 1", 0.0},
                 {"++inf", 0.0},
                 {"+-inf", 0.0}});
}

TEST_F(DoubleReading, GivesZeroUnlessTheWholeTextIsTheNumber) {
  expectDoubles({{"12abc", 0.0},
                 {"abc12", 0.0},
                 {"1 2", 0.0},
                 {"1.5.2", 0.0},
                 {"1e", 0.0},
                 {"1e+", 0.0},
                 {"1e5x", 0.0},
                 {"1e1.5", 0.0},
                 {"1e400x", 0.0},
                 {".", 0.0},
                 {"e5", 0.0},
                 {"", 0.0},
                 {" ", 0.0},
                 {"true", 0.0}});
}

TEST_F(DoubleReading, GivesZeroForADecimalComma) {
  expectDoubles({{"1,5", 0.0}, {"1.234,5", 0.0}, {"1,234.5", 0.0}, {",5", 0.0}});
}

TEST_F(DoubleReading, GivesZeroForHexadecimal) {
  expectDoubles({{"0x10", 0.0}, {"0x1p3", 0.0}, {"1p3", 0.0}, {"-0x1", 0.0}, {"ff", 0.0}});
}

TEST_F(DoubleReading, TakesInfinityOfEitherSignInAnyCase) {
  expectDoubles({{"inf", infinity},
                 {"-inf", -infinity},
                 {"+inf", infinity},
                 {" INF ", infinity},
                 {"Infinity", infinity},
                 {"-INFINITY", -infinity}});
}

TEST_F(DoubleReading, TakesNotANumber) {
  for (const char* text : {"nan", "NaN", "NAN", "-nan", "+nan", " nan "})
    EXPECT_TRUE(std::isnan(readDouble(text))) << '"' << text << '"';
}

TEST_F(DoubleReading, GivesZeroForTextThatStartsLikeInfinityOrNotANumber) {
  expectDoubles({{"in", 0.0}, {"info", 0.0}, {"na", 0.0}, {"nano", 0.0}, {"infinit", 0.0}});
}

TEST_F(DoubleReading, GivesInfinityAboveTheRange) {
  expectDoubles({{"1e400", infinity},
                 {"-1e400", -infinity},
                 {"+1e400", infinity},
                 {" 1E+400 ", infinity},
                 {"1e309", infinity},
                 {"12345e305", infinity},
                 {"0.001e312", infinity},
                 {"1.7976931348623159e308", infinity},
                 {"-1.7976931348623159e308", -infinity},
                 {"1e99999999999999999999", infinity},
                 {"-1e99999999999999999999", -infinity}});
}

TEST_F(DoubleReading, GivesInfinityForHundredsOfDigits) {
  expectDoubles({{std::string(400, '9'), infinity},
                 {"-" + std::string(400, '9'), -infinity},
                 {"1" + zeros(400), infinity},
                 {"1" + zeros(400) + ".5", infinity},
                 {zeros(400) + "1" + zeros(400), infinity}});
}

TEST_F(DoubleReading, GivesZeroOfItsSignBelowTheRange) {
  expectDoubles({{"1e-400", 0.0},
                 {"-1e-400", -0.0},
                 {"+1e-400", 0.0},
                 {"100000e-350", 0.0},
                 {"0." + zeros(400) + "1", 0.0},
                 {"-0." + zeros(400) + "1", -0.0},
                 {"-." + zeros(400) + "1", -0.0},
                 {"0." + zeros(400) + "1e50", 0.0},
                 {"1e-99999999999999999999", 0.0},
                 {"-1e-99999999999999999999", -0.0}});
}

TEST_F(DoubleReading, TakesTheLimitsOfTheRange) {
  expectDoubles({{"1.7976931348623157e308", std::numeric_limits<double>::max()},
                 {"1.7976931348623158e308", std::numeric_limits<double>::max()},
                 {"2.2250738585072014e-308", std::numeric_limits<double>::min()},
                 {"2.225073858507201e-308", fromBits(0x000FFFFFFFFFFFFFu)},
                 {"5e-324", fromBits(1)},
                 {"4.9406564584124654e-324", fromBits(1)},
                 {"2.4703282292062328e-324", fromBits(1)},
                 {"2.4703282292062327e-324", 0.0},
                 {"-2.4703282292062327e-324", -0.0}});
}

TEST_F(DoubleReading, LooksAtTheValueNotAtTheLengthOfTheText) {
  expectDoubles({{"1" + zeros(400) + "e-400", 1.0},
                 {"0." + zeros(400) + "1e401", 1.0},
                 {zeros(400) + "1.5", 1.5},
                 {"1.5" + zeros(400), 1.5},
                 {"-0." + zeros(400), -0.0},
                 {zeros(400), 0.0},
                 {"0e99999999999999999999", 0.0},
                 {"-0e99999999999999999999", -0.0},
                 {"0.000e-99999999999999999999", 0.0}});
}

TEST_F(DoubleReading, RoundsLongTextsToTheNearest) {
  expectDoubles({{"0.1000000000000000055511151231257827021181583404541015625", 0.1},
                 {"9007199254740993", 9007199254740992.0},
                 {"9007199254740993." + zeros(300) + "1", 9007199254740994.0}});
}

TEST_F(DoubleReading, WorksOnParsedText) {
  const auto parsed = PlatformTest::parse("<a plain='1.5' spaced='\n +2.5 ' wrong='1,5'/>");
  const KvXmlData* const root = parsed->findRoot("a", true);

  EXPECT_EQ(root->findAttribute("plain")->getDouble(), 1.5);
  EXPECT_EQ(root->findAttribute("spaced")->getDouble(), 2.5);
  EXPECT_EQ(root->findAttribute("wrong")->getDouble(), 0.0);
}

TEST_F(DoubleWriting, IsTheShortestText) {
  const std::pair<double, const char*> rows[] = {
      {0.0, "0"},
      {-0.0, "-0"},
      {1.0, "1"},
      {-1.5, "-1.5"},
      {0.1, "0.1"},
      {1.0 / 3.0, "0.3333333333333333"},
      {0.1 + 0.2, "0.30000000000000004"},
      {1234.5, "1234.5"},
      {1234567.0, "1234567"},
      {100000.0, "1e+05"},
      {10000.0, "10000"},
      {0.00001, "1e-05"},
      {1e22, "1e+22"},
      {1200000.0, "1200000"},
      {12000000.0, "1.2e+07"},
      {-100000.0, "-1e+05"},
      {1000100000.0, "1000100000"},
      {123456700000.0, "123456700000"},
      {1234567000000.0, "1.234567e+12"},
      {0.001, "0.001"},
      {0.0001, "1e-04"},
      {-0.0009, "-9e-04"},
      {0.00012, "0.00012"},
      {0.000012, "1.2e-05"},
      {1e15, "1e+15"},
      {1e16, "1e+16"},
      {1234567890123456.0, "1234567890123456"},
      {12345678901200000.0, "12345678901200000"},
      {12345678901234560.0, "12345678901234560"},
      {9007199254740993.0, "9007199254740992"},
      {123456789012345680.0, "123456789012345680"},
      {-9223372036854775808.0, "-9223372036854775808"},
      {9223372036854775808.0, "9223372036854775808"},
      {12345678901234567168.0, "12345678901234567168"},
      {18446744073709551616.0, "18446744073709551616"},
      {1234567890123456789012.0, "1234567890123456774144"},
      {9999999999999997902848.0, "9.999999999999998e+21"},
      {12345678901234567890123.0, "1.2345678901234568e+22"},
      {5e-324, "5e-324"},
      {1.7976931348623157e308, "1.7976931348623157e+308"},
      {2.2250738585072014e-308, "2.2250738585072014e-308"},
      {-2.2250738585072014e-308, "-2.2250738585072014e-308"}};
  for (const auto& row : rows) EXPECT_EQ(write(row.first), row.second);
}

TEST_F(DoubleWriting, HasWordsForInfinityAndNotANumber) {
  EXPECT_EQ(write(infinity), "inf");
  EXPECT_EQ(write(-infinity), "-inf");
  EXPECT_EQ(write(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST_F(DoubleWriting, NeedsEveryDigitItWrites) {
  std::mt19937_64 random(20011);
  for (int i = 0; i < 50000; ++i) {
    const double value = fromBits(random());
    if (!std::isfinite(value)) continue;
    const std::string text = write(value);
    if (text.find_first_of(".e") == std::string::npos) continue;  // an integer, written out
    const int digits = countDigits(text);
    ASSERT_LE(digits, 17) << text;
    if (digits == 1) continue;
    char shorter[40];
    std::snprintf(shorter, sizeof shorter, "%.*e", digits - 2, value);
    ASSERT_NE(std::strtod(shorter, nullptr), value) << text << " could be " << shorter;
  }
}

TEST_F(DoubleRoundTrip, KeepsEveryBitOfRandomNumbers) {
  std::mt19937_64 random(4711);
  for (int i = 0; i < 300000; ++i) {
    const std::uint64_t bits = random();
    const double value = fromBits(bits);
    if (std::isnan(value)) continue;
    ASSERT_EQ(bitsOf(passThrough(value)), bits) << write(value);
  }
}

TEST_F(DoubleRoundTrip, KeepsEveryBitOfUsualNumbers) {
  std::mt19937_64 random(1147);
  std::uniform_real_distribution<double> usual(-1e6, 1e6);
  for (int i = 0; i < 100000; ++i) {
    const double value = usual(random);
    ASSERT_EQ(bitsOf(passThrough(value)), bitsOf(value)) << write(value);
  }
}

TEST_F(DoubleRoundTrip, KeepsEveryBitOfDenormals) {
  std::mt19937_64 random(815);
  for (int i = 0; i < 50000; ++i) {
    const std::uint64_t bits = random() & 0x800FFFFFFFFFFFFFu;
    ASSERT_EQ(bitsOf(passThrough(fromBits(bits))), bits) << write(fromBits(bits));
  }
}

TEST_F(DoubleRoundTrip, KeepsEveryPowerOfTwoAndItsNeighbours) {
  for (int exponent = -1074; exponent <= 1023; ++exponent) {
    const double power = std::ldexp(1.0, exponent);
    for (double value : {power, std::nextafter(power, 0.0), std::nextafter(power, infinity)}) {
      ASSERT_EQ(bitsOf(passThrough(value)), bitsOf(value)) << write(value);
      ASSERT_EQ(bitsOf(passThrough(-value)), bitsOf(-value)) << write(-value);
    }
  }
}

TEST_F(DoubleRoundTrip, KeepsZerosOfBothSignsAndInfinities) {
  for (double value : {0.0, -0.0, infinity, -infinity})
    EXPECT_EQ(bitsOf(passThrough(value)), bitsOf(value));
}

TEST_F(DoubleRoundTrip, KeepsNotANumber) {
  EXPECT_TRUE(std::isnan(passThrough(std::numeric_limits<double>::quiet_NaN())));
  EXPECT_TRUE(std::isnan(passThrough(-std::numeric_limits<double>::quiet_NaN())));
}

TEST_F(DoubleRoundTrip, KeepsEveryBitThroughAPrintedDocument) {
  std::mt19937_64 random(99);
  std::vector<std::uint64_t> bits;
  while (bits.size() < 2000) {
    const std::uint64_t candidate = random();
    if (!std::isnan(fromBits(candidate))) bits.push_back(candidate);
  }
  for (std::uint64_t value : bits) {
    auto* const entry = new KvXmlData("number", element);
    element->addChild(entry);
    tree.setCurrent(entry);
    tree.setAttribute("value", fromBits(value));
  }

  const auto read = PlatformTest::parse(PlatformTest::print(tree));

  const std::vector<KvXmlData*>& entries = read->findRoot("numbers", true)->getChildren();
  ASSERT_EQ(entries.size(), bits.size());
  for (std::size_t i = 0; i < bits.size(); ++i)
    ASSERT_EQ(bitsOf(entries[i]->findAttribute("value")->getDouble()), bits[i]);
}

TEST_F(Number, IsAlikeUnderACommaLocaleOfC) {
  const TestSupport::CommaCLocale localeOfC;
  if (!localeOfC.isInstalled()) GTEST_SKIP() << "no locale with a decimal comma is installed";

  EXPECT_EQ(write(1234.5), "1234.5");
  EXPECT_EQ(write(1234567), "1234567");
  EXPECT_EQ(format("%.1f"), "1234.5");
  EXPECT_EQ(format("%e"), "1.234500e+03");
  EXPECT_EQ(format("%#g"), "1234.50");
  EXPECT_EQ(format("%a"), "0x1.34ap+10");
  EXPECT_EQ(format("%.500f"), "1234.5" + zeros(499));
  expectDoubles(
      {{"1234.5", 1234.5}, {"1,5", 0.0}, {"1e400", infinity}, {"1" + zeros(400), infinity}});
}
