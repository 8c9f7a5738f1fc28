#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "recorded_legacy.h"

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {
namespace {

class RecordedFailure : public RecordedTest {};

/// A manager with a foundation that is current.
struct FilledManager {
  FilledManager() {
    const KvVector3D v(1.0, 2.0, 3.0);
    Foundation& old = addFoundation(manager, 1, "Old");
    old.setDispArea(&v);
    old.setFailLineX(Foundation::Tension);
    manager.setCurrentFoundation(&old);
  }
  FoundationManager manager;
};

std::string describeManager(const FilledManager& scene) { return describe(scene.manager); }

const Lines document = {"SMOD",
                        " FOUNDATIONS CURRENT=B",
                        "  FOUND NUMBER=30 NAME=A FXAREA=1 FXLINE=2 FXX=3 FAILZAREA=1 FACAREA=2",
                        "  OTHER",
                        "  FOUND NAME=B IsGenerated=1",
                        "  FOUND NUMBER=5 NAME=C"};

/// Files and folders that the process holds open; -1 where that cannot be seen.
std::ptrdiff_t countOpenFiles() {
#if defined(_WIN32)
  const int next = _open("NUL", _O_RDONLY);  // gets the lowest number that is free
  _close(next);
  return next;
#else
  const std::filesystem::path list = "/proc/self/fd";
  if (!std::filesystem::exists(list)) return -1;
  return std::distance(std::filesystem::directory_iterator(list),
                       std::filesystem::directory_iterator());
#endif
}

TEST_F(RecordedFailure, OfCreateFromXmlKeepsWhatWasReadUntilThen) {
  struct Scene : FilledManager {
    Scene() : tree(makeTree(document)), root(tree->getCurrent()) {}
    std::unique_ptr<KvXmlTree> tree;
    KvXmlData* root;
  };

  const FailureRun run =
      failEachCall<Scene>([](Scene& scene) { scene.manager.createFromXml(scene.root); },
                          [](const Scene& scene) {
                            EXPECT_EQ(Recording::describe(*scene.tree), document);
                            return describe(scene.manager);
                          });

  EXPECT_EQ(run.states, (Lines{"1 Old; current Old", "", "30 A", "30 A, 31 B", "30 A, 31 B, 5 C"}));
  EXPECT_EQ(run.completed, "30 A, 31 B, 5 C; current B");
}

TEST_F(RecordedFailure, OfCreateFromXmlEmptiesTheManagerOnceFoundationsWereLookedFor) {
  struct Scene : FilledManager {
    Scene() : tree(makeTree(document)), root(tree->getCurrent()) {}
    std::unique_ptr<KvXmlTree> tree;
    KvXmlData* root;
  };

  const FailureRun run = failEachCall<Scene>(
      [](Scene& scene) { scene.manager.createFromXml(scene.root); }, describeManager);

  ASSERT_EQ(run.calls.size(), 5u);
  EXPECT_EQ(run.calls[0], "findTree SMOD FOUNDATIONS true");
  EXPECT_EQ(run.calls[1], "getChildren FOUNDATIONS");
  EXPECT_EQ(run.calls[4], "findAttribute FOUNDATIONS CURRENT");
}

TEST_F(RecordedFailure, OfReadXmlKeepsEverythingUntilTheReaderStarts) {
  const TemporaryFile file(makeText(document));

  const FailureRun run = failEachCall<FilledManager>(
      [&](FilledManager& scene) { EXPECT_TRUE(scene.manager.readXml(file.get())); },
      describeManager);

  EXPECT_EQ(run.states, (Lines{"1 Old; current Old", "", "30 A", "30 A, 31 B", "30 A, 31 B, 5 C"}));
  EXPECT_EQ(run.completed, "30 A, 31 B, 5 C; current B");
  ASSERT_EQ(run.calls.size(), 5u);
  EXPECT_EQ(run.calls[0], "KvXmlTree istream");
  EXPECT_EQ(run.calls[1], "getChildren FOUNDATIONS");
}

TEST_F(RecordedFailure, OfReadXmlFreesTheTreeAndClosesTheFile) {
  const TemporaryFile file(makeText(document));
  const std::ptrdiff_t openBefore = countOpenFiles();

  failEachCall<FilledManager>(
      [&](FilledManager& scene) { EXPECT_TRUE(scene.manager.readXml(file.get())); },
      [&](const FilledManager& /*scene*/) {
        EXPECT_EQ(Recording::countLive("KvXmlTree"), 0);
        EXPECT_EQ(Recording::countLive("KvXmlData"), 0);
        EXPECT_EQ(countOpenFiles(), openBefore);
        return std::string();
      });
}

TEST_F(RecordedFailure, OfTheShortPathKeepsEverything) {
  const FailureRun run = failEachCall<FilledManager>(
      [](FilledManager& scene) { EXPECT_FALSE(scene.manager.readXml("no such folder/file")); },
      describeManager);

  EXPECT_EQ(run.states, (Lines{"1 Old; current Old"}));
  EXPECT_EQ(run.calls, (Lines{"GetShortPathNameA no such folder/file 4096"}));
  EXPECT_EQ(run.completed, "1 Old; current Old");
}

TEST_F(RecordedFailure, OfUpdateXmlKeepsInTheTreeWhatWasWrittenUntilThen) {
  struct Scene : FilledManager {
    Scene() : tree(makeTree({"SMOD"})) {}
    std::unique_ptr<KvXmlTree> tree;
  };

  const FailureRun run =
      failEachCall<Scene>([](Scene& scene) { scene.manager.updateXml(scene.tree.get()); },
                          [](const Scene& scene) {
                            std::string state;
                            for (const std::string& line : Recording::describe(*scene.tree))
                              state += line + "|";
                            return state;
                          });

  const std::string opened = "SMOD| FOUNDATIONS|";
  const std::string list = "SMOD| FOUNDATIONS CURRENT=Old|  FOUND";
  EXPECT_EQ(
      run.states,
      (Lines{"SMOD|", opened, "SMOD| FOUNDATIONS CURRENT=Old|", list + "|", list + " NUMBER=1|",
             list + " NUMBER=1 NAME=Old|", list + " NUMBER=1 NAME=Old FXAREA=1|",
             list + " NUMBER=1 NAME=Old FXAREA=1 FYAREA=2|",
             list + " NUMBER=1 NAME=Old FXAREA=1 FYAREA=2 FZAREA=3|",
             list + " NUMBER=1 NAME=Old FXAREA=1 FYAREA=2 FZAREA=3 FAILXLINE=-1|",
             list + " NUMBER=1 NAME=Old FXAREA=1 FYAREA=2 FZAREA=3 FAILXLINE=-1 FACAREA=0|",
             list + " NUMBER=1 NAME=Old FXAREA=1 FYAREA=2 FZAREA=3 FAILXLINE=-1 FACAREA=0 "
                    "FACLINE=0|",
             list + " NUMBER=1 NAME=Old FXAREA=1 FYAREA=2 FZAREA=3 FAILXLINE=-1 FACAREA=0 "
                    "FACLINE=0 IsGenerated=0|"}));
  EXPECT_EQ(run.completed, run.states.back());
}

TEST_F(RecordedFailure, OfUpdateXmlChangesNothingOfTheManager) {
  struct Scene : FilledManager {
    Scene() : tree(makeTree({"SMOD", " FOUNDATIONS", "  FOUND NUMBER=1 NAME=Other"})) {
      addFoundation(manager, 2, "New");
    }
    std::unique_ptr<KvXmlTree> tree;
  };

  const FailureRun run = failEachCall<Scene>(
      [](Scene& scene) { scene.manager.updateXml(scene.tree.get()); },
      [](const Scene& scene) {
        return describe(scene.manager) + "; " + describeValues(*scene.manager.getFoundations()[0]);
      });

  EXPECT_EQ(run.states, (Lines{"1 Old, 2 New; current Old; area (1, 2, 3), fails line x -1"}));
  EXPECT_EQ(run.completed, "1 Old, 2 New; current Old; area (1, 2, 3), fails line x -1");
}

TEST_F(RecordedFailure, OfUpdateXmlLeavesNoElementWithoutAPlaceInTheTree) {
  struct Scene : FilledManager {
    Scene() : tree(makeTree({"SMOD"})) {}
    std::unique_ptr<KvXmlTree> tree;
  };

  failEachCall<Scene>([](Scene& scene) { scene.manager.updateXml(scene.tree.get()); },
                      [](const Scene& scene) {
                        EXPECT_EQ(Recording::countLive("KvXmlData"),
                                  static_cast<int>(Recording::describe(*scene.tree).size()));
                        return std::string();
                      });
}

TEST_F(RecordedFailure, OfWriteXmlFreesTheTreeAndPrintsNothing) {
  struct Scene : FilledManager {
    TemporaryPath path;
    std::ofstream out{path.get()};
  };

  const FailureRun run =
      failEachCall<Scene>([](Scene& scene) { scene.manager.writeXml(scene.out); },
                          [](Scene& scene) {
                            EXPECT_EQ(Recording::countLive("KvXmlTree"), 0);
                            EXPECT_EQ(Recording::countLive("KvXmlData"), 0);
                            scene.out.close();
                            return describe(scene.manager) + "\n" + load(scene.path.get());
                          });

  EXPECT_EQ(run.states, (Lines{"1 Old; current Old\n"}));
  EXPECT_EQ(run.calls, (Lines{"KvXmlTree"}));
  EXPECT_EQ(run.completed,
            "1 Old; current Old\n"
            "SMOD\n FOUNDATIONS CURRENT=Old\n"
            "  FOUND NUMBER=1 NAME=Old FXAREA=1 FYAREA=2 FZAREA=3 FAILXLINE=-1 FACAREA=0 "
            "FACLINE=0 IsGenerated=0\n");
}

}  // namespace
}  // namespace LegacyTest
