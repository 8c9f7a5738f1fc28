#include "comparing/merging.h"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Comparing::Merger;
using Comparing::OnClash;
using Documents::Document;
using Found::Foundation;
using Texts = std::vector<std::string>;

std::string makeModel(const std::string& foundations) {
  return "<?xml?>\n<SMOD><FOUNDATIONS>" + foundations + "</FOUNDATIONS></SMOD>";
}

std::string makeExchange(const std::string& beddings) {
  return "<Beddings>" + beddings + "</Beddings>";
}

const std::string surfaceA = "<SurfaceBedding Number='1' Name='A' StiffnessZ='2'/>";

/// A line each, as messages tell them.
Texts show(const std::vector<Comparing::Refusal>& refusals) {
  Texts lines;
  for (const auto& [file, position, foundation, sentence] : refusals)
    lines.push_back(file + ":" + std::to_string(position.line) + ":" +
                    std::to_string(position.column) + ": " + foundation + " " + sentence);
  return lines;
}

struct Merged {
  Texts foundations;  // number, name, area stiffness z
  Texts clashes;
  Texts losses;
};

Merged merge(const std::string& source, const std::string& target, OnClash rule = OnClash::refuse) {
  Document into({"into", "", target});
  Document in({"in", "", source});
  Editing::Draft draft(into);
  Merger merger(into, draft, rule);
  merger.merge(in);
  Merged merged;
  for (Foundation* foundation : draft.getFoundations().getFoundations())
    merged.foundations.push_back(Fields::describe(*foundation) + " " +
                                 Fields::show(Fields::find("areaZ")->get(*foundation)));
  merged.clashes = show(merger.getClashes());
  for (const Losses::Loss& loss : merger.getLosses())
    merged.losses.push_back(loss.foundation + ": " + loss.sentence);
  return merged;
}

