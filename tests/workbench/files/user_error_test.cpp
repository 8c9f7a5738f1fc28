#include "files/user_error.h"

#include <cerrno>
#include <string>

#include <gtest/gtest.h>

#include "documents/document.h"
#include "files/content.h"
#include "files/output_file.h"

namespace {

/// What opening a document tells of its fault.
DocumentError fail(const std::string& path, const std::string& bytes) {
  try {
    Documents::Document({path, "", bytes});
  } catch (const DocumentError& error) {
    return error;
  }
  ADD_FAILURE() << path << " was read";
  return {"", {}, ""};
}

TEST(FileError, TellsPathSentenceAndNumber) {
  try {
    Files::read("missing.xml");
    FAIL();
  } catch (const FileError& error) {
    EXPECT_EQ(error.getPath(), "missing.xml");
    EXPECT_EQ(error.getSentence().rfind("cannot be opened: ", 0), 0U) << error.getSentence();
    EXPECT_EQ(error.getNumber(), ENOENT);
    EXPECT_EQ(error.what(), "missing.xml: " + error.getSentence());
  }
}

TEST(FileError, TellsWhatCannotBeWritten) {
  try {
    OutputFile("missing/file.xml").create();
    FAIL();
  } catch (const FileError& error) {
    EXPECT_EQ(error.getPath(), "missing/file.xml");
    EXPECT_EQ(error.getNumber(), ENOENT);
    EXPECT_EQ(error.getSentence().rfind("cannot be written: no file can be made in missing", 0), 0U)
        << error.getSentence();
  }
}

TEST(FileError, TellsFoldersFromFiles) {
  const std::string folder = ".";
  for (const auto& use : {+[](const std::string& path) { Files::read(path); },
                          +[](const std::string& path) { OutputFile{path}; }})
    try {
      use(folder);
      FAIL();
    } catch (const FileError& error) {
      EXPECT_EQ(error.getNumber(), EISDIR);
      EXPECT_STREQ(error.what(), ".: this is a folder, not a file");
    }
}

TEST(FileError, StandsAloneWhereThereIsNoPath) {
  const FileError error("", "the name of the file to read is empty", ENOENT);

  EXPECT_STREQ(error.what(), "the name of the file to read is empty");
}

TEST(DocumentError, TellsLineAndColumn) {
  const DocumentError error = fail("file.xml", "<?xml version=\"1.0\"?>\n<Beddings");

  EXPECT_EQ(error.getPath(), "file.xml");
  EXPECT_EQ(error.getPosition().line, 2U);
  EXPECT_GT(error.getPosition().column, 0U);
  EXPECT_EQ(error.what(), "file.xml:2:" + std::to_string(error.getPosition().column) + ": " +
                              error.getSentence());
}

TEST(DocumentError, TellsLinesOfTablesAlone) {
  const DocumentError error = fail("table.csv", "number,name\n1\n");

  EXPECT_EQ(error.getPosition().line, 2U);
  EXPECT_EQ(error.getPosition().column, 0U);
  EXPECT_STREQ(error.what(), "table.csv:2: this row has too few cells: 1 instead of 2");
}

TEST(DocumentError, MayBeAboutAllOfADocument) {
  const DocumentError error = fail("table.csv", "");

  EXPECT_EQ(error.getPosition().line, 0U);
  EXPECT_STREQ(error.what(), "table.csv: this table is empty; its first row names the columns");
}

}  // namespace
