#include "foundations/keep_list.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "found/foundation.h"

namespace {

bool uses(KeepList& list, int number, const std::string& name) {
  Found::Foundation foundation;
  foundation.setNumber(number);
  foundation.setName(name);
  return list.usesFoundation(&foundation);
}

KeepList makeList(const std::string& text) {
  std::istringstream in(text);
  return KeepList(in);
}

TEST(KeepList, UsesWhatItNames) {
  KeepList list = makeList("A\n\n7\n");

  EXPECT_TRUE(uses(list, 1, "A"));
  EXPECT_TRUE(uses(list, 7, "B"));
  EXPECT_TRUE(uses(list, 2, "7"));
  EXPECT_FALSE(uses(list, 1, "a"));
  EXPECT_FALSE(uses(list, 70, "AA"));
}

TEST(KeepList, TakesNumbersWithBlanksAndZeros) {
  KeepList list = makeList(" 007 \n8x\n");

  EXPECT_TRUE(uses(list, 7, "A"));
  EXPECT_FALSE(uses(list, 8, "A"));
}

TEST(KeepList, TakesNoNoticeOfBlanksAroundNames) {
  KeepList list = makeList(" A\t\nB \r\n a b \n");

  EXPECT_TRUE(uses(list, 1, "A"));
  EXPECT_TRUE(uses(list, 1, "  B"));
  EXPECT_TRUE(uses(list, 1, "a b"));
  EXPECT_FALSE(uses(list, 1, "ab"));
}

TEST(KeepList, MayHaveAByteOrderMarkAndOtherLineEnds) {
  KeepList list = makeList(
      "\xEF\xBB\xBF"
      "A\r\n\r\nB");

  EXPECT_TRUE(uses(list, 1, "A"));
  EXPECT_TRUE(uses(list, 1, "B"));
  EXPECT_FALSE(uses(list, 1, ""));
}

TEST(KeepList, TakesNamesInEitherEncodingAndAsTheyAreShown) {
  KeepList list = makeList("R\xFC\na\\nb\n");

  EXPECT_TRUE(uses(list, 1, "R\xC3\xBC"));
  EXPECT_TRUE(uses(list, 1, "R\xFC"));
  EXPECT_TRUE(uses(list, 1, "a\nb"));
}

TEST(KeepList, TellsTheLinesThatFitNothing) {
  KeepList list = makeList("B\nA\n7\n");
  EXPECT_FALSE(list.hasMatched());
  EXPECT_EQ(list.listUnmatched(), (std::vector<std::string>{"7", "A", "B"}));

  uses(list, 7, "A");

  EXPECT_TRUE(list.hasMatched());
  EXPECT_EQ(list.listUnmatched(), std::vector<std::string>{"B"});
}

}  // namespace