TEST(Merging, ChangesThoseOfTheSameNumberAndName) {
  EXPECT_EQ(merge(makeExchange(surfaceA), makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='1'/>"))
                .foundations,
            Texts{"number 1 \"A\" 2"});
}

TEST(Merging, FindsThePairAmongSeveralOfTheSameNumberOrName) {
  EXPECT_EQ(merge(makeExchange(surfaceA),
                  makeModel("<FOUND NUMBER='1' NAME='B'/><FOUND NUMBER='2' NAME='A'/>"
                            "<FOUND NUMBER='1' NAME='A'/>"))
                .foundations,
            (Texts{"number 1 \"B\" 0", "number 2 \"A\" 0", "number 1 \"A\" 2"}));
}

TEST(Merging, KeepsThePartThatDoesNotCome) {
  EXPECT_EQ(merge(makeExchange("<CurveBedding Number='1' Name='A' StiffnessZ='2'/>"),
                  makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='1'/>"))
                .foundations,
            Texts{"number 1 \"A\" 1"});
}

TEST(Merging, KeepsAVectorWhereOnlyItsFactorComes) {
  EXPECT_EQ(merge(makeModel("<FOUND NUMBER='1' NAME='A' FACLINE='2'/>"),
                  makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='1' FZLINE='3'/>"))
                .foundations,
            Texts{"number 1 \"A\" 1"});
}

TEST(Merging, TellsWhatTheTargetHasNoPlaceFor) {
  const Merged changed =
      merge(makeModel("<FOUND NUMBER='1' NAME='A' IsGenerated='1'/>"), makeExchange(surfaceA));
  const Merged added = merge(makeModel("<FOUND NUMBER='2' NAME='B' IsGenerated='1' FZAREA='3'/>"),
                             makeExchange(surfaceA));

  EXPECT_EQ(changed.losses, Texts{"number 1 \"A\": generated yes becomes no"});
  EXPECT_EQ(added.losses, Texts{"number 2 \"B\": generated yes becomes no"});
  EXPECT_EQ(added.foundations, (Texts{"number 1 \"A\" 2", "number 2 \"B\" 3"}));
}

TEST(Merging, GoesByNamesWhereOneSideHasNoNumbers) {
  const std::string first = "<Bedding Name='B' SurfaceStiffnessZ='2'/>";
  EXPECT_EQ(merge(makeExchange(first), makeModel("<FOUND NUMBER='7' NAME='B'/>")).foundations,
            Texts{"number 7 \"B\" 2"});
  EXPECT_EQ(merge(makeExchange(first), makeModel("<FOUND NUMBER='7' NAME='A'/>")).foundations,
            (Texts{"number 7 \"A\" 0", "number 8 \"B\" 2"}));
  EXPECT_EQ(merge(makeExchange(surfaceA), makeExchange(first)).foundations,
            (Texts{"number 1 \"B\" 2", "number 2 \"A\" 2"}));
}

TEST(MergingClash, IsToldWithThePlacesOfBoth) {
  EXPECT_EQ(merge(makeExchange(surfaceA),
                  makeModel("<FOUND NUMBER='1' NAME='B'/><FOUND NUMBER='2' NAME='A'/>"))
                .clashes,
            (Texts{"in:1:11: number 1 \"A\" clashes with number 1 \"B\" in into:2:20",
                   "in:1:11: number 1 \"A\" clashes with number 2 \"A\" in into:2:48"}));
}

TEST(MergingClash, EndsAsTheRuleSays) {
  const std::string number = makeModel("<FOUND NUMBER='1' NAME='B'/>");
  const std::string name = makeModel("<FOUND NUMBER='2' NAME='A'/><FOUND NUMBER='4' NAME='A_1'/>");
  const std::string both = makeModel("<FOUND NUMBER='1' NAME='B'/><FOUND NUMBER='2' NAME='A'/>");
  const struct {
    OnClash rule;
    const std::string& target;
    Texts foundations;
    std::size_t clashes;
  } rows[] = {
      {OnClash::rename, name, {"number 2 \"A\" 0", "number 4 \"A_1\" 0", "number 1 \"A_2\" 2"}, 0},
      {OnClash::rename, number, {"number 1 \"B\" 0"}, 1},
      {OnClash::renumber, number, {"number 1 \"B\" 0", "number 2 \"A\" 2"}, 0},
      {OnClash::renumber, name, {"number 2 \"A\" 0", "number 4 \"A_1\" 0"}, 1},
      {OnClash::skip, both, {"number 1 \"B\" 0", "number 2 \"A\" 0"}, 0},
      {OnClash::replace, number, {"number 1 \"A\" 2"}, 0},
      {OnClash::replace, name, {"number 1 \"A\" 2", "number 4 \"A_1\" 0"}, 0},
      {OnClash::replace, both, {"number 1 \"B\" 0", "number 2 \"A\" 0"}, 2},
      {OnClash::refuse, number, {"number 1 \"B\" 0"}, 1},
      {OnClash::refuse, name, {"number 2 \"A\" 0", "number 4 \"A_1\" 0"}, 1},
  };
  for (const auto& row : rows) {
    const Merged merged = merge(makeExchange(surfaceA), row.target, row.rule);
    EXPECT_EQ(merged.foundations, row.foundations);
    EXPECT_EQ(merged.clashes.size(), row.clashes);
  }
}

TEST(MergingNumber, IsFreeBelowTheHighestThatThereCanBe) {
  const std::string most = std::to_string(std::numeric_limits<int>::max());
  EXPECT_EQ(merge(makeExchange("<Bedding Name='B'/>"),
                  makeModel("<FOUND NUMBER='" + most + "' NAME='A'/>"))
                .foundations,
            (Texts{"number " + most + " \"A\" 0", "number 2147483646 \"B\" 0"}));
}

TEST(MergingNumber, IsOneWhereThereAreNone) {
  EXPECT_EQ(merge(makeExchange("<Bedding Name='B'/>"), makeModel("")).foundations,
            Texts{"number 1 \"B\" 0"});
}

TEST(Merging, TakesZerosOverThatComeWithTheirPart) {
  EXPECT_EQ(merge(makeExchange("<SurfaceBedding Number='1' Name='A'/>"),
                  makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='1'/>"))
                .foundations,
            Texts{"number 1 \"A\" 0"});
  EXPECT_EQ(merge(makeExchange("<Bedding Name='A' SurfaceStiffnessZ='0'/>"),
                  makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='1'/>"))
                .foundations,
            Texts{"number 1 \"A\" 0"});
}

TEST(Merging, TakesARotationOfZeroOver) {
  Document into({"into", "", makeModel("<FOUND NUMBER='1' NAME='A' FZLINE='1' FXX='5'/>")});
  Document in({"in", "", makeModel("<FOUND NUMBER='1' NAME='A' FZLINE='1' FXX='0'/>")});
  Editing::Draft draft(into);
  Merger(into, draft, OnClash::refuse).merge(in);

  EXPECT_EQ(Fields::show(Fields::find("lineRotationX")->get(draft.getCopy(0))), "-");
}

TEST(MergingClash, IsThatOfAFoundationGivenTwice) {
  EXPECT_EQ(merge(makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='1'/>"
                            "<FOUND NUMBER='1' NAME='A' FZAREA='2'/>"),
                  makeExchange(surfaceA))
                .clashes,
            Texts{"in:2:59: number 1 \"A\" clashes with number 1 \"A\" in into:1:11"});
}

TEST(MergingClash, TellsWhatIsLeftOut) {
  Document into({"into", "", makeModel("<FOUND NUMBER='1' NAME='B'/>")});
  Document in({"in", "", makeExchange(surfaceA)});
  Editing::Draft draft(into);
  Merger merger(into, draft, OnClash::skip);
  merger.merge(in);

  EXPECT_EQ(show(merger.getLeftOut()), Texts{"in:1:11: number 1 \"A\" is left out"});
}

// --- Tables and data

/// The foundations of a model with these after a table is merged into it, each with the fields that
/// are asked for; or the clashes.
Texts mergeTable(const std::string& table, const std::string& foundations,
                 const std::vector<const char*>& fields) {
  Document into({"into", "", makeModel(foundations)});
  Documents::ReadOptions options;
  options.form = Documents::Form::csv;
  Document in({"in", "", table}, options);
  Editing::Draft draft(into);
  Merger merger(into, draft, OnClash::refuse);
  merger.merge(in);
  Texts merged;
  for (Foundation* foundation : draft.getFoundations().getFoundations()) {
    std::string text = Fields::describe(*foundation);
    for (const char* field : fields)
      text += " " + Fields::show(Fields::find(field)->get(*foundation));
    merged.push_back(text);
  }
  return merger.getClashes().empty() ? merged : show(merger.getClashes());
}

const std::string twoFoundations =
    "<FOUND NUMBER='1' NAME='A' FXAREA='1' FZAREA='2' FZLINE='3' FACAREA='4'/>"
    "<FOUND NUMBER='2' NAME='B' FXAREA='5' FZAREA='6'/>";

TEST(MergingTables, ChangesOnlyFieldsThatHaveAColumn) {
  EXPECT_EQ(mergeTable("number,name,areaZ,areaX\n2,B,7,8\n", twoFoundations,
                       {"areaX", "areaZ", "lineZ", "areaFactor"}),
            (Texts{"number 1 \"A\" 1 2 3 4", "number 2 \"B\" 8 7 - 0"}));
  EXPECT_EQ(mergeTable("number,name,areaFactor,areaFailureZ\n1,A,0.5,tension\n", twoFoundations,
                       {"areaX", "areaZ", "areaFailureZ", "areaFactor"}),
            (Texts{"number 1 \"A\" 1 2 tension 0.5", "number 2 \"B\" 5 6 none 0"}));
}

TEST(MergingTables, GoesByNumbersWhereThereAreNoNames) {
  EXPECT_EQ(mergeTable("number,areaX\n2,7\n3,8\n", twoFoundations, {"areaX"}),
            (Texts{"number 1 \"A\" 1", "number 2 \"B\" 7", "number 3 \"Found0003\" 8"}));
}

TEST(MergingTables, GoesByNamesWhereThereAreNoNumbers) {
  EXPECT_EQ(mergeTable("name,areaX\nB,7\nC,8\n", twoFoundations, {"areaX"}),
            (Texts{"number 1 \"A\" 1", "number 2 \"B\" 7", "number 3 \"C\" 8"}));
}

TEST(MergingTables, AddsAllWhereThereAreNeitherNumbersNorNames) {
  EXPECT_EQ(mergeTable("areaX\n7\n", "<FOUND NUMBER='1' NAME='Found0001'/>", {"areaX"}),
            (Texts{"number 1 \"Found0001\" 0", "number 2 \"Found0001_1\" 7"}));
}

TEST(MergingTables, TakesZerosOver) {
  EXPECT_EQ(mergeTable("number,areaX,lineZ\n1,0,0\n", twoFoundations, {"areaX", "areaZ", "lineZ"}),
            (Texts{"number 1 \"A\" 0 2 0", "number 2 \"B\" 5 6 -"}));
  EXPECT_EQ(mergeTable("number,areaFactor\n1,0\n", twoFoundations, {"areaFactor"}),
            (Texts{"number 1 \"A\" 0", "number 2 \"B\" 0"}));
}

TEST(MergingTables, LeavesStiffnessAloneWhoseCellsAreEmpty) {
  EXPECT_EQ(mergeTable("number,areaX,areaZ,areaFactor\n1,,,0.5\n", twoFoundations,
                       {"areaX", "areaZ", "areaFactor"}),
            (Texts{"number 1 \"A\" 1 2 0.5", "number 2 \"B\" 5 6 0"}));
}

TEST(MergingTables, LeavesOtherFieldsAloneWhoseCellsAreEmpty) {
  EXPECT_EQ(mergeTable("number,areaFailureZ,generated,areaFactor\n1,,,\n",
                       "<FOUND NUMBER='1' NAME='A' FAILZAREA='-1' IsGenerated='1' FACAREA='2'/>",
                       {"areaFailureZ", "generated", "areaFactor"}),
            Texts{"number 1 \"A\" tension yes 2"});
}

TEST(MergingTables, LeavesAComponentAloneWhoseCellIsEmpty) {
  EXPECT_EQ(mergeTable("number,areaX,areaZ\n1,7,\n", twoFoundations, {"areaX", "areaZ"}),
            (Texts{"number 1 \"A\" 7 2", "number 2 \"B\" 5 6"}));
}

TEST(MergingTables, LeavesAPartAloneOfWhichThereIsNoStiffness) {
  EXPECT_EQ(mergeTable("number,areaX,areaZ,areaFactor,lineX\n1,,,0,7\n", twoFoundations,
                       {"areaX", "areaFactor", "lineX"}),
            (Texts{"number 1 \"A\" 1 4 7", "number 2 \"B\" 5 0 -"}));
}

TEST(MergingTables, TellsTheRowThatClashes) {
  EXPECT_EQ(mergeTable("number,name\n\n1,B\n", twoFoundations, {}),
            (Texts{"in:3:1: number 1 \"B\" clashes with number 1 \"A\" in into:2:20",
                   "in:3:1: number 1 \"B\" clashes with number 2 \"B\" in into:2:93"}));
  EXPECT_EQ(mergeTable("number,areaX\n1,7\n1,8\n", twoFoundations, {}),
            Texts{"in:3:1: number 1 \"Found0001\" clashes with number 1 \"A\" in into:2:20"});
}

TEST(MergingTables, GoesByTheMembersOfEachObject) {
  EXPECT_EQ(mergeTable("{\"foundations\": [{\"number\": 1, \"areaX\": 7}, {\"name\": \"B\", "
                       "\"areaZ\": 8}]}",
                       twoFoundations, {"areaX", "areaZ"}),
            (Texts{"number 1 \"A\" 7 2", "number 2 \"B\" 5 8"}));
}

TEST(MergingTables, CanBeTheTarget) {
  Documents::ReadOptions options;
  options.form = Documents::Form::csv;
  Document into({"into", "", "number,name,areaZ\n1,A,1\n3,C,\n"}, options);
  Document in({"in", "", makeExchange(surfaceA + "<SurfaceBedding Number='3' Name='B'/>")});
  Editing::Draft draft(into);
  Merger merger(into, draft, OnClash::refuse);
  merger.merge(in);

  EXPECT_EQ(Fields::show(Fields::find("areaZ")->get(draft.getCopy(0))), "2");
  EXPECT_EQ(show(merger.getClashes()),
            Texts{"in:1:63: number 3 \"B\" clashes with number 3 \"C\" in into:3:1"});
}

/// What comes over into a table, and what is lost.
Texts mergeIntoTable(const std::string& table) {
  Documents::ReadOptions options;
  options.form = Documents::Form::csv;
  Document into({"into", "", table}, options);
  Document in({"in", "", makeModel("<FOUND NUMBER='1' NAME='A' FXAREA='7' FZAREA='8'/>")});
  Editing::Draft draft(into);
  Merger merger(into, draft, OnClash::refuse);
  merger.merge(in);
  Texts merged;
  for (Foundation* foundation : draft.getFoundations().getFoundations())
    merged.push_back(Fields::describe(*foundation) + " " +
                     Fields::show(Fields::find("areaX")->get(*foundation)));
  for (const Losses::Loss& loss : merger.getLosses()) merged.push_back(loss.sentence);
  return merged;
}

TEST(MergingTables, TakesWhatTheColumnsOfTheTargetHold) {
  EXPECT_EQ(mergeIntoTable("number,name,areaX\n1,A,1\n"),
            (Texts{"number 1 \"A\" 7", "areaZ 8 becomes 0"}));
}

TEST(MergingTables, GoesByWhatTheTargetHasColumnsFor) {
  EXPECT_EQ(mergeIntoTable("number,areaX,areaZ\n1,1,1\n"), Texts{"number 1 \"Found0001\" 7"});
  EXPECT_EQ(mergeIntoTable("name,areaX,areaZ\nB,1,1\nA,1,1\n"),
            (Texts{"number 1 \"B\" 1", "number 2 \"A\" 7"}));
  EXPECT_EQ(mergeIntoTable("number,areaX,areaZ\n2,1,1\n"),
            (Texts{"number 2 \"Found0002\" 1", "number 1 \"Found0001\" 7"}));
}

}  // namespace
