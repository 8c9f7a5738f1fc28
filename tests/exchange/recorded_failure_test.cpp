#include "exchange/messengers.h"
#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "recorded_run.h"
#include "recording_newer.h"
#include "support/foundations.h"

using Found::Foundation;
using Found::FoundationManager;
using Found::Umo::BeddingReader;
using Found::Umo::BeddingWriter;
using Recording::addElement;
using Recording::failEachCall;
using Recording::FailureRun;
using Recording::Lines;
using TestSupport::addFoundation;
using TestSupport::describe;
using TestSupport::describeValues;
using TestSupport::setDispArea;
using TestSupport::setDispLine;
using TestSupport::setRotLine;

namespace ExchangeTest {
namespace {

class RecordedBeddingFailure : public Recording::RecordedTest {};

std::string join(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "|";
  return text;
}

/// A container for all three kinds of element, and a manager with a foundation.
struct ReadingScene {
  ReadingScene() {
    setDispArea(addFoundation(manager, 9, "A"), 1.0, 2.0, 3.0);
    addElement(container, "Bedding",
               {{"Name", "A"},
                {"SurfaceStiffnessX", "1"},
                {"SurfaceStiffnessZFailure", "tension"},
                {"CurveStiffnessX", "2"},
                {"CurveStiffnessYFailure", "tension"}});
    addElement(container, "Other");
    Recording::addNullElement(container);
    addElement(container, "CurveBedding", {{"Number", "0"}});
    addElement(container, "CurveBedding",
               {{"Number", "7"}, {"Name", "B"}, {"StiffnessYFailure", "tension"}});
    addElement(container, "SurfaceBedding",
               {{"Number", "8"}, {"Name", "C"}, {"StiffnessZFailure", "tension"}});
  }

  void read() {
    BeddingReader reader(manager, version);
    reader.setMessenger(&messenger);
    reader.read(container);
  }

  KvXmlN::Data container{"Box"};
  Tools::VersionText version{"1.0"};
  FoundationManager manager;
  RecordingMessenger messenger;
};

TEST_F(RecordedBeddingFailure, InReadingKeepsTheFoundationsAddedUntilThen) {
  const FailureRun run =
      failEachCall<ReadingScene>([](ReadingScene& scene) { scene.read(); },
                                 [](const ReadingScene& scene) { return describe(scene.manager); });

  EXPECT_EQ(run.states, (Lines{"9 A", "9 A, 1 A_1", "9 A, 1 A_1, 7 B"}));
  EXPECT_EQ(run.completed, "9 A, 1 A_1, 7 B, 8 C");
}

TEST_F(RecordedBeddingFailure, InReadingEndsTheMessages) {
  const FailureRun run = failEachCall<ReadingScene>(
      [](ReadingScene& scene) { scene.read(); },
      [](const ReadingScene& scene) { return join(scene.messenger.messages); });

  const std::string renamed = "onNameChanged <A> <A_1>|";
  const std::string unknown = renamed + "onUnknownElement <Other>|";
  const std::string invalid = unknown + "onInvalidNumber <CurveBedding> 0|";
  EXPECT_EQ(run.states, (Lines{"", renamed, unknown, invalid}));
  EXPECT_EQ(run.completed, invalid + "onReadFinished 3|");
}

TEST_F(RecordedBeddingFailure, InReadingLeavesNoFoundationHalfMade) {
  failEachCall<ReadingScene>(
      [](ReadingScene& scene) { scene.read(); },
      [](const ReadingScene& scene) {
        const Lines values = {
            "area (1, 2, 3)",
            "area (1, 0, 0), line (2, 0, 0), rotation (0, 0, 0), fails area z -1, "
            "fails line y -1",
            "line (0, 0, 0), rotation (0, 0, 0), fails line y -1",
            "area (0, 0, 0), fails area z -1"};
        const std::vector<Foundation*>& all = scene.manager.getFoundations();
        for (std::size_t i = 0; i < all.size(); ++i) EXPECT_EQ(describeValues(*all[i]), values[i]);
        const int vectors[] = {0, 1, 4, 6, 7};
        EXPECT_EQ(Recording::countLive("KvVector3D"), vectors[all.size()]);
        return std::string();
      });
}

TEST_F(RecordedBeddingFailure, InReadingLeavesTheContainerAsItWas) {
  const Lines before = Recording::describe(ReadingScene().container);

  const FailureRun run = failEachCall<ReadingScene>(
      [](ReadingScene& scene) { scene.read(); },
      [](const ReadingScene& scene) { return join(Recording::describe(scene.container)); });

  EXPECT_EQ(run.states, (Lines{join(before)}));
  EXPECT_EQ(run.completed, join(before));
}

TEST_F(RecordedBeddingFailure, InReadingDoesNotHinderTheNextReading) {
  ReadingScene scene;
  BeddingReader reader(scene.manager, scene.version);
  reader.setMessenger(&scene.messenger);
  Recording::failAt(3);
  EXPECT_THROW(reader.read(scene.container), Recording::Failure);

  reader.read(scene.container);

  EXPECT_EQ(describe(scene.manager), "9 A, 1 A_1, 7 B, 8 C");
}

TEST_F(RecordedBeddingFailure, OfAMessageFreesTheFoundationNotAddedYet) {
  struct HostError {};
  ReadingScene scene;
  ActingMessenger messenger([](const std::string& message) {
    if (message == "onNameChanged <A> <A_1>") throw HostError();
  });
  BeddingReader reader(scene.manager, scene.version);
  reader.setMessenger(&messenger);

  EXPECT_THROW(reader.read(scene.container), HostError);

  EXPECT_EQ(describe(scene.manager), "9 A");
  EXPECT_EQ(Recording::countLive("KvVector3D"), 1);
}

/// A manager with a foundation of both parts, and an empty container.
struct WritingScene {
  WritingScene() {
    Foundation& foundation = addFoundation(manager, 3, "A");
    setDispArea(foundation, 1.0, 2.0, 3.0);
    setDispLine(foundation, 4.0, 5.0, 6.0);
    setRotLine(foundation, 7.0, 0.0, 0.0);
    foundation.setChanged(false);
  }

