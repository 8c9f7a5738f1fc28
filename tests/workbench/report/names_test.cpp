#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::holds;
using ReportTest::listFacts;
using ReportTest::listRowTexts;
using ReportTest::makeModel;
using ReportTest::readSection;
using ReportTest::report;
using ReportTest::reportModel;

TEST(ReportNames, AreEscaped) {
  const std::string page =
      report(makeModel("<FOUND NUMBER='1' NAME='&lt;script>alert(1)&lt;/script>' FZAREA='1'/>\n"
                       "<FOUND NUMBER='2' NAME='&quot;&apos;&amp;amp;' FZLINE='1' X='1'/>",
                       " CURRENT='&lt;script>alert(1)&lt;/script>'"),
             {"<b>", "m"});

  EXPECT_EQ(count(page, "<script>"), 1U);  // the page's own
  EXPECT_EQ(listRowTexts(page, "area")[0].substr(0, 48),
            "|1|&lt;script&gt;alert(1)&lt;/script&gt;|current");
  EXPECT_EQ(listRowTexts(page, "line")[0].substr(0, 27), "|2|&quot;&#39;&amp;amp;|1 f");
  EXPECT_TRUE(holds(page, "<strong><bdi>&lt;script&gt;alert(1)&lt;/script&gt;</bdi></strong>"));
  EXPECT_FALSE(holds(page, "<b>/"));
  EXPECT_TRUE(holds(page, "&lt;b&gt;/m\xC2\xB3"));
}

TEST(ReportNames, AreEscapedAndShortInFacts) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='&lt;i>" + std::string(50, 'x') + "' FZAREA='1'/>");

  EXPECT_EQ(listFacts(page)[3], "Largest area stiffness |1| |z of foundation 1, |&lt;i&gt;" +
                                    std::string(36, 'x') + "\xE2\x80\xA6");
}

TEST(ReportNames, AreEscapedInFindings) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='&lt;i>'/>\n<FOUND NUMBER='2' NAME='&lt;i>'/>");

  EXPECT_TRUE(
      holds(readSection(page, "findings"), "the name &quot;&lt;i&gt;&quot; was given before"));
}

TEST(ReportNames, ShowControlCharactersAndCodePages) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='a&#10;b&#x202E;c' FZAREA='1'/>\n"
      "<FOUND NUMBER='2' NAME='Stra\xDF"
      "e' FZAREA='1'/>");

  EXPECT_EQ(listRowTexts(page, "area")[0].substr(0, 18), "|1|a\\nb\\u202Ec||0|");
  EXPECT_EQ(listRowTexts(page, "area")[1].substr(0, 12),
            "|2|Stra\xC3\x9F"
            "e||");
}

TEST(ReportNames, AreSeenWhenTheyAreBlank) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='  ' FZAREA='1'/>\n"
      "<FOUND NUMBER='2' NAME=' &#x200B;&#x200C;&#x200D;' FZAREA='1'/>");

  EXPECT_EQ(listRowTexts(page, "area")[0].substr(0, 19), "|1|&quot;  &quot;||");
  EXPECT_EQ(listRowTexts(page, "area")[1].substr(0, 35), "|2|&quot; \\u200B\\u200C\\u200D&quot;|");
}

TEST(ReportNames, DoNotPileUpMarksOverALetter) {
  std::string marks;
  for (int i = 0; i < 3000; ++i) marks += "\xCC\x81";
  const std::string page = report(makeModel("<FOUND NUMBER='1' NAME='A" + marks + "' FZAREA='-1'/>",
                                            " CURRENT='A" + marks + "'"));

  EXPECT_FALSE(holds(page, marks.substr(0, std::size_t{5} * 2)));
  EXPECT_TRUE(holds(listRowTexts(page, "area")[0],
                    "A" + marks.substr(0, std::size_t{4} * 2) + "\xE2\x80\xA6"));
}

}  // namespace
