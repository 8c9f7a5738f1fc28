#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "checks/rules.h"
#include "results/check_results.h"

namespace {

using Json = nlohmann::json;
using Results::CheckedFile;

CheckedFile checkDocument(const std::string& path, const std::string& bytes) {
  Documents::Document document({path, "", bytes});
  return Results::makeCheckedFile(path, document, Checks::find(document));
}

/// A model with a finding in line 3, whatever its foundation is called.
CheckedFile checkModel(const std::string& path, const std::string& name) {
  return checkDocument(
      path, "<?xml version=\"1.0\"?>\n<SMOD><FOUNDATIONS>\n<FOUND NUMBER='3' NAME='" + name +
                "' FXAREA='-1'/>\n</FOUNDATIONS></SMOD>\n");
}

Json makeRun(const std::vector<CheckedFile>& files) {
  const Json log = Json::parse(Results::makeSarif(files));
  EXPECT_EQ(log.at("version"), "2.1.0");
  EXPECT_EQ(log.at("runs").size(), 1U);
  return log.at("runs").at(0);
}

TEST(Sarif, NamesTheToolAndEveryRule) {
  const Json driver = makeRun({}).at("tool").at("driver");

  EXPECT_EQ(driver.at("name"), "kvfound");
  EXPECT_EQ(driver.at("version"), "1.0.0");
  EXPECT_EQ(driver.at("rules").size(), 18U);
  EXPECT_EQ(driver.at("rules").at(0).dump(),
            "{\"defaultConfiguration\":{\"level\":\"warning\"},\"id\":\"unknown-attribute\","
            "\"shortDescription\":{\"text\":\"An attribute has a name that no reader knows, and is "
            "not read.\"}}");
  EXPECT_EQ(driver.at("rules").at(17).at("id"), "unreadable");
}

TEST(Sarif, HasAResultForEveryFinding) {
  const Json run = makeRun({checkModel("my models/a.xml", "A")});

  EXPECT_EQ(run.at("results").dump(),
            "[{\"level\":\"warning\",\"locations\":[{\"logicalLocations\":[{\"fullyQualifiedName\":"
            "\"number 3 \\\"A\\\"\"}],\"physicalLocation\":{\"artifactLocation\":{\"index\":0,"
            "\"uri\":\"my%20models/a.xml\"},\"region\":{\"startColumn\":28,\"startLine\":3}}}],"
            "\"message\":{\"text\":\"FXAREA=\\\"-1\\\" is negative; it is read as it is\"},"
            "\"ruleId\":\"negative-value\",\"ruleIndex\":7}]");
  EXPECT_EQ(run.at("invocations").dump(), "[{\"executionSuccessful\":true}]");
}

TEST(Sarif, CountsColumnsInUtf16) {
  const Json run = makeRun({checkModel("a.xml", "\xF0\x9F\x98\x80\xC3\xBC")});

  EXPECT_EQ(run.at("columnKind"), "utf16CodeUnits");
  EXPECT_EQ(
      run.at("results").at(0).at("locations").at(0).at("physicalLocation").at("region").dump(),
      "{\"startColumn\":30,\"startLine\":3}");
}

TEST(Sarif, PointsFromResultsToTheirRules) {
  const Json run = makeRun({checkModel("a.xml", "A"),
                            Results::makeUnreadFile("b.xml", "b.xml", "", {}, "is too large")});

  for (const Json& result : run.at("results"))
    EXPECT_EQ(run.at("tool")
                  .at("driver")
                  .at("rules")
                  .at(result.at("ruleIndex").get<std::size_t>())
                  .at("id"),
              result.at("ruleId"));
}

TEST(Sarif, HoldsTheResultsOfAllFilesInOneRun) {
  const Json run = makeRun({checkModel("a.xml", "A"), checkModel("b.xml", "A")});

  EXPECT_EQ(run.at("artifacts").dump(),
            "[{\"location\":{\"uri\":\"a.xml\"},\"roles\":[\"analysisTarget\"]},"
            "{\"location\":{\"uri\":\"b.xml\"},\"roles\":[\"analysisTarget\"]}]");
  EXPECT_EQ(run.at("results")
                .at(1)
                .at("locations")
                .at(0)
                .at("physicalLocation")
                .at("artifactLocation")
                .dump(),
            "{\"index\":1,\"uri\":\"b.xml\"}");
}

TEST(Sarif, TellsErrorsAsResultsOfARunThatFailed) {
  const Json run = makeRun(
      {Results::makeUnreadFile("b.xml", "b.xml", "\xC3\xBC<A>", {1, 6}, "there is no end tag"),
       Results::makeUnreadFile("-", "standard input", "", {}, "this is no XML document")});

  EXPECT_EQ(run.at("invocations").dump(), "[{\"executionSuccessful\":false}]");
  EXPECT_EQ(run.at("results").at(0).dump(),
            "{\"level\":\"error\",\"locations\":[{\"physicalLocation\":{\"artifactLocation\":"
            "{\"index\":0,\"uri\":\"b.xml\"},\"region\":{\"startColumn\":5,\"startLine\":1}}}],"
            "\"message\":{\"text\":\"there is no end tag\"},\"ruleId\":\"unreadable\","
            "\"ruleIndex\":17}");
  EXPECT_EQ(run.at("results").at(1).at("locations").dump(),
            "[{\"physicalLocation\":{\"artifactLocation\":{\"index\":1,\"uri\":\"stdin\"}}}]");
}

TEST(Sarif, HasNoColumnOfErrorsAboutAWholeLine) {
  const Json run = makeRun({Results::makeUnreadFile("a.csv", "a.csv", "a\n1,2", {2, 0}, "is odd")});

  EXPECT_EQ(
      run.at("results").at(0).at("locations").at(0).at("physicalLocation").at("region").dump(),
      "{\"startLine\":2}");
}

TEST(Sarif, DoublesBracesWhichStandForArguments) {
  const Json run = makeRun({Results::makeUnreadFile("a", "a", "", {}, "no {0}")});

  EXPECT_EQ(run.at("results").at(0).at("message").at("text"), "no {{0}}");
}

}  // namespace
