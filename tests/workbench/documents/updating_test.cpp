#include "documents/updating.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Documents::Document;
using Found::Foundation;
using Found::FoundationManager;

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

void add(FoundationManager& manager, int number, const std::string& name) {
  const KvVector3D area(0.0, 0.0, 7.0);
  auto foundation = std::make_unique<Foundation>();
  foundation->setDispArea(&area);
  foundation->setNumber(number);
  foundation->setName(name);
  manager.add(std::move(foundation));
}

std::string update(const std::string& bytes) {
  Document base({"file", "", bytes});
  FoundationManager manager;
  add(manager, 2, "N\xFC");
  return Updating::update(base, manager);
}

/// The apostrophes of `bytes` stand for quotes.
std::string prune(std::string bytes, const std::vector<Updating::Change>& changes) {
  std::replace(bytes.begin(), bytes.end(), '\'', '"');
  Document base({"file", "", bytes});
  FoundationManager& manager = base.getFoundations();
  return Updating::prune(base, changes, manager);
}

const std::string bedding =
    "<SurfaceBedding Number=\"2\" Name=\"N\xFC\" StiffnessX=\"0\" StiffnessY=\"0\" "
    "StiffnessZ=\"7\" "
    "StiffnessZFailure=\"none\" TangentialStiffnessXYFactor=\"0\" />\n";

TEST(Updating, KeepsTheDeclarationOfAModelThatHasNothingElseOnItsFirstLine) {
  const std::string found =
      "<FOUND NUMBER=\"2\" NAME=\"N\xC3\xBC\" FXAREA=\"0\" FYAREA=\"0\" FZAREA=\"7\" FACAREA=\"0\" "
      "FACLINE=\"0\" IsGenerated=\"0\" />\n";
  const std::string end = "  <FOUNDATIONS>\n    " + found + "  </FOUNDATIONS>\n</SMOD>\n";
  const std::string umlaut = "<!-- \xC3\xA4 -->\n";  // so that names are in UTF-8

  EXPECT_EQ(update("<?xml version='1.0' standalone='yes'?><!-- a -->\n" + umlaut + "<SMOD/>"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<!-- a -->\n" + umlaut +
                "<SMOD>\n" + end);
  EXPECT_EQ(update("an xml file\n" + umlaut + "<SMOD/>"), declaration + umlaut + "<SMOD>\n" + end);
}

TEST(Updating, LeavesTheElementsOfFoundationsThatStay) {
  EXPECT_EQ(update("<?xml?>\n<SMOD><FOUNDATIONS CURRENT=\"N\"><FOUND NUMBER=\"1\"/><GROUND/>"
                   "<FOUND COLOUR=\"red\" FXX=\"5\" FAILZAREA=\"1\"/></FOUNDATIONS></SMOD>"),
            "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n"
            "<SMOD>\n  <FOUNDATIONS CURRENT=\"\">\n    <GROUND />\n    <FOUND COLOUR=\"red\" "
            "FXX=\"0\" FAILZAREA=\"0\" NUMBER=\"2\" NAME=\"N\xFC\" FXAREA=\"0\" FYAREA=\"0\" "
            "FZAREA=\"7\" FACAREA=\"0\" FACLINE=\"0\" IsGenerated=\"0\" />\n"
            "  </FOUNDATIONS>\n</SMOD>\n");
}

TEST(Updating, KeepsTheCurrentFoundation) {
  Document base({"file", "", "<?xml?>\n<SMOD/>"});
  FoundationManager manager;
  add(manager, 2, "N");
  manager.setCurrentFoundation(manager.getFoundations().front());

  EXPECT_NE(Updating::update(base, manager).find("CURRENT=\"N\""), std::string::npos);
}

TEST(Updating, PutsBeddingsInPlaceOfThoseInAllContainers) {
  EXPECT_EQ(update("<X><A><Load/><CurveBedding/></A><B><SurfaceBedding/><Load/></B></X>"),
            "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<X>\n  <A>\n    <Load />\n    " +
                bedding + "  </A>\n  <B>\n    <Load />\n  </B>\n</X>\n");
}

TEST(Pruning, LeavesBeddingsAsTheyAreButForTheirNumbers) {
  EXPECT_EQ(prune("<B><CurveBedding Number='3' Name='A' Other='1'/><Load/>"
                  "<CurveBedding Number='5' Name='B'/></B>",
                  {{3, std::nullopt}, {5, 1}}),
            declaration + "<B>\n  <Load />\n  <CurveBedding Number=\"1\" Name=\"B\" />\n</B>\n");
  EXPECT_EQ(prune("<B><CurveBedding Number=' 3' Name='A'/></B>", {{3, 3}}),
            declaration + "<B>\n  <CurveBedding Number=\" 3\" Name=\"A\" />\n</B>\n");
}

TEST(Pruning, TakesFoundationsOutOfAModel) {
  Document base({"file", "",
                 "<?xml?>\n<SMOD><FOUNDATIONS><FOUND NUMBER=\"3\" NAME=\"A\"/><FOUND NUMBER=\"5\" "
                 "NAME=\"B\" COLOUR=\"red\"/></FOUNDATIONS></SMOD>"});
  FoundationManager left;
  add(left, 1, "B");

  EXPECT_EQ(Updating::prune(base, {{3, std::nullopt}, {5, 1}}, left),
            declaration +
                "<SMOD>\n  <FOUNDATIONS>\n    <FOUND NUMBER=\"1\" NAME=\"B\" COLOUR=\"red\" "
                "FXAREA=\"0\" FYAREA=\"0\" FZAREA=\"7\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n  </FOUNDATIONS>\n</SMOD>\n");
}

TEST(Pruning, TreatsTheOtherPartOfAFoundationLikeTheFirst) {
  const std::string parts =
      "<B><CurveBedding Number='3' Name='A'/><SurfaceBedding Number='3' Name='A'/></B>";

  EXPECT_EQ(prune(parts, {{3, std::nullopt}}), declaration + "<B />\n");
  EXPECT_EQ(prune(parts, {{3, 1}}), declaration +
                                        "<B>\n  <CurveBedding Number=\"1\" Name=\"A\" />\n"
                                        "  <SurfaceBedding Number=\"1\" Name=\"A\" />\n</B>\n");
}

TEST(Pruning, LeavesTheFoundationsOfTheDocument) {
  Document base({"file", "", "<B><CurveBedding Number='3' Name='A'/></B>"});
  FoundationManager& manager = base.getFoundations();

  Updating::prune(base, {{3, 3}}, manager);

  EXPECT_EQ(base.getFoundations().getFoundations().front()->getName(), "A");
  EXPECT_TRUE(base.getEntries().empty());
  EXPECT_EQ(base.getExchange(), nullptr);
}

TEST(Pruning, LeavesBeddingsThatBelongToNoFoundation) {
  EXPECT_EQ(prune("<B><CurveBedding Number='3' Name='A'/><CurveBedding Number='4'/></B>",
                  {{3, std::nullopt}}),
            declaration + "<B>\n  <CurveBedding Number=\"4\" />\n</B>\n");
}

TEST(Pruning, GoesByPlaceInTheFirstVersion) {
  EXPECT_EQ(prune("<B><Bedding Name='A'/><Bedding Name='B'/></B>", {{1, std::nullopt}, {2, 1}}),
            declaration + "<B>\n  <Bedding Name=\"B\" />\n</B>\n");
}

}  // namespace
