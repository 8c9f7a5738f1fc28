#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using Report::UnitsFrom;
using ReportTest::count;
using ReportTest::holds;
using ReportTest::kiloNewton;
using ReportTest::listFacts;
using ReportTest::listRowTexts;
using ReportTest::makeModel;
using ReportTest::Opened;
using ReportTest::readSection;
using ReportTest::reportExample;
using ReportTest::reportModel;

TEST(ReportUnits, AreNotClaimedWhenTheyAreNotTold) {
  const std::string page = reportExample("model.xml");

  EXPECT_TRUE(
      holds(page, "<li>Units <strong>not stated</strong> <small>values as in the document"));
  EXPECT_FALSE(holds(page, "kN"));
  EXPECT_FALSE(holds(page, "/rad"));
}

TEST(ReportUnits, LabelScalesAndColumns) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='1' FXLINE='4' FXX='7'/>", kiloNewton);
  const std::string area = readSection(page, "area");
  const std::string line = readSection(page, "line");

  EXPECT_TRUE(holds(area, "10<sup>-1</sup> to 10<sup>0</sup> kN/m\xC2\xB3."));
  EXPECT_EQ(count(area, " <small>kN/m\xC2\xB3</small></th>"), 3U);
  EXPECT_EQ(count(line, " <small>kN/m\xC2\xB2</small></th>"), 3U);
  EXPECT_EQ(count(line, " <small>kNm/m/rad</small></th>"), 1U);
}

TEST(ReportUnits, OfSeveralLettersAreToldApart) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FXX='7'/>", {"lbf", "ft"});

  EXPECT_TRUE(holds(page,
                    "<small>lbf\xC2\xB7"
                    "ft/ft/rad</small>"));
}

TEST(ReportUnits, ConvertNothing) {
  const std::string foundation = "<FOUND NUMBER='1' NAME='A' FXAREA='0.1' FZLINE='6' FXX='7'/>";
  const std::string with = reportModel(foundation, kiloNewton);
  const std::string without = reportModel(foundation);

  for (const std::string part : {"area", "line"})
    EXPECT_EQ(listRowTexts(with, part), listRowTexts(without, part));
}

TEST(ReportUnits, ComeFromTheUserOrFromTheDocument) {
  const Opened document({"file.xml", "", makeModel("")});

  EXPECT_EQ(listFacts(document.print(kiloNewton, UnitsFrom::user))[4],
            "Units |kN, m| |as the user says; nothing is converted");
  EXPECT_EQ(listFacts(document.print(kiloNewton, UnitsFrom::document))[4],
            "Units |kN, m| |as the document says");
  EXPECT_EQ(listFacts(document.print({}, UnitsFrom::document))[4],
            "Units |not stated| |values as in the document");
}

TEST(ReportUnits, OfTheUserThatAreNotThoseOfTheDocumentAreMarked) {
  const Opened document({"file.xml", "", makeModel("")});
  const Units kips = {"kip", "ft"};
  Report::Content content = document.tell(kips);
  content.documentUnits = kiloNewton;
  const std::string page = Report::makePage(content);

  EXPECT_EQ(listFacts(page)[4],
            "Units |kip, ft| |as the user says, but the document says kN, m; nothing is converted");
  EXPECT_TRUE(holds(page, "<span class=\"warn\">as the user says, but"));
}

TEST(ReportUnits, OfTheUserMayBeThoseOfTheDocument) {
  const Opened document({"file.xml", "", makeModel("")});
  Report::Content content = document.tell(kiloNewton);
  content.documentUnits = kiloNewton;

  EXPECT_EQ(listFacts(Report::makePage(content))[4],
            "Units |kN, m| |as the user says; nothing is converted");
}

}  // namespace
