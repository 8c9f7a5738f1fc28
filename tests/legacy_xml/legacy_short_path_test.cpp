#include <gtest/gtest.h>

#include <fstream>

#include "legacy_files.h"

using Found::FoundationManager;

namespace LegacyTest {
namespace {

TEST(LegacyShortPath, OpensAFileThatDoesNotOpenByItsLongOne) {
  const std::string path = KVFOUND_FOREIGN_DIR "/model|1.xml";
  ASSERT_FALSE(std::ifstream(path).is_open()) << path;
  FoundationManager manager;

  EXPECT_TRUE(manager.readXml(path)) << path;

  EXPECT_EQ(describe(manager), "1 A");
}

TEST(LegacyShortPath, OfAFileThatDoesNotExistGivesFalse) {
  FoundationManager manager;

  EXPECT_FALSE(manager.readXml(KVFOUND_FOREIGN_DIR "/model|2.xml"));
}

}  // namespace
}  // namespace LegacyTest
