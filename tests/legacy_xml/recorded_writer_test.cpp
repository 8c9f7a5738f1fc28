#include <algorithm>
#include <fstream>

#include "recorded_legacy.h"

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {
namespace {

// What only looks, as often as the writer likes.
const Lines looking = {"getCurrent", "getChildren", "getName",   "findAttribute",
                       "getInteger", "checkValue",  "KvVector3D"};

class RecordedWriter : public RecordedTest {
 protected:
  Foundation& addFull(int number, const std::string& name) {
    const KvVector3D area(1.0, 2.0, 3.0);
    const KvVector3D line(4.0, 5.0, 6.0);
    const KvVector3D rotation(7.0, 8.0, 9.0);
    Foundation& foundation = addFoundation(manager, number, name);
    foundation.setDispArea(&area);
    foundation.setDispLine(&line);
    foundation.setRotLine(&rotation);
    foundation.setFailAreaZ(Foundation::Tension);
    foundation.setFailLineX(Foundation::Compression);
    foundation.setFailLineY(Foundation::Tension);
    foundation.setFailLineZ(Foundation::Compression);
    foundation.setFactorArea(0.25);
    foundation.setFactorLine(0.5);
    foundation.setGenerated(true);
    Recording::clearLog();
    return foundation;
  }

  FoundationManager manager;
};

TEST_F(RecordedWriter, WritesAllAttributesInTheirOrderAndForms) {
  const std::unique_ptr<KvXmlTree> tree = makeTree({"SMOD"});
  manager.setCurrentFoundation(&addFull(3, "A"));

  manager.updateXml(tree.get());

  EXPECT_EQ(listCallsWithout(looking), (Lines{"open FOUNDATIONS false",
                                              "flush",
                                              "setAttribute FOUNDATIONS CURRENT text A true",
                                              "KvXmlData FOUND FOUNDATIONS",
                                              "addChild FOUNDATIONS FOUND",
                                              "setAttribute FOUND NUMBER int 3 true",
                                              "setCurrent FOUND",
                                              "setAttribute FOUND NAME text A true",
                                              "setAttribute FXAREA double 1",
                                              "setAttribute FYAREA double 2",
                                              "setAttribute FZAREA double 3",
                                              "setAttribute FXLINE double 4",
                                              "setAttribute FYLINE double 5",
                                              "setAttribute FZLINE double 6",
                                              "setAttribute FXX double 7",
                                              "setAttribute FOUND FAILZAREA int -1 true",
                                              "setAttribute FOUND FAILXLINE int 1 true",
                                              "setAttribute FOUND FAILYLINE int -1 true",
                                              "setAttribute FOUND FAILZLINE int 1 true",
                                              "setAttribute FACAREA double 0.25",
                                              "setAttribute FACLINE double 0.5",
                                              "setAttribute FOUND IsGenerated int 1 true",
                                              "close",
                                              "close"}));
}

TEST_F(RecordedWriter, WritesOnlyWhatIsAlwaysWrittenForAFoundationWithoutValues) {
  const std::unique_ptr<KvXmlTree> tree = makeTree({"SMOD"});
  addFoundation(manager, 1, "");

  manager.updateXml(tree.get());

  EXPECT_EQ(listCallsWithout(looking),
            (Lines{"open FOUNDATIONS false", "flush", "KvXmlData FOUND FOUNDATIONS",
                   "addChild FOUNDATIONS FOUND", "setAttribute FOUND NUMBER int 1 true",
                   "setCurrent FOUND", "setAttribute FOUND NAME text  true",
                   "setAttribute FACAREA double 0", "setAttribute FACLINE double 0",
                   "setAttribute FOUND IsGenerated int 0 true", "close", "close"}));
}

TEST_F(RecordedWriter, DoesNotWriteTheNumberOfAnElementThatItFinds) {
  const std::unique_ptr<KvXmlTree> tree =
      makeTree({"SMOD", " FOUNDATIONS", "  FOUND NUMBER=8", "  FOUND NUMBER=3"});
  addFoundation(manager, 3, "A");

  manager.updateXml(tree.get());

  EXPECT_EQ(listCallsWithout(looking),
            (Lines{"open FOUNDATIONS false", "flush", "setCurrent FOUND",
                   "setAttribute FOUND NAME text A true", "setAttribute FACAREA double 0",
                   "setAttribute FACLINE double 0", "setAttribute FOUND IsGenerated int 0 true",
                   "close", "close"}));
  EXPECT_EQ(Recording::describe(*tree),
            (Lines{"SMOD", " FOUNDATIONS", "  FOUND NUMBER=8",
                   "  FOUND NUMBER=3 NAME=A FACAREA=0 FACLINE=0 IsGenerated=0"}));
}

TEST_F(RecordedWriter, TakesTheFirstElementInChildOrderThatHasTheNumber) {
  const std::unique_ptr<KvXmlTree> tree =
      makeTree({"SMOD", " FOUNDATIONS", "  OTHER NUMBER=3", "  FOUND", "  FOUND NUMBER=4",
                "  FOUND NUMBER=3", "  FOUND NUMBER=3"});
  addFoundation(manager, 3, "A");

  manager.updateXml(tree.get());

  EXPECT_EQ(
      Recording::describe(*tree),
      (Lines{"SMOD", " FOUNDATIONS", "  OTHER NUMBER=3", "  FOUND", "  FOUND NUMBER=4",
             "  FOUND NUMBER=3 NAME=A FACAREA=0 FACLINE=0 IsGenerated=0", "  FOUND NUMBER=3"}));
}

TEST_F(RecordedWriter, LetsTheLibraryCompareTheNumber) {
  const std::unique_ptr<KvXmlTree> tree =
      makeTree({"SMOD", " FOUNDATIONS", "  OTHER NUMBER=3", "  FOUND NUMBER=3"});
  addFoundation(manager, 3, "A");

  manager.updateXml(tree.get());

  const Lines& log = Recording::getLog();
  EXPECT_EQ(std::count(log.begin(), log.end(), "findAttribute OTHER NUMBER"), 0);
  EXPECT_EQ(std::count(log.begin(), log.end(), "findAttribute FOUND NUMBER"), 1);
  EXPECT_EQ(std::count(log.begin(), log.end(), "checkValue NUMBER 3"), 1);
}

TEST_F(RecordedWriter, FlushesOnceRightAfterOpening) {
  const std::unique_ptr<KvXmlTree> tree = makeTree({"SMOD"});
  addFoundation(manager, 1, "A");
  addFoundation(manager, 2, "B");

  manager.updateXml(tree.get());

  const Lines& log = Recording::getLog();
  EXPECT_EQ(log[0], "open FOUNDATIONS false");
  EXPECT_EQ(log[1], "flush");
  EXPECT_EQ(std::count(log.begin(), log.end(), "flush"), 1);
}

TEST_F(RecordedWriter, WritesNoCurrentFoundationWhenThereIsNone) {
  const std::unique_ptr<KvXmlTree> tree = makeTree({"SMOD", " FOUNDATIONS CURRENT=Old"});

  manager.updateXml(tree.get());

  EXPECT_EQ(listCallsWithout(looking), (Lines{"open FOUNDATIONS false", "flush", "close"}));
  EXPECT_EQ(Recording::describe(*tree), (Lines{"SMOD", " FOUNDATIONS CURRENT=Old"}));
}

TEST_F(RecordedWriter, ReturnsToTheElementThatWasCurrent) {
  const std::unique_ptr<KvXmlTree> tree = makeTree({"SMOD"});
  addFoundation(manager, 1, "A");
  addFoundation(manager, 2, "B");

  manager.updateXml(tree.get());

  EXPECT_EQ(Recording::describeCursor(*tree), "SMOD");
}

TEST_F(RecordedWriter, SetsOnlyDoublesWhenTheCursorIsEmpty) {
  const std::unique_ptr<KvXmlTree> tree = makeTree({"SMOD"});
  manager.setCurrentFoundation(&addFull(3, "A"));
  const Recording::OpenRefusal refusal("FOUNDATIONS");

  manager.updateXml(tree.get());

  EXPECT_EQ(listCallsWithout({"getCurrent", "KvVector3D"}),
            (Lines{"open FOUNDATIONS false", "flush", "setAttribute FXAREA double 1",
                   "setAttribute FYAREA double 2", "setAttribute FZAREA double 3",
                   "setAttribute FXLINE double 4", "setAttribute FYLINE double 5",
                   "setAttribute FZLINE double 6", "setAttribute FXX double 7",
                   "setAttribute FACAREA double 0.25", "setAttribute FACLINE double 0.5", "close",
                   "close"}));
}

TEST_F(RecordedWriter, LeavesTheTreeAloneWhenTheCursorIsEmpty) {
  const Lines lines = {"SMOD", " OTHER", " FOUNDATIONS", "  FOUND NUMBER=3"};
  const std::unique_ptr<KvXmlTree> tree = makeTree(lines);
  manager.setCurrentFoundation(&addFull(3, "A"));
  addFull(4, "B");
  const Recording::OpenRefusal refusal("FOUNDATIONS");

  manager.updateXml(tree.get());

  EXPECT_EQ(Recording::describe(*tree), lines);
  EXPECT_EQ(Recording::describeCursor(*tree), "none");
  EXPECT_EQ(Recording::countLive("KvXmlData"), 4);
}

TEST_F(RecordedWriter, KeepsTheOrderOfTheList) {
  const std::unique_ptr<KvXmlTree> tree = makeTree({"SMOD"});
  addFoundation(manager, 9, "A");
  addFoundation(manager, 2, "B");
  addFoundation(manager, 5, "C");

  manager.updateXml(tree.get());

  EXPECT_EQ(
      Recording::describe(*tree),
      (Lines{"SMOD", " FOUNDATIONS", "  FOUND NUMBER=9 NAME=A FACAREA=0 FACLINE=0 IsGenerated=0",
             "  FOUND NUMBER=2 NAME=B FACAREA=0 FACLINE=0 IsGenerated=0",
             "  FOUND NUMBER=5 NAME=C FACAREA=0 FACLINE=0 IsGenerated=0"}));
}

TEST_F(RecordedWriter, BuildsADocumentAroundTheUpdate) {
  const TemporaryPath path;
  std::ofstream out(path.get());

  manager.writeXml(out);

  EXPECT_EQ(listCallsWithout(looking),
            (Lines{"KvXmlTree", "open SMOD false", "findRoot SMOD true", "open FOUNDATIONS false",
                   "flush", "close", "close", "putToStream", "~KvXmlTree"}));
  EXPECT_EQ(Recording::countLive(), 0);
}

TEST_F(RecordedWriter, PrintsTheDocumentIntoTheHostsStream) {
  const TemporaryPath path;
  addFoundation(manager, 2, "B");

  write(manager, path.get());

  EXPECT_EQ(load(path.get()),
            "SMOD\n FOUNDATIONS\n  FOUND NUMBER=2 NAME=B FACAREA=0 FACLINE=0 IsGenerated=0\n");
}

TEST_F(RecordedWriter, NeitherOpensNorClosesNorFlushesTheStream) {
  const TemporaryPath path;
  std::ofstream out(path.get());

  manager.writeXml(out);

  EXPECT_TRUE(out.is_open());
  EXPECT_EQ(load(path.get()), "");
  out.close();
  EXPECT_EQ(load(path.get()), "SMOD\n FOUNDATIONS\n");
}

TEST_F(RecordedWriter, CallsNothingWithoutATree) {
  addFull(1, "A");

  manager.updateXml(nullptr);

  EXPECT_EQ(Recording::getLog(), Lines{});
}

}  // namespace
}  // namespace LegacyTest
