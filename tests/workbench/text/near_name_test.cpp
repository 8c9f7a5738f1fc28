#include "text/near_name.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(NearName, IsOneLetterAway) {
  const std::vector<std::string> names = {"show", "convert", "prune"};
  for (const char* asked : {"convert", "convrt", "convvert", "convart", "ocnvert"})
    EXPECT_EQ(findNearName(asked, names), "convert") << asked;
  EXPECT_EQ(findNearName("shwo", names), "show");
}

TEST(NearName, HasAtLeastTwoLettersInThreeRight) {
  EXPECT_EQ(findNearName("abcdxx", {"abcdef"}), "abcdef");
  EXPECT_EQ(findNearName("abcxxx", {"abcdef"}), std::nullopt);
}

TEST(NearName, IsTheNearest) {
  EXPECT_EQ(findNearName("--units", {"--unit-x", "--unit"}), "--unit");
}

TEST(NearName, IsRatherInTheOtherCaseThanAnotherLetterAway) {
  const std::vector<std::string> names = {"areaX", "areaY", "areaZ"};
  for (const char* asked : {"areaz", "AREAZ", "Areaz"})
    EXPECT_EQ(findNearName(asked, names), "areaZ") << asked;
}

TEST(NearName, IsNoneOfATextThatIsFarTooLong) {
  EXPECT_EQ(findNearName(std::string(8000000, 'a'), {"areaX", "areaY"}), std::nullopt);
}

TEST(NearName, IsNoneOfNone) { EXPECT_EQ(findNearName("show", {}), std::nullopt); }

}  // namespace
