#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "found/foundation_user.h"
#include "kv/xml_tree.h"
#include "legacy_files.h"

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {
namespace {

/// Lets the manager read the root of this text.
void create(FoundationManager& manager, const std::string& root, const std::string& text) {
  std::istringstream in(text);
  const KvXmlTree tree(in);
  manager.createFromXml(tree.findRoot(root, true));
}

/// The values of the only foundation in a document with one "FOUND" of these attributes.
std::string readValues(const std::string& attributes) {
  FoundationManager manager;
  EXPECT_TRUE(read(manager, makeDocument("<FOUND " + attributes + "/>")));
  return describeValues(*manager.getFoundations().at(0));
}

/// The live list after reading these elements inside "FOUNDATIONS".
std::string readList(const std::string& inside, const std::string& attributes = "") {
  FoundationManager manager;
  EXPECT_TRUE(read(manager, makeDocument(inside, attributes)));
  return describe(manager);
}

TEST(LegacyCreate, EmptiesTheManagerForANullElement) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFoundation(manager, 1, "Old"));

  manager.createFromXml(nullptr);

  EXPECT_TRUE(manager.getFoundations().empty());
  EXPECT_EQ(manager.getCurrentFoundation(), nullptr);
}

TEST(LegacyCreate, EmptiesTheManagerForAnElementWithoutFoundations) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFoundation(manager, 1, "Old"));

  create(manager, "SMOD", "<SMOD><OTHER/></SMOD>");

  EXPECT_TRUE(manager.getFoundations().empty());
  EXPECT_EQ(manager.getCurrentFoundation(), nullptr);
}

TEST(LegacyCreate, ReplacesWhatTheManagerHad) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFoundation(manager, 40, "Old"));

  create(manager, "SMOD", "<SMOD><FOUNDATIONS><FOUND NAME='New'/></FOUNDATIONS></SMOD>");

  EXPECT_EQ(describe(manager), "1 New");
}

TEST(LegacyCreate, TakesAnyElementForTheParentOfFoundations) {
  FoundationManager manager;

  create(manager, "HOST", "<HOST><FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS></HOST>");

  EXPECT_EQ(describe(manager), "1 A");
}

TEST(LegacyCreate, FindsFoundationsFurtherBelow) {
  FoundationManager manager;

  create(manager, "SMOD",
         "<SMOD><A><B/><C><FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS></C></A></SMOD>");

  EXPECT_EQ(describe(manager), "1 A");
}

TEST(LegacyCreate, DoesNotTakeTheElementItselfForFoundations) {
  FoundationManager manager;

  create(manager, "FOUNDATIONS", "<FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS>");

  EXPECT_EQ(describe(manager), "");
}

TEST(LegacyCreate, ReadsTheFirstOfSeveralFoundationsElements) {
  FoundationManager manager;

  create(manager, "SMOD",
         "<SMOD><FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS>"
         "<FOUNDATIONS><FOUND NAME='B'/></FOUNDATIONS></SMOD>");

  EXPECT_EQ(describe(manager), "1 A");
}

TEST(LegacyCreate, LeavesTheRemovedListAlone) {
  FoundationManager manager;
  Foundation removed;
  manager.add(&removed);
  manager.remove(&removed, false, true);

  create(manager, "SMOD", "<SMOD><FOUNDATIONS><FOUND/></FOUNDATIONS></SMOD>");

  EXPECT_EQ(manager.getRemovedFoundations(), std::vector<Foundation*>{&removed});
}

TEST(LegacyCreate, LeavesTheUsersAlone) {
  struct User : Found::FoundationUser {
    bool usesFoundation(const Foundation* /*foundation*/) override { return true; }
  } user;
  FoundationManager manager;
  manager.addUser(&user);

  create(manager, "SMOD", "<SMOD><FOUNDATIONS><FOUND/><FOUND/></FOUNDATIONS></SMOD>");

  EXPECT_EQ(manager.getNumberOfUsedFoundations(), 2u);
}

