#include "report/distribution.h"

#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using Report::Part;
using ReportTest::count;
using ReportTest::cut;
using ReportTest::holds;
using ReportTest::kiloNewton;
using ReportTest::listLines;
using ReportTest::makeModel;
using ReportTest::Opened;
using ReportTest::repeat;
using ReportTest::stripAll;
using ReportTest::Texts;

/// How the values of a part of these foundations are spread.
std::string spread(const std::string& foundations, Part part, const Units& units = {}) {
  const Opened document({"file.xml", "", makeModel(foundations)});
  const auto directions = Report::listDirections(part, units);
  const Report::Scales scales =
      Report::makeScales(directions, Report::summarize(document.getFoundations(), part));
  std::string page;
  Report::appendDistribution(document.tell(units), part, scales, page);
  return page;
}

Texts listCaptions(const std::string& distribution) {
  return stripAll(listLines(distribution, "<figcaption>"));
}

/// What the histograms draw.
Texts listPaths(const std::string& distribution) {
  Texts paths;
  for (const std::string& line : listLines(distribution, "<svg"))
    paths.push_back(cut(line, "<path d=\"", "\"/>"));
  return paths;
}

Texts listDecades(const std::string& distribution) {
  return stripAll(listLines(distribution, "<tr>"));
}

Texts listOdd(const std::string& distribution) { return stripAll(listLines(distribution, "<li>")); }

// --- Histograms

TEST(ReportHistogram, TellsItsDirectionAndHowManyValuesItHas) {
  EXPECT_EQ(listCaptions(spread("<FOUND FXAREA='5' FYAREA='5' FZAREA='50'/>\n"
                                "<FOUND FXAREA='5' FYAREA='6' FZAREA='0'/>\n"
                                "<FOUND FXAREA='90' FYAREA='80' FZAREA='-1'/>",
                                Part::area, kiloNewton)),
            (Texts{"x| kN/m\xC2\xB3 |3 values, at most 2 in a column",
                   "y| kN/m\xC2\xB3 |3 values, at most 1 in a column",
                   "z| kN/m\xC2\xB3 |1 value, at most 1 in a column"}));
}

TEST(ReportHistogram, HasAColumnAsHighAsTheShareOfItsValues) {
  // A scale from 1 to 100, of which each column is a twenty-fourth of a decade.
  EXPECT_EQ(listPaths(spread("<FOUND FXAREA='2'/>\n<FOUND FXAREA='10'/>\n<FOUND FXAREA='10'/>\n"
                             "<FOUND FXAREA='10'/>\n<FOUND FXAREA='100'/>",
                             Part::area)),
            Texts{"M7 1v-0.333h1V1M24 1v-1h1V1M47 1v-0.333h1V1"});
}

TEST(ReportHistogram, ShowsASingleValueBesideThousands) {
  EXPECT_EQ(listPaths(spread(repeat(100, "FXAREA='10'") + "<FOUND FXAREA='2'/>\n"
                                                          "<FOUND FXAREA='100'/>",
                             Part::area)),
            Texts{"M7 1v-0.02h1V1M24 1v-1h1V1M47 1v-0.02h1V1"});
}

TEST(ReportHistogram, HasTheAxisOfItsScale) {
  EXPECT_TRUE(holds(spread("<FOUND FXLINE='2' FZLINE='90' FXX='4e5'/>", Part::line),
                    "</svg>\n<span class=\"axis\"><i>0</i> <i "
                    "style=\"left:0%\">10<sup>5</sup></i> <i "
                    "style=\"left:100%\">10<sup>6</sup></i></span>\n</figure>\n</div>"));
}

TEST(ReportHistogram, IsLeftOutWhereADirectionHasNothingOnTheScale) {
  const std::string distribution = spread("<FOUND FXAREA='0' FYAREA='-1' FZAREA='5'/>", Part::area);

  EXPECT_EQ(listCaptions(distribution), Texts{"z| |1 value, at most 1 in a column"});
  EXPECT_EQ(count(distribution, "<svg"), 1U);
}

// --- The same as a table

