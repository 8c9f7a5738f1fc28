#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::holds;
using ReportTest::listTableRows;
using ReportTest::makeModel;
using ReportTest::readSection;
using ReportTest::report;
using ReportTest::reportModel;
using ReportTest::Texts;

TEST(ReportTable, HoldsEveryValueExactly) {
  const std::string page = report(makeModel(
      "<FOUND NUMBER='4' NAME='A' FXAREA='0.1' FYAREA='-2' FZAREA='12345.678901234567' "
      "FAILZAREA='-1' FACAREA='0.30000000000000004' FXLINE='1' FYLINE='2' FZLINE='3' FXX='inf' "
      "FAILXLINE='1' FAILZLINE='9' FACLINE='0.5' IsGenerated='1'/>",
      " CURRENT='A'"));

  EXPECT_EQ(listTableRows(page),
            Texts{"|4|A|current, generated, |3 findings|0.1|-2|12345.678901234567|z tension|"
                  "0.30000000000000004|1|2|3|inf|x compression,|z mode 9|0.5"});
}

TEST(ReportTable, ShowsAPartThatIsLackingAsLacking) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='3'/>\n<FOUND NUMBER='2' NAME='B' FZLINE='4'/>");

  const std::string dash = "\xE2\x80\x93";
  EXPECT_EQ(listTableRows(page), (Texts{"|1|A||0|0|3|none|0|" + dash + "|" + dash + "|" + dash +
                                            "|" + dash + "|" + dash + "|" + dash,
                                        "|2|B||" + dash + "|" + dash + "|" + dash + "|" + dash +
                                            "|" + dash + "|0|0|4|" + dash + "|none|0"}));
}

TEST(ReportTable, HasNoColumnsOfAPartThatNoFoundationHas) {
  const std::string area = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>");
  const std::string line = reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='3'/>");

  EXPECT_EQ(listTableRows(area), Texts{"|1|A||0|0|3|none|0"});
  EXPECT_EQ(listTableRows(line), Texts{"|1|A||0|0|3|\xE2\x80\x93|none|0"});
  EXPECT_TRUE(holds(area, "<table class=\"of area\">"));
  EXPECT_TRUE(holds(line, "<table class=\"of line\">"));
  EXPECT_FALSE(holds(area, ">Line</th>"));
  EXPECT_FALSE(holds(line, ">Area</th>"));
}

TEST(ReportTable, HasHeadersForItsRowsAndColumns) {
  const std::string table =
      readSection(reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3' FZLINE='3'/>"), "values");

  EXPECT_TRUE(holds(table, "<table class=\"of area line\">"));
  EXPECT_EQ(count(table, "<th scope=\"col\""), 14U);
  EXPECT_EQ(count(table, "<th scope=\"colgroup\""), 2U);
  EXPECT_EQ(count(table, "<th scope=\"row\""), 1U);
}

}  // namespace
