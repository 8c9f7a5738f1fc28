#include "kv/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

TEST(DisplayText, NamesTheDirectionsInWhichABeddingFails) {
  EXPECT_EQ(KvText::Load(7469), "No failure");
  EXPECT_EQ(KvText::Load(7470), "Fails in y under tension");
  EXPECT_EQ(KvText::Load(7471), "Fails in y under compression");
  EXPECT_EQ(KvText::Load(7472), "Fails in z under tension");
  EXPECT_EQ(KvText::Load(7473), "Fails in z under compression");
  EXPECT_EQ(KvText::Load(7474), "Fails in y and z under tension");
  EXPECT_EQ(KvText::Load(7475), "Fails in y under compression, in z under tension");
  EXPECT_EQ(KvText::Load(7476), "Fails in y under tension, in z under compression");
  EXPECT_EQ(KvText::Load(7477), "Fails in y and z under compression");
}

TEST(DisplayText, IsEmptyForAnyOtherNumber) {
  for (unsigned id : {0u, 1u, 7468u, 7478u, std::numeric_limits<unsigned>::max()})
    EXPECT_EQ(KvText::Load(id), "") << id;
}
