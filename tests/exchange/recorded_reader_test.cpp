#include "exchange/messengers.h"
#include "found/bedding_reader.h"
#include "recorded_run.h"
#include "recording_newer.h"
#include "support/foundations.h"

using Found::FoundationManager;
using Found::Umo::BeddingReader;
using Recording::addElement;
using Recording::addNullElement;
using Recording::Lines;
using TestSupport::addFoundation;
using TestSupport::describe;
using TestSupport::describeValues;

namespace ExchangeTest {
namespace {

class RecordedBeddingReader : public Recording::RecordedTest {
 protected:
  /// Reads the container; the log then holds only what that called.
  void read(const std::string& versionText) {
    const Tools::VersionText version(versionText);
    BeddingReader reader(manager, version);
    reader.setMessenger(&messenger);
    Recording::clearLog();
    reader.read(container);
    // The name of an element and the arithmetic of vectors may be asked for as often as need be.
    calls = Recording::listCallsWithout({"getName", "KvVector3D"});
  }

  KvXmlN::Data container{"Box"};
  FoundationManager manager;
  RecordingMessenger messenger;
  Lines calls;
};

TEST_F(RecordedBeddingReader, CallsNothingBeforeItReads) {
  const Tools::VersionText version("1.0");
  {
    BeddingReader reader(manager, version);
    reader.setMessenger(&messenger);
    reader.setMessenger(nullptr);
  }

  EXPECT_EQ(Recording::getLog(), Lines{});
}

TEST_F(RecordedBeddingReader, AsksOnlyForTheChildrenOfAnEmptyContainer) {
  read("1.0");

  EXPECT_EQ(Recording::getLog(), (Lines{"getChildren Box"}));
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 0"}));
}

TEST_F(RecordedBeddingReader, AsksACurveBeddingInOrder) {
  addElement(container, "CurveBedding",
             {{"TangentialStiffnessXFactor", "7"},
              {"StiffnessZFailure", "tension"},
              {"StiffnessYFailure", "compression"},
              {"StiffnessXX", "6"},
              {"StiffnessZ", "5"},
              {"StiffnessY", "4"},
              {"StiffnessX", "3"},
              {"Name", "A"},
              {"Number", "2"}});

  read("2.0");

  EXPECT_EQ(calls,
            (Lines{"getChildren Box", "isEqualTo 2.0 1.0", "findAttribute CurveBedding Number",
                   "getData Number", "readString CurveBedding Name",
                   "getAttributeDouble CurveBedding StiffnessX",
                   "getAttributeDouble CurveBedding StiffnessY",
                   "getAttributeDouble CurveBedding StiffnessZ",
                   "getAttributeDouble CurveBedding StiffnessXX",
                   "findAttribute CurveBedding StiffnessYFailure", "getData StiffnessYFailure",
                   "findAttribute CurveBedding StiffnessZFailure", "getData StiffnessZFailure",
                   "getAttributeDouble CurveBedding TangentialStiffnessXFactor"}));
  EXPECT_EQ(describe(manager), "2 A");
  EXPECT_EQ(describeValues(*manager.getFoundations()[0]),
            "line (3, 4, 5), rotation (6, 0, 0), fails line y 1, fails line z -1, factor line 7");
}

TEST_F(RecordedBeddingReader, AsksASurfaceBeddingInOrder) {
  addElement(container, "SurfaceBedding",
             {{"TangentialStiffnessXYFactor", "6"},
              {"StiffnessZFailure", "tension"},
              {"StiffnessZ", "5"},
              {"StiffnessY", "4"},
              {"StiffnessX", "3"},
              {"Name", "A"},
              {"Number", "2"}});

  read("2.0");

  EXPECT_EQ(calls,
            (Lines{"getChildren Box", "isEqualTo 2.0 1.0", "findAttribute SurfaceBedding Number",
                   "getData Number", "readString SurfaceBedding Name",
                   "getAttributeDouble SurfaceBedding StiffnessX",
                   "getAttributeDouble SurfaceBedding StiffnessY",
                   "getAttributeDouble SurfaceBedding StiffnessZ",
                   "findAttribute SurfaceBedding StiffnessZFailure", "getData StiffnessZFailure",
                   "getAttributeDouble SurfaceBedding TangentialStiffnessXYFactor"}));
  EXPECT_EQ(describe(manager), "2 A");
  EXPECT_EQ(describeValues(*manager.getFoundations()[0]),
            "area (3, 4, 5), fails area z -1, factor area 6");
}

TEST_F(RecordedBeddingReader, AsksABeddingInOrder) {
  addElement(container, "Bedding",
             {{"TangentialCurveStiffnessX", "9"},
              {"CurveStiffnessZFailure", "compression"},
              {"CurveStiffnessYFailure", "tension"},
              {"CurveStiffnessXX", "8"},
              {"CurveStiffnessZ", "7"},
              {"CurveStiffnessY", "6"},
              {"CurveStiffnessX", "5"},
              {"TangentialSurfaceStiffnessXYFactor", "4"},
              {"SurfaceStiffnessZFailure", "compression"},
              {"SurfaceStiffnessZ", "3"},
              {"SurfaceStiffnessY", "2"},
              {"SurfaceStiffnessX", "1"},
              {"Name", "A"}});

  read("1.0");

  EXPECT_EQ(
      calls,
      (Lines{"getChildren Box", "isEqualTo 1.0 1.0", "readString Bedding Name",
             "getAttributeDouble Bedding SurfaceStiffnessX",
             "getAttributeDouble Bedding SurfaceStiffnessY",
             "getAttributeDouble Bedding SurfaceStiffnessZ",
             "findAttribute Bedding SurfaceStiffnessZFailure", "getData SurfaceStiffnessZFailure",
             "getAttributeDouble Bedding TangentialSurfaceStiffnessXYFactor",
             "getAttributeDouble Bedding CurveStiffnessX",
             "getAttributeDouble Bedding CurveStiffnessY",
             "getAttributeDouble Bedding CurveStiffnessZ",
             "getAttributeDouble Bedding CurveStiffnessXX",
             "findAttribute Bedding CurveStiffnessYFailure", "getData CurveStiffnessYFailure",
             "findAttribute Bedding CurveStiffnessZFailure", "getData CurveStiffnessZFailure",
             "getAttributeDouble Bedding TangentialCurveStiffnessX"}));
  EXPECT_EQ(describe(manager), "1 A");
  EXPECT_EQ(describeValues(*manager.getFoundations()[0]),
            "area (1, 2, 3), line (5, 6, 7), rotation (8, 0, 0), fails area z 1, "
            "fails line y -1, fails line z 1, factor area 4, factor line 9");
}

TEST_F(RecordedBeddingReader, AsksForAbsentAttributesJustTheSame) {
  addElement(container, "Bedding", {{"Name", "A"}});

  read("1.0");

  EXPECT_EQ(calls, (Lines{"getChildren Box", "isEqualTo 1.0 1.0", "readString Bedding Name",
                          "getAttributeDouble Bedding SurfaceStiffnessX",
                          "getAttributeDouble Bedding SurfaceStiffnessY",
                          "getAttributeDouble Bedding SurfaceStiffnessZ",
                          "findAttribute Bedding SurfaceStiffnessZFailure",
                          "getAttributeDouble Bedding TangentialSurfaceStiffnessXYFactor",
                          "getAttributeDouble Bedding CurveStiffnessX",
                          "getAttributeDouble Bedding CurveStiffnessY",
                          "getAttributeDouble Bedding CurveStiffnessZ",
                          "getAttributeDouble Bedding CurveStiffnessXX",
                          "findAttribute Bedding CurveStiffnessYFailure",
                          "findAttribute Bedding CurveStiffnessZFailure",
                          "getAttributeDouble Bedding TangentialCurveStiffnessX"}));
}

TEST_F(RecordedBeddingReader, TakesWhatTheLibraryAnswersForAbsentAttributes) {
  const Recording::AbsentDouble answer(0.5);
  addElement(container, "Bedding", {{"Name", "A"}});
  addElement(container, "CurveBedding", {{"Number", "8"}, {"Name", "B"}});
  addElement(container, "SurfaceBedding", {{"Number", "9"}, {"Name", "C"}});

  read("1.0");

  ASSERT_EQ(describe(manager), "1 A, 8 B, 9 C");
  EXPECT_EQ(describeValues(*manager.getFoundations()[0]),
            "area (0.5, 0.5, 0.5), line (0.5, 0.5, 0.5), rotation (0.5, 0, 0), "
            "factor area 0.5, factor line 0.5");
  EXPECT_EQ(describeValues(*manager.getFoundations()[1]),
            "line (0.5, 0.5, 0.5), rotation (0.5, 0, 0), factor line 0.5");
  EXPECT_EQ(describeValues(*manager.getFoundations()[2]), "area (0.5, 0.5, 0.5), factor area 0.5");
}

TEST_F(RecordedBeddingReader, AsksForTheVersionOnceForEachChildThatIsThere) {
  addElement(container, "Other");
  addNullElement(container);
  addElement(container, "CurveBedding", {{"Number", "8"}, {"Name", "B"}});
  addElement(container, "Bedding", {{"Name", "A"}});

  read("1.0");

  EXPECT_EQ(Recording::listCallsOf({"isEqualTo"}),
            (Lines{"isEqualTo 1.0 1.0", "isEqualTo 1.0 1.0", "isEqualTo 1.0 1.0"}));
}

TEST_F(RecordedBeddingReader, AsksNothingMoreOfAnElementItRefuses) {
  addFoundation(manager, 7, "Old");
  addElement(container, "Other", {{"Number", "1"}, {"Name", "A"}});
  addElement(container, "Bedding", {{"Name", "A"}});
  addElement(container, "CurveBedding", {{"Name", "A"}});
  addElement(container, "SurfaceBedding", {{"Number", "x"}, {"Name", "A"}});
  addElement(container, "CurveBedding", {{"Number", "0"}, {"Name", "A"}});
  addElement(container, "SurfaceBedding", {{"Number", "7"}, {"Name", "A"}});
  addElement(container, "CurveBedding", {{"Number", "8"}});
  addElement(container, "SurfaceBedding", {{"Number", "8"}, {"Name", ""}});

  read("2.0");

  EXPECT_EQ(calls, (Lines{"getChildren Box",
                          "isEqualTo 2.0 1.0",
                          "isEqualTo 2.0 1.0",
                          "isEqualTo 2.0 1.0",
                          "findAttribute CurveBedding Number",
                          "isEqualTo 2.0 1.0",
                          "findAttribute SurfaceBedding Number",
                          "getData Number",
                          "isEqualTo 2.0 1.0",
                          "findAttribute CurveBedding Number",
                          "getData Number",
                          "isEqualTo 2.0 1.0",
                          "findAttribute SurfaceBedding Number",
                          "getData Number",
                          "isEqualTo 2.0 1.0",
                          "findAttribute CurveBedding Number",
                          "getData Number",
                          "readString CurveBedding Name",
                          "isEqualTo 2.0 1.0",
                          "findAttribute SurfaceBedding Number",
                          "getData Number",
                          "readString SurfaceBedding Name"}));
  EXPECT_EQ(messenger.messages,
            (Messages{"onUnknownElement <Other>", "onUnknownElement <Bedding>",
                      "onMissingNumber <CurveBedding>", "onMissingNumber <SurfaceBedding>",
                      "onInvalidNumber <CurveBedding> 0", "onInvalidNumber <SurfaceBedding> 7",
                      "onMissingName 8", "onEmptyName 8 <>", "onReadFinished 0"}));
}

TEST_F(RecordedBeddingReader, AsksNothingMoreOfABeddingItRefuses) {
  addElement(container, "Bedding", {{"SurfaceStiffnessX", "1"}});
  addElement(container, "Bedding", {{"Name", ""}});

  read("1.0");

  EXPECT_EQ(calls, (Lines{"getChildren Box", "isEqualTo 1.0 1.0", "readString Bedding Name",
                          "isEqualTo 1.0 1.0", "readString Bedding Name"}));
  EXPECT_EQ(messenger.messages,
            (Messages{"onMissingBeddingName", "onEmptyBeddingName <>", "onReadFinished 0"}));
}

TEST_F(RecordedBeddingReader, AsksTheSameWithoutAMessenger) {
  addElement(container, "Other");
  addElement(container, "CurveBedding", {{"Number", "0"}});
  addElement(container, "Bedding", {{"Name", "A"}});
  addElement(container, "Bedding", {{"Name", "A"}});
  read("1.0");
  const Lines heard = Recording::getLog();

  FoundationManager silent;
  const Tools::VersionText version("1.0");
  Recording::clearLog();
  BeddingReader(silent, version).read(container);

  EXPECT_EQ(Recording::getLog(), heard);
  EXPECT_EQ(describe(silent), "1 A, 2 A_1");
}

TEST_F(RecordedBeddingReader, AsksALongContainerLikeAShortOne) {
  const Lines ofEach = {"isEqualTo 2.0 1.0",
                        "findAttribute SurfaceBedding Number",
                        "getData Number",
                        "readString SurfaceBedding Name",
                        "getAttributeDouble SurfaceBedding StiffnessX",
                        "getAttributeDouble SurfaceBedding StiffnessY",
                        "getAttributeDouble SurfaceBedding StiffnessZ",
                        "findAttribute SurfaceBedding StiffnessZFailure",
                        "getAttributeDouble SurfaceBedding TangentialStiffnessXYFactor"};
  Lines expected = {"getChildren Box"};
  for (int number = 1; number <= 40; ++number) {
    addElement(container, "SurfaceBedding", {{"Number", std::to_string(number)}, {"Name", "A"}});
    expected.insert(expected.end(), ofEach.begin(), ofEach.end());
  }
  ActingMessenger host([this](const std::string& message) {
    if (message != "onNameChanged <A> <A_1>") return;
    manager.add(nullptr);
    for (int number = 1001; number <= 1100; ++number) addFoundation(manager, number, "B");
  });
  const Tools::VersionText version("2.0");
  BeddingReader reader(manager, version);
  reader.setMessenger(&host);
  Recording::clearLog();

  reader.read(container);

  EXPECT_EQ(Recording::listCallsWithout({"getName", "KvVector3D"}), expected);
  EXPECT_EQ(host.messages.back(), "onReadFinished 40");
  EXPECT_EQ(manager.getFoundations().back()->getName(), "A_39");
}

TEST_F(RecordedBeddingReader, PassesOverNullChildren) {
  addNullElement(container);
  addElement(container, "Bedding", {{"Name", "A"}});
  addNullElement(container);
  addNullElement(container);
  addElement(container, "Bedding", {{"Name", "B"}});
  addNullElement(container);

  read("1.0");

  EXPECT_EQ(describe(manager), "1 A, 2 B");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 2"}));
}

TEST_F(RecordedBeddingReader, FinishesWhenAllChildrenAreNull) {
  addNullElement(container);

  read("1.0");

  EXPECT_EQ(Recording::getLog(), (Lines{"getChildren Box"}));
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 0"}));
}

TEST_F(RecordedBeddingReader, SkipsEveryKindOfWhiteSpaceBeforeANumber) {
  const std::string white = " \t\n\v\f\r";
  int number = 0;
  for (const char c : white)
    addElement(container, "CurveBedding",
               {{"Number", std::string(1, c) + std::to_string(++number)}, {"Name", "A"}});
  addElement(container, "CurveBedding", {{"Number", white + white + "7"}, {"Name", "A"}});

  read("2.0");

  EXPECT_EQ(describe(manager), "1 A, 2 A_1, 3 A_2, 4 A_3, 5 A_4, 6 A_5, 7 A_6");
}

TEST_F(RecordedBeddingReader, SkipsNoOtherCharacterBeforeANumber) {
  for (const char c : {'\0', '\x01', '\x1F', '\x7F', '\xA0'})
    addElement(container, "CurveBedding", {{"Number", std::string(1, c) + "7"}, {"Name", "A"}});
  addElement(container, "CurveBedding", {{"Number", " \v\f"}, {"Name", "A"}});

  read("2.0");

  EXPECT_EQ(messenger.messages,
            (Messages{"onMissingNumber <CurveBedding>", "onMissingNumber <CurveBedding>",
                      "onMissingNumber <CurveBedding>", "onMissingNumber <CurveBedding>",
                      "onMissingNumber <CurveBedding>", "onMissingNumber <CurveBedding>",
                      "onReadFinished 0"}));
}

TEST_F(RecordedBeddingReader, EndsANumberAtANulCharacter) {
  addElement(container, "CurveBedding",
             {{"Number", std::string("7\0"
                                     "8",
                                     3)},
              {"Name", "A"}});

  read("2.0");

  EXPECT_EQ(describe(manager), "7 A");
}

TEST_F(RecordedBeddingReader, TellsNamesApartBehindANulCharacter) {
  addElement(container, "CurveBedding", {{"Number", "1"}, {"Name", std::string("A\0x", 3)}});
  addElement(container, "CurveBedding", {{"Number", "2"}, {"Name", std::string("A\0y", 3)}});

  read("2.0");

  EXPECT_EQ(describe(manager), std::string("1 A\0x, 2 A\0y", 12));
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 2"}));
}

TEST_F(RecordedBeddingReader, KeepsOneVectorForEachThatIsPresent) {
  addElement(container, "SurfaceBedding", {{"Number", "9"}, {"Name", "A"}});
  read("1.0");
  EXPECT_EQ(Recording::countLive("KvVector3D"), 1);

  addElement(container, "CurveBedding", {{"Number", "8"}, {"Name", "B"}});
  read("1.0");
  EXPECT_EQ(Recording::countLive("KvVector3D"), 3);

  addElement(container, "Bedding", {{"Name", "C"}});
  read("1.0");
  EXPECT_EQ(Recording::countLive("KvVector3D"), 6);
}

TEST_F(RecordedBeddingReader, LeavesTheContainerAsItWas) {
  addElement(container, "Bedding", {{"Name", "A"}});
  addElement(addElement(container, "Other", {{"A", "1"}}), "Inner");
  const Lines before = Recording::describe(container);

  read("1.0");

  EXPECT_EQ(before, (Lines{"Box", " Bedding Name=A", " Other A=1", "  Inner"}));
  EXPECT_EQ(Recording::describe(container), before);
}

}  // namespace
}  // namespace ExchangeTest
