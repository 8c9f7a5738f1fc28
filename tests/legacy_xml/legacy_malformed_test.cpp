#include <gtest/gtest.h>

#include <optional>
#include <random>

#include "legacy_files.h"
#include "support/error_place.h"

using Found::FoundationManager;
using TestSupport::findErrorPlace;
using TestSupport::Place;

namespace LegacyTest {
namespace {

class LegacyMalformed : public testing::Test {
 protected:
  LegacyMalformed() {
    addFoundation(manager, 1, "A");
    manager.setCurrentFoundation(&addFoundation(manager, 2, "B"));
  }
  ~LegacyMalformed() override { EXPECT_EQ(describe(manager), "1 A, 2 B; current B"); }

  /// Where the error is that reading these bytes throws; nothing when it throws none.
  std::optional<Place> findError(const std::string& bytes) {
    return findErrorPlace([&] { read(manager, bytes); });
  }

  FoundationManager manager;
};

TEST_F(LegacyMalformed, EndTagOfAnotherElement) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n  <FOUNDATIONS>\n  </OTHER>\n</SMOD>\n"), (Place{4, 5}));
}

TEST_F(LegacyMalformed, EndTagsInTheWrongOrder) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD><FOUNDATIONS></SMOD></FOUNDATIONS>\n"), (Place{2, 22}));
}

TEST_F(LegacyMalformed, SecondRoot) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n</SMOD>\n  <SMOD/>\n"), (Place{4, 4}));
}

TEST_F(LegacyMalformed, TextRightBehindTheRoot) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n</SMOD>stray\n"), (Place{3, 8}));
}

TEST_F(LegacyMalformed, TextOnALaterLineThanTheRoot) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n</SMOD>\n\n  stray\n"), (Place{5, 3}));
}

TEST_F(LegacyMalformed, TextBeforeTheRoot) {
  EXPECT_EQ(findError("<?xml?>\nstray\n<SMOD/>\n"), (Place{2, 1}));
}

TEST_F(LegacyMalformed, TextWithoutARoot) {
  EXPECT_EQ(findError("<?xml?>\nno markup at all\n"), (Place{2, 1}));
}

TEST_F(LegacyMalformed, AttributeGivenTwice) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n<FOUNDATIONS>\n  <FOUND NUMBER='1' NAME='C' NUMBER='2'/>\n"
                      "</FOUNDATIONS>\n</SMOD>\n"),
            (Place{4, 30}));
}

TEST_F(LegacyMalformed, AttributeGivenTwiceAmongThousands) {
  std::string attributes;
  for (int i = 0; i < 5000; ++i) attributes += " A" + std::to_string(i) + "='1'";
  EXPECT_EQ(findError("<?xml?>\n<SMOD" + attributes + "\n A17='2'/>\n"), (Place{3, 2}));
}

TEST_F(LegacyMalformed, AttributeWithoutQuotes) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n<FOUND NUMBER=1/></SMOD>\n"), (Place{3, 15}));
}

TEST_F(LegacyMalformed, StartTagWithoutAName) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n  < FOUND/></SMOD>\n"), (Place{3, 4}));
}

TEST_F(LegacyMalformed, RootThatBeganOnTheFirstLine) {
  EXPECT_EQ(findError("<?xml?><SMOD>\n<FOUNDATIONS/>\n</SMOD>\n"), (Place{3, 3}));
}

TEST_F(LegacyMalformed, FirstLineBeyondTheBuffer) {
  EXPECT_EQ(findError("<?xml" + std::string(2000, ' ') + "?>\n<SMOD/>\n"), (Place{1, 1024}));
}

TEST_F(LegacyMalformed, CharacterReferenceToNothing) {
  EXPECT_TRUE(findError(makeDocument("<FOUND NAME='left&#0;lost'/>")));
}

TEST_F(LegacyMalformed, NulCharacter) {
  const std::string nul(1, '\0');
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n <A" + nul + "/></SMOD>\n"), (Place{3, 4}));
}

TEST_F(LegacyMalformed, TextOfTwoByteCharacters) {
  std::string bytes = "<?xml?>\n";
  for (const char c : std::string("<SMOD/>\n")) bytes += std::string(1, c) + '\0';
  EXPECT_TRUE(findError(bytes));
}

