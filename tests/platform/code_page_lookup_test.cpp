#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "kv/code_page.h"

namespace {

TEST(CodePage, IsFoundByItsNamesInAnyLetterCase) {
  for (const char* name : {"ISO-8859-1", "iso-8859-2", "ISO-8859-15", "windows-1252",
                           "Windows-1250", "KOI8-R", "koi8-u", "LATIN2", "Arabic"})
    EXPECT_TRUE(KvCodePage::find(name).has_value()) << name;
}

TEST(CodePage, IsNoneForOtherEncodings) {
  for (const char* name : {"", "UTF-8", "UTF-16", "US-ASCII", "Shift_JIS", "ISO-8859-99", "latin"})
    EXPECT_FALSE(KvCodePage::find(name).has_value()) << name;
}

TEST(CodePage, TellsTheCharacterOfAByteAndTheByteOfACharacter) {
  const struct {
    const char* name;
    char byte;
    char32_t character;
  } rows[] = {
      {"ISO-8859-1", 'A', U'A'},       {"ISO-8859-1", '\xFC', 0xFC},
      {"ISO-8859-1", '\x80', 0x80},    {"ISO-8859-2", '\xF5', 0x151},
      {"ISO-8859-15", '\xA4', 0x20AC}, {"windows-1252", '\x80', 0x20AC},
      {"windows-1251", '\xC0', 0x410}, {"KOI8-R", '\xC1', 0x430},
  };
  for (const auto& row : rows) {
    const KvCodePage page = *KvCodePage::find(row.name);
    EXPECT_EQ(page.decode(row.byte), row.character) << row.name;
    EXPECT_EQ(page.encode(row.character), row.byte) << row.name;
  }
}

TEST(CodePage, HasNoAnswerForWhatItLacks) {
  EXPECT_EQ(KvCodePage::find("windows-1252")->decode('\x81'), std::nullopt);
  EXPECT_EQ(KvCodePage::find("windows-1252")->encode(0x80), std::nullopt);
  EXPECT_EQ(KvCodePage::find("ISO-8859-1")->encode(0x100), std::nullopt);
  EXPECT_EQ(KvCodePage::find("ISO-8859-1")->encode(0x20AC), std::nullopt);
  EXPECT_EQ(KvCodePage::find("ISO-8859-15")->encode(0xA4), std::nullopt);
  EXPECT_EQ(KvCodePage::find("windows-1252")->encode(0x10FFFF), std::nullopt);
}

}  // namespace
