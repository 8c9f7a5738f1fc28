#include <algorithm>

#include "recorded_legacy.h"

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {
namespace {

// The name of an element and the arithmetic of vectors are asked for as often as the reader likes.
const Lines repeated = {"getName", "KvVector3D"};

class RecordedReader : public RecordedTest {
 protected:
  /// Reads the tree's root into the manager; the log then holds only what that called.
  void create(const Lines& lines, const Lines& without = repeated) {
    const std::unique_ptr<KvXmlTree> tree = makeTree(lines);
    KvXmlData* const root = tree->getCurrent();
    Recording::clearLog();
    manager.createFromXml(root);
    calls = listCallsWithout(without);
  }

  FoundationManager manager;
  Lines calls;
};

TEST_F(RecordedReader, AsksForTheAttributesInTheirOrder) {
  create({"SMOD", " FOUNDATIONS", "  FOUND"});

  EXPECT_EQ(calls, (Lines{"findTree SMOD FOUNDATIONS true", "getChildren FOUNDATIONS",
                          "findAttribute FOUND NUMBER", "findAttribute FOUND FXAREA",
                          "findAttribute FOUND FYAREA", "findAttribute FOUND FZAREA",
                          "findAttribute FOUND FXLINE", "findAttribute FOUND FYLINE",
                          "findAttribute FOUND FZLINE", "findAttribute FOUND FXX",
                          "findAttribute FOUND FAILZAREA", "findAttribute FOUND FAILXLINE",
                          "findAttribute FOUND FAILYLINE", "findAttribute FOUND FAILZLINE",
                          "findAttribute FOUND FACAREA", "findAttribute FOUND FACLINE",
                          "findAttribute FOUND IsGenerated", "findAttribute FOUND NAME",
                          "findAttribute FOUNDATIONS CURRENT"}));
}

TEST_F(RecordedReader, ConvertsEachAttributeOnceByItsType) {
  create({"SMOD", " FOUNDATIONS CURRENT=A",
          "  FOUND NUMBER=3 FXAREA=1 FYAREA=2 FZAREA=3 FXLINE=4 FYLINE=5 FZLINE=6 FXX=7 "
          "FAILZAREA=1 FAILXLINE=-1 FAILYLINE=1 FAILZLINE=-1 FACAREA=8 FACLINE=9 IsGenerated=1 "
          "NAME=A"},
         {"getName", "KvVector3D", "findTree", "findAttribute", "getChildren"});

  EXPECT_EQ(calls,
            (Lines{"getInteger NUMBER", "getDouble FXAREA", "getDouble FYAREA", "getDouble FZAREA",
                   "getDouble FXLINE", "getDouble FYLINE", "getDouble FZLINE", "getDouble FXX",
                   "getInteger FAILZAREA", "getInteger FAILXLINE", "getInteger FAILYLINE",
                   "getInteger FAILZLINE", "getDouble FACAREA", "getDouble FACLINE",
                   "getInteger IsGenerated", "getData NAME", "getData CURRENT"}));
  EXPECT_EQ(describe(manager), "3 A; current A");
  EXPECT_EQ(describeValues(*manager.getFoundations()[0]),
            "area (1, 2, 3), line (4, 5, 6), rotation (7, 0, 0), fails area z 1, fails line x -1, "
            "fails line y 1, fails line z -1, factor area 8, factor line 9, generated");
}

TEST_F(RecordedReader, MeasuresRotationAndLineByTheirLength) {
  create({"SMOD", " FOUNDATIONS", "  FOUND FXAREA=1 FXLINE=2 FXX=3"});

  EXPECT_EQ(std::count(Recording::getLog().begin(), Recording::getLog().end(), "KvVector3D length"),
            2);
}

TEST_F(RecordedReader, PassesOverOtherChildrenWithoutAskingForTheirAttributes) {
  create({"SMOD", " FOUNDATIONS", "  OTHER NUMBER=1 NAME=A", "  found NAME=B", "  FOUNDATION"});

  EXPECT_EQ(calls, (Lines{"findTree SMOD FOUNDATIONS true", "getChildren FOUNDATIONS",
                          "findAttribute FOUNDATIONS CURRENT"}));
  EXPECT_EQ(describe(manager), "");
}

TEST_F(RecordedReader, AsksNothingButForFoundationsWhenThereAreNone) {
  addFoundation(manager, 1, "Old");

  create({"SMOD", " OTHER"});

  EXPECT_EQ(calls, (Lines{"findTree SMOD FOUNDATIONS true"}));
  EXPECT_EQ(describe(manager), "");
}

TEST_F(RecordedReader, AsksNothingOfANullElement) {
  addFoundation(manager, 1, "Old");

  manager.createFromXml(nullptr);

  EXPECT_EQ(Recording::getLog(), Lines{});
  EXPECT_EQ(describe(manager), "");
}

TEST_F(RecordedReader, FreesTheFoundationsThatItReplaces) {
  const KvVector3D v(1.0, 2.0, 3.0);
  Foundation& old = addFoundation(manager, 1, "Old");
  old.setDispArea(&v);
  old.setDispLine(&v);
  old.setRotLine(&v);
  ASSERT_EQ(Recording::countLive("KvVector3D"), 4);

  manager.createFromXml(nullptr);

  EXPECT_EQ(Recording::countLive("KvVector3D"), 1);
}

TEST_F(RecordedReader, KeepsOneVectorForEachThatIsPresent) {
  create({"SMOD", " FOUNDATIONS", "  FOUND", "  FOUND FXLINE=1", "  FOUND FXLINE=1 FXX=1"});

  EXPECT_EQ(Recording::countLive("KvVector3D"), 6);
  EXPECT_EQ(Recording::countLive(), 6);
}

TEST_F(RecordedReader, LeavesTheHostsTreeAsItWas) {
  const Lines lines = {"SMOD A=1", " OTHER", "  FOUNDATIONS CURRENT=B", "   FOUND NAME=B"};
  const std::unique_ptr<KvXmlTree> tree = makeTree(lines);

  manager.createFromXml(tree->findRoot("SMOD", true));

  EXPECT_EQ(Recording::describe(*tree), lines);
  EXPECT_EQ(Recording::describeCursor(*tree), "SMOD");
  EXPECT_EQ(describe(manager), "1 B; current B");
}

}  // namespace
}  // namespace LegacyTest
