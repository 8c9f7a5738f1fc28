#include <string>

#include <gtest/gtest.h>

#include "workbench/report/read_page.h"

namespace {

using Report::UnitsFrom;
using ReportTest::holds;
using ReportTest::kiloNewton;
using ReportTest::listFacts;
using ReportTest::listLines;
using ReportTest::makeModel;
using ReportTest::Opened;
using ReportTest::report;
using ReportTest::reportExample;
using ReportTest::reportModel;
using ReportTest::Texts;

/// The facts of a kind, of a model of these foundations.
Texts listLargest(const std::string& foundations, const Units& units = {}) {
  Texts facts;
  for (const std::string& fact : listFacts(reportModel(foundations, units)))
    if (fact.rfind("Largest ", 0) == 0) facts.push_back(fact.substr(8));
  return facts;
}

TEST(ReportFacts, DescribeALegacyModel) {
  EXPECT_EQ(
      listFacts(reportExample("model.xml", kiloNewton)),
      (Texts{"Form |Legacy model", "Version |12",
             "Foundations |12| |7 with area, 6 with line, 3 generated",
             "Largest area stiffness |120000| kN/m\xC2\xB3| |z of foundation 5, |Pile cap P1 &lt;4 "
             "piles&gt;",
             "Largest line stiffness |350000| kN/m\xC2\xB2| |z of foundation 5, |Pile cap P1 &lt;4 "
             "piles&gt;",
             "Largest rotational stiffness |125000| kNm/m/rad| |rotation x of foundation 5, |Pile "
             "cap P1 &lt;4 piles&gt;",
             "Current foundation |Raft on stiff clay| |number 3",
             "Units |kN, m| |as the user says; nothing is converted", "Check |no findings"}));
}

TEST(ReportFacts, DescribeAnExchangeDocument) {
  const Texts facts = listFacts(reportExample("beddings.xml"));

  EXPECT_EQ(facts[0] + "; " + facts[1],
            "Form |Exchange document; Version |2.0| |read as the current one");
  EXPECT_EQ(facts.back(), "Check |1 finding");
  EXPECT_EQ(listFacts(reportExample("beddings-1.0.xml"))[1], "Version |1.0");
}

TEST(ReportFacts, TellTheVersionAsWhichADocumentWasRead) {
  const std::string document = "<X><CurveBedding Number='1' Name='A'/></X>";

  EXPECT_EQ(listFacts(report(document, {}, {"1.0", {}, {}}))[1],
            "Version |not stated| |read as 1.0");
  EXPECT_EQ(listFacts(report(document))[1], "Version |not stated| |read as the current one");
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

TEST(ReportFacts, SayThatAPageShowsSomeOfTheFoundations) {
  const Opened document({"file.xml", "", makeModel("<FOUND NUMBER='1' FXAREA='1'/>")});
  Report::Content content = document.tell(kiloNewton);
  content.total = 12;
  const std::string page = Report::makePage(content);

  EXPECT_EQ(listFacts(page)[2],
            "Foundations |1 of 12| |a selection: 1 with area, 0 with line, 0 generated");
  EXPECT_TRUE(holds(page, "content: \"file\\2e xml\\2c  1 of 12 foundations\"; }"));
}

TEST(ReportFacts, NameTheCurrentFoundation) {
  EXPECT_EQ(listFacts(report(makeModel("<FOUND NUMBER='7' NAME='A'/>", " CURRENT='A'")))[3],
            "Current foundation |A| |number 7");
  EXPECT_EQ(listFacts(reportModel("<FOUND NUMBER='7' NAME='A'/>"))[3], "Current foundation |none");
}

// --- Date

TEST(ReportDate, IsAFact) {
  const Opened document({"file.xml", "", makeModel("")});

  EXPECT_EQ(listFacts(document.print({}, UnitsFrom::user, "2026-03-01 09:30"))[2],
            "Saved |2026-03-01 09:30");
}

TEST(ReportDate, OfNoFileIsWhenTheDocumentWasRead) {
  const Opened document({"file.xml", "", makeModel("")});
  Report::Content content = document.tell(kiloNewton);
  content.date = {"2026-03-01 09:30", false};
  const std::string page = Report::makePage(content);

  EXPECT_EQ(listFacts(page)[2], "Read |2026-03-01 09:30");
  EXPECT_TRUE(holds(page, "content: \"file\\2e xml\\2c  read 2026\\2d 03\\2d 01 09\\3a 30\"; }"));
}

TEST(ReportDate, IsEscaped) {
  const Opened document({"file.xml", "", makeModel("")});

  EXPECT_EQ(listFacts(document.print({}, UnitsFrom::user, "<i>"))[2], "Saved |&lt;i&gt;");
}

TEST(ReportDate, IsNoFactWhereItIsNotKnown) {
  EXPECT_FALSE(holds(reportModel(""), "<li>Saved <strong>"));
}

TEST(ReportDate, StandsBehindTheNameOnEachSheet) {
  const Opened document({"folder/m.xml", "", makeModel("")});

  EXPECT_TRUE(holds(document.print({}, UnitsFrom::user, "2026-03-01 09:30"),
                    "content: \"m\\2e xml\\2c  2026\\2d 03\\2d 01 09\\3a 30\"; }"));
  EXPECT_TRUE(holds(document.print(), "content: \"m\\2e xml\"; }"));
}

TEST(ReportDate, StandsBehindANameThatIsLong) {
  const Opened document({std::string(100, 'x') + ".xml", "", makeModel("")});

  EXPECT_TRUE(holds(document.print({}, UnitsFrom::user, "2026-03-01 09:30"),
                    "xxx\\2026 \\2c  2026\\2d 03\\2d 01 09\\3a 30\"; }"));
}

// --- Largest stiffness

TEST(ReportLargest, IsToldOfAreasLinesAndRotation) {
  EXPECT_EQ(listLargest("<FOUND NUMBER='1' NAME='A' FXAREA='3' FZAREA='2' FYLINE='5' FXX='1'/>\n"
                        "<FOUND NUMBER='2' NAME='B' FYAREA='1' FZLINE='4' FXX='7'/>",
                        kiloNewton),
            (Texts{"area stiffness |3| kN/m\xC2\xB3| |x of foundation 1, |A",
                   "line stiffness |5| kN/m\xC2\xB2| |y of foundation 1, |A",
                   "rotational stiffness |7| kNm/m/rad| |rotation x of foundation 2, |B"}));
}

TEST(ReportLargest, IsRoundedWithTheExactValueAtHand) {
  EXPECT_EQ(listLines(reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='13445080.768799'/>"),
                      "<li>Largest "),
            Texts{"<li>Largest area stiffness <strong><span "
                  "title=\"13445080.768799\">\xE2\x89\x88"
                  "13445000</span></strong> <small>z of foundation 1, <bdi>A</bdi></small></li>"});
}

TEST(ReportLargest, OfEqualOnesIsTheFirstAndTheOthersAreCounted) {
  EXPECT_EQ(listLargest("<FOUND NUMBER='1' NAME='A' FYAREA='3' FZAREA='3'/>\n"
                        "<FOUND NUMBER='2' NAME='B' FXAREA='3'/>"),
            Texts{"area stiffness |3| |y of foundation 1, |A|, and of 1 more"});
}

TEST(ReportLargest, IsNoneWhereAllAreZeroOrNegative) {
  EXPECT_EQ(listLargest("<FOUND NUMBER='1' FXAREA='-3' FYAREA='nan' FXLINE='0'/>"),
            Texts{"area stiffness |none| |beside 2 negative, infinite or no number"});
}

TEST(ReportLargest, IsFinite) {
  EXPECT_EQ(
      listLargest("<FOUND NUMBER='1' NAME='A' FZAREA='1e300'/>\n"
                  "<FOUND NUMBER='2' NAME='B' FZAREA='inf' FXAREA='nan'/>"),
      Texts{"area stiffness |10|300| |z of foundation 1, |A|, |beside 2 negative, infinite or no "
            "number"});
}

TEST(ReportLargest, IsOfPartsThatFoundationsHave) {
  EXPECT_EQ(listLargest("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>"),
            Texts{"area stiffness |3| |z of foundation 1, |A"});
  EXPECT_EQ(listLargest("<FOUND NUMBER='1' NAME='A' FXX='3'/>"),
            Texts{"rotational stiffness |3| |rotation x of foundation 1, |A"});
}

}  // namespace
