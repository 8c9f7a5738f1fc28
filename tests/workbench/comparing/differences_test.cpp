#include "comparing/differences.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Comparing::Differences;
using Documents::Document;

Files::Content makeModel(const std::string& foundations, const std::string& current = "") {
  return {"file", "",
          "<?xml?>\n<SMOD><FOUNDATIONS CURRENT='" + current + "'>" + foundations +
              "</FOUNDATIONS></SMOD>"};
}

/// Foundations that differ, with the fields that do.
std::vector<std::string> compare(const std::string& first, const std::string& second) {
  Document before(makeModel(first));
  Document after(makeModel(second));
  std::vector<std::string> texts;
  for (const Comparing::Difference& difference : Comparing::compare(before, after).foundations) {
    const auto [a, b] = difference.pair;
    std::string text = a == nullptr   ? "+" + b->getName()
                       : b == nullptr ? "-" + a->getName()
                                      : a->getName();
    for (const Fields::Difference& field : difference.fields)
      text += std::string(" ") + field.field.name;
    texts.push_back(text);
  }
  return texts;
}

TEST(Differences, AreNoneBetweenTheSame) {
  EXPECT_EQ(compare("<FOUND NAME='A' FZAREA='1'/>", "<FOUND NAME='A' FZAREA='1.0'/>"),
            std::vector<std::string>{});
}

TEST(Differences, AreWhatWasAddedTakenAwayAndChanged) {
  EXPECT_EQ(compare("<FOUND NUMBER='1' NAME='A' FZAREA='1'/><FOUND NUMBER='2' NAME='B'/>",
                    "<FOUND NUMBER='1' NAME='A' FZAREA='2' IsGenerated='1'/>"
                    "<FOUND NUMBER='3' NAME='C'/>"),
            (std::vector<std::string>{"A generated areaZ", "-B", "+C"}));
}

TEST(Differences, FollowNamesAndThenNumbers) {
  EXPECT_EQ(compare("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B'/>",
                    "<FOUND NUMBER='1' NAME='B'/><FOUND NUMBER='3' NAME='B'/>"),
            (std::vector<std::string>{"-A", "B number", "+B"}));
}

TEST(Differences, AreInTheCurrentFoundationToo) {
  const std::string both = "<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B'/>";
  const struct {
    const char* first;
    const char* second;
    bool isSame;
  } rows[] = {
      {"", "", true}, {"A", "A", true}, {"A", "B", false}, {"A", "", false}, {"", "B", false}};
  for (const auto& row : rows) {
    Document before(makeModel(both, row.first));
    Document after(makeModel(both, row.second));
    const Differences differences = Comparing::compare(before, after);
    EXPECT_EQ(differences.isCurrentSame, row.isSame) << row.first << row.second;
    EXPECT_EQ(differences.isEmpty(), row.isSame);
  }
}

TEST(Differences, AreInTheCurrentFoundationWhenItIsGone) {
  Document before(makeModel("<FOUND NAME='A'/>", "A"));
  Document after(makeModel(""));

  EXPECT_FALSE(Comparing::compare(before, after).isCurrentSame);
}

TEST(Differences, AreThereWhenOnlyTheCurrentFoundationDiffers) {
  Document before(makeModel("<FOUND NAME='A'/>", "A"));
  Document after(makeModel("<FOUND NAME='A'/>"));
  Document again(makeModel("<FOUND NAME='A'/>", "A"));
  Document other(makeModel("<FOUND NAME='A' FZAREA='1'/>", "A"));

  EXPECT_FALSE(Comparing::compare(before, other).isEmpty());
  EXPECT_FALSE(Comparing::compare(before, after).isEmpty());
  EXPECT_TRUE(Comparing::compare(before, again).isEmpty());
}

TEST(Differences, LeaveOutNumbersThatAreCloseEnough) {
  Document first({"a", "", "<B><Bedding Name='A' SurfaceStiffnessZ='100'/></B>"});
  Document second({"b", "", "<B><Bedding Name='A' SurfaceStiffnessZ='101'/></B>"});
  Document other(
      {"c", "",
       "<B><Bedding Name='A' SurfaceStiffnessZ='100' SurfaceStiffnessZFailure='tension'/></B>"});
  const auto isEmpty = [&first](Document& compared, double relative) {
    Comparing::Options options;
    options.relative = relative;
    return Comparing::compare(first, compared, options).isEmpty();
  };

  EXPECT_TRUE(isEmpty(second, 0.01));
  EXPECT_FALSE(isEmpty(second, 0.009));
  EXPECT_FALSE(isEmpty(other, 1.0));
}

}  // namespace
