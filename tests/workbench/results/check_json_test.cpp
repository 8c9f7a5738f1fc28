#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "checks/rules.h"
#include "results/check_results.h"

namespace {

using Results::CheckedFile;

CheckedFile check(const std::string& path, const std::string& bytes) {
  Documents::Document document({path, "", bytes});
  return Results::makeCheckedFile(path, document, Checks::find(document));
}

const std::string model =
    "<?xml version=\"1.0\"?>\n<SMOD><FOUNDATIONS>\n<FOUND NUMBER='3' NAME='\xC3\xBC' FXAREA='-1'/>"
    "\n</FOUNDATIONS></SMOD>\n";

TEST(CheckJson, HasEveryFindingWithItsPlaceRuleAndFoundation) {
  EXPECT_EQ(Results::makeCheckJson({check("a.xml", model)}),
            "{\n"
            "  \"format\": \"kvfound-check\",\n"
            "  \"version\": 1,\n"
            "  \"files\": [\n"
            "    \"a.xml\"\n"
            "  ],\n"
            "  \"findings\": [\n"
            "    {\n"
            "      \"file\": \"a.xml\",\n"
            "      \"line\": 3,\n"
            "      \"column\": 29,\n"
            "      \"level\": \"warning\",\n"
            "      \"rule\": \"negative-value\",\n"
            "      \"foundation\": \"number 3 \\\"\xC3\xBC\\\"\",\n"
            "      \"sentence\": \"FXAREA=\\\"-1\\\" is negative; it is read as it is\"\n"
            "    }\n"
            "  ]\n"
            "}\n");
}

TEST(CheckJson, HasErrorsAmongTheFindings) {
  const std::string json = Results::makeCheckJson(
      {Results::makeUnreadFile("b.xml", "b.xml", "<A>", {1, 4}, "this element has no end tag"),
       Results::makeUnreadFile("-", "standard input", "", {}, "this is no XML document")});

  EXPECT_EQ(json,
            "{\n"
            "  \"format\": \"kvfound-check\",\n"
            "  \"version\": 1,\n"
            "  \"files\": [\n"
            "    \"b.xml\",\n"
            "    \"standard input\"\n"
            "  ],\n"
            "  \"findings\": [\n"
            "    {\n"
            "      \"file\": \"b.xml\",\n"
            "      \"line\": 1,\n"
            "      \"column\": 4,\n"
            "      \"level\": \"error\",\n"
            "      \"rule\": \"unreadable\",\n"
            "      \"sentence\": \"this element has no end tag\"\n"
            "    },\n"
            "    {\n"
            "      \"file\": \"standard input\",\n"
            "      \"level\": \"error\",\n"
            "      \"rule\": \"unreadable\",\n"
            "      \"sentence\": \"this is no XML document\"\n"
            "    }\n"
            "  ]\n"
            "}\n");
}

TEST(CheckJson, HasNoColumnOfErrorsAboutAWholeLine) {
  const std::string json =
      Results::makeCheckJson({Results::makeUnreadFile("a.csv", "a.csv", "", {2, 0}, "is odd")});

  EXPECT_NE(json.find("      \"line\": 2,\n      \"level\": \"error\",\n"), std::string::npos)
      << json;
}

TEST(CheckJson, ReplacesBytesThatAreNoUtf8) {
  const std::string json =
      Results::makeCheckJson({Results::makeUnreadFile("\xFC", "\xFC", "", {}, "is empty")});

  EXPECT_NE(json.find("\"file\": \"\xEF\xBF\xBD\""), std::string::npos);
}

}  // namespace
