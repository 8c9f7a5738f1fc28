#include <gtest/gtest.h>

#include <filesystem>

#include "kv/xml_error.h"
#include "legacy_files.h"

using Found::FoundationManager;

namespace LegacyTest {
namespace {

// What of the first line is looked at: a buffer of 1024 with its end.
constexpr std::size_t longestFirstLine = 1023;

const std::string body =
    "<SMOD><FOUNDATIONS CURRENT='New'><FOUND NAME='New'/></FOUNDATIONS></SMOD>\n";

class LegacyFile : public testing::Test {
 protected:
  LegacyFile() { manager.setCurrentFoundation(&addFoundation(manager, 9, "Old")); }

  FoundationManager manager;
};

/// `text` in the middle or at the end of a first line of this length.
std::string fill(const std::string& text, std::size_t length) {
  return std::string(length - text.size(), '.') + text;
}

TEST_F(LegacyFile, IsReadFromItsSecondLineOn) {
  EXPECT_TRUE(read(manager, "<?xml version=\"1.0\"?>\n" + body));
  EXPECT_EQ(describe(manager), "1 New; current New");
}

TEST_F(LegacyFile, ThatDoesNotExistGivesFalse) {
  const TemporaryPath path;

  EXPECT_FALSE(manager.readXml(path.get()));
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, OfNoNameGivesFalse) {
  EXPECT_FALSE(manager.readXml(""));
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, ThatIsAFolderGivesFalse) {
  const TemporaryPath path("");
  ASSERT_TRUE(std::filesystem::create_directory(path.get()));

  EXPECT_FALSE(manager.readXml(path.get()));
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, MayHaveBlanksAndUmlautsInItsPath) {
  const TemporaryPath folder(" of the Gr\xFCndung");
  ASSERT_TRUE(std::filesystem::create_directory(folder.get()));
  const std::string path = folder.get() + "/M\xFChle 1.xml";
  store(path, "<?xml version=\"1.0\"?>\n" + body);

  EXPECT_TRUE(manager.readXml(path));
  EXPECT_EQ(describe(manager), "1 New; current New");
}

TEST_F(LegacyFile, WithoutContentGivesFalse) {
  EXPECT_FALSE(read(manager, ""));
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, WithoutXmlInItsFirstLineGivesFalse) {
  const char* const rows[] = {"", "<SMOD>", "<?xm version='1.0'?>", "x m l", "mlx", "XM", "lmx"};
  for (const char* row : rows) {
    EXPECT_FALSE(read(manager, row + ("\n" + body))) << row;
    EXPECT_EQ(describe(manager), "9 Old; current Old") << row;
  }
}

TEST_F(LegacyFile, WithXmlOnlyInItsSecondLineGivesFalse) {
  EXPECT_FALSE(read(manager, "\n<?xml version=\"1.0\"?>\n" + body));
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, WithTheRootOnItsFirstLineAndNoXmlGivesFalse) {
  EXPECT_FALSE(read(manager, body));
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, MaySpellXmlInAnyCaseAnywhereInItsFirstLine) {
  const char* const rows[] = {"<?XML VERSION=\"1.0\"?>",
                              "<?Xml?>",
                              "<?xMl?>",
                              "xmL",
                              "xml",
                              "this is an xmlish thing",
                              "xxml",
                              "\xEF\xBB\xBF<?xml?>"};
  for (const char* row : rows) {
    FoundationManager filled;
    EXPECT_TRUE(read(filled, row + ("\n" + body))) << row;
    EXPECT_EQ(describe(filled), "1 New; current New") << row;
  }
}

TEST_F(LegacyFile, LosesARootThatStandsOnItsFirstLine) {
  EXPECT_TRUE(read(
      manager, "<SMOD note='xml'><FOUNDATIONS><FOUND NAME='Lost'/></FOUNDATIONS></SMOD>\n" + body));
  EXPECT_EQ(describe(manager), "1 New; current New");
}

TEST_F(LegacyFile, MayEndItsLinesWithCarriageReturns) {
  EXPECT_TRUE(read(manager,
                   "<?xml version=\"1.0\"?>\r\n<SMOD>\r\n<FOUNDATIONS>\r\n<FOUND NAME='A'\r\n"
                   "NUMBER='3'/>\r\n</FOUNDATIONS>\r\n</SMOD>\r\n"));
  EXPECT_EQ(describe(manager), "3 A");
}

TEST_F(LegacyFile, NeedNotEndWithALineBreak) {
  EXPECT_TRUE(read(manager, "<?xml?>\n<SMOD><FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS></SMOD>"));
  EXPECT_EQ(describe(manager), "1 A");
}

TEST_F(LegacyFile, MayHoldCommentsAndADocumentTypeAroundTheRoot) {
  EXPECT_TRUE(
      read(manager, "<?xml?>\n<!DOCTYPE SMOD>\n<!-- a -->\n" + body + "<!-- b --><?c d?>\n"));
  EXPECT_EQ(describe(manager), "1 New; current New");
}

TEST_F(LegacyFile, WithAnotherRootEmptiesTheManager) {
  EXPECT_TRUE(read(manager, "<?xml?>\n<MODEL>" + body + "</MODEL>\n"));
  EXPECT_EQ(describe(manager), "");
}

TEST_F(LegacyFile, WithARootInOtherLettersEmptiesTheManager) {
  EXPECT_TRUE(read(manager, "<?xml?>\n<smod><FOUNDATIONS><FOUND/></FOUNDATIONS></smod>\n"));
  EXPECT_EQ(describe(manager), "");
}

TEST_F(LegacyFile, WithoutFoundationsEmptiesTheManager) {
  EXPECT_TRUE(read(manager, "<?xml?>\n<SMOD><FOUND/><Foundations><FOUND/></Foundations></SMOD>\n"));
  EXPECT_EQ(describe(manager), "");
}

TEST_F(LegacyFile, OfADeclarationOnlyEmptiesTheManager) {
  const char* const rows[] = {"<?xml version=\"1.0\"?>", "<?xml version=\"1.0\"?>\n",
                              "<?xml version=\"1.0\"?>\n \n\t\n", "<?xml?>\n<!-- nothing -->\n"};
  for (const char* row : rows) {
    FoundationManager filled;
    addFoundation(filled, 9, "Old");
    EXPECT_TRUE(read(filled, row)) << row;
    EXPECT_EQ(describe(filled), "") << row;
  }
}

TEST_F(LegacyFile, MayHaveAFirstLineThatFillsTheBuffer) {
  EXPECT_TRUE(read(manager, fill("xml", longestFirstLine) + "\n" + body));
  EXPECT_EQ(describe(manager), "1 New; current New");
}

TEST_F(LegacyFile, WithAFirstLineBeyondTheBufferCannotBeParsed) {
  EXPECT_THROW(read(manager, fill("xml.", longestFirstLine + 1) + "\n" + body), KvXmlError);
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, WithAMuchLongerFirstLineCannotBeParsed) {
  EXPECT_THROW(read(manager, "<?xml" + std::string(100000, ' ') + "?>\n" + body), KvXmlError);
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, WithXmlOnlyBeyondTheBufferGivesFalse) {
  EXPECT_FALSE(read(manager, fill("xml", longestFirstLine + 1) + "\n" + body));
  EXPECT_FALSE(read(manager, fill("xml", longestFirstLine + 1000) + "\n" + body));
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, WithALongFirstLineWithoutXmlGivesFalse) {
  EXPECT_FALSE(read(manager, std::string(100000, '.') + "\n" + body));
  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyFile, IsClosedAfterwardsAndCanBeReplaced) {
  const TemporaryFile file("<?xml?>\n" + body);
  EXPECT_TRUE(manager.readXml(file.get()));

  store(file.get(), makeDocument("<FOUND NAME='Second'/>"));

  EXPECT_TRUE(manager.readXml(file.get()));
  EXPECT_EQ(describe(manager), "1 Second");
}

}  // namespace
}  // namespace LegacyTest
