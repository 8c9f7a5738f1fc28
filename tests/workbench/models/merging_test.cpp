#include "models/merging.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "models/rendering.h"
#include "workbench/models/model.h"

namespace {

using Comparing::OnClash;
using Models::Merged;
using Texts = std::vector<std::string>;

const std::string table = "number,name,areaZ\n1,A,1\n2,B,2\n";

Merged merge(Models::Snapshot& target, const std::string& source, OnClash rule = OnClash::refuse) {
  std::vector<std::unique_ptr<Models::Snapshot>> sources;
  sources.push_back(openModel("b.csv", source));
  return Models::merge(target, sources, rule);
}

TEST(ModelMerging, TellsWhatChangesAndComes) {
  const auto target = openModel("a.csv", table);

  const Merged merged = merge(*target, "number,name,areaZ\n2,B,5\n3,C,6\n");

  ASSERT_EQ(merged.changes.size(), 1u);
  EXPECT_EQ(merged.changes[0].item, 1u);
  ASSERT_EQ(merged.changes[0].fields.size(), 1u);
  EXPECT_STREQ(merged.changes[0].fields[0].field.name, "areaZ");
  EXPECT_EQ(Fields::show(merged.changes[0].fields[0].second), "5");
  ASSERT_EQ(merged.added.size(), 1u);
  EXPECT_EQ(Fields::describe(*merged.added[0]), "number 3 \"C\"");
}

TEST(ModelMerging, LooksAtTheModelAsItStands) {
  const auto target = openModel("a.csv", table);
  removeFrom(*target, 0);
  addTo(*target, 9, "C");

  const Merged merged = merge(*target, "number,name,areaZ\n9,C,6\n1,A,3\n");

  ASSERT_EQ(merged.changes.size(), 1u);
  EXPECT_EQ(merged.changes[0].item, 1u);
  ASSERT_EQ(merged.added.size(), 1u);
}

TEST(ModelMerging, TellsClashesAndWhatARuleLeavesOut) {
  const auto target = openModel("a.csv", table);
  const std::string clashing = "number,name,areaZ\n1,C,5\n";

  const Merged refused = merge(*target, clashing);
  ASSERT_EQ(refused.clashes.size(), 1u);
  EXPECT_EQ(Models::makeLine(refused.clashes[0]),
            "b.csv:2:1: number 1 \"C\" clashes with number 1 \"A\" in a.csv:2:1");
  EXPECT_EQ(merge(*target, clashing, OnClash::skip).leftOut.size(), 1u);
}

TEST(ModelMerging, TellsWhatIsLost) {
  const auto target = openModel("a.csv", table);

  const Merged merged = merge(*target, "number,name,areaX\n3,C,5\n");

  EXPECT_EQ(merged.losses, Texts{"number 3 \"C\": areaX 5 is lost"});
}

TEST(ModelMerging, TellsWhereUnitsAreNotKnown) {
  const auto target = openModel("a.csv", table);

  const Merged merged = merge(*target, "#units,kN,m\nnumber,name,areaZ\n3,C,5\n");

  ASSERT_EQ(merged.unitNotes.size(), 1u);
  EXPECT_EQ(merged.unitNotes[0].substr(0, 7), "b.csv: ");
}

TEST(ModelMerging, TellsRotationsThatDoNotCome) {
  const auto target = openModel("a.csv", table);
  std::vector<std::unique_ptr<Models::Snapshot>> sources;
  sources.push_back(openModel("b.csv", "number,name,areaZ\n3,C,5\n"));
  const KvVector3D rotation(0.0, 2.0, 0.0);
  sources[0]->items[0].copy->setRotLine(&rotation);

  const Merged merged = Models::merge(*target, sources, OnClash::refuse);

  ASSERT_FALSE(merged.losses.empty());
  EXPECT_EQ(merged.losses[0], "number 3 \"C\": lineRotationY 2 is lost");
}

TEST(ModelMerging, NeedsADocumentThatHoldsTheModel) {
  const auto target = openModel("a.csv", table);
  target->items[0].copy->setGenerated(true);

  EXPECT_THROW(merge(*target, table), Models::LossFound);
}

TEST(RefusalLine, TellsThePlaceAsFarAsItIsKnown) {
  EXPECT_EQ(Models::makeLine({"a", {}, "number 1 \"A\"", "clashes"}), "a: number 1 \"A\" clashes");
  EXPECT_EQ(Models::makeLine({"a", {3, 0}, "number 1 \"A\"", "clashes"}),
            "a:3: number 1 \"A\" clashes");
}

}  // namespace
