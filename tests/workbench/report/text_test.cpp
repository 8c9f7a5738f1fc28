#include "report/text.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "report/html.h"

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
  for (const auto& row : rows) EXPECT_EQ(ReportText::showValue(row.value), row.text);
}

TEST(ReportText, ShowsNamesThatConsistOfBlanks) {
  EXPECT_EQ(ReportText::showName("A b"), "A b");
  EXPECT_EQ(ReportText::showName(" "), "\" \"");
  EXPECT_EQ(ReportText::showName(""), "\"\"");
  EXPECT_EQ(ReportText::showName("\xE2\x80\x8B\xC2\xAD"), "\"\\u200B\\u00AD\"");
  EXPECT_EQ(ReportText::showName("a\n"), "a\\n");
}

TEST(ReportText, LimitsMarksOverOneLetter) {
  const std::string mark = "\xCC\x81";
  const std::string four = mark + mark + mark + mark;

  EXPECT_EQ(ReportText::limitMarks("a" + four + "b"), "a" + four + "b");
  EXPECT_EQ(ReportText::limitMarks("a" + four + mark + mark + "b"), "a" + four +
                                                                        "\xE2\x80\xA6"
                                                                        "b");
}

TEST(ReportText, NamesFailures) {
  EXPECT_EQ(ReportText::nameFailure(Foundation::None), "");
  EXPECT_EQ(ReportText::nameFailure(Foundation::Tension), "tension");
  EXPECT_EQ(ReportText::nameFailure(Foundation::Compression), "compression");
  EXPECT_EQ(ReportText::nameFailure(static_cast<Foundation::Failure>(7)), "mode 7");
}

TEST(ReportText, Counts) {
  EXPECT_EQ(ReportText::count(0, "finding"), "0 findings");
  EXPECT_EQ(ReportText::count(1, "finding"), "1 finding");
  EXPECT_EQ(ReportText::showSpan("row", 13, 13), "row 13");
  EXPECT_EQ(ReportText::showSpan("row", 13, 24), "rows 13 to 24");
}

TEST(ReportText, JoinsWhatIsThere) {
  EXPECT_EQ(ReportText::join("", ""), "");
  EXPECT_EQ(ReportText::join("a", ""), "a");
  EXPECT_EQ(ReportText::join("", "b"), "b");
  EXPECT_EQ(ReportText::join("a", "b"), "a, b");
  EXPECT_EQ(ReportText::listMarks(true, true), "current, generated");
  EXPECT_EQ(ReportText::listMarks(false, false), "");
}

TEST(ReportHtml, OpensAndClosesNothing) {
  EXPECT_EQ(ReportHtml::escape("a<b>&\"'c"), "a&lt;b&gt;&amp;&quot;&#39;c");
  EXPECT_EQ(ReportHtml::showName("<\n>"), "&lt;\\n&gt;");
}

}  // namespace
