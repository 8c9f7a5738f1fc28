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

  /// The calls of this operation, in their order.
  static Lines listCallsStarting(const std::string& operation) {
    Lines calls;
    for (const std::string& call : Recording::getLog())
      if (call.rfind(operation, 0) == 0) calls.push_back(call);
    return calls;
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

/// What is left of a list of such numbers after an update by foundations of numbers 3 and 5, in
/// which those that it found have an "A" for 3 and a "B" for 5 behind them.
std::string updateList(const Lines& numbers) {
  Lines lines = {"SMOD", " FOUNDATIONS"};
  for (const std::string& number : numbers) lines.push_back("  FOUND NUMBER=" + number);
  const std::unique_ptr<KvXmlTree> tree = makeTree(lines);
  FoundationManager manager;
  addFoundation(manager, 3, "A");
  addFoundation(manager, 5, "B");

  manager.updateXml(tree.get());

  std::string left;
  const Lines after = Recording::describe(*tree);
  for (std::size_t i = 2; i < after.size(); ++i) {
    const std::size_t number = after[i].find('=') + 1;
    left += (i == 2 ? "" : " ") + after[i].substr(number, after[i].find(' ', number) - number);
    const std::size_t name = after[i].find("NAME=");
    if (name != std::string::npos) left += after[i][name + 5];
  }
  return left;
}

TEST_F(RecordedWriter, AsksAttributesThatAreNotTheirIntegerAboutEachNumber) {
  EXPECT_EQ(updateList({"?7?5", "?4?3"}), "?7?5B ?4?3A");
  EXPECT_EQ(updateList({"?5?3"}), "?5?3B");
  EXPECT_EQ(updateList({"?7"}), "?7 3A 5B");
}

TEST_F(RecordedWriter, KeepsTheOrderOfTheChildrenAmongThoseThatOnlyTheLibraryKnows) {
  const struct {
    Lines numbers;
    const char* left;
  } rows[] = {{{"?5", "5"}, "?5B 5 3A"},
              {{"5", "?5"}, "5B ?5 3A"},
              {{"?5", "3", "5"}, "?5B 3A 5"},
              {{"3", "?5", "5"}, "3A ?5B 5"},
              {{"3", "5", "?5"}, "3A 5B ?5"},
              {{"?5", "5", "3"}, "?5B 5 3A"},
              {{"5", "?5", "3"}, "5B ?5 3A"},
              {{"?7", "5", "?5", "3"}, "?7 5B ?5 3A"},
              {{"?7", "?5", "5", "3"}, "?7 ?5B 5 3A"},
              {{"?7?5", "?5", "3"}, "?7?5B ?5 3A"}};
  for (const auto& row : rows) EXPECT_EQ(updateList(row.numbers), row.left);
}

TEST_F(RecordedWriter, AsksNoOtherAttributeTwice) {
  const std::unique_ptr<KvXmlTree> tree = makeTree(
      {"SMOD", " FOUNDATIONS", "  FOUND NUMBER=4", "  FOUND NUMBER=?9", "  FOUND NUMBER=6"});
  for (int number = 1; number <= 3; ++number) addFoundation(manager, number, "A");

  manager.updateXml(tree.get());

  EXPECT_EQ(listCallsStarting("checkValue"),
            (Lines{"checkValue NUMBER 4", "checkValue NUMBER 0", "checkValue NUMBER 1",
                   "checkValue NUMBER 6", "checkValue NUMBER 2", "checkValue NUMBER 3"}));
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