TEST(LegacyCreate, LeavesTheMaximumAlone) {
  FoundationManager manager;
  manager.setMaxFoundationValue(12.5);

  create(manager, "SMOD", "<SMOD><FOUNDATIONS><FOUND FXAREA='99'/></FOUNDATIONS></SMOD>");

  EXPECT_EQ(manager.getMaxFoundationValue(), 12.5);
}

TEST(LegacyElements, AreReadInDocumentOrder) {
  EXPECT_EQ(readList("<FOUND NAME='C'/><FOUND NAME='A'/><FOUND NAME='B'/>"), "1 C, 2 A, 3 B");
}

TEST(LegacyElements, OfAnotherNameAreIgnored) {
  EXPECT_EQ(readList("<FOUNDX NAME='A'/><FOUN NAME='B'/><found NAME='C'/><FOUND NAME='D'/>"
                     "<OTHER><FOUND NAME='E'/></OTHER>"),
            "1 D");
}

TEST(LegacyElements, AreReadWithoutTheirChildren) {
  EXPECT_EQ(readList("<FOUND NAME='A'><FOUND NAME='B'/><NUMBER>7</NUMBER>text</FOUND>"), "1 A");
}

TEST(LegacyElements, AreReadAmongTextCommentsAndInstructions) {
  EXPECT_EQ(readList("text<!-- <FOUND NAME='A'/> --><?hint FOUND?><FOUND NAME='B'/>"
                     "<![CDATA[<FOUND NAME='C'/>]]>"),
            "1 B");
}

TEST(LegacyElements, OfTheSameValuesAreAllRead) {
  EXPECT_EQ(readList("<FOUND FXAREA='1'/><FOUND FXAREA='1'/>"), "1 Found0001, 2 Found0002");
}

TEST(LegacyElements, WithoutAttributesGiveAFoundationAtItsDefaults) {
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument("<FOUND/>")));

  EXPECT_EQ(describe(manager), "1 Found0001");
  EXPECT_EQ(describeValues(*manager.getFoundations()[0]), "area (0, 0, 0)");
}

TEST(LegacyElements, AreNotMarkedAsAbleToFail) {
  EXPECT_EQ(readValues("FAILZAREA='1' FAILPOSSIBLE='1' failPossible='1'"),
            "area (0, 0, 0), fails area z 1");
}

TEST(LegacyElements, AreMarkedAsChangedByTheirLineValues) {
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument("<FOUND CHANGED='0'/><FOUND FXLINE='1'/>")));

  EXPECT_TRUE(manager.getFoundations()[0]->getChanged());
  EXPECT_TRUE(manager.getFoundations()[1]->getChanged());
}

TEST(LegacyElements, WithEqualAreaAndLineAreNotMarkedAsChanged) {
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument("<FOUND FXAREA='1' FXLINE='1'/>")));

  EXPECT_FALSE(manager.getFoundations()[0]->getChanged());
}

TEST(LegacyAttributes, FillOneFieldEach) {
  const struct {
    const char* attributes;
    const char* values;
  } rows[] = {
      {"FXAREA='1.5'", "area (1.5, 0, 0)"},
      {"FYAREA='1.5'", "area (0, 1.5, 0)"},
      {"FZAREA='1.5'", "area (0, 0, 1.5)"},
      {"FXLINE='1.5'", "area (0, 0, 0), line (1.5, 0, 0)"},
      {"FYLINE='1.5'", "area (0, 0, 0), line (0, 1.5, 0)"},
      {"FZLINE='1.5'", "area (0, 0, 0), line (0, 0, 1.5)"},
      {"FXX='1.5'", "area (0, 0, 0), rotation (1.5, 0, 0)"},
      {"FAILZAREA='1'", "area (0, 0, 0), fails area z 1"},
      {"FAILXLINE='1'", "area (0, 0, 0), fails line x 1"},
      {"FAILYLINE='1'", "area (0, 0, 0), fails line y 1"},
      {"FAILZLINE='1'", "area (0, 0, 0), fails line z 1"},
      {"FACAREA='1.5'", "area (0, 0, 0), factor area 1.5"},
      {"FACLINE='1.5'", "area (0, 0, 0), factor line 1.5"},
      {"IsGenerated='1'", "area (0, 0, 0), generated"},
  };
  for (const auto& row : rows) EXPECT_EQ(readValues(row.attributes), row.values) << row.attributes;
}

