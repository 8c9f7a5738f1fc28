#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "workbench/checks/check.h"

namespace {

using ChecksTest::check;
using ChecksTest::makeExchange;
using ChecksTest::makeModel;

TEST(CheckFindings, AreAboutTheFoundationThatTheyConcern) {
  Documents::Document document(
      {"file", "",
       "<B><CurveBedding Number='1' Name='A' StiffnessX='-1'><x/></CurveBedding>"
       "<SurfaceBedding Number='1' Name='A'/><Load/></B>"});
  const Checks::Findings findings = Checks::find(document);
  const Found::Foundation* const foundation = document.getFoundations().getFoundations().front();
  std::vector<const Found::Foundation*> about;
  for (const Checks::Finding& finding : findings.list()) about.push_back(finding.foundation);

  EXPECT_EQ(about,
            (std::vector<const Found::Foundation*>{foundation, foundation, foundation, nullptr}));
  EXPECT_EQ(findings.count(*foundation), 3u);
}

// --- Texts from documents

TEST(CheckFindings, EscapeControlCharacters) {
  EXPECT_EQ(check(makeModel("<FOUND NUMBER='1&#10;2' FXAREA='\x7F' NAME='a&#9;b'/>\n"
                            "<FOUND NUMBER='2' NAME='a&#9;b'/>")),
            "4:8: NUMBER=\"1\\n2\" is no whole number; it is read as number 0\n"
            "4:25: FXAREA=\"\\x7F\" is no number; it is read as 0\n"
            "5:19: the name \"a\\tb\" was given before, in line 4; both foundations will "
            "have it, and CURRENT finds only the first\n");
}

TEST(CheckFindings, ShowAnEightBitCodePageInUtf8) {
  EXPECT_EQ(check(makeExchange("<CurveBedding Number='1' Name='Stra\xDF"
                               "e'/>\n"
                               "<CurveBedding Number='2' Name='Stra\xDF"
                               "e' H\xF6he='3'/>\n<T\xFCr/>")),
            "3:26: the name \"Stra\xC3\x9F"
            "e\" is taken by the bedding in line 2; this one is read as \"Stra\xC3\x9F"
            "e_1\"\n"
            "3:40: H\xC3\xB6he is no attribute of <CurveBedding>; it is not read\n"
            "4:1: <T\xC3\xBCr> is no bedding; it is skipped\n");
}

TEST(CheckFindings, ShortenTextsOfMoreThanSixtyPlaces) {
  EXPECT_EQ(
      check(makeModel("<FOUND NUMBER='1' FXAREA='" + std::string(61, 'x') + "'/>")),
      "4:19: FXAREA=\"" + std::string(59, 'x') + "\xE2\x80\xA6\" is no number; it is read as 0\n");
}

// --- Many findings

TEST(CheckFindings, AreAsManyInFiveThousandFoundationsAsInFew) {
  std::string lines;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    const std::string line = std::to_string(i + 4);
    lines += (i == 0 ? "" : "\n") + std::string("<FOUND NUMBER='7' NAME='A'/>");
    if (i == 0) continue;
    expected += line +
                ":8: the number 7 was given before, in line 4; both foundations will have "
                "it, and an update of a document merges them\n" +
                line +
                ":19: the name \"A\" was given before, in line 4; both foundations will "
                "have it, and CURRENT finds only the first\n";
  }

  EXPECT_EQ(check(makeModel(lines)), expected);
}

TEST(CheckFindings, TellTheChangedNamesOfFiveThousandBeddings) {
  std::string lines;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    lines += (i == 0 ? "" : "\n") + std::string("<Bedding Name='A'/>");
    if (i > 0)
      expected += std::to_string(i + 2) +
                  ":10: the name \"A\" is taken by the bedding in line 2; this one is read as "
                  "\"A_" +
                  std::to_string(i) + "\"\n";
  }

  EXPECT_EQ(check(makeExchange(lines)), expected);
}

TEST(CheckFindings, TellDefaultNamesOfFiveThousandFoundationsInTurn) {
  std::string lines = "<FOUND NUMBER='0'/>";
  for (int i = 1; i < 5000; ++i) lines += "<FOUND NUMBER='0'/>";
  lines += "<FOUND NUMBER='1' NAME='Found5001'/>\n<FOUND NUMBER='2' NAME='Found5000'/>";

  const std::string out = check(makeModel(lines));

  EXPECT_EQ(out.substr(out.rfind('\n', out.size() - 2) + 1),
            "5:19: the name \"Found5000\" was given before, in line 4; both foundations "
            "will have it, and CURRENT finds only the first\n");
}

}  // namespace
