#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::holds;
using ReportTest::kiloNewton;
using ReportTest::listRowTexts;
using ReportTest::listTableRows;
using ReportTest::reportExample;
using ReportTest::reportModel;
using ReportTest::Texts;

TEST(ReportUnits, AreNotClaimedWhenTheyAreNotTold) {
  const std::string page = reportExample("model.xml");

  EXPECT_TRUE(holds(page, "not stated"));
  EXPECT_FALSE(holds(page, "kN"));
  EXPECT_FALSE(holds(page, "/rad"));
}

TEST(ReportUnits, LabelAxesAndValues) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='1' FYAREA='2' FZAREA='3' FXLINE='4' FYLINE='5' "
      "FZLINE='6' FXX='7'/>",
      kiloNewton);

  EXPECT_EQ(listRowTexts(page, "area"),
            Texts{"1|A|1| kN/m\xC2\xB3|2| kN/m\xC2\xB3|3| kN/m\xC2\xB3"});
  EXPECT_EQ(listRowTexts(page, "line"),
            Texts{"1|A|4| kN/m\xC2\xB2|5| kN/m\xC2\xB2|6| kN/m\xC2\xB2|7| kNm/m/rad"});
  EXPECT_EQ(count(page, "<text class=\"u\">kN/m\xC2\xB3</text>"), 3U);
  EXPECT_EQ(count(page, "<text class=\"u\">kN/m\xC2\xB2</text>"), 3U);
  EXPECT_EQ(count(page, "<text class=\"u\">kNm/m/rad</text>"), 1U);
  EXPECT_TRUE(holds(page, ">Area <small>kN/m\xC2\xB3</small></th>"));
  EXPECT_TRUE(holds(page, ">Line <small>kN/m\xC2\xB2, rotation kNm/m/rad</small></th>"));
}

TEST(ReportUnits, OfSeveralLettersAreToldApart) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FXX='7'/>", {"lbf", "ft"});

  EXPECT_TRUE(holds(page,
                    ">lbf\xC2\xB7"
                    "ft/ft/rad</text>"));
}

TEST(ReportUnits, ThatAreLongStandOnlyAtTheAxes) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='1'/>", {"kilonewton", "millimetre"});

  EXPECT_EQ(listRowTexts(page, "area"), Texts{"1|A|1|0|0"});
  EXPECT_EQ(count(page, "<text class=\"u\">kilonewton/mi\xE2\x80\xA6</text>"), 3U);
  EXPECT_TRUE(holds(page, ">Area <small>kilonewton/millimetre\xC2\xB3</small></th>"));
}

TEST(ReportUnits, ConvertNothing) {
  const std::string foundation = "<FOUND NUMBER='1' NAME='A' FXAREA='0.1' FZLINE='6' FXX='7'/>";

  EXPECT_EQ(listTableRows(reportModel(foundation, kiloNewton)),
            listTableRows(reportModel(foundation)));
}

}  // namespace
