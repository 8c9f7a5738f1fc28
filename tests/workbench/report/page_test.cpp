#include "report/page.h"

#include <string>

#include <gtest/gtest.h>

#include "report/assets.h"
#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::cut;
using ReportTest::holds;
using ReportTest::listLines;
using ReportTest::listRows;
using ReportTest::readSection;
using ReportTest::repeat;
using ReportTest::report;
using ReportTest::reportExample;
using ReportTest::reportModel;
using ReportTest::stripTags;
using ReportTest::Texts;

/// What stands above the table of a part.
std::string readLead(const std::string& page, const std::string& part) {
  return stripTags(cut(readSection(page, part), "<p class=\"lead\">", "</p>"));
}

TEST(ReportPage, SaysThatThereAreNoFoundations) {
  const std::string page = reportModel("");

  EXPECT_TRUE(holds(page, "The document holds no foundations."));
  EXPECT_FALSE(holds(page, "<table"));
  EXPECT_FALSE(holds(page, "<svg"));
  EXPECT_FALSE(holds(page, "<nav"));
}

TEST(ReportPage, LoadsNothing) {
  const std::string page = reportExample("model.xml");

  EXPECT_EQ(count(page, "http:"),
            count(page, "createElementNS(\"http://www.w3.org/2000/svg\", "));  // a name
  for (const std::string part : {"https:", "src=", "url(", "@import", "<link", "<img"})
    EXPECT_FALSE(holds(page, part)) << part;
  EXPECT_TRUE(holds(page, "default-src 'none'"));
}

TEST(ReportPage, IsNamedAfterTheFileWithoutItsFolder) {
  const std::string page = reportExample("model.xml");

  EXPECT_TRUE(holds(page, "<title>Beddings of model.xml</title>"));
  EXPECT_TRUE(holds(page, "<h1>model.xml</h1>"));
  EXPECT_FALSE(holds(page, "/model.xml"));
}

TEST(ReportPage, RunsTheScriptThatItAllows) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='7'/>");

  EXPECT_TRUE(holds(page, "script-src 'sha256-" + std::string(Report::scriptSha256) + "'"));
  EXPECT_EQ(count(page, "<script"), 1U);
}

TEST(ReportPage, OfNothingRunsNoScript) {
  const std::string page = reportModel("");

  EXPECT_FALSE(holds(page, "<script"));
  EXPECT_FALSE(holds(page, "script-src"));
}

TEST(ReportPage, LeadsToItsSections) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='7'/>");

  EXPECT_EQ(cut(page, "<nav aria-label=\"Sections\">", "</nav>"),
            "<a href=\"#area\">Area stiffness</a> <a href=\"#line\">Line stiffness</a> <a "
            "href=\"#findings\">Findings</a>");
  for (const std::string section : {"area", "line", "findings"})
    EXPECT_EQ(count(page, "<h2 id=\"" + section + "\">"), 1U) << section;
}

// --- Search

TEST(ReportSearch, IsThereOnlyWhereTheScriptMakesItWork) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='7'/>");

  EXPECT_FALSE(holds(cut(page, "<body>", "<script>"), "<form"));
}

// --- Parts

TEST(ReportPart, SaysWhenNoFoundationHasIt) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>");

  EXPECT_EQ(readLead(page, "line"), "No foundation has a part for lines.");
  EXPECT_FALSE(holds(readSection(page, "line"), "<svg"));
  EXPECT_EQ(readLead(reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='3'/>"), "area"),
            "No foundation has a part for areas.");
}

TEST(ReportPart, TellsItsScalesAndWhichFoundationsLackIt) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' FZAREA='3'/>\n<FOUND NUMBER='2' FZLINE='30' FXX='300'/>\n"
      "<FOUND NUMBER='3' FZAREA='3'/>\n<FOUND NUMBER='4' FZAREA='3'/>\n"
      "<FOUND NUMBER='12' FZAREA='3'/>");

  EXPECT_EQ(readLead(page, "area"),
            " Logarithmic scale of translation: 10|0| to 10|1|. No area part: 2. Factor: the "
            "tangential factor.");
  EXPECT_EQ(readLead(page, "line"),
            " Logarithmic scale of translation: 10|1| to 10|2|. Logarithmic scale of rotation: "
            "10|2| to 10|3|. No line part: 1, 3-4, 12. Factor: the tangential factor.");
}

