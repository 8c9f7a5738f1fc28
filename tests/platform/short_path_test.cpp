#include "kv/short_path.h"

#include <gtest/gtest.h>

#include <string>

#if defined(_WIN32)

#include "support/temporary_files.h"

TEST(ShortPath, OpensTheSameFile) {
  const TestSupport::TemporaryFile file("the content");
  char shortPath[4096] = "";

  ASSERT_GT(GetShortPathNameA(file.get().c_str(), shortPath, sizeof shortPath), 0ul);

  EXPECT_EQ(TestSupport::load(shortPath), "the content");
}

TEST(ShortPath, OfAFileThatDoesNotExistIsNone) {
  char shortPath[16] = "untouched";

  EXPECT_EQ(GetShortPathNameA("no such folder/file", shortPath, sizeof shortPath), 0ul);
  EXPECT_EQ(std::string(shortPath), "untouched");
}

#else

TEST(ShortPath, StandInReportsThatThereIsNoShortForm) {
  char shortPath[16] = "untouched";

  EXPECT_EQ(GetShortPathNameA("/a/long path/model.xml", shortPath, sizeof shortPath), 0ul);
  EXPECT_EQ(std::string(shortPath), "untouched");
}

TEST(ShortPath, StandInTakesNullPointers) {
  EXPECT_EQ(GetShortPathNameA(nullptr, nullptr, 0), 0ul);
}

#endif
