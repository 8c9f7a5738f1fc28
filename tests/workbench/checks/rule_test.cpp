#include "checks/rule.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "workbench/checks/check.h"

namespace {

using ChecksTest::makeExchange;
using ChecksTest::makeModel;
using Names = std::vector<std::string>;

/// The rules of what is found, in the order of the document.
Names listRules(const std::string& text, const std::optional<std::string>& version = {}) {
  Documents::Document document({"file", "", text}, {version, {}, {}});
  const Checks::Findings findings = Checks::find(document);
  Names names;
  for (const Checks::Finding& finding : findings.list()) names.emplace_back(finding.rule->name);
  return names;
}

TEST(CheckRules, HaveNamesThatStay) {
  Names names;
  for (const Checks::Rule* rule : Checks::Rules::list()) names.emplace_back(rule->name);

  EXPECT_EQ(names,
            (Names{"unknown-attribute", "unknown-element", "misplaced-element", "second-list",
                   "other-version", "unreadable-value", "infinite-value", "negative-value",
                   "unknown-failure", "missing-number", "unreadable-number", "number-below-one",
                   "same-number", "missing-name", "same-name", "two-parts", "unknown-current"}));
}

TEST(CheckRules, TellAttributesApart) {
  EXPECT_EQ(
      listRules(makeModel("<FOUND NUMBER='1' NAME='A' FXAREA='x' FYAREA='inf' FZAREA='-1' "
                          "FAILZAREA='7' FAILXLINE='x' IsGenerated='x' FXLINE='nan' COLOUR=''>"
                          "<LAYER/></FOUND>")),
      (Names{"unreadable-value", "infinite-value", "negative-value", "unknown-failure",
             "unknown-failure", "unreadable-value", "infinite-value", "unknown-attribute",
             "unknown-element"}));
  EXPECT_EQ(listRules(makeExchange("<CurveBedding Number='1' Name='A' StiffnessYFailure='x'/>")),
            Names{"unknown-failure"});
}

TEST(CheckRules, TellWhatIsWrongWithAModelApart) {
  EXPECT_EQ(listRules("<?xml version='1.0'?>\n<SMOD>\n<FOUNDATIONS CURRENT='X'>\n"
                      "<FOUND NAME='A'/>\n<FOUND NUMBER='x' NAME='B'/>\n"
                      "<FOUND NUMBER='7' NAME='C'/>\n<FOUND NUMBER='7' NAME='D'/>\n"
                      "<FOUND NUMBER='8' NAME='D'/>\n<LAYER/>\n</FOUNDATIONS>\n"
                      "<FOUNDATIONS/>\n</SMOD>\n"),
            (Names{"unknown-current", "missing-number", "unreadable-number", "same-number",
                   "same-name", "unknown-element", "second-list"}));
}

TEST(CheckRules, TellWhatIsWrongWithABeddingApart) {
  EXPECT_EQ(
      listRules(makeExchange("<CurveBedding Name='A'/>\n<CurveBedding Number='x' Name='A'/>\n"
                             "<CurveBedding Number='1.5' Name='A'/>\n"
                             "<CurveBedding Number='0' Name='B'/>\n"
                             "<CurveBedding Number='2'/>\n<CurveBedding Number='3' Name=''/>\n"
                             "<CurveBedding Number='1' Name='C'/>\n"
                             "<CurveBedding Number='4' Name='A'/>\n<Bedding Name='D'/>\n<Load/>"),
                "2.0"),
      (Names{"missing-number", "unreadable-number", "unreadable-number", "number-below-one",
             "missing-name", "missing-name", "same-number", "same-name", "other-version",
             "unknown-element"}));
}

TEST(CheckRules, TellFoundationsInTwoPartsFromThoseOfTheSameNumber) {
  EXPECT_EQ(listRules(makeExchange("<CurveBedding Number='1' Name='A'/>\n"
                                   "<SurfaceBedding Number='1' Name='A'/>")),
            Names{"two-parts"});
}

TEST(CheckRules, TellFoundationsThatStandOutsideOfLists) {
  EXPECT_EQ(listRules("<?xml version='1.0'?>\n<SMOD>\n<FOUNDATIONS><FOUND "
                      "NUMBER='1'/></FOUNDATIONS>\n<FOUNDATIONS><FOUND/>"
                      "</FOUNDATIONS>\n</SMOD>\n"),
            (Names{"second-list", "misplaced-element"}));
  EXPECT_EQ(listRules(makeExchange("<CurveBedding Number='1' Name='A'/>\n"
                                   "<Load><CurveBedding Number='1' Name='A'/></Load>")),
            (Names{"unknown-element", "misplaced-element"}));
}

}  // namespace