TEST_F(LegacyMalformed, TruncationAnywhereInsideTheRoot) {
  const std::string document =
      "<?xml version='1.0'?>\n<SMOD>\n<FOUNDATIONS CURRENT='C'>\n<!-- a -->text<![CDATA[b]]>"
      "<FOUND NUMBER='3' NAME='&lt;C&#62;' FXAREA='1.5'><A/></FOUND>\n</FOUNDATIONS>\n</SMOD>";
  const std::size_t root = document.find("<SMOD>");
  for (std::size_t size = root + 1; size < document.size(); ++size) {
    const std::optional<Place> place = findError(document.substr(0, size));
    ASSERT_TRUE(place) << document.substr(0, size);
    EXPECT_GE(place->line, 2u) << document.substr(0, size);
    EXPECT_LE(place->line, 6u) << document.substr(0, size);
    EXPECT_EQ(describe(manager), "1 A, 2 B; current B") << document.substr(0, size);
  }
}

TEST_F(LegacyMalformed, TruncationInsideAnAttribute) {
  EXPECT_EQ(findError("<?xml?>\n<SMOD>\n  <FOUND NUMBER=\"1"), (Place{3, 18}));
}

TEST_F(LegacyMalformed, TruncationInsideAnElementIsSaidToBeThat) {
  for (const char* end : {"", "\n", "text", "<A/>", "<!-- a -->"}) {
    try {
      read(manager, "<?xml?>\n<SMOD>\n<FOUNDATIONS>" + std::string(end));
      ADD_FAILURE() << "no error for " << end;
    } catch (const KvXmlError& error) {
      EXPECT_EQ(error.getReason(), "the text ends before its last element is closed") << end;
    }
  }
}

TEST_F(LegacyMalformed, ErrorTellsReasonAndPlaceInOneLine) {
  try {
    read(manager, "<?xml?>\n<SMOD>\n<FOUNDATIONS>\n<FOUND A='1' A='2'/></FOUNDATIONS></SMOD>\n");
    ADD_FAILURE() << "no error";
  } catch (const KvXmlError& error) {
    EXPECT_STREQ(error.what(), "line 4, column 14: the attribute \"A\" is given twice");
    EXPECT_EQ(error.getReason(), "the attribute \"A\" is given twice");
  }
}

TEST_F(LegacyMalformed, BytesThatAreNoText) {
  std::mt19937 random(20240229);
  for (int i = 0; i < 200; ++i) {
    std::string bytes = "xml\n<";
    for (int j = 0; j < 2000; ++j) bytes += static_cast<char>(random() & 0xFF);
    EXPECT_TRUE(findError(bytes)) << "number " << i;
  }
}

TEST_F(LegacyMalformed, BytesThatAreNoTextInTheFirstLineToo) {
  std::string bytes;
  for (int i = 0; i < 5000; ++i) bytes += static_cast<char>(0x80 + i % 128);

  EXPECT_FALSE(read(manager, bytes));
}

TEST_F(LegacyMalformed, NestingOfAMillionLevels) {
  constexpr int levels = 1000000;
  std::string document = "<?xml?>\n<SMOD>\n";
  for (int i = 1; i < levels; ++i) document += "<A>";
  for (int i = 1; i < levels; ++i) document += "</A>";
  document += "</SMOD>\n";

  // The root is the first level, so the element at fault is the thousandth below it.
  EXPECT_EQ(findError(document), (Place{3, 2999}));
}

TEST_F(LegacyMalformed, NestingOfAMillionLevelsThatIsNeverClosed) {
  constexpr int levels = 1000000;
  std::string document = "<?xml?>\n<SMOD>\n";
  for (int i = 1; i < levels; ++i) document += "<A>";

  EXPECT_TRUE(findError(document));
}

TEST_F(LegacyMalformed, NestingOfOneLevelTooMany) {
  std::string document = "<?xml?>\n<SMOD>\n";
  for (int i = 1; i < 1001; ++i) document += "<A>\n";
  for (int i = 1; i < 1001; ++i) document += "</A>";
  document += "</SMOD>\n";

  EXPECT_EQ(findError(document), (Place{1002, 2}));
}

TEST(LegacyNesting, OfAThousandLevelsIsRead) {
  constexpr int between = 997;  // with the root, FOUNDATIONS and FOUND a thousand
  FoundationManager manager;
  std::string document = "<?xml?>\n<SMOD>";
  for (int i = 0; i < between; ++i) document += "<A>";
  document += "<FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS>";
  for (int i = 0; i < between; ++i) document += "</A>";
  document += "</SMOD>\n";

  EXPECT_TRUE(read(manager, document));
  EXPECT_EQ(describe(manager), "1 A");
}

}  // namespace
}  // namespace LegacyTest
