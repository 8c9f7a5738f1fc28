#include "kv/version_text.h"

#include <gtest/gtest.h>

#include <string>

TEST(VersionText, IsEqualToTheSameText) {
  EXPECT_TRUE(Tools::VersionText("1.0").isEqualTo("1.0"));
  EXPECT_TRUE(Tools::VersionText("").isEqualTo(""));
}

TEST(VersionText, ComparesByteForByte) {
  const Tools::VersionText version("1.0");

  for (const char* other : {"", "1", "1.", "1.00", "01.0", " 1.0", "1.0 ", "1,0", "2.0", "1.0a"})
    EXPECT_FALSE(version.isEqualTo(other)) << '"' << other << '"';
  EXPECT_FALSE(version.isEqualTo(std::string("1.0\0", 4)));
  EXPECT_FALSE(Tools::VersionText("").isEqualTo("1.0"));
}