TEST(LegacyAttributes, FillAllFieldsTogether) {
  EXPECT_EQ(readValues("FXAREA='1' FYAREA='2' FZAREA='3' FXLINE='4' FYLINE='5' FZLINE='6' FXX='7' "
                       "FAILZAREA='1' FAILXLINE='-1' FAILYLINE='1' FAILZLINE='-1' FACAREA='8' "
                       "FACLINE='9' IsGenerated='1' NAME='A' NUMBER='1'"),
            "area (1, 2, 3), line (4, 5, 6), rotation (7, 0, 0), fails area z 1, fails line x -1, "
            "fails line y 1, fails line z -1, factor area 8, factor line 9, generated");
}

TEST(LegacyAttributes, OfOtherNamesAreIgnored) {
  EXPECT_EQ(readValues("fxarea='1' FXAREAS='1' FYY='1' FZZ='1' FAILXAREA='1' FAILYAREA='1' "
                       "ISGENERATED='1' isGenerated='1' facarea='1'"),
            "area (0, 0, 0)");
}

TEST(LegacyAttributes, AreReadInAnyOrder) {
  EXPECT_EQ(readList("<FOUND NAME='A' NUMBER='3'/>", " CURRENT='A'"), "3 A; current A");
}

TEST(LegacyVectors, OfTheAreaStayPresentWhenTheyAreZero) {
  EXPECT_EQ(readValues("FXAREA='0' FYAREA='0' FZAREA='0'"), "area (0, 0, 0)");
}

TEST(LegacyVectors, OfTheAreaAreNotTakenForTheLine) {
  EXPECT_EQ(readValues("FXAREA='1' FYAREA='2' FZAREA='3'"), "area (1, 2, 3)");
}

TEST(LegacyVectors, OfTheLineAreAbsentWhenTheyAreZero) {
  EXPECT_EQ(readValues("FXAREA='1' FXLINE='0' FYLINE='0' FZLINE='0'"), "area (1, 0, 0)");
}

TEST(LegacyVectors, OfTheLineArePresentWithTheLeastValue) {
  EXPECT_EQ(readValues("FYLINE='5e-324'"), "area (0, 0, 0), line (0, 5e-324, 0)");
}

TEST(LegacyVectors, OfTheRotationAreAbsentWhenXIsZero) {
  EXPECT_EQ(readValues("FXX='0'"), "area (0, 0, 0)");
}

TEST(LegacyVectors, OfTheRotationHoldX) {
  EXPECT_EQ(readValues("FXX='-2.5'"), "area (0, 0, 0), rotation (-2.5, 0, 0)");
}

TEST(LegacyVectors, OfTheRotationArePresentWithTheLeastValue) {
  EXPECT_EQ(readValues("FXX='-5e-324'"), "area (0, 0, 0), rotation (-5e-324, 0, 0)");
}

TEST(LegacyVectors, WithoutALengthCountAsAbsentForLineAndRotation) {
  EXPECT_EQ(readValues("FXAREA='nan' FXLINE='nan' FYLINE='1' FXX='nan'"), "area (nan, 0, 0)");
}

TEST(LegacyFailures, AreTheNumbersOfTheModes) {
  const struct {
    const char* text;
    Foundation::Failure expected;
  } rows[] = {{"-1", Foundation::Tension},
              {"0", Foundation::None},
              {"1", Foundation::Compression},
              {"+1", Foundation::Compression}};
  for (const auto& row : rows) {
    FoundationManager manager;
    const std::string text = row.text;
    EXPECT_TRUE(
        read(manager, makeDocument("<FOUND FAILZAREA='" + text + "' FAILXLINE='" + text +
                                   "' FAILYLINE='" + text + "' FAILZLINE='" + text + "'/>")));
    Foundation& foundation = *manager.getFoundations().at(0);
    EXPECT_EQ(foundation.getFailAreaZ(), row.expected) << text;
    EXPECT_EQ(foundation.getFailLineX(), row.expected) << text;
    EXPECT_EQ(foundation.getFailLineY(), row.expected) << text;
    EXPECT_EQ(foundation.getFailLineZ(), row.expected) << text;
  }
}

