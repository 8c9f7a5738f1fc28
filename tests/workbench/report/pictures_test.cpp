#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::cut;
using ReportTest::holds;
using ReportTest::listLines;
using ReportTest::listRows;
using ReportTest::listRowTexts;
using ReportTest::listTableRows;
using ReportTest::makeModel;
using ReportTest::readSection;
using ReportTest::report;
using ReportTest::reportModel;
using ReportTest::stripAll;
using ReportTest::stripTags;
using ReportTest::Texts;

TEST(ReportPictures, HaveARowForEachFoundationWithAValueForEachDirection) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='Raft' FXAREA='10' FYAREA='20' FZAREA='30.5'/>\n"
      "<FOUND NUMBER='2' NAME='Strip' FXLINE='1' FYLINE='2' FZLINE='3' FXX='4'/>");

  EXPECT_EQ(listRowTexts(page, "area"), (Texts{"1|Raft|10|20|30.5", "2|Strip|no area part"}));
  EXPECT_EQ(listRowTexts(page, "line"), (Texts{"1|Raft|no line part", "2|Strip|1|2|3|4"}));
}

TEST(ReportPictures, ShowADirectionThatIsLackingAsLacking) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='3'/>\n<FOUND NUMBER='2' NAME='B' FXX='4'/>");

  EXPECT_EQ(listRowTexts(page, "line"),
            (Texts{"1|A|0|0|3|\xE2\x80\x93", "2|B|\xE2\x80\x93|\xE2\x80\x93|\xE2\x80\x93|4"}));
}

TEST(ReportPictures, SayWhenNoFoundationHasThePart) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>");

  EXPECT_TRUE(holds(readSection(page, "line"), "No foundation has a part for lines."));
  EXPECT_FALSE(holds(readSection(page, "line"), "<svg"));
}

TEST(ReportPictures, DrawBarsOnALogarithmicScale) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='10' FYAREA='100' FZAREA='1000'/>");

  EXPECT_EQ(listRows(page, "area"),  // from 1 to 1000
            Texts{"<g style=\"--i:0\"><text>1</text><g><text>A</text></g><line "
                  "x2=\"33.3%\"/><text>10</text><line x2=\"66.7%\"/><text>100</text><line "
                  "x2=\"100%\"/><text>1000</text></g>"});
  const std::string section = readSection(page, "area");
  EXPECT_EQ(count(section, "<text class=\"a\">10<tspan dy=\"-.45em\">0</tspan></text>"), 3U);
  EXPECT_EQ(count(section, "<text class=\"a e\">10<tspan dy=\"-.45em\">3</tspan></text>"), 3U);
  EXPECT_EQ(count(section,
                  "<rect x=\"0%\"/><rect x=\"33.3%\"/><rect x=\"66.7%\"/><rect "
                  "x=\"100%\"/></g>"),
            3U);
}

TEST(ReportPictures, HaveOneScaleForTranslationAndOneForRotation) {
  const std::string section = readSection(
      reportModel("<FOUND NUMBER='1' NAME='A' FXLINE='20' FZLINE='30' FXX='4e5'/>"), "line");

  EXPECT_EQ(count(section, ">10<tspan dy=\"-.45em\">1</tspan></text>"), 3U);
  EXPECT_EQ(count(section, ">10<tspan dy=\"-.45em\">2</tspan></text>"), 3U);
  EXPECT_EQ(count(section, ">10<tspan dy=\"-.45em\">5</tspan></text>"), 1U);
  EXPECT_EQ(count(section, ">10<tspan dy=\"-.45em\">6</tspan></text>"), 1U);
  EXPECT_TRUE(holds(section,
                    " Logarithmic scale of translation: 10^1 to 10^2. Logarithmic "
                    "scale of rotation: 10^5 to 10^6."));
}

TEST(ReportPictures, DrawAllThatANumberCanBe) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='5e-324' FYAREA='1' FZAREA='1.7976931348623157e308'/>");

  const std::string row = listRows(page, "area").front();
  EXPECT_TRUE(holds(row, "<line x2=\"1%\"/><text>5e-324</text>")) << row;
  EXPECT_TRUE(holds(row,
                    "<line x2=\"99.9%\"/><text>\xE2\x89\x88"
                    "1.8e+308</text>"))
      << row;
  EXPECT_LT(count(readSection(page, "area"), "<rect"), 30U);
}

TEST(ReportPictures, MarkValuesThatHaveNoPlaceOnTheScale) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='-5' FYAREA='inf' FZAREA='nan'/>\n"
      "<FOUND NUMBER='2' NAME='B' FXAREA='0' FYAREA='-inf' FZAREA='7'/>");

  const Texts rows = listRows(page, "area");
  EXPECT_EQ(stripAll(rows), (Texts{"1|A|3 findings|-5|inf|nan", "2|B|1 finding|0|-inf|7"}));
  EXPECT_EQ(count(rows[0], "<line class=\"x\""), 3U);
  EXPECT_EQ(count(rows[0], "<text class=\"w\">"), 3U);
  EXPECT_EQ(count(rows[1], "<line class=\"x\""), 1U);
  EXPECT_EQ(count(rows[1], "<line class=\"z\"/><text>0</text>"), 1U);
}

TEST(ReportPictures, HaveNoScaleWithoutAValueThatCouldStandOnIt) {
  const std::string section =
      readSection(reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='-5'/>"), "area");

  EXPECT_FALSE(holds(section, "<rect"));
  EXPECT_FALSE(holds(section, "class=\"a"));
  EXPECT_FALSE(holds(section, "Logarithmic scale"));
}

TEST(ReportPictures, RoundLongValues) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='12345.6789' FYAREA='123456.78' FZAREA='2000000000'/>");

  EXPECT_EQ(listRowTexts(page, "area"), Texts{"1|A|\xE2\x89\x88"
                                              "12345.7|123456.78|\xE2\x89\x88"
                                              "2e+09"});
}