TEST(ReportDecades, CountTheValuesOfEachDirection) {
  EXPECT_EQ(listLines(spread("<FOUND FXAREA='5' FYAREA='5' FZAREA='50'/>\n"
                             "<FOUND FXAREA='6' FYAREA='10' FZAREA='0'/>",
                             Part::area, kiloNewton),
                      "<tr>"),
            (Texts{"<tr><th scope=\"row\">10<sup>0</sup> to 10<sup>1</sup> "
                   "kN/m\xC2\xB3<td>2<td>1<td>0</tr>",
                   "<tr><th scope=\"row\">10<sup>1</sup> to 10<sup>2</sup> "
                   "kN/m\xC2\xB3<td>0<td>1<td>1</tr>"}));
}

TEST(ReportDecades, HaveAHeadingForEachDirection) {
  const std::string distribution = spread("<FOUND FXLINE='5' FXX='5'/>", Part::line);

  EXPECT_TRUE(holds(distribution,
                    "<thead><tr><th scope=\"col\">Values<th scope=\"col\" class=\"num\">x<th "
                    "scope=\"col\" class=\"num\">y<th scope=\"col\" class=\"num\">z</tr></thead>"));
  EXPECT_TRUE(holds(distribution,
                    "<thead><tr><th scope=\"col\">Values<th scope=\"col\" class=\"num\">rotation "
                    "x</tr></thead>"));
}

TEST(ReportDecades, OfRotationStandInATableOfTheirOwn) {
  EXPECT_EQ(listDecades(spread("<FOUND FXLINE='5' FXX='500'/>", Part::line, kiloNewton)),
            (Texts{"10|0| to 10|1| kN/m\xC2\xB2|1|0|0", "10|2| to 10|3| kNm/m/rad|1"}));
}

TEST(ReportDecades, AreLeftOutWhereTheyHoldNothing) {
  EXPECT_EQ(listDecades(spread("<FOUND FXAREA='5'/>\n<FOUND FXAREA='50000'/>", Part::area)),
            (Texts{"10|0| to 10|1|1|0|0", "10|4| to 10|5|1|0|0"}));
}

TEST(ReportDecades, AreNotThereWithoutAScale) {
  const std::string distribution = spread("<FOUND FXAREA='-5'/>", Part::area);

  EXPECT_FALSE(holds(distribution, "<table"));
  EXPECT_FALSE(holds(distribution, "<details"));
  EXPECT_EQ(count(spread("<FOUND FXX='5'/>", Part::line), "<table"), 1U);
}

TEST(ReportDecades, StartWithTheirPowerOfTenOnLongScalesToo) {
  EXPECT_EQ(listDecades(spread("<FOUND FXAREA='5'/>\n<FOUND FXAREA='1e15'/>\n"
                               "<FOUND FXAREA='1e22'/>",
                               Part::area)),
            (Texts{"10|0| to 10|1|1|0|0", "10|15| to 10|16|1|0|0",
                   "10|21| to 10|22|, both included|1|0|0"}));
}

// --- Odd ones

TEST(ReportOdd, AreValuesFarFromTheOthers) {
  EXPECT_EQ(listOdd(spread(repeat(10, "FXAREA='100' FYAREA='100'") +
                               "<FOUND NUMBER='11' NAME='A' FXAREA='1001' FYAREA='100'/>\n"
                               "<FOUND NUMBER='12' NAME='B' FXAREA='9.9' FYAREA='12345.6789'/>",
                           Part::area)),
            (Texts{"x| |foundation 12, |B|: 9.9; |foundation 11, |A|: 1001",
                   "y| |foundation 12, |B|: 12345.6789"}));
}

TEST(ReportOdd, AreNoneWithinAPowerOfTen) {
  EXPECT_TRUE(
      holds(spread(repeat(10, "FXAREA='100'") + "<FOUND FXAREA='1000'/>\n<FOUND FXAREA='10'/>",
                   Part::area),
            "<p class=\"lead\">No value is far from the others.</p>"));
}

TEST(ReportOdd, AreNoneWithinThreeDistancesOfTheQuartiles) {
  // The quartiles are 10 and 100, so that the fences are 0.01 and 100000.
  const std::string usual = repeat(10, "FXAREA='10'") + repeat(10, "FXAREA='100'");

  EXPECT_EQ(listOdd(spread(usual + "<FOUND NUMBER='21' FXAREA='99999'/>", Part::area)), Texts{});
  EXPECT_EQ(listOdd(spread(usual + "<FOUND NUMBER='21' NAME='A' FXAREA='100001'/>", Part::area)),
            Texts{"x| |foundation 21, |A|: 100001"});
}

