#include <filesystem>

#include "recorded_legacy.h"

using Found::FoundationManager;

namespace LegacyTest {
namespace {

const Lines document = {"SMOD", " FOUNDATIONS CURRENT=New", "  FOUND NUMBER=7 NAME=New"};

// The buffer's last character ends the text.
constexpr std::size_t longestShortPath = 4095;

class RecordedFile : public RecordedTest {
 protected:
  RecordedFile() { addFoundation(manager, 1, "Old"); }

  FoundationManager manager;
};

/// The same file by a path of exactly this length.
std::string lengthen(const std::string& path, std::size_t length) {
  const std::filesystem::path parts(path);
  const std::string folder = parts.parent_path().string();
  const std::string file = parts.filename().string();
  return folder + std::string(length - folder.size() - file.size(), '/') + file;
}

TEST_F(RecordedFile, HandsTheRootToTheReaderAndFreesTheTree) {
  EXPECT_TRUE(read(manager, makeText(document)));

  EXPECT_EQ(describe(manager), "7 New; current New");
  const Lines calls = listCallsWithout({"getName", "KvVector3D", "findAttribute"});
  EXPECT_EQ(calls, (Lines{"KvXmlTree istream", "findRoot SMOD true",
                          "findTree SMOD FOUNDATIONS true", "getChildren FOUNDATIONS",
                          "getInteger NUMBER", "getData NAME", "getData CURRENT", "~KvXmlTree"}));
  EXPECT_EQ(Recording::countLive("KvXmlTree"), 0);
  EXPECT_EQ(Recording::countLive("KvXmlData"), 0);
}

TEST_F(RecordedFile, HandsOnNoRootWhenTheDocumentHasAnother) {
  EXPECT_TRUE(read(manager, makeText({"OTHER", " SMOD", "  FOUNDATIONS"})));

  EXPECT_EQ(Recording::getLog(), (Lines{"KvXmlTree istream", "findRoot SMOD true", "~KvXmlTree"}));
  EXPECT_EQ(describe(manager), "");
}

TEST_F(RecordedFile, ParsesFromTheSecondLineOn) {
  EXPECT_TRUE(read(manager, "SMOD XML=1\n" + makeText(document).substr(4)));

  EXPECT_EQ(describe(manager), "7 New; current New");
}

TEST_F(RecordedFile, ParsesNothingWhenTheFirstLineLacksXml) {
  EXPECT_FALSE(read(manager, "SMOD\nxml\n"));

  EXPECT_EQ(Recording::getLog(), Lines{});
  EXPECT_EQ(describe(manager), "1 Old");
}

TEST_F(RecordedFile, AsksForNoShortPathWhenTheFileOpens) {
  EXPECT_TRUE(read(manager, makeText({})));

  EXPECT_EQ(Recording::getLog(), (Lines{"KvXmlTree istream", "findRoot SMOD true", "~KvXmlTree"}));
}

TEST_F(RecordedFile, AsksOnceForTheShortPathOfAFileThatDoesNotOpen) {
  EXPECT_FALSE(manager.readXml("no such folder/file"));

  EXPECT_EQ(Recording::getLog(), (Lines{"GetShortPathNameA no such folder/file 4096"}));
  EXPECT_EQ(describe(manager), "1 Old");
}

TEST_F(RecordedFile, ReadsByTheShortPathWhatDoesNotOpenByTheLongOne) {
  const TemporaryFile file(makeText(document));
  const Recording::ShortPathAnswer answer([&](const std::string&) { return file.get(); });

  EXPECT_TRUE(manager.readXml("no such folder/file"));

  EXPECT_EQ(Recording::getLog()[0], "GetShortPathNameA no such folder/file 4096");
  EXPECT_EQ(describe(manager), "7 New; current New");
}

TEST_F(RecordedFile, OpensTheLongPathAgainWhenThereIsNoShortOne) {
  const TemporaryPath path;
  const Recording::ShortPathAnswer answer([&](const std::string& longPath) {
    store(longPath, makeText(document));  // comes into being between the two attempts
    return std::string();
  });

  EXPECT_TRUE(manager.readXml(path.get()));

  EXPECT_EQ(Recording::getLog()[0], "GetShortPathNameA " + path.get() + " 4096");
  EXPECT_EQ(describe(manager), "7 New; current New");
}

TEST_F(RecordedFile, DoesNotFallBackToTheLongPathWhenThereIsAShortOne) {
  const TemporaryPath path;
  const Recording::ShortPathAnswer answer([&](const std::string& longPath) {
    store(longPath, makeText(document));
    return std::string("no such folder/short");
  });

  EXPECT_FALSE(manager.readXml(path.get()));

  EXPECT_EQ(describe(manager), "1 Old");
}

TEST_F(RecordedFile, DoesNotFallBackToTheLongPathWhenTheShortOneIsOneCharacter) {
  const TemporaryPath path;
  const Recording::ShortPathAnswer answer([&](const std::string& longPath) {
    store(longPath, makeText(document));
    return std::string("?");  // no such file
  });

  EXPECT_FALSE(manager.readXml(path.get()));

  EXPECT_EQ(describe(manager), "1 Old");
}

TEST_F(RecordedFile, TestsTheFirstLineOfWhatTheShortPathOpens) {
  const TemporaryFile file("no markup here\n");
  const Recording::ShortPathAnswer answer([&](const std::string&) { return file.get(); });

  EXPECT_FALSE(manager.readXml("no such folder/file"));

  EXPECT_EQ(Recording::getLog(), (Lines{"GetShortPathNameA no such folder/file 4096"}));
  EXPECT_EQ(describe(manager), "1 Old");
}

TEST_F(RecordedFile, TakesAShortPathThatJustFitsTheBuffer) {
  const TemporaryFile file(makeText(document));
  const Recording::ShortPathAnswer answer(
      [&](const std::string&) { return lengthen(file.get(), longestShortPath); });

  EXPECT_TRUE(manager.readXml("no such folder/file"));

  EXPECT_EQ(describe(manager), "7 New; current New");
}

TEST_F(RecordedFile, OpensTheLongPathAgainWhenTheShortOneDoesNotFitTheBuffer) {
  const TemporaryPath path;
  const Recording::ShortPathAnswer answer([&](const std::string& longPath) {
    store(longPath, makeText(document));
    return lengthen(longPath, longestShortPath + 1);
  });

  EXPECT_TRUE(manager.readXml(path.get()));

  EXPECT_EQ(describe(manager), "7 New; current New");
}

}  // namespace
}  // namespace LegacyTest
