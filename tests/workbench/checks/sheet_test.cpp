#include <string>

#include <gtest/gtest.h>

#include "checks/rules.h"

namespace {

/// What is found in a table, a line each: line and column, then the sentence.
std::string checkTable(const std::string& bytes, Documents::Form form = Documents::Form::csv) {
  Documents::ReadOptions options;
  options.form = form;
  Documents::Document document({"table", "", bytes}, options);
  std::string text;
  const Checks::Findings findings = Checks::find(document);
  for (const Checks::Finding& finding : findings.list())
    text += std::to_string(finding.position.line) + ":" + std::to_string(finding.position.column) +
            ": " + finding.sentence + "\n";
  return text;
}

TEST(CheckSheet, FindsNothingInUsualRows) {
  EXPECT_EQ(checkTable("number,name,areaX,areaFailureZ\n1,A,1.5,tension\n2,B,,none\n"), "");
  EXPECT_EQ(checkTable("number,name\n"), "");
}

TEST(CheckSheet, FindsNumbersThatAreTooSmallOrGivenBefore) {
  EXPECT_EQ(checkTable("number,name\n0,A\n-3,B\n7,C\n\n7,D\n"),
            "2:1: the number 0 is below 1; exchange documents skip the foundation\n"
            "3:1: the number -3 is below 1; exchange documents skip the foundation\n"
            "6:1: the number 7 was given before, in line 4; both foundations will have it\n");
}

TEST(CheckSheet, FindsNamesThatAreMissingOrGivenBefore) {
  EXPECT_EQ(checkTable("number,name\n1,\n2,\n3,A\n4,A\n"),
            "2:3: the name is empty; exchange documents skip the foundation\n"
            "3:3: the name is empty; exchange documents skip the foundation\n"
            "5:3: the name \"A\" was given before, in line 4; both foundations will have it\n");
}

TEST(CheckSheet, FindsNumbersThatNobodyMeans) {
  EXPECT_EQ(checkTable("name,areaX,areaY,areaZ,lineFactor\nA,-1.5,inf,nan,-0.1\nB,-0,0,1,0\n"),
            "2:3: areaX -1.5 is negative; it is read as it is\n"
            "2:8: areaY is inf\n"
            "2:12: areaZ is nan\n"
            "2:16: lineFactor -0.1 is negative; it is read as it is\n");
}

TEST(CheckSheet, FindsFailureModesThatAreNone) {
  EXPECT_EQ(checkTable("name,areaFailureZ\nA,7\n"),
            "2:3: areaFailureZ 7 is none of tension, none and compression; it is kept as it is\n");
}

TEST(CheckSheet, TellsWhereCellsStandBehindQuotedLineBreaks) {
  EXPECT_EQ(checkTable("name,areaX,areaZ\r\n\"A \"\"B\"\",\r\nC\",-1,\"-2\"\r\nD,1,-3\r\n"),
            "3:4: areaX -1 is negative; it is read as it is\n"
            "3:7: areaZ -2 is negative; it is read as it is\n"
            "4:5: areaZ -3 is negative; it is read as it is\n");
}

TEST(CheckSheet, TellsWhichFoundationTheCellsTellOf) {
  Documents::ReadOptions options;
  options.form = Documents::Form::csv;
  Documents::Document document({"table", "", "number,areaX\n7,1\n8,-1\n"}, options);

  const Checks::Findings findings = Checks::find(document);

  ASSERT_EQ(findings.list().size(), 1U);
  ASSERT_NE(findings.list()[0].foundation, nullptr);
  EXPECT_EQ(findings.list()[0].foundation->getNumber(), 8);
}

TEST(CheckSheet, TellsWhereMembersOfDataStand) {
  EXPECT_EQ(checkTable("{\"foundations\": [{\"number\": 1}, {\"number\": 1,\n \"name\": \"A\"}]}",
                       Documents::Form::json),
            "1:34: the number 1 was given before, in column 19 of this line; both foundations "
            "will have it\n");
}

}  // namespace
