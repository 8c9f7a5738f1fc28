#include "report/descriptions.h"

#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using Report::Part;
using ReportTest::kiloNewton;
using ReportTest::makeModel;
using ReportTest::Opened;

/// What these foundations have of a part.
std::string describe(const std::string& foundations, Part part, const Units& units = {}) {
  const Opened document({"file.xml", "", makeModel(foundations)});
  return Report::describeGroup(Report::summarize(document.getFoundations(), part),
                               Report::listDirections(part, units));
}

std::string describeScalesOf(const std::string& foundations, Part part, const Units& units = {}) {
  const Opened document({"file.xml", "", makeModel(foundations)});
  const auto directions = Report::listDirections(part, units);
  return Report::describeScales(
      Report::makeScales(directions, Report::summarize(document.getFoundations(), part)),
      directions);
}

TEST(ReportGroup, TellsTheRangeOfEachDirection) {
  EXPECT_EQ(describe("<FOUND FXLINE='1' FYLINE='6' FZLINE='3' FXX='4'/>\n"
                     "<FOUND FXLINE='5' FYLINE='6' FZLINE='7' FXX='0.001'/>",
                     Part::line, kiloNewton),
            " <span><b>x</b> 1 to 5 kN/m\xC2\xB2</span> <span><b>y</b> 6 kN/m\xC2\xB2</span> "
            "<span><b>z</b> 3 to 7 kN/m\xC2\xB2</span> <span><b>rotation x</b> 0.001 to 4 "
            "kNm/m/rad</span>");
}

TEST(ReportGroup, CountsZeros) {
  EXPECT_EQ(
      describe("<FOUND FXAREA='1' FYAREA='1'/>\n<FOUND FXAREA='1' FYAREA='0'/>", Part::area),
      " <span><b>x</b> 1</span> <span><b>y</b> 1, 1 zero</span> <span><b>z</b> 2 zero</span>");
}

TEST(ReportGroup, CountsValuesThatAreLacking) {
  EXPECT_NE(describe("<FOUND FZLINE='3'/>\n<FOUND FXX='1'/>", Part::line)
                .find("<span><b>z</b> 3, 1 without a value</span> <span><b>rotation x</b> 1, 1 "
                      "without a value</span>"),
            std::string::npos);
}

TEST(ReportGroup, CountsEachFailureMode) {
  EXPECT_EQ(
      describe("<FOUND FZAREA='3' FAILZAREA='-1'/>\n<FOUND FZAREA='3' FAILZAREA='-1'/>\n"
               "<FOUND FZAREA='3' FAILZAREA='1'/>",
               Part::area),
      " <span><b>x</b> 3 zero</span> <span><b>y</b> 3 zero</span> <span><b>z</b> 3, 2 fail in "
      "tension, 1 fails in compression</span>");
}

TEST(ReportGroup, CountsValuesBeyondTheScale) {
  EXPECT_EQ(describe("<FOUND FXAREA='-1' FYAREA='nan' FZAREA='4'/>\n"
                     "<FOUND FXAREA='inf' FYAREA='2' FZAREA='4'/>",
                     Part::area),
            " <span><b>x</b> <b class=\"warn\">2 negative, infinite or no number</b></span> "
            "<span><b>y</b> 2, <b "
            "class=\"warn\">1 negative, infinite or no number</b></span> <span><b>z</b> 4</span>");
}

TEST(ReportScales, AreToldFromWhereToWhereTheyGo) {
  EXPECT_EQ(describeScalesOf("<FOUND FXLINE='20' FZLINE='30' FXX='4e5'/>", Part::line, kiloNewton),
            " Logarithmic scale of translation: 10<sup>1</sup> to 10<sup>2</sup> kN/m\xC2\xB2. "
            "Logarithmic scale of rotation: 10<sup>5</sup> to 10<sup>6</sup> kNm/m/rad.");
}

TEST(ReportScales, AreNotToldWhereThereAreNone) {
  EXPECT_EQ(describeScalesOf("<FOUND FXAREA='-5'/>", Part::area), "");
  EXPECT_EQ(describeScalesOf("<FOUND FXX='5'/>", Part::line),
            " Logarithmic scale of rotation: 10<sup>0</sup> to 10<sup>1</sup>.");
}

TEST(ReportUnit, OfADirectionIsEscaped) {
  EXPECT_EQ(Report::showUnit({"x", "<b>", false}), " &lt;b&gt;");
  EXPECT_EQ(Report::showUnit({"x", "", false}), "");
}

}  // namespace
