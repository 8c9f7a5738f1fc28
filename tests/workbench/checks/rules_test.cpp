#include "checks/rules.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Documents::Document;
using Sentences = std::vector<std::string>;

/// What is found, each with its line and column before it.
Sentences find(const std::string& bytes) {
  Document document({"file", "", bytes});
  const Checks::Findings findings = Checks::find(document);
  Sentences sentences;
  for (const Checks::Finding& finding : findings.list())
    sentences.push_back(std::to_string(finding.position.line) + ":" +
                        std::to_string(finding.position.column) + " " + finding.sentence);
  return sentences;
}

/// In the third line of a model.
Sentences findInList(const std::string& children, const std::string& attributes = "") {
  return find("<?xml?>\n<SMOD><FOUNDATIONS" + attributes + ">\n" + children +
              "</FOUNDATIONS></SMOD>");
}

/// In the second line of an exchange document.
Sentences findInContainer(const std::string& children) {
  return find("<Beddings>\n" + children + "</Beddings>");
}

TEST(ChecksLegacy, FindNothingInAModelThatIsAsItShouldBe) {
  EXPECT_EQ(
      findInList("<FOUND NUMBER='1' NAME='A' FZAREA='1' FXLINE='2' FAILZAREA='-1' FACAREA='0' "
                 "IsGenerated='1' xmlns='x' x:y='z'/>",
                 " CURRENT='A'"),
      Sentences{});
  EXPECT_EQ(findInList("", " CURRENT=''"), Sentences{});
  EXPECT_EQ(find("<?xml?>\n<SMOD/>"), Sentences{});
}

