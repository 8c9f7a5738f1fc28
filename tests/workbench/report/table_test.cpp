#include "report/table.h"

#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::holds;
using ReportTest::kiloNewton;
using ReportTest::listCells;
using ReportTest::listColumns;
using ReportTest::listLines;
using ReportTest::listRows;
using ReportTest::listRowTexts;
using ReportTest::listStrips;
using ReportTest::makeModel;
using ReportTest::Opened;
using ReportTest::readTable;
using ReportTest::repeat;
using ReportTest::report;
using ReportTest::reportModel;
using ReportTest::Texts;

const std::string dash = "\xE2\x80\x93";

/// All values of these foundations as text.
Texts listText(const std::string& foundations, const std::string& attributes = "") {
  const Opened document({"file.xml", "", makeModel(foundations, attributes)});
  std::string page;
  const Units units;
  Report::appendText(document.tell(units), page);
  return listLines(page, "");
}

// --- Values

TEST(ReportTable, HoldsEveryValueOfAnAreaExactly) {
  EXPECT_EQ(listRowTexts(reportModel("<FOUND NUMBER='4' NAME='A' FXAREA='0.1' FYAREA='20' "
                                     "FZAREA='12345.678901234567' FAILZAREA='-1' "
                                     "FACAREA='0.30000000000000004'/>"),
                         "area"),
            Texts{"|4|A||0.1|20|12345.678901234567|z tension|0.30000000000000004"});
}

TEST(ReportTable, HoldsEveryValueOfALineExactly) {
  EXPECT_EQ(listRowTexts(reportModel("<FOUND NUMBER='4' NAME='A' FXLINE='1' FYLINE='2.5' "
                                     "FZLINE='1e22' FXX='13445080.768799' FAILYLINE='1' "
                                     "FACLINE='0.5'/>"),
                         "line"),
            Texts{"|4|A||1|2.5|1e+22|13445080.768799|y compression|0.5"});
}

TEST(ReportTable, ShowsADirectionThatIsLackingAsLacking) {
  EXPECT_EQ(listRowTexts(reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='3'/>\n"
                                     "<FOUND NUMBER='2' NAME='B' FXX='4'/>"),
                         "line"),
            (Texts{"|1|A||0|0|3|" + dash + "|none|0",
                   "|2|B||" + dash + "|" + dash + "|" + dash + "|4|none|0"}));
}

TEST(ReportTable, ListsAllFailures) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZLINE='3' FAILXLINE='1' FAILYLINE='-1' FAILZLINE='9'/>");

  EXPECT_TRUE(holds(listRows(page, "line").at(0),
                    "<td class=\"t f\">x compression,<br>y tension,<br>z mode 9<td>"));
}

TEST(ReportTable, MarksValuesBeyondTheScale) {
  const std::string row = listRows(
      reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='-5' FYAREA='inf' FZAREA='0'/>"), "area")[0];

  EXPECT_TRUE(holds(row, "<td class=\"w\">-5<td class=\"w\">inf<td>0<td class=\"t\">none<td>0"))
      << row;
}

TEST(ReportTable, MarksAFactorBeyondTheScale) {
  const std::string row =
      listRows(reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='1' FACAREA='-0.5'/>"), "area")[0];

  EXPECT_TRUE(holds(row, "<td class=\"w\">-0.5</tr>")) << row;
}

TEST(ReportTable, TellsThatNoneOfItsFoundationsIsMarked) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='1' IsGenerated='1'/>\n"
      "<FOUND NUMBER='2' NAME='B' FZAREA='1' FZLINE='1'/>");

  EXPECT_TRUE(holds(page, "<table class=\"values area\""));
  EXPECT_TRUE(holds(page, "<table class=\"values line unmarked\""));
}