TEST(ReportPart, NamesTheFirstOfManyFoundationsThatLackIt) {
  std::string foundations = "<FOUND NUMBER='1' FZLINE='1'/>\n";
  for (int i = 1; i <= 43; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(2 * i) + "' FZAREA='1'/>\n";

  EXPECT_TRUE(holds(readLead(reportModel(foundations), "line"), ", 78, 80 and 3 more."));
}

TEST(ReportPart, HasNoLeadWithNothingToTell) {
  EXPECT_FALSE(holds(reportModel("<FOUND NUMBER='1' FXAREA='-1'/>"), "<p class=\"lead\"></p>"));
}

TEST(ReportSections, AreThoseThatThePageHas) {
  const auto list = [](const std::string& page) {
    return cut(page, "<nav aria-label=\"Sections\">", "</nav>");
  };

  EXPECT_EQ(list(reportModel("<FOUND NUMBER='1' FXAREA='1'/>")),
            "<a href=\"#area\">Area stiffness</a> <a href=\"#line\">Line stiffness</a> <a "
            "href=\"#findings\">Findings</a>");
  EXPECT_TRUE(holds(list(report(R"({"foundations": [{"number": 7}]})")),
                    "<a href=\"#none\">Without any stiffness</a> <a"));
  EXPECT_FALSE(holds(reportModel(""), "<nav"));
}

TEST(ReportPart, HasATableThatCanBeScrolledByKeyboard) {
  EXPECT_TRUE(holds(reportModel("<FOUND NUMBER='1' FXAREA='1'/>"),
                    "<div class=\"scroll\" role=\"region\" aria-labelledby=\"area\" "
                    "tabindex=\"0\">\n<table class=\"values area unmarked\""));
}

TEST(ReportPart, ThatIsNoneHasASectionWhereThereAreSuchFoundations) {
  const std::string page = report(R"({"foundations": [{"number": 1}]})");

  EXPECT_TRUE(holds(page, "<section>\n<h2 id=\"none\">Without any stiffness</h2>\n"));
  EXPECT_FALSE(holds(reportModel("<FOUND NUMBER='1' FXAREA='1'/>"), "<h2 id=\"none\""));
}

// --- Many foundations

TEST(ReportOfMany, HasNoRows) {
  const std::string page = reportModel(repeat(1001, "FZAREA='3' FZLINE='4'"));

  EXPECT_EQ(listRows(page, "area"), Texts{});
  EXPECT_EQ(listRows(page, "line"), Texts{});
  EXPECT_TRUE(
      holds(page, "<table class=\"values area unmarked\" data-part=\"area\" hidden style="));
}

TEST(ReportOfMany, IsOneOfMoreThanAThousand) {
  const std::string page = reportModel(repeat(500, "FZAREA='3'"));

  EXPECT_EQ(listRows(page, "area").size(), 500U);
  EXPECT_FALSE(holds(page, "id=\"data\""));
  EXPECT_FALSE(holds(page, "class=\"spread\""));
  EXPECT_FALSE(holds(page, "class=\"ranges\""));
}

TEST(ReportOfMany, HoldsAllValuesAsText) {
  const std::string text =
      cut(reportModel(repeat(501, "NAME='A' FZAREA='3'")),
          "<details class=\"text\"><summary>Show the text</summary>\n<pre id=\"data\" "
          "tabindex=\"0\" role=\"region\" aria-labelledby=\"values\">\n",
          "</pre>\n</details>");
  const Texts lines = listLines(text, "");

  ASSERT_EQ(lines.size(), 502U);
  EXPECT_EQ(lines[0].substr(0, 13), "No\tName\tMarks");
  EXPECT_EQ(lines[501].substr(0, 4), "501\t");
}

TEST(ReportOfMany, ShowsHowItsValuesAreSpread) {
  const std::string page = reportModel(repeat(500, "FZAREA='3'") +
                                       "<FOUND NUMBER='501' NAME='A' FZAREA='-3' FZLINE='7'/>");
  const std::string area = readSection(page, "area");

  EXPECT_TRUE(holds(area, "<p class=\"ranges\"> <span><b>x</b> 501 zero</span>"));
  EXPECT_EQ(count(area, "<figure>"), 1U);
  EXPECT_EQ(count(area, "<summary>The same as a table</summary>"), 1U);
  EXPECT_TRUE(holds(area, "<a href=\"#number=501\">foundation 501, <bdi>A</bdi></a>: -3"));
  EXPECT_EQ(count(readSection(page, "line"), "<figure>"), 1U);
}

}  // namespace
