#include "kv/short_path.h"

#include <gtest/gtest.h>

#include <string>

#if !defined(_WIN32)
TEST(ShortPath, StandInReportsThatThereIsNoShortForm) {
  char shortPath[16] = "untouched";

  EXPECT_EQ(GetShortPathNameA("/a/long path/model.xml", shortPath, sizeof shortPath), 0ul);
  EXPECT_EQ(std::string(shortPath), "untouched");
}

TEST(ShortPath, StandInTakesNullPointers) {
  EXPECT_EQ(GetShortPathNameA(nullptr, nullptr, 0), 0ul);
}
#endif