TEST(ReportOdd, AreThoseBeyondTheScale) {
  EXPECT_EQ(listOdd(spread("<FOUND NUMBER='1' NAME='A' FXAREA='-5'/>\n"
                           "<FOUND NUMBER='2' NAME='B' FXAREA='inf'/>\n"
                           "<FOUND NUMBER='3' NAME='C' FXAREA='nan'/>",
                           Part::area)),
            Texts{"x| |foundation 2, |B|: inf; |foundation 3, |C|: nan; |foundation 1, |A|: -5"});
}

TEST(ReportOdd, StartWithTheFarthest) {
  EXPECT_EQ(
      listOdd(spread(repeat(10, "FXAREA='100'") + "<FOUND NUMBER='11' NAME='A' FXAREA='0.1'/>\n"
                                                  "<FOUND NUMBER='12' NAME='B' FXAREA='1e6'/>\n"
                                                  "<FOUND NUMBER='13' NAME='C' FXAREA='-1'/>\n"
                                                  "<FOUND NUMBER='14' NAME='D' FXAREA='1e5'/>",
                     Part::area)),
      Texts{"x| |foundation 13, |C|: -1; |foundation 12, |B|: 1000000; |foundation 11, |A|: "
            "0.1; |foundation 14, |D|: 100000"});
}

TEST(ReportOdd, AreZerosAmongOtherValues) {
  const std::string zero = "<FOUND NUMBER='11' NAME='A' FYAREA='1'/>\n";
  const std::string three = repeat(3, "FXAREA='100' FYAREA='1'");

  EXPECT_EQ(
      listOdd(spread(three + "<FOUND NUMBER='4' FXAREA='1' FYAREA='1'/>\n" + zero, Part::area))[0],
      "x| |foundation 11, |A|: 0; |foundation 4, |Found0004|: 1");
  EXPECT_EQ(listOdd(spread(three + zero, Part::area)), Texts{});
}

TEST(ReportOdd, StartWithTheLargestWithoutAPlaceOnTheScale) {
  EXPECT_EQ(listOdd(spread("<FOUND NUMBER='1' NAME='A' FXAREA='-1'/>\n"
                           "<FOUND NUMBER='2' NAME='B' FXAREA='-9'/>\n"
                           "<FOUND NUMBER='3' NAME='C' FXAREA='-3'/>",
                           Part::area)),
            Texts{"x| |foundation 2, |B|: -9; |foundation 3, |C|: -3; |foundation 1, |A|: -1"});
}

TEST(ReportOdd, AreNoneOfFoundationsWithoutThePart) {
  EXPECT_EQ(listOdd(spread("<FOUND FXAREA='-5'/>\n<FOUND FZLINE='1'/>", Part::line)), Texts{});
}

TEST(ReportOdd, AreTwelveAtMostByName) {
  std::string odd;
  for (int i = 11; i <= 22; ++i) odd += "<FOUND NUMBER='" + std::to_string(i) + "' FXAREA='-1'/>\n";
  const Texts twelve = listOdd(spread(odd, Part::area));
  const Texts fourteen = listOdd(spread(
      odd + "<FOUND NUMBER='31' FXAREA='-1'/>\n<FOUND NUMBER='32' FXAREA='-1'/>", Part::area));

  ASSERT_EQ(twelve.size(), 1U);
  EXPECT_TRUE(holds(twelve[0], "|foundation 22, |Found0022|: -1"));
  EXPECT_FALSE(holds(twelve[0], "more"));
  EXPECT_EQ(fourteen, Texts{twelve[0] + " and 2 more"});
}

TEST(ReportOdd, LeadToTheirRows) {
  EXPECT_TRUE(
      holds(spread("<FOUND NUMBER='7' NAME='&lt;i>' FXAREA='-5'/>", Part::area),
            "<li><b>x</b> <a href=\"#number=7\">foundation 7, <bdi>&lt;i&gt;</bdi></a>: -5</li>"));
}

TEST(ReportOdd, AreExplained) {
  EXPECT_TRUE(holds(spread("<FOUND FXAREA='-5'/>", Part::area),
                    "Odd ones: their value is negative, infinite or no number; or zero, where less "
                    "than a quarter are; or it lies more than a power of ten, and more than three "
                    "times the distance of the quartiles, beyond the quartiles."));
}

}  // namespace