TEST(LegacyFailures, OfAnUnknownNumberAreKept) {
  EXPECT_EQ(readValues("FAILZAREA='2' FAILXLINE='-2' FAILYLINE='2147483647' "
                       "FAILZLINE='-2147483648'"),
            "area (0, 0, 0), fails area z 2, fails line x -2, fails line y 2147483647, "
            "fails line z -2147483648");
}

TEST(LegacyGenerated, IsAnyNumberButZero) {
  const struct {
    const char* text;
    bool expected;
  } rows[] = {{"0", false},  {"1", true}, {"2", true},     {"-1", true},
              {"00", false}, {"", false}, {"true", false}, {"2147483647", true}};
  for (const auto& row : rows) {
    FoundationManager manager;
    EXPECT_TRUE(
        read(manager, makeDocument("<FOUND IsGenerated='" + std::string(row.text) + "'/>")));
    EXPECT_EQ(manager.getFoundations().at(0)->isGenerated(), row.expected) << row.text;
  }
}

TEST(LegacyNumbers, OverrideWhatTheManagerAssigns) {
  EXPECT_EQ(readList("<FOUND NUMBER='7' NAME='A'/><FOUND NUMBER='3' NAME='B'/>"), "7 A, 3 B");
}

TEST(LegacyNumbers, AreOneAboveTheHighestWhenAbsent) {
  EXPECT_EQ(readList("<FOUND NUMBER='7' NAME='A'/><FOUND NUMBER='3' NAME='B'/><FOUND NAME='C'/>"),
            "7 A, 3 B, 8 C");
}

TEST(LegacyNumbers, OfMinusOneCountAsAbsent) {
  EXPECT_EQ(readList("<FOUND NUMBER='7' NAME='A'/><FOUND NUMBER='-1' NAME='B'/>"), "7 A, 8 B");
}

TEST(LegacyNumbers, NextToMinusOneAreTaken) {
  EXPECT_EQ(readList("<FOUND NUMBER='-2' NAME='A'/><FOUND NUMBER='0' NAME='B'/>"), "-2 A, 0 B");
}

TEST(LegacyNumbers, MayRepeat) {
  EXPECT_EQ(readList("<FOUND NUMBER='4' NAME='A'/><FOUND NUMBER='4' NAME='B'/>"), "4 A, 4 B");
}

TEST(LegacyNumbers, ReachTheLimitsOfInt) {
  EXPECT_EQ(readList("<FOUND NUMBER='-2147483648' NAME='A'/><FOUND NUMBER='2147483647' NAME='B'/>"
                     "<FOUND NAME='C'/>"),
            "-2147483648 A, 2147483647 B, 2147483647 C");
}

TEST(LegacyNumbers, BeyondTheLimitsOfIntAreZero) {
  EXPECT_EQ(readList("<FOUND NUMBER='2147483648' NAME='A'/><FOUND NUMBER='-2147483649' NAME='B'/>"
                     "<FOUND NUMBER='99999999999999999999' NAME='C'/><FOUND NAME='D'/>"),
            "0 A, 0 B, 0 C, 1 D");
}

TEST(LegacyNames, CountOnBehindTheLargestInt) {
  EXPECT_EQ(readList("<FOUND NUMBER='2147483647' NAME='A'/><FOUND/><FOUND NUMBER='3'/>"),
            "2147483647 A, 2147483647 Found2147483647, 3 Found2147483648");
}

TEST(LegacyNames, AreTakenAsTheyStand) {
  EXPECT_EQ(readList("<FOUND NAME=' a  B '/><FOUND NAME='a'/><FOUND NAME='a'/>"),
            "1  a  B , 2 a, 3 a");
}

TEST(LegacyNames, AreGivenByTheManagerWhenAbsent) {
  EXPECT_EQ(readList("<FOUND/><FOUND/>"), "1 Found0001, 2 Found0002");
}