TEST(ReportTable, MarksTheCurrentFoundationAndGeneratedOnes) {
  const std::string page = report(makeModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='1' IsGenerated='1'/>\n"
      "<FOUND NUMBER='2' NAME='B' FZAREA='1' IsGenerated='1'/>\n<FOUND NUMBER='3' NAME='C'/>",
      " CURRENT='A'"));

  EXPECT_EQ(listRowTexts(page, "area"),
            (Texts{"|1|A|current, generated|0|0|1|none|0", "|2|B|generated|0|0|1|none|0",
                   "|3|C||0|0|0|none|0"}));
  EXPECT_TRUE(holds(listRows(page, "area")[0], "<tr class=\"c\"><td>1<"));
  EXPECT_EQ(count(page, "<tr class=\"c\""), 1U);
}

// --- Rows

TEST(ReportTable, IsOfTheFoundationsThatHaveThePart) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='3'/>\n<FOUND NUMBER='2' NAME='B' FZLINE='4'/>");

  EXPECT_EQ(listRowTexts(page, "area"), Texts{"|1|A||0|0|3|none|0"});
  EXPECT_EQ(listRowTexts(page, "line"), Texts{"|2|B||0|0|4|" + dash + "|none|0"});
}

TEST(ReportTable, OfEachPartHasAFoundationOfTwoParts) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3' FZLINE='4'/>");

  EXPECT_EQ(listRowTexts(page, "area"), Texts{"|1|A||0|0|3|none|0"});
  EXPECT_EQ(listRowTexts(page, "line"), Texts{"|1|A||0|0|4|" + dash + "|none|0"});
}

TEST(ReportTable, IsNotThereWhereNoFoundationHasThePart) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='3'/>");

  EXPECT_EQ(count(page, "<table"), 1U);
  EXPECT_TRUE(holds(page, "<table class=\"values line unmarked\" data-part=\"line\""));
}

TEST(ReportTable, ListsFoundationsWithoutAnyPart) {
  const std::string page =
      report(R"({"foundations": [{"number": 1, "areaZ": 3}, {"number": 7, "name": "B"}]})");

  EXPECT_EQ(listRowTexts(page, "area").size(), 1U);
  EXPECT_EQ(listRowTexts(page, "none"), Texts{"|7|B|"});
  EXPECT_EQ(listColumns(page, "none"), (Texts{"No", "Name", "Marks"}));
}

// --- Columns

TEST(ReportTable, HasAColumnForEachThing) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3' FZLINE='30' FXX='300'/>");

  EXPECT_EQ(listColumns(page, "area"),
            (Texts{"No", "Name", "Marks", "Area stiffness |0| |10|0| |10|1", " x", " y", " z",
                   "Fails", "Factor"}));
  EXPECT_EQ(listColumns(page, "line"),
            (Texts{"No", "Name", "Marks", "Line stiffness |0| |10|1| |10|2", " x", " y", " z",
                   "Rotation |0| |10|2| |10|3", " rotation x", "Fails", "Factor"}));
}

TEST(ReportTable, HasUnitsInItsHeadings) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FXX='300'/>", kiloNewton);

  EXPECT_EQ(listColumns(page, "line"),
            (Texts{"No", "Name", "Marks", "x |kN/m\xC2\xB2", "y |kN/m\xC2\xB2", "z |kN/m\xC2\xB2",
                   "Rotation |0| |10|2| |10|3", " rotation x |kNm/m/rad", "Fails", "Factor"}));
}

TEST(ReportTable, HasNoStripWithoutAScale) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='-5'/>");

  EXPECT_EQ(listColumns(page, "area"),
            (Texts{"No", "Name", "Marks", "x", "y", "z", "Fails", "Factor"}));
  EXPECT_EQ(listStrips(page, "area"), Texts{});
  EXPECT_EQ(listCells(listRows(page, "area").at(0)).size(), 8U);
}

TEST(ReportTable, HasAMarkInTheHeadingsOfDirectionsWithAScale) {
  const std::string turned = readTable(reportModel("<FOUND NUMBER='1' NAME='A' FXX='3'/>"), "line");

  EXPECT_EQ(count(turned, "<svg class=\"mark"), 1U);
  EXPECT_TRUE(holds(turned, "<svg class=\"mark turn\" aria-hidden=\"true\">"));
}

