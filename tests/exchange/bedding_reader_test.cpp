#include "found/bedding_reader.h"

#include <type_traits>

#include "exchange/documents.h"

using Found::Foundation;
using Found::FoundationManager;
using Found::Umo::BeddingReader;

namespace ExchangeTest {
namespace {

class BeddingReading : public ReadingTest {
 protected:
  std::string describeValuesAt(std::size_t place) {
    return describeValues(*manager.getFoundations().at(place));
  }
};

// Elements

TEST_F(BeddingReading, OfNoElementsOnlyFinishes) {
  read("");

  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 0"}));
  EXPECT_EQ(describe(manager), "");
}

TEST_F(BeddingReading, OfNoElementsOnlyFinishesInVersion10) {
  read("", "1.0");

  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 0"}));
}

TEST_F(BeddingReading, TakesAllOfACurveBedding) {
  read(
      "<CurveBedding Number='3' Name='A' StiffnessX='1.5' StiffnessY='-2' StiffnessZ='3e5' "
      "StiffnessXX='4' StiffnessYFailure='tension' StiffnessZFailure='compression' "
      "TangentialStiffnessXFactor='0.25'/>");

  EXPECT_EQ(describe(manager), "3 A");
  EXPECT_EQ(describeValuesAt(0),
            "line (1.5, -2, 3e+05), rotation (4, 0, 0), fails line y -1, fails line z 1, "
            "factor line 0.25");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

TEST_F(BeddingReading, TakesAllOfASurfaceBedding) {
  read(
      "<SurfaceBedding Number='4' Name='B' StiffnessX='1.5' StiffnessY='-2' StiffnessZ='3e5' "
      "StiffnessZFailure='compression' TangentialStiffnessXYFactor='0.25'/>");

  EXPECT_EQ(describe(manager), "4 B");
  EXPECT_EQ(describeValuesAt(0), "area (1.5, -2, 3e+05), fails area z 1, factor area 0.25");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

TEST_F(BeddingReading, TakesAllOfABeddingOfVersion10) {
  read(
      "<Bedding Name='C' SurfaceStiffnessX='1' SurfaceStiffnessY='2' SurfaceStiffnessZ='3' "
      "SurfaceStiffnessZFailure='tension' TangentialSurfaceStiffnessXYFactor='4' "
      "CurveStiffnessX='5' CurveStiffnessY='6' CurveStiffnessZ='7' CurveStiffnessXX='8' "
      "CurveStiffnessYFailure='compression' CurveStiffnessZFailure='tension' "
      "TangentialCurveStiffnessX='9'/>",
      "1.0");

  EXPECT_EQ(describe(manager), "1 C");
  EXPECT_EQ(describeValuesAt(0),
            "area (1, 2, 3), line (5, 6, 7), rotation (8, 0, 0), fails area z -1, "
            "fails line y 1, fails line z -1, factor area 4, factor line 9");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

TEST_F(BeddingReading, TakesCurveAndSurfaceBeddingsInEveryVersion) {
  for (const char* version : {"1.0", "2.0", "1.1", "0.9", ""}) {
    FoundationManager fresh;
    RecordingMessenger heard;
    readText(fresh,
             makeDocument("<CurveBedding Number='3' Name='A'/><SurfaceBedding Number='4' "
                          "Name='B'/>"),
             version, &heard);
    EXPECT_EQ(describe(fresh), "3 A, 4 B") << version;
    EXPECT_EQ(heard.messages, (Messages{"onReadFinished 2"})) << version;
  }
}

TEST_F(BeddingReading, KnowsBeddingInVersion10Only) {
  for (const char* version : {"2.0", "1", "1.00", "01.0", "1.0 ", " 1.0", "1,0", ""}) {
    FoundationManager fresh;
    RecordingMessenger heard;
    readText(fresh, makeDocument("<Bedding Name='B'/><CurveBedding Number='3' Name='A'/>"), version,
             &heard);
    EXPECT_EQ(describe(fresh), "3 A") << version;
    EXPECT_EQ(heard.messages, (Messages{"onUnknownElement <Bedding>", "onReadFinished 1"}))
        << version;
  }
}

TEST_F(BeddingReading, NamesEachUnknownElementAndGoesOn) {
  read(
      "<curvebedding Number='1' Name='A'/><CurveBeddings Number='2' Name='B'/><Curve/>"
      "<SurfaceBedding Number='3' Name='C'/><SURFACEBEDDING Number='4' Name='D'/>"
      "<x:CurveBedding Number='5' Name='E'/><Beddings/>",
      "1.0");

  EXPECT_EQ(describe(manager), "3 C");
  EXPECT_EQ(messenger.messages,
            (Messages{"onUnknownElement <curvebedding>", "onUnknownElement <CurveBeddings>",
                      "onUnknownElement <Curve>", "onUnknownElement <SURFACEBEDDING>",
                      "onUnknownElement <x:CurveBedding>", "onUnknownElement <Beddings>",
                      "onReadFinished 1"}));
}

TEST_F(BeddingReading, LooksAtDirectChildrenOnly) {
  read(
      "<Group><CurveBedding Number='1' Name='A'/></Group>"
      "<SurfaceBedding Number='2' Name='B'><CurveBedding Number='3' Name='C'/></SurfaceBedding>");

  EXPECT_EQ(describe(manager), "2 B");
  EXPECT_EQ(messenger.messages, (Messages{"onUnknownElement <Group>", "onReadFinished 1"}));
}

TEST_F(BeddingReading, PassesOverTextCommentsAndInstructions) {
  read("text<!-- CurveBedding --><?CurveBedding ?><![CDATA[<CurveBedding/>]]>");

  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 0"}));
}

TEST_F(BeddingReading, DoesNotMindTheNameOfTheContainer) {
  for (const char* name : {"Bedding", "CurveBedding", "Anything"}) {
    const std::string tag = name;
    FoundationManager fresh;
    readText(fresh, "<" + tag + "><CurveBedding Number='3' Name='A'/></" + tag + ">", "1.0");
    EXPECT_EQ(describe(fresh), "3 A") << name;
  }
}

TEST_F(BeddingReading, PassesOverAttributesItDoesNotKnow) {
  read(
      "<CurveBedding Color='red' Number='3' StiffnessXFailure='tension' stiffnessx='1' Name='A' "
      "StiffnessXXFailure='tension' TangentialStiffnessXYFactor='2'/>");

  EXPECT_EQ(describe(manager), "3 A");
  EXPECT_EQ(describeValuesAt(0), "line (0, 0, 0), rotation (0, 0, 0)");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

TEST_F(BeddingReading, KeepsTheOrderOfTheDocument) {
  read(
      "<SurfaceBedding Number='9' Name='Z'/><Bedding Name='Y'/><CurveBedding Number='1' "
      "Name='X'/>",
      "1.0");

  EXPECT_EQ(describe(manager), "9 Z, 2 Y, 1 X");
}

// Absent parts and attributes

TEST_F(BeddingReading, LeavesTheLineOfASurfaceBeddingAbsent) {
  read("<SurfaceBedding Number='1' Name='A' StiffnessXX='5' StiffnessYFailure='tension'/>");

  EXPECT_EQ(describeValuesAt(0), "area (0, 0, 0)");
}

TEST_F(BeddingReading, LeavesTheAreaOfACurveBeddingAbsent) {
  read("<CurveBedding Number='1' Name='A'/>");

  EXPECT_EQ(describeValuesAt(0), "line (0, 0, 0), rotation (0, 0, 0)");
}

TEST_F(BeddingReading, GivesABeddingAllVectorsWhateverItHas) {
  read("<Bedding Name='A'/>", "1.0");

  EXPECT_EQ(describeValuesAt(0), "area (0, 0, 0), line (0, 0, 0), rotation (0, 0, 0)");
}

TEST_F(BeddingReading, TakesWhatIsNoNumberForZeroInSilence) {
  read(
      "<SurfaceBedding Number='1' Name='A' StiffnessX='1,5' StiffnessY='' StiffnessZ='12abc' "
      "TangentialStiffnessXYFactor='x'/>");

  EXPECT_EQ(describeValuesAt(0), "area (0, 0, 0)");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

TEST_F(BeddingReading, MakesFoundationsThatAreChangedAndNothingElse) {
  read(
      "<Bedding Name='A'/><CurveBedding Number='8' Name='B' generated='1'/>"
      "<SurfaceBedding Number='9' Name='C' IsGenerated='1'/>",
      "1.0");

  ASSERT_EQ(describe(manager), "1 A, 8 B, 9 C");
  for (const Foundation* foundation : manager.getFoundations()) {
    EXPECT_TRUE(foundation->getChanged());
    EXPECT_FALSE(foundation->isGenerated());
    EXPECT_FALSE(foundation->getFailPossible());
  }
}

// Failure texts

TEST_F(BeddingReading, TakesFailureTextsToTheLetterAndOthersForNoneInSilence) {
  const struct {
    const char* text;
    const char* expected;
  } rows[] = {{"tension", "area (0, 0, 0), fails area z -1"},
              {"none", "area (0, 0, 0)"},
              {"compression", "area (0, 0, 0), fails area z 1"},
              {"", "area (0, 0, 0)"},
              {"Compression", "area (0, 0, 0)"},
              {"TENSION", "area (0, 0, 0)"},
              {"tension ", "area (0, 0, 0)"},
              {" tension", "area (0, 0, 0)"},
              {"tensions", "area (0, 0, 0)"},
              {"tensio", "area (0, 0, 0)"},
              {"1", "area (0, 0, 0)"},
              {"-1", "area (0, 0, 0)"}};
  for (const auto& row : rows) {
    FoundationManager fresh;
    RecordingMessenger heard;
    readText(fresh,
             makeDocument("<SurfaceBedding Number='1' Name='A' StiffnessZFailure='" +
                          std::string(row.text) + "'/>"),
             currentVersion, &heard);
    EXPECT_EQ(describeValues(*fresh.getFoundations().at(0)), row.expected) << row.text;
    EXPECT_EQ(heard.messages, (Messages{"onReadFinished 1"})) << row.text;
  }
}

TEST_F(BeddingReading, TakesUnknownFailureTextsOfLinesForNone) {
  read(
      "<CurveBedding Number='7' Name='A' StiffnessYFailure='Tension' StiffnessZFailure='1'/>"
      "<Bedding Name='B' SurfaceStiffnessZFailure='x' CurveStiffnessYFailure='' "
      "CurveStiffnessZFailure='compression '/>",
      "1.0");

  EXPECT_EQ(describeValuesAt(0), "line (0, 0, 0), rotation (0, 0, 0)");
  EXPECT_EQ(describeValuesAt(1), "area (0, 0, 0), line (0, 0, 0), rotation (0, 0, 0)");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 2"}));
}

// Numbers

TEST_F(BeddingReading, RefusesNumbersBelowOne) {
  read(
      "<CurveBedding Number='0' Name='A'/><SurfaceBedding Number='-4' Name='B'/>"
      "<SurfaceBedding Number='0' Name='C'/><CurveBedding Number='-1' Name='D'/>"
      "<CurveBedding Number='1' Name='E'/>");

  EXPECT_EQ(describe(manager), "1 E");
  EXPECT_EQ(messenger.messages,
            (Messages{"onInvalidNumber <CurveBedding> 0", "onInvalidNumber <SurfaceBedding> -4",
                      "onInvalidNumber <SurfaceBedding> 0", "onInvalidNumber <CurveBedding> -1",
                      "onReadFinished 1"}));
}

TEST_F(BeddingReading, RefusesNumbersThatTheManagerHas) {
  addFoundation(manager, 3, "A");

  read("<CurveBedding Number='3' Name='B'/><SurfaceBedding Number='3' Name='C'/>");

  EXPECT_EQ(describe(manager), "3 A");
  EXPECT_EQ(messenger.messages,
            (Messages{"onInvalidNumber <CurveBedding> 3", "onInvalidNumber <SurfaceBedding> 3",
                      "onReadFinished 0"}));
}

TEST_F(BeddingReading, RefusesTheLargestIntTheSecondTimeAsAnyNumber) {
  read(
      "<CurveBedding Number='2147483647' Name='A'/><CurveBedding Number='2147483647' Name='B'/>"
      "<CurveBedding Number='2147483648' Name='C'/>");

  EXPECT_EQ(describe(manager), "2147483647 A");
  EXPECT_EQ(messenger.messages, (Messages{"onInvalidNumber <CurveBedding> 2147483647",
                                          "onMissingNumber <CurveBedding>", "onReadFinished 1"}));
}

TEST_F(BeddingReading, KeepsTheFirstPartOfTwoThatShareANumber) {
  read(
      "<CurveBedding Number='5' Name='A' StiffnessX='1'/>"
      "<SurfaceBedding Number='5' Name='A' StiffnessX='2'/>");

  EXPECT_EQ(describe(manager), "5 A");
  EXPECT_EQ(describeValuesAt(0), "line (1, 0, 0), rotation (0, 0, 0)");
  EXPECT_EQ(messenger.messages,
            (Messages{"onInvalidNumber <SurfaceBedding> 5", "onReadFinished 1"}));
}

TEST_F(BeddingReading, KeepsTheSurfaceWhenItComesBeforeTheCurve) {
  read(
      "<SurfaceBedding Number='5' Name='A' StiffnessX='2'/>"
      "<CurveBedding Number='5' Name='A' StiffnessX='1'/>");

  EXPECT_EQ(describeValuesAt(0), "area (2, 0, 0)");
  EXPECT_EQ(messenger.messages, (Messages{"onInvalidNumber <CurveBedding> 5", "onReadFinished 1"}));
}

TEST_F(BeddingReading, FindsFreeTheNumberOfARemovedFoundation) {
  Foundation& removed = addFoundation(manager, 3, "A");
  manager.remove(&removed, false, false);
  const std::unique_ptr<Foundation> owner(&removed);

  read("<CurveBedding Number='3' Name='A'/>");

  EXPECT_EQ(describe(manager), "3 A");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

TEST_F(BeddingReading, MissesANumberThatIsNotThere) {
  read("<CurveBedding Name='A'/><SurfaceBedding Name='B' number='1'/>", "1.0");

  EXPECT_EQ(describe(manager), "");
  EXPECT_EQ(messenger.messages, (Messages{"onMissingNumber <CurveBedding>",
                                          "onMissingNumber <SurfaceBedding>", "onReadFinished 0"}));
}

TEST_F(BeddingReading, TellsOnlyTheNumberWhenTheNameIsWrongToo) {
  addFoundation(manager, 3, "A");

  read(
      "<CurveBedding/><CurveBedding Name=''/><CurveBedding Number='3'/>"
      "<CurveBedding Number='0' Name=''/><CurveBedding Number='3' Name='A'/>");

  EXPECT_EQ(messenger.messages,
            (Messages{"onMissingNumber <CurveBedding>", "onMissingNumber <CurveBedding>",
                      "onInvalidNumber <CurveBedding> 3", "onInvalidNumber <CurveBedding> 0",
                      "onInvalidNumber <CurveBedding> 3", "onReadFinished 0"}));
}

TEST_F(BeddingReading, NumbersBeddingsByWhatItHasAdded) {
  read(
      "<Bedding Name='A'/><Bedding/><Other/><Bedding Name='B'/><Bedding Name=''/>"
      "<Bedding Name='C'/>",
      "1.0");

  EXPECT_EQ(describe(manager), "1 A, 2 B, 3 C");
  EXPECT_EQ(messenger.messages, (Messages{"onMissingBeddingName", "onUnknownElement <Other>",
                                          "onEmptyBeddingName <>", "onReadFinished 3"}));
}

TEST_F(BeddingReading, CountsCurveAndSurfaceBeddingsForTheNumbersOfBeddings) {
  read(
      "<CurveBedding Number='7' Name='A'/><SurfaceBedding Number='7' Name='B'/>"
      "<Bedding Name='C'/><SurfaceBedding Number='8' Name='D'/><Bedding Name='E'/>",
      "1.0");

  EXPECT_EQ(describe(manager), "7 A, 2 C, 8 D, 4 E");
  EXPECT_EQ(messenger.messages,
            (Messages{"onInvalidNumber <SurfaceBedding> 7", "onReadFinished 4"}));
}

TEST_F(BeddingReading, GivesABeddingItsNumberAlsoWhenTheManagerHasThat) {
  addFoundation(manager, 1, "A");

  read("<Bedding Name='B'/><Bedding Name='C'/>", "1.0");

  EXPECT_EQ(describe(manager), "1 A, 1 B, 2 C");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 2"}));
}

TEST_F(BeddingReading, RefusesANumberThatABeddingWasGiven) {
  read("<Bedding Name='A'/><CurveBedding Number='1' Name='B'/>", "1.0");

  EXPECT_EQ(describe(manager), "1 A");
  EXPECT_EQ(messenger.messages, (Messages{"onInvalidNumber <CurveBedding> 1", "onReadFinished 1"}));
}

TEST_F(BeddingReading, PassesOverTheNumberOfABedding) {
  read("<Bedding Number='0' Name='A'/><Bedding Number='x' Name='B'/>", "1.0");

  EXPECT_EQ(describe(manager), "1 A, 2 B");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 2"}));
}

// Names

TEST_F(BeddingReading, MissesANameThatIsNotThere) {
  read("<CurveBedding Number='3'/><SurfaceBedding Number='4' name='A'/>");

  EXPECT_EQ(describe(manager), "");
  EXPECT_EQ(messenger.messages,
            (Messages{"onMissingName 3", "onMissingName 4", "onReadFinished 0"}));
}

TEST_F(BeddingReading, RefusesAnEmptyName) {
  read("<CurveBedding Number='3' Name=''/><SurfaceBedding Number='4' Name=''/>");

  EXPECT_EQ(describe(manager), "");
  EXPECT_EQ(messenger.messages,
            (Messages{"onEmptyName 3 <>", "onEmptyName 4 <>", "onReadFinished 0"}));
}

TEST_F(BeddingReading, LeavesFreeTheNumberOfARefusedElement) {
  read(
      "<CurveBedding Number='3'/><CurveBedding Number='3' Name=''/><CurveBedding Number='3' "
      "Name='A'/>");

  EXPECT_EQ(describe(manager), "3 A");
  EXPECT_EQ(messenger.messages,
            (Messages{"onMissingName 3", "onEmptyName 3 <>", "onReadFinished 1"}));
}

TEST_F(BeddingReading, MissesANameOfABedding) {
  read("<Bedding/><Bedding name='A'/>", "1.0");

  EXPECT_EQ(describe(manager), "");
  EXPECT_EQ(messenger.messages,
            (Messages{"onMissingBeddingName", "onMissingBeddingName", "onReadFinished 0"}));
}

TEST_F(BeddingReading, RefusesAnEmptyNameOfABedding) {
  read("<Bedding Name=''/>", "1.0");

  EXPECT_EQ(describe(manager), "");
  EXPECT_EQ(messenger.messages, (Messages{"onEmptyBeddingName <>", "onReadFinished 0"}));
}

TEST_F(BeddingReading, TakesABlankForAName) {
  read("<CurveBedding Number='3' Name=' '/><Bedding Name='  '/>", "1.0");

  EXPECT_EQ(describe(manager), "3  , 2   ");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 2"}));
}

TEST_F(BeddingReading, RenamesBeddingsWhoseNameTheManagerHas) {
  addFoundation(manager, 9, "A");

  read("<Bedding Name='A'/><Bedding Name='A'/>", "1.0");

  EXPECT_EQ(describe(manager), "9 A, 1 A_1, 2 A_2");
  EXPECT_EQ(messenger.messages,
            (Messages{"onNameChanged <A> <A_1>", "onNameChanged <A> <A_2>", "onReadFinished 2"}));
}

TEST_F(BeddingReading, RenamesCurveAndSurfaceBeddingsWhoseNameTheManagerHas) {
  addFoundation(manager, 9, "A");

  read("<CurveBedding Number='1' Name='A'/><SurfaceBedding Number='2' Name='A'/>");

  EXPECT_EQ(describe(manager), "9 A, 1 A_1, 2 A_2");
  EXPECT_EQ(messenger.messages,
            (Messages{"onNameChanged <A> <A_1>", "onNameChanged <A> <A_2>", "onReadFinished 2"}));
}

TEST_F(BeddingReading, RenamesANameThatCameUpInTheSameDocument) {
  read("<CurveBedding Number='1' Name='A'/><SurfaceBedding Number='2' Name='A'/>");

  EXPECT_EQ(describe(manager), "1 A, 2 A_1");
  EXPECT_EQ(messenger.messages, (Messages{"onNameChanged <A> <A_1>", "onReadFinished 2"}));
}

TEST_F(BeddingReading, TakesTheFirstSuffixThatIsFree) {
  addFoundation(manager, 7, "A_1");
  addFoundation(manager, 8, "A");
  addFoundation(manager, 9, "A_3");

  read("<CurveBedding Number='1' Name='A'/><CurveBedding Number='2' Name='A'/>");

  EXPECT_EQ(describe(manager), "7 A_1, 8 A, 9 A_3, 1 A_2, 2 A_4");
  EXPECT_EQ(messenger.messages,
            (Messages{"onNameChanged <A> <A_2>", "onNameChanged <A> <A_4>", "onReadFinished 2"}));
}

TEST_F(BeddingReading, DoesNotPileUpSuffixes) {
  std::string elements;
  for (int number = 1; number <= 12; ++number)
    elements += "<CurveBedding Number='" + std::to_string(number) + "' Name='A'/>";

  read(elements);

  EXPECT_EQ(describe(manager),
            "1 A, 2 A_1, 3 A_2, 4 A_3, 5 A_4, 6 A_5, 7 A_6, 8 A_7, 9 A_8, 10 A_9, 11 A_10, "
            "12 A_11");
}

TEST_F(BeddingReading, GivesASuffixToANameThatHasOneInTheDocument) {
  read(
      "<CurveBedding Number='1' Name='A'/><CurveBedding Number='2' Name='A'/>"
      "<CurveBedding Number='3' Name='A_1'/>");

  EXPECT_EQ(describe(manager), "1 A, 2 A_1, 3 A_1_1");
  EXPECT_EQ(messenger.messages, (Messages{"onNameChanged <A> <A_1>", "onNameChanged <A_1> <A_1_1>",
                                          "onReadFinished 3"}));
}

TEST_F(BeddingReading, KeepsANameWhoseSuffixedFormOnlyIsTaken) {
  addFoundation(manager, 9, "A_1");

  read("<CurveBedding Number='1' Name='A'/>");

  EXPECT_EQ(describe(manager), "9 A_1, 1 A");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

TEST_F(BeddingReading, TellsNamesApartByCaseAndBlanks) {
  addFoundation(manager, 9, "A");

  read(
      "<CurveBedding Number='1' Name='a'/><CurveBedding Number='2' Name=' A'/>"
      "<CurveBedding Number='3' Name='A '/>");

  EXPECT_EQ(describe(manager), "9 A, 1 a, 2  A, 3 A ");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 3"}));
}

TEST_F(BeddingReading, RefusesTheNumberBeforeItRenames) {
  addFoundation(manager, 3, "A");

  read("<CurveBedding Number='3' Name='A'/><CurveBedding Number='4' Name='A'/>");

  EXPECT_EQ(describe(manager), "3 A, 4 A_1");
  EXPECT_EQ(messenger.messages, (Messages{"onInvalidNumber <CurveBedding> 3",
                                          "onNameChanged <A> <A_1>", "onReadFinished 1"}));
}

// The manager

TEST_F(BeddingReading, ChangesNoFoundationThatTheManagerHas) {
  Foundation& kept = addFoundation(manager, 3, "A");
  setDispArea(kept, 1.0, 2.0, 3.0);
  kept.setChanged(false);
  manager.setCurrentFoundation(&kept);

  read(
      "<CurveBedding Number='3' Name='A' StiffnessX='7'/><CurveBedding Number='4' Name='A' "
      "StiffnessX='7'/>");

  EXPECT_EQ(describe(manager), "3 A, 4 A_1");
  EXPECT_EQ(manager.getFoundations()[0], &kept);
  EXPECT_EQ(describeValues(kept), "area (1, 2, 3)");
  EXPECT_FALSE(kept.getChanged());
  EXPECT_EQ(manager.getCurrentFoundation(), &kept);
}

TEST_F(BeddingReading, PassesOverNullFoundations) {
  manager.add(nullptr);
  addFoundation(manager, 3, "A");
  manager.add(nullptr);

  read("<CurveBedding Number='3' Name='B'/><CurveBedding Number='4' Name='A'/><Bedding Name='A'/>",
       "1.0");

  EXPECT_EQ(describe(manager), "null, 3 A, null, 4 A_1, 2 A_2");
  EXPECT_EQ(messenger.messages,
            (Messages{"onInvalidNumber <CurveBedding> 3", "onNameChanged <A> <A_1>",
                      "onNameChanged <A> <A_2>", "onReadFinished 2"}));
}

// The reader

TEST(BeddingReader, CannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<BeddingReader>);
  EXPECT_FALSE(std::is_copy_assignable_v<BeddingReader>);
}

TEST(BeddingReader, IsOnePointer) { EXPECT_EQ(sizeof(BeddingReader), sizeof(void*)); }

TEST(BeddingReader, ReadsInSilenceWithTheSameResults) {
  const auto document = parse(
      makeDocument("<Bedding Name='A'/><Bedding Name='A'/><Bedding/><Bedding Name=''/><Other/>"
                   "<CurveBedding/><CurveBedding Number='0'/><CurveBedding Number='8'/>"
                   "<CurveBedding Number='8' Name=''/><SurfaceBedding Number='8' Name='A'/>"
                   "<CurveBedding Number='8' Name='B'/><CurveBedding Number='9' Name='C'/>"));
  const Tools::VersionText version("1.0");
  FoundationManager manager;
  BeddingReader reader(manager, version);

  reader.read(document->getRoot());

  EXPECT_EQ(describe(manager), "1 A, 2 A_1, 8 A_2, 9 C");
}

TEST(BeddingReader, HasNoMessengerAnyMoreAfterNull) {
  const auto document = parse(makeDocument("<Other/>"));
  const Tools::VersionText version(currentVersion);
  FoundationManager manager;
  RecordingMessenger messenger;
  BeddingReader reader(manager, version);

  reader.setMessenger(&messenger);
  reader.setMessenger(nullptr);
  reader.read(document->getRoot());

  EXPECT_EQ(messenger.messages, Messages{});
}

TEST(BeddingReader, TellsTheMessengerThatWasSetLast) {
  const auto document = parse(makeDocument("<Other/>"));
  const Tools::VersionText version(currentVersion);
  FoundationManager manager;
  RecordingMessenger first;
  RecordingMessenger second;
  BeddingReader reader(manager, version);

  reader.setMessenger(&first);
  reader.read(document->getRoot());
  reader.setMessenger(&second);
  reader.read(document->getRoot());

  EXPECT_EQ(first.messages, (Messages{"onUnknownElement <Other>", "onReadFinished 0"}));
  EXPECT_EQ(second.messages, first.messages);
}

TEST(BeddingReader, AddsAndCountsAnewEachTime) {
  const auto document =
      parse(makeDocument("<Bedding Name='A'/><CurveBedding Number='5' "
                         "Name='B'/>"));
  const Tools::VersionText version("1.0");
  FoundationManager manager;
  RecordingMessenger messenger;
  BeddingReader reader(manager, version);
  reader.setMessenger(&messenger);

  reader.read(document->getRoot());
  reader.read(document->getRoot());

  EXPECT_EQ(describe(manager), "1 A, 5 B, 1 A_1");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 2", "onNameChanged <A> <A_1>",
                                          "onInvalidNumber <CurveBedding> 5", "onReadFinished 1"}));
}

TEST(BeddingReader, ReadsSeveralContainers) {
  const auto document = parse(
      "<Root><A><CurveBedding Number='1' Name='A'/></A><B><CurveBedding Number='2' "
      "Name='B'/></B></Root>");
  const Tools::VersionText version(currentVersion);
  FoundationManager manager;
  BeddingReader reader(manager, version);

  for (const KvXmlN::Data* container : document->getRoot().getChildren()) reader.read(*container);

  EXPECT_EQ(describe(manager), "1 A, 2 B");
}

TEST(BeddingReader, LooksAtTheVersionWhenItReads) {
  const auto document = parse(makeDocument("<Bedding Name='A'/>"));
  Tools::VersionText version(currentVersion);
  FoundationManager manager;
  RecordingMessenger messenger;
  BeddingReader reader(manager, version);
  reader.setMessenger(&messenger);

  reader.read(document->getRoot());
  version = Tools::VersionText("1.0");
  reader.read(document->getRoot());

  EXPECT_EQ(describe(manager), "1 A");
  EXPECT_EQ(messenger.messages,
            (Messages{"onUnknownElement <Bedding>", "onReadFinished 0", "onReadFinished 1"}));
}

TEST(BeddingReader, LeavesTheDocumentAsItWas) {
  const auto document = parse(makeDocument("<Bedding Name='A'/><CurveBedding Number=' 7x'/>"));
  const std::string before = print(*document);
  const Tools::VersionText version("1.0");
  FoundationManager manager;

  BeddingReader(manager, version).read(document->getRoot());

  EXPECT_EQ(print(*document), before);
}

}  // namespace
}  // namespace ExchangeTest
