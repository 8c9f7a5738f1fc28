#include "found/kvml_writer.h"
#include "recorded_run.h"
#include "recording_newer.h"
#include "support/foundations.h"

using Found::Foundation;
using Found::KvmlWriter;
using Recording::FailureRun;
using Recording::Lines;
using TestSupport::setDispArea;
using TestSupport::setDispLine;

namespace KvmlTest {
namespace {

using Chosen = std::set<Foundation*>;

/// A foundation of both parts whose values tell its number.
struct Both : Foundation {
  explicit Both(int n) {
    setNumber(n);
    setName("A");
    TestSupport::setDispArea(*this, n, 1.26, 2.0);
    TestSupport::setDispLine(*this, n, 3.0, 4.0);
    TestSupport::setRotLine(*this, 5.56, 6.0, 7.0);
    setFailAreaZ(Foundation::Tension);
    setFailLineX(Foundation::Compression);
    setFailLineY(Foundation::Compression);
    setFailLineZ(Foundation::Tension);
    setFactorArea(0.125);
    setFactorLine(0.5);
  }
};

class RecordedKvml : public Recording::RecordedTest {
 protected:
  /// Writes into the parent; the log then holds only what that called.
  void write(const Chosen& areas, const Chosen& beams) {
    const KvmlWriter writer;
    Recording::clearLog();
    writer.write(parent, areas, beams);
  }