TEST(LegacyNames, AreGivenByTheManagerWhenEmpty) {
  EXPECT_EQ(readList("<FOUND NAME=''/>"), "1 Found0001");
}

TEST(LegacyNames, AreGivenBeforeTheNumberIsOverridden) {
  EXPECT_EQ(readList("<FOUND NUMBER='12345'/><FOUND NUMBER='2'/><FOUND/>"),
            "12345 Found0001, 2 Found12346, 12346 Found12347");
}

TEST(LegacyNames, ThatAreTakenArePassedOver) {
  EXPECT_EQ(readList("<FOUND NAME='Found0002'/><FOUND/><FOUND/>"),
            "1 Found0002, 2 Found0003, 3 Found0004");
}

TEST(LegacyNames, ThatOnlyLookLikeGivenOnesAreNotTaken) {
  EXPECT_EQ(readList("<FOUND NAME='Found2'/><FOUND/>"), "1 Found2, 2 Found0002");
  EXPECT_EQ(readList("<FOUND NAME='Found00002'/><FOUND/>"), "1 Found00002, 2 Found0002");
  EXPECT_EQ(readList("<FOUND NUMBER='0' NAME='Found99999999999999999999'/><FOUND/>"),
            "0 Found99999999999999999999, 1 Found0001");
}

TEST(LegacyCurrent, IsTheFoundationOfThisName) {
  EXPECT_EQ(readList("<FOUND NAME='A'/><FOUND NAME='B'/>", " CURRENT='B'"), "1 A, 2 B; current B");
}

TEST(LegacyCurrent, IsNoneWhenAbsent) { EXPECT_EQ(readList("<FOUND NAME='A'/>"), "1 A"); }

TEST(LegacyCurrent, IsNoneWhenNoFoundationHasThisName) {
  EXPECT_EQ(readList("<FOUND NAME='A'/><FOUND NAME='AB'/>", " CURRENT='a'"), "1 A, 2 AB");
}

TEST(LegacyCurrent, IsNoneInAnEmptyList) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFoundation(manager, 1, "A"));

  EXPECT_TRUE(read(manager, makeDocument("", " CURRENT='A'")));

  EXPECT_TRUE(manager.getFoundations().empty());
  EXPECT_EQ(manager.getCurrentFoundation(), nullptr);
}

TEST(LegacyCurrent, IsTheFirstOfTwoWithThisName) {
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument("<FOUND NAME='B'/><FOUND NAME='A'/><FOUND NAME='A'/>",
                                         " CURRENT='A'")));

  EXPECT_EQ(manager.getCurrentFoundation(), manager.getFoundations().at(1));
}

TEST(LegacyCurrent, MayBeAGivenName) {
  EXPECT_EQ(readList("<FOUND/><FOUND/>", " CURRENT='Found0002'"),
            "1 Found0001, 2 Found0002; current Found0002");
}

TEST(LegacyCurrent, IsNoneWhenEmptySinceAllHaveNames) {
  EXPECT_EQ(readList("<FOUND NAME=''/>", " CURRENT=''"), "1 Found0001");
}

TEST(LegacyCurrent, IsAnAttributeOfFoundationsOnly) {
  EXPECT_EQ(readList("<FOUND NAME='A' CURRENT='A'/>"), "1 A");
}

TEST(LegacyTexts, ThatAreNoNumbersReadAsZero) {
  EXPECT_EQ(readValues("FXAREA='1,5' FYAREA='12abc' FZAREA='' FXX='x' FAILZAREA='1.5' "
                       "FAILXLINE='-1 -1' FACAREA='0x10'"),
            "area (0, 0, 0)");
}

TEST(LegacyTexts, MayHaveWhiteSpaceAndAPlusAroundTheNumber) {
  EXPECT_EQ(readValues("FXAREA=' +1.5 ' FYAREA='&#9;2' FZAREA='3&#10;' FAILZAREA=' +1 '"),
            "area (1.5, 2, 3), fails area z 1");
}

}  // namespace
}  // namespace LegacyTest