TEST(ChecksLegacy, JudgeEachKindOfAttribute) {
  const struct {
    const char* attribute;
    const char* finding;
  } rows[] = {
      {"FZAREA='12,5'", "3:28 FZAREA=\"12,5\" is no number; it is read as 0"},
      {"FZAREA='-1'", "3:28 FZAREA=\"-1\" is negative; it is read as it is"},
      {"FZAREA='inf'", "3:28 FZAREA=\"inf\" is not finite; it is read as inf"},
      {"FACLINE='nan'", "3:28 FACLINE=\"nan\" is not finite; it is read as nan"},
      {"FXX='nan'",
       "3:28 FXX=\"nan\" is not finite; the line stiffness that it belongs to is not read"},
      {"FAILZAREA='2'",
       "3:28 FAILZAREA=\"2\" is none of -1 (tension), 0 (none) and 1 (compression); it is kept as "
       "it is"},
      {"FAILZAREA='x'", "3:28 FAILZAREA=\"x\" is no whole number; it is read as 0, no failure"},
      {"FAILZAREA='9999999999'",
       "3:28 FAILZAREA=\"9999999999\" is out of range; it is read as 0, no failure"},
      {"IsGenerated='yes'",
       "3:28 IsGenerated=\"yes\" is no whole number; it is read as 0, which is not generated"},
      {"COLOUR='red'", "3:28 COLOUR is no attribute of <FOUND>; it is not read"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(findInList("<FOUND NUMBER='1' NAME='A' " + std::string(row.attribute) + "/>"),
              Sentences{row.finding})
        << row.attribute;
}

TEST(ChecksLegacy, JudgeNumbersAndNames) {
  EXPECT_EQ(findInList("<FOUND NAME='A'/>"),
            Sentences{"3:1 <FOUND> has no NUMBER; it is read as number 1"});
  EXPECT_EQ(findInList("<FOUND NUMBER='x' NAME='A'/>"),
            Sentences{"3:8 NUMBER=\"x\" is no whole number; it is read as number 0"});
  EXPECT_EQ(findInList("<FOUND NUMBER='-1' NAME='A'/>"),
            Sentences{"3:8 NUMBER=\"-1\" counts as missing; it is read as number 1"});
  EXPECT_EQ(
      findInList("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='1' NAME='A'/>"),
      (Sentences{"3:36 the number 1 was given before, in column 8 of this line; both foundations "
                 "will have it, and an update of a document merges them",
                 "3:47 the name \"A\" was given before, in column 19 of this line; both "
                 "foundations will have it, and CURRENT finds only the first"}));
}

TEST(ChecksLegacy, TellWhatIsSkipped) {
  EXPECT_EQ(findInList("<GROUND/><FOUND NUMBER='1' NAME='A'><x/></FOUND>"),
            (Sentences{"3:1 <GROUND> is no element of <FOUNDATIONS>; it is skipped",
                       "3:37 <x> is no element of <FOUND>; it is skipped"}));
  EXPECT_EQ(
      find("<?xml?>\n<SMOD>\n<A><FOUNDATIONS/></A>\n<FOUNDATIONS><FOUND/></FOUNDATIONS></SMOD>"),
      Sentences{"4:1 only the first <FOUNDATIONS> of a model is read, in line 3; this one is "
                "skipped"});
  EXPECT_EQ(findInList("<FOUND NUMBER='1' NAME='A'/>", " CURRENT='B'"),
            Sentences{"2:20 CURRENT=\"B\" names no foundation; none will be the current one"});
}

TEST(ChecksExchange, FindNothingInBeddingsThatAreAsTheyShouldBe) {
  EXPECT_EQ(findInContainer("<CurveBedding Number='1' Name='A' StiffnessYFailure='tension'/>"
                            "<SurfaceBedding Number='2' Name='B' StiffnessZ='1'/>"),
            Sentences{});
  EXPECT_EQ(findInContainer("<Bedding Name='A' CurveStiffnessXX='1'/>"), Sentences{});
}

TEST(ChecksExchange, JudgeEachBedding) {
  const struct {
    const char* bedding;
    const char* finding;
  } rows[] = {
      {"<Load/>", "2:1 <Load> is no bedding; it is skipped"},
      {"<CurveBedding Name='A'/>", "2:1 <CurveBedding> has no Number; it is skipped"},
      {"<CurveBedding Number='x' Name='A'/>",
       "2:15 Number=\"x\" is no whole number; the bedding is skipped"},
      {"<CurveBedding Number='9999999999' Name='A'/>",
       "2:15 Number=\"9999999999\" is out of range; the bedding is skipped"},
      {"<CurveBedding Number='7.9' Name='A'/>",
       "2:15 Number=\"7.9\" is no whole number; it is read as 7"},
      {"<CurveBedding Number='0' Name='A'/>",
       "2:15 the number 0 is below 1; the bedding is skipped"},
      {"<CurveBedding Number='1'/>", "2:1 <CurveBedding> has no Name; it is skipped"},
      {"<CurveBedding Number='1' Name=''/>", "2:26 the Name is empty; the bedding is skipped"},
      {"<CurveBedding Number='1' Name='A' StiffnessYFailure='Tension'/>",
       "2:35 StiffnessYFailure=\"Tension\" is none of \"tension\", \"none\" and \"compression\"; "
       "it "
       "is read as none"},
      {"<SurfaceBedding Number='1' Name='A' StiffnessXX='1'/>",
       "2:37 StiffnessXX is no attribute of <SurfaceBedding>; it is not read"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(findInContainer(std::string(row.bedding) + "<CurveBedding Number='99' Name='Z'/>"),
              Sentences{row.finding})
        << row.bedding;
}

TEST(ChecksExchange, TellWhatClashes) {
  const std::string first = "<CurveBedding Number='1' Name='A'/>\n";
  EXPECT_EQ(
      findInContainer(first + "<SurfaceBedding Number='1' Name='A'/>"),
      Sentences{"3:17 the foundation number 1 \"A\" is in two parts; the first, in line 2, is "
                "read, and this one is lost"});
  EXPECT_EQ(findInContainer(first + "<SurfaceBedding Number='1' Name='B'/>"),
            Sentences{"3:17 the number 1 is taken by the bedding in line 2; this one is skipped"});
  EXPECT_EQ(findInContainer(first + "<SurfaceBedding Number='2' Name='A'/>"),
            Sentences{"3:28 the name \"A\" is taken by the bedding in line 2; this one is read as "
                      "\"A_1\""});
  EXPECT_EQ(findInContainer(first + "<SurfaceBedding Number='1' Name=''/>"),
            Sentences{"3:28 the Name is empty; the bedding is skipped"});
}

TEST(ChecksExchange, TellOfTheFirstVersion) {
  EXPECT_EQ(findInContainer("<Bedding/><Bedding Name='A'/>"),
            Sentences{"2:1 <Bedding> has no Name; it is skipped"});
  EXPECT_EQ(find("<X><A>\n<CurveBedding Number='1' Name='A'/></A><B>\n<Bedding Name='B'/></B></X>"),
            Sentences{"3:1 the bedding is read as number 1, which the one in line 2 has; both "
                      "foundations will have it"});
}

TEST(ChecksExchange, TellBeddingsOfTheFirstVersionInLaterOnes) {
  Document document({"file", "", "<B><Bedding Name='A'/></B>"}, "2.0");
  const Checks::Findings findings = Checks::find(document);

  ASSERT_EQ(findings.list().size(), 1u);
  EXPECT_EQ(findings.list()[0].sentence,
            "<Bedding> is a bedding of version 1.0 only; it is skipped");
}

TEST(ChecksFindings, AreAboutTheFoundationThatTheyConcern) {
  Document document({"file", "",
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

TEST(ChecksFindings, ShowLongTextsShortened) {
  const std::string sentence = findInContainer("<Load" + std::string(100, 'a') + "/>").front();

  EXPECT_EQ(sentence,
            "2:1 <Load" + std::string(55, 'a') + "\xE2\x80\xA6> is no bedding; it is skipped");
}

}  // namespace
