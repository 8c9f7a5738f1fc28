#include "report/text.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

using Found::Foundation;

TEST(ReportText, RoundsLongValuesAndMarksThem) {
  const struct {
    double value;
    const char* text;
  } rows[] = {{0.0, "0"},
              {15000.0, "15000"},
              {123456789.0, "123456789"},
              {1234567890.0,
               "\xE2\x89\x88"
               "1.23e+09"},
              {350730.6658962116,
               "\xE2\x89\x88"
               "350731"},
              {-0.000012345678, "\xE2\x89\x88-1.2e-05"},
              {1e-300, "1e-300"},
              {std::numeric_limits<double>::infinity(), "inf"},
              {std::numeric_limits<double>::quiet_NaN(), "nan"}};
  for (const auto& row : rows) EXPECT_EQ(Report::showValue(row.value), row.text);
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
