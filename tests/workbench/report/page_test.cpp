#include <string>

#include <gtest/gtest.h>

#include "report/assets.h"
#include "workbench/report/read_page.h"

namespace {

using ReportTest::count;
using ReportTest::holds;
using ReportTest::listFacts;
using ReportTest::report;
using ReportTest::reportExample;
using ReportTest::reportModel;
using ReportTest::Texts;

TEST(ReportFacts, DescribeALegacyModel) {
  EXPECT_EQ(
      listFacts(reportExample("model.xml", {"kN", "m"})),
      (Texts{"Form |Legacy model", "Version |12",
             "Foundations |12| |7 with area, 6 with line, 3 generated",
             "Largest stiffness |350730.6658962116| |length of the longest vector (x, y, z) of an "
             "area or a line, or of a rotation",
             "Current foundation |Raft on stiff clay| |number 3", "Units |kN, m| |labels only",
             "Check |no findings"}));
}

TEST(ReportFacts, DescribeAnExchangeDocument) {
  const Texts facts = listFacts(reportExample("beddings.xml"));
  EXPECT_EQ(facts[0] + "; " + facts[1],
            "Form |Exchange document; Version |current| |the document states 2.0");
  EXPECT_EQ(facts[4], "Current foundation |none");
  EXPECT_EQ(facts[5], "Units |not stated| |values as in the document");
  EXPECT_EQ(facts[6], "Check |1 finding");
  EXPECT_EQ(listFacts(reportExample("beddings-1.0.xml"))[1],
            "Version |1.0| |the document states 1.0");
}

TEST(ReportFacts, TellTheVersionAsWhichADocumentWasRead) {
  const std::string document = "<X><CurveBedding Number='1' Name='A'/></X>";

  EXPECT_EQ(listFacts(report(document, {}, {"1.0", {}, {}}))[1],
            "Version |1.0| |the document states none");
  EXPECT_EQ(listFacts(report(document))[1], "Version |current| |the document states none");
}

TEST(ReportFacts, SayThatALegacyModelStatesNoVersion) {
  EXPECT_EQ(listFacts(reportModel(""))[1], "Version |not stated");
}

TEST(ReportFacts, DescribeATableAndData) {
  Documents::ReadOptions table;
  table.form = Documents::Form::csv;

  EXPECT_EQ(listFacts(report("number,name\n1,A\n", {}, table))[0], "Form |Table (CSV)");
  const Texts facts = listFacts(report(R"({"foundations": [{"number": 1}]})"));
  EXPECT_EQ(facts[0], "Form |Data (JSON)");
  EXPECT_EQ(facts[1], "Foundations |1| |0 with area, 0 with line, 0 generated");
}

TEST(ReportPage, SaysThatThereAreNoFoundations) {
  const std::string page = reportModel("");

  EXPECT_TRUE(holds(page, "The document holds no foundations."));
  EXPECT_FALSE(holds(page, "<table"));
  EXPECT_FALSE(holds(page, "<svg"));
}

TEST(ReportPage, LoadsNothing) {
  const std::string page = reportExample("model.xml");

  for (const std::string part : {"http:", "https:", "src=", "url(", "@import", "<link", "<img"})
    EXPECT_FALSE(holds(page, part)) << part;
  EXPECT_TRUE(holds(page, "default-src 'none'"));
}

TEST(ReportPage, IsNamedAfterTheFileWithoutItsFolder) {
  const std::string page = reportExample("model.xml");

  EXPECT_TRUE(holds(page, "<title>Beddings of model.xml</title>"));
  EXPECT_TRUE(holds(page, "<h1>model.xml</h1>"));
  EXPECT_FALSE(holds(page, "/model.xml"));
}

TEST(ReportPage, AllowsNoScriptButItsOwn) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='7'/>");

  EXPECT_TRUE(holds(page, "script-src 'sha256-" + std::string(Report::scriptSha256) + "'"));
  EXPECT_EQ(count(page, "<script"), 1u);
  EXPECT_EQ(std::string(Report::scriptSha256).size(), 44u);
  EXPECT_EQ(std::string(Report::script).front(), '\n');
}

TEST(ReportPage, OfNothingRunsNoScript) { EXPECT_FALSE(holds(reportModel(""), "<script>")); }

TEST(ReportPage, IsToldFromOtherTexts) {
  EXPECT_TRUE(Report::isPage(reportModel("")));
  EXPECT_FALSE(Report::isPage("<!DOCTYPE html>\n<html></html>\n"));
  EXPECT_FALSE(Report::isPage(""));
  EXPECT_FALSE(
      Report::isPage("<?xml?><!-- <meta name=\"generator\" content=\"kvfound\"> --><SMOD/>"));
}

}  // namespace
