#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::cut;
using ReportTest::holds;
using ReportTest::kiloNewton;
using ReportTest::listLines;
using ReportTest::listRowTexts;
using ReportTest::readSection;
using ReportTest::reportModel;
using ReportTest::stripTags;
using ReportTest::Texts;

/// The page of 60 foundations without anything odd, and one more, whose group is closed.
std::string reportClosed(const std::string& ordinary, const std::string& odd,
                         const Units& units = {}) {
  std::string foundations;
  for (int i = 1; i <= 60; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(i) + "' " + ordinary + "/>\n";
  return reportModel(foundations + "<FOUND NUMBER='61' " + odd + "/>", units);
}

/// What the closed group of a part has in a direction, or beyond its directions.
std::string tellClosed(const std::string& page, const std::string& part, std::size_t place) {
  const std::string group = cut(readSection(page, part), "<details><summary>", "</summary>");
  std::size_t at = group.find("<span class");
  for (std::size_t i = 0; i <= place; ++i) at = group.find("<span>", at + 1);
  return stripTags(group.substr(at, group.find("</span>", at) - at));
}

TEST(ReportGroups, TellTheRangeOfEachDirection) {
  const std::string page = reportClosed("FXLINE='1' FYLINE='2' FZLINE='3' FXX='4'",
                                        "FXLINE='5' FYLINE='6' FZLINE='7' FXX='0.001'", kiloNewton);

  EXPECT_EQ(tellClosed(page, "line", 0), "x| 5 kN/m\xC2\xB2");
  EXPECT_EQ(tellClosed(page, "line", 1), "y| 6 kN/m\xC2\xB2");
  EXPECT_EQ(tellClosed(page, "line", 2), "z| 7 kN/m\xC2\xB2");
  EXPECT_EQ(tellClosed(page, "line", 3), "rotation x| 0.001 kNm/m/rad");
  EXPECT_TRUE(holds(readSection(page, "line"), "<b>z</b> 3 to 7 kN/m\xC2\xB2<"));
  EXPECT_TRUE(holds(readSection(page, "line"), "<b>rotation x</b> 0.001 to 4 kNm/m/rad<"));
}

TEST(ReportGroups, CountZeros) {
  const std::string page =
      reportClosed("FXAREA='1' FYAREA='1' FZAREA='3'", "FXAREA='1' FYAREA='1'");

  EXPECT_EQ(tellClosed(page, "area", 1), "y| 1");
  EXPECT_EQ(tellClosed(page, "area", 2), "z| 1 zero");
  EXPECT_TRUE(holds(readSection(page, "area"), "<b>z</b> 3, 1 zero<"));
}

TEST(ReportGroups, CountFoundationsThatLackThePart) {
  const std::string page = reportClosed("FZAREA='3'", "FZLINE='3'");

  EXPECT_EQ(tellClosed(page, "area", 3), "1 without an area part");
  EXPECT_TRUE(holds(readSection(page, "line"), "<span>60 without a line part</span>"));
}

TEST(ReportGroups, CountValuesThatAreLacking) {
  EXPECT_EQ(tellClosed(reportClosed("FZLINE='3' FXX='1'", "FZLINE='3'"), "line", 3),
            "rotation x| 1 without a value");
}

TEST(ReportGroups, CountEachFailureMode) {
  const std::string page = reportClosed("FZAREA='3' FAILZAREA='-1' FZLINE='1' FAILZLINE='8'",
                                        "FZAREA='3' FAILZAREA='1' FZLINE='1' FAILXLINE='-1'");

  EXPECT_EQ(tellClosed(page, "area", 2), "z| 3, 1 fails in compression");
  EXPECT_EQ(tellClosed(page, "line", 0), "x| 1 zero, 1 fails in tension");
  EXPECT_TRUE(
      holds(readSection(page, "area"), "<b>z</b> 3, 60 fail in tension, 1 fails in compression<"));
  EXPECT_TRUE(holds(readSection(page, "line"), "<b>z</b> 1, 60 fail in mode 8<"));
}

TEST(ReportGroups, CountValuesBeyondTheScale) {
  const std::string page =
      reportClosed("FXAREA='3' FZAREA='3'", "FXAREA='-1' FYAREA='nan' FZAREA='4'");

  EXPECT_EQ(tellClosed(page, "area", 0), "x| |1 beyond the scale");
  EXPECT_EQ(tellClosed(page, "area", 1), "y| |1 beyond the scale");
  EXPECT_EQ(tellClosed(page, "area", 2), "z| 4");
}

TEST(ReportGroups, AreSummedUpInAPictureWithTheirZerosAndWhatIsBeyondTheScale) {
  const std::string section = readSection(
      reportClosed("FXAREA='1' FYAREA='1' FZAREA='10'", "FYAREA='-1' FZAREA='100'"), "area");
  const Texts axes = listLines(section, "<g class=\"d\"");

  const std::string zero = "<g><line class=\"z\"/>";
  const std::string beyond = "<g><line class=\"x\" x2=\"100%\"/>";
  ASSERT_EQ(count(axes[0], "<g><"), 3U) << axes[0];
  EXPECT_EQ(count(axes[0], zero), 1U) << axes[0];
  EXPECT_EQ(count(axes[0], beyond), 1U) << axes[0];
  EXPECT_TRUE(holds(axes[0], "<g><rect x=\"66.8%\"/><rect x=\"100%\"/></g>")) << axes[0];
  EXPECT_FALSE(holds(axes[1], "<g><")) << axes[1];
}

TEST(ReportGroups, HaveTheirUnitsAtTheAxesOnly) {
  const std::string page = reportClosed("FZAREA='3'", "FZAREA='3'", kiloNewton);

  EXPECT_EQ(listRowTexts(page, "area").back(), "61|Found0061|0|0|3");
  EXPECT_TRUE(holds(page, "<text class=\"u\">kN/m\xC2\xB3</text>"));
}

}  // namespace
