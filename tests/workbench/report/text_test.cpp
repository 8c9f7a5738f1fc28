#include "report/text.h"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Found::Foundation;

TEST(ReportText, RoundsToFiveDigitsAndMarksThatItDid) {
  const struct {
    double value;
    const char* text;
  } rows[] = {{12345.0, "12345"},
              {12345.6,
               "\xE2\x89\x88"
               "12346"},
              {123450.0, "123450"},
              {123456.0,
               "\xE2\x89\x88"
               "123460"},
              {350730.6658962116,
               "\xE2\x89\x88"
               "350730"},
              {13445080.768799,
               "\xE2\x89\x88"
               "13445000"},
              {0.30000000000000004,
               "\xE2\x89\x88"
               "0.3"},
              {-123456.0, "\xE2\x89\x88-123460"},
              {0.5, "0.5"},
              {0.0, "0"}};
  for (const auto& row : rows) EXPECT_EQ(Report::showRounded(row.value), row.text);
}

TEST(ReportText, RoundsUpToAnotherDigit) {
  EXPECT_EQ(Report::showRounded(9999.96),
            "\xE2\x89\x88"
            "10000");
  EXPECT_EQ(Report::showRounded(99999.4),
            "\xE2\x89\x88"
            "99999");
  EXPECT_EQ(Report::showRounded(99999.9),
            "\xE2\x89\x88"
            "100000");
  EXPECT_EQ(Report::showRounded(999999.9),
            "\xE2\x89\x88"
            "1000000");
  EXPECT_EQ(Report::showRounded(999999999.9),
            "\xE2\x89\x88"
            "1000000000");
}

TEST(ReportText, RoundsHugeAndTinyValuesToPowersOfTen) {
  EXPECT_EQ(Report::showRounded(1234567890.0),
            "\xE2\x89\x88"
            "1.2346e+09");
  EXPECT_EQ(Report::showRounded(1.7976931348623157e308),
            "\xE2\x89\x88"
            "1.7977e+308");
  EXPECT_EQ(Report::showRounded(1.23456e-7),
            "\xE2\x89\x88"
            "1.2346e-07");
  EXPECT_EQ(Report::showRounded(5e-324), "5e-324");
}

TEST(ReportText, MarksNoValueAsRoundedThatIsExact) {
  EXPECT_EQ(Report::showRounded(100000.0), "100000");
  EXPECT_EQ(Report::showRounded(0.00001), "0.00001");
  EXPECT_EQ(Report::showRounded(1e-9), "1e-09");
  EXPECT_EQ(Report::showRounded(1e9), "1000000000");
  EXPECT_EQ(Report::showRounded(2e20), "2e+20");
}

TEST(ReportText, RoundsNothingThatIsNoNumber) {
  EXPECT_EQ(Report::showRounded(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(Report::showRounded(-std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_EQ(Report::showRounded(std::numeric_limits<double>::quiet_NaN()), "nan");
  EXPECT_EQ(Report::showRounded(-std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(ReportRanges, AreOfNeighboursInAscendingOrder) {
  EXPECT_EQ(Report::showRanges({}), "");
  EXPECT_EQ(Report::showRanges({7}), "7");
  EXPECT_EQ(Report::showRanges({1, 2}), "1-2");
  EXPECT_EQ(Report::showRanges({12, 3, 1, 2}), "1-3, 12");
  EXPECT_EQ(Report::showRanges({1, 3, 5, 6}), "1, 3, 5-6");
}

TEST(ReportRanges, HoldEachNumberOnce) {
  EXPECT_EQ(Report::showRanges({4, 4, 5, 4, 9, 9}), "4-5, 9");
}

TEST(ReportRanges, AreOfNegativeNumbersAsWell) {
  EXPECT_EQ(Report::showRanges({-3, -1, 0, -7, -2}), "-7, -3 to 0");
}

TEST(ReportRanges, ReachToTheLimitsOfNumbers) {
  EXPECT_EQ(Report::showRanges({std::numeric_limits<int>::max(), std::numeric_limits<int>::min(),
                                std::numeric_limits<int>::max() - 1}),
            "-2147483648, 2147483646-2147483647");
}

TEST(ReportRanges, OfManyAreTheFirstFortyAndTheNumberOfTheOthers) {
  std::vector<int> numbers;
  std::string forty;
  for (int i = 1; i <= 40; ++i) {
    numbers.push_back(10 * i);
    forty += (i == 1 ? "" : ", ") + std::to_string(10 * i);
  }
  EXPECT_EQ(Report::showRanges(numbers), forty);

  for (const int number : {501, 502, 503, 601}) numbers.push_back(number);
  EXPECT_EQ(Report::showRanges(numbers), forty + " and 4 more");
}

TEST(ReportText, ShortensNames) {
  const std::string name(40, 'x');

  EXPECT_EQ(Report::shortenName(name), name);
  EXPECT_EQ(Report::shortenName(name + "y"), std::string(39, 'x') + "\xE2\x80\xA6");
  EXPECT_EQ(Report::shortenName(" "), "\" \"");
}

TEST(ReportText, ShortensUnitsAndMakesThemVisible) {
  const Units shown = Report::showUnits({"a very long force", "\x01"});

  EXPECT_EQ(shown.force, "a very long\xE2\x80\xA6");
  EXPECT_EQ(shown.length, "\\x01");
}

TEST(ReportText, ShowsNamesThatConsistOfBlanks) {
  EXPECT_EQ(Report::showName("A b"), "A b");
  EXPECT_EQ(Report::showName(" "), "\" \"");
  EXPECT_EQ(Report::showName(""), "\"\"");
  EXPECT_EQ(Report::showName("\xE2\x80\x8B\xC2\xAD"), "\"\\u200B\\u00AD\"");
  EXPECT_EQ(Report::showName("a\n"), "a\\n");
}

TEST(ReportText, LimitsMarksOverOneLetter) {
  const std::string mark = "\xCC\x81";
  const std::string four = mark + mark + mark + mark;

  EXPECT_EQ(Report::limitMarks("a" + four + "b"), "a" + four + "b");
  EXPECT_EQ(Report::limitMarks("a" + four + mark + mark + "b"), "a" + four +
                                                                    "\xE2\x80\xA6"
                                                                    "b");
}

TEST(ReportText, NamesFailures) {
  EXPECT_EQ(Report::nameFailure(Foundation::None), "");
  EXPECT_EQ(Report::nameFailure(Foundation::Tension), "tension");
  EXPECT_EQ(Report::nameFailure(Foundation::Compression), "compression");
  EXPECT_EQ(Report::nameFailure(static_cast<Foundation::Failure>(7)), "mode 7");
}

TEST(ReportText, Counts) {
  EXPECT_EQ(Report::count(0, "finding"), "0 findings");
  EXPECT_EQ(Report::count(1, "finding"), "1 finding");
  EXPECT_EQ(Report::showSpan("row", 13, 13), "row 13");
  EXPECT_EQ(Report::showSpan("row", 13, 24), "rows 13 to 24");
}

TEST(ReportText, JoinsWhatIsThere) {
  EXPECT_EQ(Report::join("", ""), "");
  EXPECT_EQ(Report::join("a", ""), "a");
  EXPECT_EQ(Report::join("", "b"), "b");
  EXPECT_EQ(Report::join("a", "b"), "a, b");
  EXPECT_EQ(Report::listMarks(true, true), "current, generated");
  EXPECT_EQ(Report::listMarks(false, false), "");
}

}  // namespace
