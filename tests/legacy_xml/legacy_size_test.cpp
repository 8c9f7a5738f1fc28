#include <gtest/gtest.h>

#include "legacy_files.h"

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {
namespace {

std::string repeat(const std::string& text, int times) {
  std::string result;
  result.reserve(text.size() * static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

TEST(LegacySize, OfAHundredThousandFoundationsIsRead) {
  constexpr int count = 100000;
  std::string elements;
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    elements += "<FOUND NUMBER='" + number + "' NAME='F" + number + "' FZAREA='" + number +
                ".5' FACLINE='0.25'/>\n";
  }
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument(elements, " CURRENT='F100000'")));

  ASSERT_EQ(manager.getFoundations().size(), 100000u);
  EXPECT_EQ(manager.getCurrentFoundation(), manager.getFoundations().back());
  for (int i = 1; i <= count; ++i) {
    Foundation& foundation = *manager.getFoundations()[static_cast<std::size_t>(i - 1)];
    ASSERT_EQ(foundation.getNumber(), i);
    ASSERT_EQ(foundation.getName(), "F" + std::to_string(i));
    ASSERT_EQ(foundation.getDispAreaZ(), i + 0.5);
    ASSERT_EQ(foundation.getFactorLine(), 0.25);
  }
}

TEST(LegacySize, OfTwentyThousandFoundationsIsWrittenAndReadBack) {
  constexpr int count = 20000;
  FoundationManager before;
  for (int i = 0; i < count; ++i) {
    const KvVector3D area(0.0, 0.0, i);
    addFoundation(before, count - i, "F" + std::to_string(i)).setDispArea(&area);
  }

  FoundationManager after;
  const std::string text = write(before);
  EXPECT_TRUE(read(after, text));

  ASSERT_EQ(after.getFoundations().size(), 20000u);
  EXPECT_EQ(after.getFoundations().front()->getNumber(), 20000);
  EXPECT_EQ(after.getFoundations().back()->getNumber(), 1);
  EXPECT_EQ(after.getFoundations().back()->getName(), "F19999");
  EXPECT_TRUE(write(after) == text);  // not printed when it differs
}

TEST(LegacySize, OfAMillionOtherElementsAroundFoundationsIsRead) {
  const std::string other = "<BEAM NUMBER='1' NAME='B'><NODE/></BEAM>\n";
  FoundationManager manager;

  EXPECT_TRUE(read(manager, "<?xml?>\n<SMOD>\n<BEAMS>" + repeat(other, 250000) +
                                "</BEAMS><FOUNDATIONS CURRENT='A'><FOUND NUMBER='7' NAME='A'/>"
                                "</FOUNDATIONS><BEAMS>" +
                                repeat(other, 250000) + "</BEAMS></SMOD>\n"));

  EXPECT_EQ(describe(manager), "7 A; current A");
}

TEST(LegacySize, OfAMillionOtherElementsBelowFoundationsIsRead) {
  const std::string other = "<SOIL NUMBER='1'><LAYER><FOUND NAME='deeper'/></LAYER></SOIL>\n";
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument(repeat(other, 170000) + "<FOUND NAME='A'/>" +
                                         repeat(other, 170000) + "<FOUND NAME='B'/>")));

  EXPECT_EQ(describe(manager), "1 A, 2 B");
}

TEST(LegacySize, OfAHundredThousandElementsBelowOneFoundationIsRead) {
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument("<FOUND NAME='A'>" + repeat("<OTHER/>", 100000) +
                                         "</FOUND><FOUND NAME='B'/>")));

  EXPECT_EQ(describe(manager), "1 A, 2 B");
}

TEST(LegacySize, OfTwentyThousandTakenNamesIsPassedOver) {
  std::string elements;
  for (int i = 1; i <= 20000; ++i) {
    const std::string digits = std::to_string(i);
    const std::string zeros = digits.size() < 4 ? std::string(4 - digits.size(), '0') : "";
    elements += "<FOUND NUMBER='0' NAME='Found" + zeros + digits + "'/>\n";
  }
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument(elements + "<FOUND/>")));

  ASSERT_EQ(manager.getFoundations().size(), 20001u);
  EXPECT_EQ(manager.getFoundations().back()->getNumber(), 1);
  EXPECT_EQ(manager.getFoundations().back()->getName(), "Found20001");
}

TEST(LegacySize, OfTwentyThousandFoundationsWithoutNamesGivesEachItsOwn) {
  FoundationManager manager;

  EXPECT_TRUE(read(manager, makeDocument(repeat("<FOUND/>", 20000))));

  ASSERT_EQ(manager.getFoundations().size(), 20000u);
  EXPECT_EQ(manager.getFoundations()[0]->getName(), "Found0001");
  EXPECT_EQ(manager.getFoundations()[9998]->getName(), "Found9999");
  EXPECT_EQ(manager.getFoundations()[9999]->getName(), "Found10000");
  EXPECT_EQ(manager.getFoundations()[19999]->getName(), "Found20000");
}

}  // namespace
}  // namespace LegacyTest