TEST(ReportPictures, MarkDirectionsThatFail) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='3' FAILZAREA='-1'/>\n"
      "<FOUND NUMBER='2' NAME='B' FZLINE='3' FAILXLINE='1' FAILYLINE='-1' "
      "FAILZLINE='7'/>");

  const std::string pull = " T \xE2\x86\x90\xE2\x86\x92";
  const std::string push = " C \xE2\x86\x92\xE2\x86\x90";
  EXPECT_EQ(listRowTexts(page, "area")[0], "1|A|0|0|3|" + pull);
  EXPECT_EQ(listRowTexts(page, "line")[1],
            "2|B|1 finding|0|" + push + "|0|" + pull + "|3| mode|\xE2\x80\x93");
}

TEST(ReportPictures, ExplainTheirMarksInALegend) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A'/>");

  EXPECT_EQ(stripAll(listLines(cut(page, "<ul class=\"legend\"", "</ul>"), "<li")),
            (Texts{"stiffness, on a logarithmic scale", "zero",
                   "beyond the scale: negative, infinite or not a number", "\xE2\x80\x93| no value",
                   "T \xE2\x86\x90\xE2\x86\x92| fails in tension",
                   "C \xE2\x86\x92\xE2\x86\x90| fails in compression",
                   "mode| fails in another mode, which the table tells",
                   "\xE2\x97\x8F current| the current foundation",
                   "\xE2\x89\x88| rounded; the table has all digits"}));
  for (const std::string kind : {"bar", "zero", "beyond"})
    EXPECT_TRUE(holds(page, "<li class=\"" + kind + "\">")) << kind;
}

TEST(ReportPictures, MarkTheCurrentFoundationAndGeneratedOnes) {
  const std::string page = report(makeModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='1' IsGenerated='1'/>\n"
      "<FOUND NUMBER='2' NAME='B' FZAREA='1' IsGenerated='1'/>\n<FOUND NUMBER='3' NAME='C'/>",
      " CURRENT='A'"));

  EXPECT_EQ(listRowTexts(page, "area"), (Texts{"1|A|\xE2\x97\x8F current, generated|0|0|1",
                                               "2|B|generated|0|0|1", "3|C|0|0|0"}));
}

TEST(ReportPictures, ShortenNamesThatHaveNoRoom) {
  const std::string name(28, 'x');
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='" + name + "' FZAREA='1'/>\n<FOUND NUMBER='2' NAME='" +
                  name + "y' FZAREA='1'/>");

  const Texts rows = listRowTexts(page, "area");
  EXPECT_EQ(rows[0], "1|" + name + "|0|0|1");
  EXPECT_EQ(rows[1], "2|" + std::string(27, 'x') + "\xE2\x80\xA6|0|0|1");
  EXPECT_EQ(listTableRows(page)[1].substr(0, 33), "|2|" + name + "y|");
}

TEST(ReportPictures, PutANumberThatHasNoRoomInFrontOfTheName) {
  const std::string page = reportModel(
      "<FOUND NUMBER='9999' NAME='A' FZAREA='1'/>\n"
      "<FOUND NUMBER='2147483647' NAME='B' FZAREA='1'/>");

  EXPECT_EQ(listRowTexts(page, "area"), (Texts{"9999|A|0|0|1", "2147483647 B|0|0|1"}));
}

TEST(ReportPictures, HaveAsManyRowsAsFitThreeTimesOnASheet) {
  std::string foundations;
  for (int i = 1; i <= 13; ++i) foundations += "<FOUND FZAREA='1'/>\n";
  const std::string section = readSection(reportModel(foundations), "area");

  EXPECT_EQ(count(section, "style=\"--rows:12\""), 1U);
  EXPECT_EQ(count(section, "style=\"--rows:1\""), 1U);
  EXPECT_TRUE(holds(section, "<title>Area stiffness, rows 1 to 12</title>"));
  EXPECT_TRUE(holds(section, "<title>Area stiffness, row 13</title>"));
}

TEST(ReportPictures, StandInGroupsWhereThereAreMany) {
  std::string foundations;
  for (int i = 1; i <= 60; ++i)
    foundations += "<FOUND FZAREA='" + std::to_string(100 + i) + "'/>\n";
  const std::string few = readSection(reportModel(foundations), "area");
  const std::string many = readSection(reportModel(foundations + "<FOUND FZAREA='2'/>"), "area");

  EXPECT_EQ(count(few, "<details"), 0U);
  EXPECT_EQ(count(few, "<svg"), 5U);
  EXPECT_EQ(count(many, "<details><summary>Row 61 of 61 "), 1U);
  EXPECT_EQ(count(many, "<details open><summary>Rows 1 to 60 of 61 "), 1U);
  EXPECT_EQ(count(many, "<details"), 2U);
  EXPECT_EQ(count(many, "<svg"), 7U);
  EXPECT_EQ(listLines(many, "<g style").size(), 62U);
  EXPECT_EQ(stripTags(listLines(many, "<g style").front()), "All 61");
  EXPECT_TRUE(
      holds(many, "<title>Area stiffness, a tick for each value of all 61 foundations</title>"));
}

TEST(ReportPictures, HaveTextAlternatives) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>");

  EXPECT_TRUE(
      holds(page, "role=\"img\" aria-describedby=\"about-area\"><title>Area stiffness</title>"));
  EXPECT_TRUE(holds(page,
                    "<p class=\"lead\" id=\"about-area\">A row for each foundation, a bar for "
                    "each direction. Logarithmic scale of translation: 10^0 to 10^1. The table "
                    "below has all values.</p>"));
}

}  // namespace