TEST(ReportTable, HasAStripOfTranslationsAndOneOfRotation) {
  EXPECT_EQ(
      listStrips(reportModel("<FOUND NUMBER='1' NAME='A' FXLINE='100' FYLINE='20' FZLINE='20' "
                             "FXX='1000'/>"),
                 "line"),
      (Texts{"<circle cx=\"100%\"/><rect x=\"30.1%\"/><ellipse cx=\"30.1%\"/>",
             "<rect x=\"100%\"/>"}));
}

TEST(ReportTable, HasAsManyCellsInARowAsHeadings) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='3'/>\n<FOUND NUMBER='2' NAME='B' FXX='4'/>");

  EXPECT_EQ(listColumns(page, "line").size(), 11U);
  for (const std::string& row : listRows(page, "line")) EXPECT_EQ(listCells(row).size(), 11U);
}

TEST(ReportTable, NumbersTheFieldsOfTheTextThatItsColumnsShow) {
  const std::string head = readTable(reportModel("<FOUND NUMBER='1' NAME='A' FXX='4'/>"), "line");

  EXPECT_TRUE(holds(head, "<th scope=\"col\" class=\"num\" data-field=\"0\">No"));
  EXPECT_TRUE(holds(head, "<th scope=\"col\" class=\"text\" data-field=\"2\">Marks"));
  EXPECT_TRUE(holds(head, "<th scope=\"col\" class=\"num\" data-field=\"8\">x"));
  EXPECT_TRUE(
      holds(head,
            "<th scope=\"col\" class=\"num\" data-field=\"11\">"
            "<svg class=\"mark turn\" aria-hidden=\"true\"><rect x=\"50%\"/></svg> rotation x"));
  EXPECT_TRUE(holds(head, "<th scope=\"col\" class=\"num\" data-field=\"13\">Factor"));
}

TEST(ReportTable, TellsWhatItsStripsShow) {
  const std::string head =
      readTable(reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='30' FXX='4'/>"), "line");

  EXPECT_TRUE(holds(head,
                    "<th scope=\"col\" class=\"plot\" data-first=\"0\" data-last=\"3\" "
                    "data-start=\"1\" data-end=\"2\" data-zero=\"-24\">Line stiffness <"));
  EXPECT_TRUE(holds(head,
                    "<th scope=\"col\" class=\"plot\" data-first=\"3\" data-last=\"4\" "
                    "data-start=\"0\" data-end=\"1\" data-zero=\"-24\">Rotation <"));
}

TEST(ReportTable, HasHeadersForItsRows) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3' FZLINE='3'/>\n<FOUND NUMBER='2'/>");

  EXPECT_TRUE(holds(listRows(page, "area").at(0), "<tr><td>1<th scope=\"row\">A<td>"));
  EXPECT_EQ(count(page, "<th scope=\"row\""), 3U);
}

TEST(ReportTable, HasAGridOfItsScales) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='2' FZAREA='1000' FXLINE='2' FZLINE='1e8' FXX='4'/>");

  EXPECT_TRUE(holds(page, "data-part=\"area\" style=\"--grid-step:33.33%;\">"));
  EXPECT_TRUE(holds(page, "data-part=\"line\" style=\"--grid-step:25%;--turn-step:100%;\">"));
}

TEST(ReportTable, HasNoGridWithoutAScale) {
  EXPECT_TRUE(holds(reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='-5'/>"),
                    "<table class=\"values area\" data-part=\"area\">"));
}

// --- Paper

TEST(ReportTable, IsBroadWhereNumbersAreLong) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='0.30000000000000004' FYAREA='0.10000000000000004' "
      "FZAREA='1234567890'/>");
  const std::string broader = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='0.30000000000000004' FYAREA='0.10000000000000004' "
      "FZAREA='12345678901'/>");

  EXPECT_TRUE(holds(page, "<table class=\"values area unmarked\""));
  EXPECT_TRUE(holds(broader, "<table class=\"values area broad unmarked\""));
}

TEST(ReportTable, IsBroadWhereUnitsAreLong) {
  const std::string foundation = "<FOUND NUMBER='1' NAME='A' FZLINE='1'/>";

  EXPECT_TRUE(holds(reportModel(foundation, {"kip", "ft"}), "<table class=\"values line unmarked"));
  EXPECT_TRUE(holds(reportModel(foundation, {"kip (US)", "ft (survey)"}),
                    "<table class=\"values line broad"));
}

