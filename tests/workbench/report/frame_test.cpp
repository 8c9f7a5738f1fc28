#include "report/frame.h"

#include <string>

#include <gtest/gtest.h>

#include "report/assets.h"
#include "workbench/report/read_page.h"

namespace {

using Report::Frame;
using ReportTest::count;
using ReportTest::cut;
using ReportTest::holds;

std::string open(const Frame& frame) {
  std::string page;
  Report::openPage(frame, page);
  return page;
}

/// What each sheet of paper tells at its foot.
std::string tellFoot(const std::string& sheet) {
  return cut(open({"", "", sheet, false}), "@bottom-left { content: ", "; }");
}

TEST(ReportFrame, HasATitleAndAHeading) {
  const std::string page = open({"model.xml", "Beddings of", "", false});

  EXPECT_TRUE(holds(page, "<title>Beddings of model.xml</title>"));
  EXPECT_TRUE(holds(page, "<p class=\"over\">Beddings of</p>\n<h1>model.xml</h1>"));
}

TEST(ReportFrame, EscapesItsTitle) {
  const std::string page = open({"</title><script>", "<i>", "", false});

  EXPECT_TRUE(holds(page, "<title>&lt;i&gt; &lt;/title&gt;&lt;script&gt;</title>"));
  EXPECT_TRUE(holds(page, "<h1>&lt;/title&gt;&lt;script&gt;</h1>"));
  EXPECT_FALSE(holds(page, "<script"));
}

TEST(ReportFrame, AllowsNoScriptWhereItHasNone) {
  std::string page = open({"", "", "", false});
  Report::closePage({"", "", "", false}, page);

  EXPECT_TRUE(holds(page,
                    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                    "style-src 'unsafe-inline'\">"));
  EXPECT_FALSE(holds(page, "<script"));
}

TEST(ReportFrame, AllowsNoScriptButItsOwn) {
  const Frame frame = {"", "", "", true};
  std::string page = open(frame);
  Report::closePage(frame, page);

  EXPECT_TRUE(holds(page, "style-src 'unsafe-inline'; script-src 'sha256-" +
                              std::string(Report::scriptSha256) + "'\">"));
  EXPECT_EQ(count(page, "<script"), 1U);
  EXPECT_EQ(cut(page, "<script>", "</script>"), Report::script);
}

TEST(ReportFrame, HasTheHashOfItsScript) {
  EXPECT_EQ(std::string(Report::scriptSha256).size(), 44U);
  EXPECT_EQ(std::string(Report::script).front(), '\n');
}

TEST(ReportFrame, EndsThePage) {
  std::string page;
  Report::closePage({}, page);

  EXPECT_EQ(page.substr(page.size() - 16), "</body>\n</html>\n");
  EXPECT_TRUE(holds(page, "<p>Made by kvfound "));
}

TEST(ReportFrame, HasLinesToSignOn) {
  std::string page;
  Report::closeHeader(page);

  EXPECT_TRUE(holds(page,
                    "<p class=\"sign\" hidden><span>Prepared</span> <span>Checked</span> "
                    "<span>Date</span></p>\n</header>\n"));
}

TEST(ReportFoot, StandsOnEachSheet) {
  EXPECT_TRUE(holds(open({"", "", "model", false}),
                    "@page { @bottom-left { content: \"model\"; } }\n</style>"));
}

TEST(ReportFoot, HasAllButLettersDigitsAndBlanksAsCodes) {
  EXPECT_EQ(tellFoot("Az 09"), "\"Az 09\"");
  EXPECT_EQ(tellFoot("a.b, 10:30"), "\"a\\2e b\\2c  10\\3a 30\"");
  EXPECT_EQ(tellFoot("R\xC3\xBC"
                     "ck"),
            "\"R\\fc ck\"");
  EXPECT_EQ(tellFoot("\xF0\x9F\x98\x80"), "\"\\1f600 \"");
}

TEST(ReportFoot, CannotBeLeftByAName) {
  EXPECT_EQ(tellFoot("\"'\\"), "\"\\22 \\27 \\5c \"");
  EXPECT_EQ(tellFoot("a\nb"), "\"a\\a b\"");
  EXPECT_EQ(tellFoot("};@"), "\"\\7d \\3b \\40 \"");
  EXPECT_EQ(tellFoot("[`{"), "\"\\5b \\60 \\7b \"");
  EXPECT_EQ(tellFoot("</style>"), "\"\\3c \\2f style\\3e \"");
}

TEST(ReportFoot, IsOneLine) {
  EXPECT_EQ(tellFoot(std::string(90, 'x')), '"' + std::string(90, 'x') + '"');
  EXPECT_EQ(tellFoot(std::string(91, 'x')), '"' + std::string(89, 'x') + "\\2026 \"");
}

TEST(ReportFact, HasANameAndAText) {
  std::string page;
  Report::appendFact("Form", "a <b>b</b>", "", page);
  Report::appendFact("Units", "kN", "labels only", page);

  EXPECT_EQ(page,
            "<li>Form <strong>a <b>b</b></strong></li>\n"
            "<li>Units <strong>kN</strong> <small>labels only</small></li>\n");
}

TEST(ReportFile, IsNamedWithoutItsFolder) {
  EXPECT_EQ(Report::nameFile("folder/model.xml"), "model.xml");
  EXPECT_EQ(Report::nameFile("model.xml"), "model.xml");
  EXPECT_EQ(Report::nameFile("folder/a\nb.xml"), "a\\nb.xml");
}

TEST(ReportFrame, IsToldFromOtherTexts) {
  EXPECT_TRUE(Report::isPage(open({})));
  EXPECT_FALSE(Report::isPage("<!DOCTYPE html>\n<html></html>\n"));
  EXPECT_FALSE(Report::isPage(""));
  EXPECT_FALSE(
      Report::isPage("<?xml?><!-- <meta name=\"generator\" content=\"kvfound\"> --><SMOD/>"));
}

}  // namespace
