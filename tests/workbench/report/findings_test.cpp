#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::holds;
using ReportTest::listFacts;
using ReportTest::listLines;
using ReportTest::listRowTexts;
using ReportTest::makeModel;
using ReportTest::readSection;
using ReportTest::readTable;
using ReportTest::repeat;
using ReportTest::report;
using ReportTest::reportModel;
using ReportTest::stripAll;
using ReportTest::Texts;

TEST(ReportFindings, AreThoseOfTheCheckInTheOrderOfTheDocument) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='-5'/>\n<FOUND NUMBER='1' NAME='B' COLOUR='red'/>");

  EXPECT_EQ(stripAll(listLines(readSection(page, "findings"), "<li>")),
            (Texts{"line 4, column 28| |foundation 1, |A| FZAREA=&quot;-5&quot; is negative; it "
                   "is read as it is",
                   "line 5, column 8| |foundation 1, |B| the number 1 was given before, in line "
                   "4; both foundations will have it, and an update of a document merges them",
                   "line 5, column 28| |foundation 1, |B| COLOUR is no attribute of "
                   "&lt;FOUND&gt;; it is not read"}));
  EXPECT_EQ(listFacts(page).back(), "Check |3 findings");
}

TEST(ReportFindings, LeadToTheRowsOfTheirFoundationsWhichAreMarked) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='5'/>\n<FOUND NUMBER='7' NAME='B' FZAREA='-5' X=''/>");

  EXPECT_EQ(
      count(readSection(page, "findings"), "<a href=\"#row-2\">foundation 7, <bdi>B</bdi></a> "),
      2U);
  EXPECT_TRUE(holds(page, "<tr id=\"row-2\"><td>7<"));
  EXPECT_EQ(count(page, "<tr id="), 1U);
  EXPECT_TRUE(holds(page, "<td><a class=\"warn\" href=\"#findings\">2 findings</a><td"));
  EXPECT_EQ(listRowTexts(page, "area"),
            (Texts{"|1|A||0|0|5|none|0", "|7|B|2 findings|0|0|-5|none|0"}));
}

TEST(ReportFindings, LeadToTheAreaOfAFoundationThatHasALineAsWell) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='-5' FZLINE='5'/>");

  EXPECT_TRUE(holds(readTable(page, "area"), "<tr id=\"row-1\"><td>1<"));
  EXPECT_EQ(count(page, "id=\"row-1\""), 1U);
  EXPECT_EQ(listRowTexts(page, "line").at(0).substr(0, 16), "|1|A|1 finding|0");
}

TEST(ReportFindings, LeadToTheLineOfAFoundationThatHasNoArea) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='-5'/>");

  EXPECT_TRUE(holds(readTable(page, "line"), "<tr id=\"row-1\"><td>1<"));
}

TEST(ReportFindings, LeadToFoundationsWithoutAnyPart) {
  const std::string page = report(R"({"foundations": [{"number": 0, "name": "B"}]})");

  EXPECT_TRUE(
      holds(readSection(page, "findings"), "<a href=\"#row-1\">foundation 0, <bdi>B</bdi></a> "));
  EXPECT_TRUE(holds(readTable(page, "none"), "<tr id=\"row-1\"><td>0<"));
}

TEST(ReportFindings, LeadToASearchWhereThereAreManyFoundations) {
  const std::string page =
      reportModel(repeat(500, "FZAREA='1'") + "<FOUND NUMBER='501' NAME='A' FZAREA='-1'/>");

  EXPECT_TRUE(holds(readSection(page, "findings"),
                    "<a href=\"#number=501\">foundation 501, <bdi>A</bdi></a> "));
}