TEST(ReportTable, IsDenseWhereEvenABroadOneIsNotEnough) {
  const std::string three =
      "<FOUND NUMBER='1' NAME='A' FXLINE='-1.7976931348623157e+308' "
      "FYLINE='-1.7976931348623157e+308' FZLINE='-1.7976931348623157e+308' FXX='";

  EXPECT_TRUE(holds(reportModel(three + "123456.9'/>"), "<table class=\"values line broad\""));
  EXPECT_TRUE(
      holds(reportModel(three + "1234567.5'/>"), "<table class=\"values line broad dense\""));
}

TEST(ReportTable, MeasuresTheNumbersThatItShows) {
  EXPECT_TRUE(holds(reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>\n"
                                "<FOUND NUMBER='2' NAME='B' FXLINE='-1.7976931348623157e+308' "
                                "FYLINE='-1.7976931348623157e+308' FZLINE='1'/>"),
                    "<table class=\"values area unmarked\""));
}

// --- Text

TEST(ReportValues, HasALineForEachFoundationWithAllItsValues) {
  EXPECT_EQ(listText("<FOUND NUMBER='1' NAME='A' FXAREA='0.1' FYAREA='2' FZAREA='3' FAILZAREA='-1' "
                     "FACAREA='0.25' FXLINE='4' FYLINE='5' FZLINE='6' FXX='7' FAILXLINE='1' "
                     "FAILZLINE='9' FACLINE='0.5'/>\n<FOUND NUMBER='2' NAME='B' FZAREA='3'/>"),
            (Texts{"No\tName\tMarks\tArea x\tArea y\tArea z\tArea fails\tArea factor\tLine x\tLine "
                   "y\tLine z\tLine rotation x\tLine fails\tLine factor",
                   "1\tA\t1 finding\t0.1\t2\t3\tz tension\t0.25\t4\t5\t6\t7\tx compression, z mode "
                   "9\t0.5",
                   "2\tB\t\t0\t0\t3\tnone\t0\t" + dash + "\t" + dash + "\t" + dash + "\t" + dash +
                       "\t" + dash + "\t" + dash}));
}

TEST(ReportValues, ShowsAnAreaThatIsLackingAsLacking) {
  EXPECT_EQ(listText("<FOUND NUMBER='2' NAME='B' FZLINE='3'/>").at(1),
            "2\tB\t\t" + dash + "\t" + dash + "\t" + dash + "\t" + dash + "\t" + dash +
                "\t0\t0\t3\t" + dash + "\tnone\t0");
}

TEST(ReportValues, HasMarks) {
  EXPECT_EQ(listText("<FOUND NUMBER='1' NAME='A' FZAREA='-3' IsGenerated='1'/>", " CURRENT='A'")
                .at(1)
                .substr(0, 35),
            "1\tA\tcurrent, generated, 1 finding\t0");
}

TEST(ReportValues, HasNamesThatAddNoLineAndNoField) {
  EXPECT_EQ(listText("<FOUND NUMBER='1' NAME='a&#9;b&#10;&lt;/pre>&amp;' FZAREA='3'/>")
                .at(1)
                .substr(0, 33),
            "1\ta\\tb\\n&lt;/pre&gt;&amp;\t\t0\t0\t3\t");
}

// --- Addresses

TEST(ReportAddress, IsThatOfARow) {
  const Opened document({"file.xml", "", makeModel(repeat(Report::mostRows, "FZAREA='1'"))});
  const Units units;

  EXPECT_EQ(Report::makeAddress(document.tell(units), *document.getFoundations()[6], 6), "#row-7");
}

TEST(ReportAddress, IsASearchWhereRowsAreMadeWhenTheyAreLookedAt) {
  const Opened document(
      {"file.xml", "", makeModel(repeat(Report::mostRows, "FZAREA='1'") + "<FOUND NUMBER='-5'/>")});
  const Units units;

  EXPECT_EQ(Report::makeAddress(document.tell(units), *document.getFoundations()[500], 500),
            "#number=-5");
}

}  // namespace
