#include "exchange/documents.h"
#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "support/allocation_faults.h"

using Found::Foundation;
using Found::FoundationManager;
using Found::Tests::countLiveBlocks;
using Found::Tests::runsOutOfMemory;
using Found::Umo::BeddingReader;
using Found::Umo::BeddingWriter;

namespace ExchangeTest {
namespace {

// Names too long for the room that a std::string has inside.
const std::string longName(100, 'x');

const std::string document =
    makeDocument("<Bedding Name='" + longName +
                 "' SurfaceStiffnessX='1' CurveStiffnessXX='2'/><CurveBedding "
                 "Number='7' Name='" +
                 longName + "'/><Other/><SurfaceBedding Number='8' Name='B'/>");

/// Allocations that fail in turn before `call` comes through, each in a new scene.
template <class Scene, class Call, class Check>
int countAllocations(const Call& call, const Check& check) {
  int n = 1;
  for (; n < 10000; ++n) {
    const long blocksBefore = countLiveBlocks();
    bool failed = false;
    {
      Scene scene;
      failed = runsOutOfMemory(n, [&] { call(scene); });
      check(scene);
    }
    EXPECT_EQ(countLiveBlocks(), blocksBefore) << "allocation " << n;
    if (!failed) return n - 1;
  }
  ADD_FAILURE() << "does not come through";
  return n;
}

TEST(ExchangeMemory, RunningOutInReadingKeepsWholeFoundations) {
  struct Scene {
    std::unique_ptr<KvXmlN::Document> parsed = parse(document);
    Tools::VersionText version{"1.0"};
    FoundationManager manager;
  };
  const std::string states[] = {"", "1 " + longName, "1 " + longName + ", 7 " + longName + "_1",
                                "1 " + longName + ", 7 " + longName + "_1, 8 B"};
  std::size_t reached = 0;

  const int allocations = countAllocations<Scene>(
      [](Scene& scene) {
        BeddingReader(scene.manager, scene.version).read(scene.parsed->getRoot());
      },
      [&](Scene& scene) {
        const std::size_t size = scene.manager.getFoundations().size();
        EXPECT_GE(size, reached);
        reached = size;
        EXPECT_EQ(describe(scene.manager), states[size]);
        if (size == 0) return;
        EXPECT_EQ(describeValues(*scene.manager.getFoundations()[0]),
                  "area (1, 0, 0), line (0, 0, 0), rotation (2, 0, 0)");
      });

  EXPECT_EQ(reached, 3u);
  // Each of the foundations takes itself, its vectors and at least one name.
  EXPECT_GT(allocations, 12);
}

TEST(ExchangeMemory, RunningOutInALongReadingKeepsWholeFoundations) {
  struct Scene {
    Scene() {
      std::string elements;
      for (int number = 1; number <= 40; ++number)
        elements += "<SurfaceBedding Number='" + std::to_string(number) + "' Name='" + longName +
                    "' StiffnessZ='5'/>";
      parsed = parse(makeDocument(elements));
    }
    std::unique_ptr<KvXmlN::Document> parsed;
    Tools::VersionText version{currentVersion};
    FoundationManager manager;
  };
  std::size_t reached = 0;

  countAllocations<Scene>(
      [](Scene& scene) {
        BeddingReader(scene.manager, scene.version).read(scene.parsed->getRoot());
      },
      [&](Scene& scene) {
        int number = 0;
        for (Foundation* foundation : scene.manager.getFoundations()) {
          EXPECT_EQ(foundation->getNumber(), number + 1);
          EXPECT_EQ(foundation->getName(),
                    number == 0 ? longName : longName + "_" + std::to_string(number));
          EXPECT_EQ(describeValues(*foundation), "area (0, 0, 5)");
          ++number;
        }
        EXPECT_GE(scene.manager.getFoundations().size(), reached);
        reached = scene.manager.getFoundations().size();
      });

  EXPECT_EQ(reached, 40u);
}

TEST(ExchangeMemory, RunningOutInWritingLeavesTheManagerAlone) {
  struct Scene {
    Scene() {
      Foundation& foundation = addFoundation(manager, 3, longName);
      setDispArea(foundation, 1.0, 2.0, 3.0);
      setDispLine(foundation, 4.0, 5.0, 6.0);
      foundation.setChanged(false);
    }
    KvXmlN::Document target{"Exchange"};
    Tools::VersionText version{currentVersion};
    FoundationManager manager;
  };

  const int allocations = countAllocations<Scene>(
      [](Scene& scene) {
        BeddingWriter(scene.manager, scene.version).write(scene.target.getRoot());
      },
      [](Scene& scene) {
        EXPECT_EQ(describe(scene.manager), "3 " + longName);
        EXPECT_EQ(describeValues(*scene.manager.getFoundations()[0]),
                  "area (1, 2, 3), line (4, 5, 6)");
        EXPECT_FALSE(scene.manager.getFoundations()[0]->getChanged());
      });

  EXPECT_GT(allocations, 2);
}

}  // namespace
}  // namespace ExchangeTest
