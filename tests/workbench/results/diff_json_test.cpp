#include "results/diff_json.h"

#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::json;

std::string makeModel(const std::string& foundations) {
  return "<?xml version=\"1.0\"?>\n<SMOD><FOUNDATIONS CURRENT='A'>" + foundations +
         "</FOUNDATIONS></SMOD>\n";
}

Json diff(const std::string& before, const std::string& after, bool isComplete = true) {
  Documents::Document first({"a.xml", "", makeModel(before)});
  Documents::Document second({"b.xml", "", makeModel(after)});
  const Comparing::Differences differences = Comparing::compare(first, second);
  return Json::parse(Results::makeDiffJson(first, second, differences, isComplete));
}

TEST(DiffJson, TellsThatDocumentsAreAlike) {
  const std::string foundation = "<FOUND NUMBER='1' NAME='A' FXAREA='1'/>";

  EXPECT_EQ(diff(foundation, foundation).dump(),
            "{\"after\":\"b.xml\",\"alike\":true,\"before\":\"a.xml\",\"complete\":true,"
            "\"current\":{\"after\":{\"name\":\"A\",\"number\":1},\"before\":{\"name\":\"A\","
            "\"number\":1},\"changed\":false},\"differences\":[],\"format\":\"kvfound-diff\","
            "\"version\":1}");
}

TEST(DiffJson, HasTheFieldsThatChange) {
  const Json json = diff("<FOUND NUMBER='1' NAME='A' FXLINE='1'/>",
                         "<FOUND NUMBER='1' NAME='A' FXLINE='2.5' FAILXLINE='-1'/>");

  EXPECT_EQ(json.at("alike"), false);
  EXPECT_EQ(json.at("differences").dump(),
            "[{\"after\":{\"name\":\"A\",\"number\":1},\"before\":{\"name\":\"A\",\"number\":1},"
            "\"change\":\"changed\",\"fields\":[{\"after\":2.5,\"before\":1.0,\"field\":\"lineX\"},"
            "{\"after\":\"tension\",\"before\":\"none\",\"field\":\"lineFailureX\"}]}]");
}

TEST(DiffJson, HasNullForStiffnessThatComesOrGoes) {
  const Json json = diff("<FOUND NUMBER='1' NAME='A' FXX='2'/>", "<FOUND NUMBER='1' NAME='A'/>");

  EXPECT_EQ(json.at("differences").at(0).at("fields").dump(),
            "[{\"after\":null,\"before\":2.0,\"field\":\"lineRotationX\"}]");
}

TEST(DiffJson, HasAllFieldsOfWhatCameOrWent) {
  const Json added = diff("", "<FOUND NUMBER='1' NAME='A' FXAREA='1'/>").at("differences");
  const Json removed = diff("<FOUND NUMBER='1' NAME='A' FXAREA='1'/>", "").at("differences");

  EXPECT_EQ(added.at(0).at("change"), "added");
  EXPECT_EQ(added.at(0).at("before"), nullptr);
  EXPECT_EQ(added.at(0).at("fields").at(3).dump(),
            "{\"after\":1.0,\"before\":null,\"field\":\"areaX\"}");
  EXPECT_EQ(removed.at(0).at("change"), "removed");
  EXPECT_EQ(removed.at(0).at("after"), nullptr);
  EXPECT_EQ(removed.at(0).at("fields").at(3).dump(),
            "{\"after\":null,\"before\":1.0,\"field\":\"areaX\"}");
}

TEST(DiffJson, TellsOfAnotherCurrentFoundation) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='A'/>", "").at("current").dump(),
            "{\"after\":null,\"before\":{\"name\":\"A\",\"number\":1},\"changed\":true}");
}

TEST(DiffJson, TellsThatNotEverythingCouldBeRead) {
  EXPECT_EQ(diff("", "", false).at("complete"), false);
}

TEST(DiffJson, WritesWhatJsonLacksAsText) {
  const Json json =
      diff("<FOUND NUMBER='1' NAME='A' FXLINE='1'/>", "<FOUND NUMBER='1' NAME='A' FXLINE='inf'/>");

  EXPECT_EQ(json.at("differences").at(0).at("fields").dump(),
            "[{\"after\":\"inf\",\"before\":1.0,\"field\":\"lineX\"}]");
}

}  // namespace