  std::string describeContainer() const { return join(Recording::describe(container)); }

  FoundationManager manager;
  KvXmlN::Data container{"Box"};
};

void write(WritingScene& scene, const std::string& versionText) {
  const Tools::VersionText version(versionText);
  BeddingWriter(scene.manager, version).write(scene.container);
}

TEST_F(RecordedBeddingFailure, InWritingKeepsWhatWasWrittenUntilThen) {
  const FailureRun run = failEachCall<WritingScene>(
      [](WritingScene& scene) { write(scene, "2.0"); },
      [](const WritingScene& scene) { return scene.describeContainer(); });

  const std::string curve = "Box| CurveBedding";
  const std::string curveWithXX =
      curve + " Number=3 Name=A StiffnessX=4 StiffnessY=5 StiffnessZ=6 StiffnessXX=7";
  const std::string curveWithFailures =
      curveWithXX + " StiffnessYFailure=none StiffnessZFailure=none";
  const std::string surface = curveWithFailures + " TangentialStiffnessXFactor=0| SurfaceBedding";
  const std::string surfaceWithZ = surface +
                                   " Number=3 Name=A StiffnessX=1 StiffnessY=2 "
                                   "StiffnessZ=3";
  EXPECT_EQ(run.states,
            (Lines{"Box|", curve + "|", curve + " Number=3|", curve + " Number=3 Name=A|",
                   curve + " Number=3 Name=A StiffnessX=4|",
                   curve + " Number=3 Name=A StiffnessX=4 StiffnessY=5|",
                   curve + " Number=3 Name=A StiffnessX=4 StiffnessY=5 StiffnessZ=6|",
                   curveWithXX + "|", curveWithXX + " StiffnessYFailure=none|",
                   curveWithFailures + "|", curveWithFailures + " TangentialStiffnessXFactor=0|",
                   surface + "|", surface + " Number=3|", surface + " Number=3 Name=A|",
                   surface + " Number=3 Name=A StiffnessX=1|",
                   surface + " Number=3 Name=A StiffnessX=1 StiffnessY=2|", surfaceWithZ + "|",
                   surfaceWithZ + " StiffnessZFailure=none|"}));
  EXPECT_EQ(run.completed, surfaceWithZ + " StiffnessZFailure=none TangentialStiffnessXYFactor=0|");
}

TEST_F(RecordedBeddingFailure, InWritingVersion10KeepsWhatWasWrittenUntilThen) {
  const FailureRun run = failEachCall<WritingScene>(
      [](WritingScene& scene) { write(scene, "1.0"); },
      [](const WritingScene& scene) { return scene.describeContainer(); });

  ASSERT_EQ(run.states.size(), 14u);
  EXPECT_EQ(run.states[0], "Box|");
  EXPECT_EQ(run.calls[0], "isEqualTo 1.0 1.0");
  EXPECT_EQ(run.states[1], "Box| Bedding|");
  EXPECT_EQ(run.calls[1], "setAttribute Bedding Name text A true");
  const std::string last =
      "Box| Bedding Name=A SurfaceStiffnessX=1 SurfaceStiffnessY=2 SurfaceStiffnessZ=3 "
      "SurfaceStiffnessZFailure=none TangentialSurfaceStiffnessXYFactor=0 CurveStiffnessX=4 "
      "CurveStiffnessY=5 CurveStiffnessZ=6 CurveStiffnessXX=7 CurveStiffnessYFailure=none "
      "CurveStiffnessZFailure=none";
  EXPECT_EQ(run.states[13], last + "|");
  EXPECT_EQ(run.calls[13], "setAttribute Bedding TangentialCurveStiffnessX double 0");
  EXPECT_EQ(run.completed, last + " TangentialCurveStiffnessX=0|");
}

TEST_F(RecordedBeddingFailure, InWritingChangesNothingOfTheManager) {
  for (const char* version : {"1.0", "2.0"})
    failEachCall<WritingScene>([&](WritingScene& scene) { write(scene, version); },
                               [](const WritingScene& scene) {
                                 Foundation& foundation = *scene.manager.getFoundations().at(0);
                                 EXPECT_EQ(describe(scene.manager), "3 A");
                                 EXPECT_EQ(describeValues(foundation),
                                           "area (1, 2, 3), line (4, 5, 6), rotation (7, 0, 0)");
                                 EXPECT_FALSE(foundation.getChanged());
                                 EXPECT_EQ(Recording::countLive("KvVector3D"), 3);
                                 return std::string();
                               });
}

}  // namespace
}  // namespace ExchangeTest
