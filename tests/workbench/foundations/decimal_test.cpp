#include "foundations/decimal.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string refuseDecimal(const std::string& text) {
  try {
    readDecimal(text);
    return "";
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
}

TEST(Decimal, IsReadExactly) {
  const struct {
    const char* text;
    std::uint64_t digits;
    int exponent;
  } rows[] = {{"1", 1, 0},
              {"1000", 1, 3},
              {"+1000", 1, 3},
              {"0.001", 1, -3},
              {".5", 5, -1},
              {"5.", 5, 0},
              {"000120.3400", 12034, -2},
              {"1e3", 1, 3},
              {"1E+3", 1, 3},
              {"1.5e-3", 15, -4},
              {"4.4482216152605", 44482216152605, -13},
              {"12345678901234567", 12345678901234567, 0},
              {"12345678901234567000", 12345678901234567, 3},
              {"1e30", 1, 30},
              {"0.1e31", 1, 30},
              {"1e-30", 1, -30},
              {"1.2345678901234567e-30", 12345678901234567, -46}};
  for (const auto& row : rows) {
    const Decimal decimal = readDecimal(row.text);
    EXPECT_EQ(decimal.digits, row.digits) << row.text;
    EXPECT_EQ(decimal.exponent, row.exponent) << row.text;
  }
}

TEST(Decimal, MustBeAboveZero) {
  for (const char* text : {"0", "0.000", "0e5", "-1", "-0"})
    EXPECT_EQ(
        refuseDecimal(text),
        "it takes a number above 0 such as 1000 or 0.001, of at most 17 digits, from 1e-30 to 1e30")
        << text;
}

TEST(Decimal, MustBeANumber) {
  for (const char* text : {"", "+", ".", "e3", "1e", "1e+", "1e+-3", "1e3.5", "1,5", "1.5.5", " 1",
                           "1 ", "inf", "nan", "0x10", "1e99999999999", "+-1", "++1"})
    EXPECT_NE(refuseDecimal(text), "") << text;
}

TEST(Decimal, KeepsWithinItsLimits) {
  for (const char* text : {"123456789012345678", "0.00000123456789012345678", "1.1e30", "1e31",
                           "0.9e-30", "1e-31", "1e2147483647", "1e-2147483648"})
    EXPECT_NE(refuseDecimal(text), "") << text;
}

}  // namespace