  KvXmlN::Data parent{"Box"};
};

TEST_F(RecordedKvml, CallsNothingBeforeItWrites) {
  { const KvmlWriter writer; }

  EXPECT_EQ(Recording::getLog(), Lines{});
}

TEST_F(RecordedKvml, CallsNothingForEmptySets) {
  write({}, {});

  EXPECT_EQ(Recording::getLog(), Lines{});
}

TEST_F(RecordedKvml, SetsTheAttributesOfAnAreaInOrder) {
  Both foundation(9);

  write({&foundation}, {});

  EXPECT_EQ(Recording::listCallsWithout({"Load"}),
            (Lines{"createChild Box Beddings", "createChild Beddings BeddingArea",
                   "setAttribute BeddingArea Number int 9 true",
                   "setAttribute BeddingArea Name text A true",
                   "setAttribute BeddingArea ksx double 9 %.1f",
                   "setAttribute BeddingArea ksy double 1.26 %.1f",
                   "setAttribute BeddingArea ksz double 2 %.1f",
                   "setAttribute BeddingArea Failure text text 7472 true",
                   "setAttribute BeddingArea Tangential double 0.125 %.2f"}));
}

TEST_F(RecordedKvml, SetsTheAttributesOfABeamInOrder) {
  Both foundation(9);

  write({}, {&foundation});

  EXPECT_EQ(Recording::listCallsWithout({"Load"}),
            (Lines{"createChild Box Beddings", "createChild Beddings BeddingBeam",
                   "setAttribute BeddingBeam Number int 9 true",
                   "setAttribute BeddingBeam Name text A true",
                   "setAttribute BeddingBeam ksx double 9 %.1f",
                   "setAttribute BeddingBeam ksy double 3 %.1f",
                   "setAttribute BeddingBeam ksz double 4 %.1f",
                   "setAttribute BeddingBeam ksxx double 5.56 %.1f",
                   "setAttribute BeddingBeam Failure text text 7475 true",
                   "setAttribute BeddingBeam Tangential double 0.5 %.2f"}));
}

TEST_F(RecordedKvml, LoadsTheTextOfNoFailureFirstAndThenThatOfTheBeam) {
  const struct {
    int y;
    int z;
    Lines loads;
  } rows[] = {{0, 0, {"Load 7469"}},
              {-1, 0, {"Load 7469", "Load 7470"}},
              {1, 0, {"Load 7469", "Load 7471"}},
              {0, -1, {"Load 7469", "Load 7472"}},
              {0, 1, {"Load 7469", "Load 7473"}},
              {-1, -1, {"Load 7469", "Load 7474"}},
              {1, -1, {"Load 7469", "Load 7475"}},
              {-1, 1, {"Load 7469", "Load 7476"}},
              {1, 1, {"Load 7469", "Load 7477"}},
              {2, 0, {"Load 7469"}},
              {0, -2, {"Load 7469"}},
              {1, 2, {"Load 7469"}},
              {2, 1, {"Load 7469"}}};
  for (const auto& row : rows) {
    Both foundation(9);
    foundation.setFailLineY(static_cast<Foundation::Failure>(row.y));
    foundation.setFailLineZ(static_cast<Foundation::Failure>(row.z));
    write({}, {&foundation});
    EXPECT_EQ(Recording::listCallsOf({"Load"}), row.loads) << row.y << ", " << row.z;
  }
}

TEST_F(RecordedKvml, LoadsTheTextOfNoFailureFirstAndThenThatOfTheArea) {
  const struct {
    int z;
    Lines loads;
  } rows[] = {{0, {"Load 7469"}},
              {-1, {"Load 7469", "Load 7472"}},
              {1, {"Load 7469", "Load 7473"}},
              {2, {"Load 7469"}},
              {-2, {"Load 7469"}}};
  for (const auto& row : rows) {
    Both foundation(9);
    foundation.setFailAreaZ(static_cast<Foundation::Failure>(row.z));
    write({&foundation}, {});
    EXPECT_EQ(Recording::listCallsOf({"Load"}), row.loads) << row.z;
  }
}

TEST_F(RecordedKvml, CallsNothingForAFoundationWithoutTheVector) {
  Both foundation(9);
  foundation.setDispArea(nullptr);
  foundation.setDispLine(nullptr);

  write({&foundation}, {&foundation});

  EXPECT_EQ(Recording::getLog(), (Lines{"createChild Box Beddings"}));
  EXPECT_EQ(Recording::describe(parent), (Lines{"Box", " Beddings"}));
}

TEST_F(RecordedKvml, DoesNotJudgeVectors) {
  Foundation zeros;
  setDispArea(zeros, 0.0, 0.0, 0.0);
  setDispLine(zeros, 0.0, 0.0, 0.0);

  write({&zeros}, {&zeros});

  EXPECT_EQ(Recording::listCallsOf({"KvVector3D"}), Lines{});
  EXPECT_EQ(Recording::describe(parent),
            (Lines{"Box", " Beddings",
                   "  BeddingArea Number=-1 Name= ksx=0 ksy=0 ksz=0 Failure=text 7469 "
                   "Tangential=0",
                   "  BeddingBeam Number=-1 Name= ksx=0 ksy=0 ksz=0 ksxx=0 Failure=text 7469 "
                   "Tangential=0"}));
}

TEST_F(RecordedKvml, StopsWhenTheListCannotBeCreated) {
  Both foundation(9);
  const Recording::ChildRefusal refusal(1);

  write({&foundation}, {&foundation});

  EXPECT_EQ(Recording::getLog(), (Lines{"createChild Box Beddings"}));
  EXPECT_EQ(Recording::describe(parent), (Lines{"Box"}));
}

TEST_F(RecordedKvml, PassesOverABeddingThatCannotBeCreated) {
  Both first(1);
  Both second(2);
  const Lines all = {"BeddingArea 1", "BeddingArea 2", "BeddingBeam 1", "BeddingBeam 2"};
  for (std::size_t refused = 0; refused < all.size(); ++refused) {
    KvXmlN::Data box("Box");
    {
      const Recording::ChildRefusal refusal(static_cast<int>(refused) + 2);
      KvmlWriter().write(box, {&first, &second}, {&first, &second});
    }
    Lines expected = all;
    expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(refused));
    Lines written;
    for (const KvXmlN::Data* element : box.getChildren().at(0)->getChildren())
      written.push_back(element->getName() + " " + element->findAttribute("Number")->getData());
    EXPECT_EQ(written, expected);
  }
}

TEST_F(RecordedKvml, CallsNothingForABeddingThatCannotBeCreated) {
  Both foundation(9);
  const Recording::ChildRefusal refusal(2);

  write({&foundation}, {});

  EXPECT_EQ(Recording::getLog(),
            (Lines{"createChild Box Beddings", "createChild Beddings BeddingArea"}));
}

TEST_F(RecordedKvml, LeavesWhatWasWrittenWhenACallFails) {
  struct Scene {
    Both foundation{9};
    KvXmlN::Data box{"Box"};
  };

  const FailureRun run = Recording::failEachCall<Scene>(
      [](Scene& scene) { KvmlWriter().write(scene.box, {&scene.foundation}, {&scene.foundation}); },
      [](const Scene& scene) {
        std::string text;
        for (const std::string& line : Recording::describe(scene.box)) text += line + "|";
        return text;
      });

  const std::string list = "Box| Beddings|";
  const std::string area = list + "  BeddingArea";
  const std::string areaWithZ = area + " Number=9 Name=A ksx=9 ksy=1.26 ksz=2";
  const std::string beam = areaWithZ + " Failure=text 7472 Tangential=0.125|  BeddingBeam";
  const std::string beamWithZ = beam + " Number=9 Name=A ksx=9 ksy=3 ksz=4";
  EXPECT_EQ(
      run.states,
      (Lines{"Box|", list, area + "|", area + " Number=9|", area + " Number=9 Name=A|",
             area + " Number=9 Name=A ksx=9|", area + " Number=9 Name=A ksx=9 ksy=1.26|",
             areaWithZ + "|", areaWithZ + " Failure=text 7472|",
             areaWithZ + " Failure=text 7472 Tangential=0.125|", beam + "|", beam + " Number=9|",
             beam + " Number=9 Name=A|", beam + " Number=9 Name=A ksx=9|",
             beam + " Number=9 Name=A ksx=9 ksy=3|", beamWithZ + "|", beamWithZ + " ksxx=5.56|",
             beamWithZ + " ksxx=5.56 Failure=text 7475|"}));
  EXPECT_EQ(run.completed, beamWithZ + " ksxx=5.56 Failure=text 7475 Tangential=0.5|");
}

}  // namespace
}  // namespace KvmlTest