TEST(ReportFindings, StandBesideTheOtherMarksOfARow) {
  const std::string page =
      report(makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='-5' IsGenerated='1'/>", " CURRENT='A'"));

  EXPECT_EQ(listRowTexts(page, "area"), Texts{"|1|A|current, generated, |1 finding|0|0|-5|none|0"});
}

TEST(ReportFindings, NameNoFoundationWhereNoneIsConcerned) {
  const std::string page =
      report(makeModel("<FOUND NUMBER='1' NAME='A'/>\n<WALL/>", " CURRENT='B' X='1'"));

  EXPECT_EQ(listFacts(page).back(), "Check |3 findings");
  EXPECT_FALSE(holds(readSection(page, "findings"), "foundation 1"));
  EXPECT_FALSE(holds(page, "<tr id="));
}

TEST(ReportFindings, NameTheFoundationsOfAnExchangeDocument) {
  const std::string in =
      "<X><CurveBedding Number='1' Name='A' StiffnessX='-1'/>\n"
      "<CurveBedding Number='1' Name='B' StiffnessX='-2'/>\n"
      "<SurfaceBedding Number='3' Name='A' StiffnessX='-3'/></X>";
  const Texts findings = stripAll(listLines(readSection(report(in), "findings"), "<li>"));

  ASSERT_EQ(findings.size(), 5U);
  EXPECT_TRUE(holds(findings[0], "|foundation 1, |A| StiffnessX=&quot;-1&quot;"));
  EXPECT_TRUE(holds(findings[1], "|foundation 1, |A| the number 1 is taken")) << findings[1];
  EXPECT_FALSE(holds(findings[2], "|foundation"));
  EXPECT_TRUE(holds(findings[3], "|foundation 3, |A_1| the name")) << findings[3];
  EXPECT_TRUE(holds(findings[4], "|foundation 3, |A_1| StiffnessX=&quot;-3&quot;"));
}

TEST(ReportFindings, LeadToTheFoundationInTwoPartsWhichBothHaveRows) {
  const std::string in =
      "<X><CurveBedding Number='1' Name='A' StiffnessX='1'/>\n"
      "<SurfaceBedding Number='1' Name='A' StiffnessX='2'/></X>";
  const std::string page = report(in);

  EXPECT_TRUE(holds(readSection(page, "findings"),
                    "<a href=\"#row-1\">foundation 1, <bdi>A</bdi></a> the"));
  EXPECT_EQ(listRowTexts(page, "area").at(0).substr(0, 16), "|1|A|1 finding|2");
}

TEST(ReportFindings, LeadToTheFoundationThatKeptABeddingFromBeingRead) {
  const std::string in =
      "<X><CurveBedding Number='1' Name='A' StiffnessX='1'/>\n"
      "<SurfaceBedding Number='1' Name='B' StiffnessX='2'/></X>";
  const std::string page = report(in);

  EXPECT_TRUE(holds(readSection(page, "findings"),
                    "<a href=\"#row-1\">foundation 1, <bdi>A</bdi></a> the"));
  EXPECT_EQ(listRowTexts(page, "line").at(0).substr(0, 16), "|1|A|1 finding|1");
}

TEST(ReportFindings, NameTheFoundationsOfTheFirstVersion) {
  const std::string in =
      "<X><Bedding SurfaceStiffnessX='-1'/>\n<Bedding Name='B' SurfaceStiffnessX='-2'/></X>";
  const Texts findings = stripAll(listLines(readSection(report(in), "findings"), "<li>"));

  ASSERT_EQ(findings.size(), 3U);
  EXPECT_FALSE(holds(findings[0] + findings[1], "|foundation"));
  EXPECT_TRUE(holds(findings[2], "|foundation 1, |B| SurfaceStiffnessX"));
}

TEST(ReportFindings, AreFoldedWhereThereAreMany) {
  std::string foundations;
  for (int i = 1; i <= 51; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(i) + "' FZAREA='-1'/>\n";
  const std::string section = readSection(reportModel(foundations), "findings");

  EXPECT_EQ(count(section, "<details><summary>Finding 51</summary>"), 1U);
  EXPECT_EQ(count(section.substr(0, section.find("<details")), "<li>"), 50U);
  EXPECT_EQ(count(section, "<li>"), 51U);
}

TEST(ReportFindings, AreCountedWhereThereAreVeryMany) {
  const std::string all = readSection(reportModel(repeat(1050, "FZAREA='-1'")), "findings");
  const std::string one = readSection(reportModel(repeat(1051, "FZAREA='-1'")), "findings");
  const std::string two = readSection(reportModel(repeat(1052, "FZAREA='-1'")), "findings");

  EXPECT_FALSE(holds(all, "not listed"));
  EXPECT_TRUE(holds(one, "<p class=\"lead\">1 more is not listed here; the check lists them all."));
  EXPECT_TRUE(
      holds(two, "<p class=\"lead\">2 more are not listed here; the check lists them all."));
  EXPECT_TRUE(holds(two, "<summary>Findings 51 to 1050</summary>"));
  EXPECT_EQ(count(two, "<li>"), 1050U);
}

TEST(ReportFindings, AreToldToBeNone) {
  EXPECT_TRUE(holds(readSection(reportModel("<FOUND NUMBER='1' NAME='A'/>"), "findings"),
                    "Nothing looks wrong."));
}

}  // namespace
