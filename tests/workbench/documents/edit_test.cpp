#include "documents/edit.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace {

using Documents::Edit;

TEST(Edit, LeavesAllOtherBytes) {
  Edit edit;
  EXPECT_TRUE(edit.isEmpty());
  EXPECT_EQ(edit.apply("abc"), "abc");

  edit.replace({4, 6}, "X");
  edit.erase({0, 1});
  edit.insert(2, "YZ");

  EXPECT_FALSE(edit.isEmpty());
  EXPECT_EQ(edit.apply("abcdefg"), "bYZcdXg");
}

TEST(Edit, ReachesBothEndsOfTheText) {
  Edit edit;
  edit.insert(3, ">");
  edit.insert(0, "<");

  EXPECT_EQ(edit.apply("abc"), "<abc>");
}

TEST(Edit, InsertsAtTheSamePlaceInOrder) {
  Edit edit;
  edit.insert(1, "1");
  edit.insert(1, "2");

  EXPECT_EQ(edit.apply("ab"), "a12b");
}

TEST(Edit, InsertsBeforeWhatIsReplacedFromThereOn) {
  Edit edit;
  edit.replace({1, 2}, "2");
  edit.insert(1, "1");
  edit.insert(2, "3");

  EXPECT_EQ(edit.apply("abc"), "a123c");
}

TEST(Edit, RefusesRangesThatOverlap) {
  Edit edit;
  edit.replace({0, 2}, "x");
  edit.replace({1, 3}, "y");

  EXPECT_THROW(edit.apply("abc"), std::logic_error);
}

}  // namespace
