#include "report/page.h"

#include <string>

#include <gtest/gtest.h>

#include "checks/rules.h"
#include "report/assets.h"

namespace {

using Documents::Document;

std::string make(const std::string& bytes, const Report::Units& units = {}) {
  Document document({"folder/file.xml", "", bytes});
  Found::FoundationManager& manager = document.getFoundations();
  manager.updateFoundationMaximum();
  const Checks::Findings findings = Checks::find(document);
  return Report::makePage({document, manager, findings, units});
}

std::string makeModel(const std::string& foundations, const std::string& current = "") {
  return "<?xml?>\n<SMOD VERSION='7'><FOUNDATIONS CURRENT='" + current + "'>" + foundations +
         "</FOUNDATIONS></SMOD>";
}

bool holds(const std::string& page, const std::string& text) {
  return page.find(text) != page.npos;
}

std::size_t count(const std::string& page, const std::string& text) {
  std::size_t number = 0;
  for (std::size_t at = page.find(text); at != page.npos; at = page.find(text, at + 1)) ++number;
  return number;
}

TEST(ReportPage, TellsWhatTheDocumentIs) {
  const std::string page =
      make(makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='7' IsGenerated='1'/>", "A"));

  for (const char* text :
       {"<title>Beddings of file.xml</title>", "<li>Form <strong>Legacy model</strong>",
        "<li>Version <strong>7</strong>", "<li>Foundations <strong>1</strong>",
        "1 with area, 0 with line, 1 generated", "<li>Largest stiffness <strong>7</strong>",
        "<li>Current foundation <strong><bdi>A</bdi></strong>",
        "<li>Units <strong>not stated</strong>", "<li>Check <strong>no findings</strong>",
        "No foundation has a part for lines.", "Nothing looks wrong."})
    EXPECT_TRUE(holds(page, text)) << text;
}

TEST(ReportPage, TellsTheVersionOfAnExchangeDocument) {
  EXPECT_TRUE(holds(make("<B Version='2.5'><CurveBedding Number='1' Name='A' StiffnessX='1'/></B>"),
                    "<li>Version <strong>current</strong> <small>the document states 2.5</small>"));
  EXPECT_TRUE(holds(make("<B><Bedding Name='A'/></B>"),
                    "<li>Version <strong>1.0</strong> <small>the document states none</small>"));
}

TEST(ReportPage, OfNothingHasNoPictures) {
  const std::string page = make(makeModel(""));

  EXPECT_TRUE(holds(page, "The document holds no foundations."));
  EXPECT_FALSE(holds(page, "<svg"));
  EXPECT_FALSE(holds(page, "<script>"));
}

TEST(ReportPage, DrawsARowAndABarForEachDirection) {
  const std::string page =
      make(makeModel("<FOUND NUMBER='1' NAME='A' FXAREA='1' FYAREA='0' FZAREA='-1' FAILZAREA='-1'/>"
                     "<FOUND NUMBER='12345' NAME='B' FXX='10' FAILXLINE='7' FAILYLINE='1'/>",
                     "A"),
           {"kN", "m"});

  EXPECT_EQ(count(page, "<svg"), 2u);
  for (const char* text :
       {"<line x2=\"100%\"/>", "<line class=\"z\"/>", "<line class=\"x\" x2=\"100%\"/>",
        "<tspan> T \xE2\x86\x90\xE2\x86\x92</tspan>", "<tspan> C \xE2\x86\x92\xE2\x86\x90</tspan>",
        "<tspan> mode</tspan>", "<text>no line part</text>", "<text>no area part</text>",
        "<text></text><g><text>12345 B</text>", "\xE2\x97\x8F current",
        "<tspan class=\"u\"> kN/m\xC2\xB3</tspan>", "<td class=\"f\">x mode 7,<br>y compression"})
    EXPECT_TRUE(holds(page, text)) << text;
}

TEST(ReportPage, FoldsManyRowsIntoGroups) {
  std::string foundations;
  for (int i = 1; i <= 61; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(i) + "' NAME='N" + std::to_string(i) +
                   "' FZAREA='" + std::to_string(i) + "' FXAREA='-1'/>";
  const std::string page = make(makeModel(foundations));

  for (const char* text :
       {"a tick for each value of all 61 foundations", "<summary>Rows 1 to 60 of 61 ",
        "<summary>Row 61 of 61 ", "<b>z</b> 1 to 60", "<b>z</b> 61<", "60 beyond the scale",
        "<summary>Findings 51 to 61</summary>"})
    EXPECT_TRUE(holds(page, text)) << text;
}

TEST(ReportPage, TellsWhatTheRowsOfAGroupLackAndHowTheyFail) {
  std::string foundations = "<FOUND NUMBER='1' NAME='A' FXX='1' FAILYLINE='-1'/>";
  for (int i = 2; i <= 61; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(i) + "' NAME='N" + std::to_string(i) +
                   "' FXLINE='2' FYLINE='2' FZLINE='2' FAILZLINE='1'/>";
  const std::string page = make(makeModel(foundations), {"kN", "m"});

  for (const char* text :
       {"<b>x</b> 2 kN/m\xC2\xB2, 1 without a value", "1 fails in tension",
        "59 fail in compression", "<b>rotation x</b> 1 kNm/m/rad, 59 without a value",
        "No foundation has a part for areas."})
    EXPECT_TRUE(holds(page, text)) << text;
}

TEST(ReportPage, LinksFindingsToTheRowsThatTheyAreAbout) {
  const std::string page = make(makeModel("<FOUND NUMBER='1' NAME='&lt;A' FZAREA='x'/><LOAD/>"));

  EXPECT_TRUE(holds(page, "<a class=\"warn\" href=\"#findings\">2 findings</a>"));
  EXPECT_TRUE(holds(page, "<tr id=\"row-1\">"));
  EXPECT_TRUE(holds(page,
                    "<a href=\"#row-1\">foundation 1, &lt;A</a> FZAREA=&quot;x&quot; is no "
                    "number; it is read as 0</li>"));
}

TEST(ReportPage, AllowsNoScriptButItsOwn) {
  const std::string page = make(makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='7'/>"));

  EXPECT_TRUE(holds(page, "script-src 'sha256-" + std::string(Report::scriptSha256) + "'"));
  EXPECT_EQ(count(page, "<script"), 1u);
  EXPECT_EQ(std::string(Report::scriptSha256).size(), 44u);
  EXPECT_EQ(std::string(Report::script).front(), '\n');
}

}  // namespace
