#include "files/paths.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/temporary_files.h"

namespace {

TEST(Paths, AreTheSameTextAgain) {
  for (const std::string text : {"", "file.xml", "folder/file with blanks.xml", "M\xFChle.xml"})
    EXPECT_EQ(Paths::toText(Paths::fromText(text)), text);
}

TEST(Paths, NameTheFileThatTheirTextOpens) {
  const TestSupport::TemporaryPath path("M\xFChle.xml");
  TestSupport::store(path.get(), "text");

  EXPECT_TRUE(std::filesystem::exists(Paths::fromText(path.get())));
}

TEST(Paths, HaveFoldersAndNames) {
  EXPECT_EQ(Paths::toText(Paths::fromText("folder/M\xFChle.xml").filename()), "M\xFChle.xml");
  EXPECT_EQ(Paths::toText(Paths::fromText("folder/file").parent_path()), "folder");
}

}  // namespace
