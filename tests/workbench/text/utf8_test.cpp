#include "text/utf8.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::vector<char32_t> takeAll(std::string_view text) {
  std::vector<char32_t> characters;
  while (!text.empty()) characters.push_back(Utf8::take(text));
  return characters;
}

TEST(Utf8, IsTakenCharacterByCharacter) {
  EXPECT_EQ(takeAll("a\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
            (std::vector<char32_t>{'a', 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}));
}

TEST(Utf8, CountsABytePerCharacterWhereThereIsNone) {
  const auto no = Utf8::invalid;
  EXPECT_EQ(takeAll("\x80"), std::vector<char32_t>{no});
  EXPECT_EQ(takeAll("\xC3"), std::vector<char32_t>{no});
  EXPECT_EQ(takeAll("\xC3z"), (std::vector<char32_t>{no, 'z'}));
  EXPECT_EQ(takeAll("\xC1\xBF"), (std::vector<char32_t>{no, no}));                  // too long
  EXPECT_EQ(takeAll("\xE0\x9F\xBF"), (std::vector<char32_t>{no, no, no}));          // too long
  EXPECT_EQ(takeAll("\xED\xA0\x80"), (std::vector<char32_t>{no, no, no}));          // surrogate
  EXPECT_EQ(takeAll("\xF4\x90\x80\x80"), (std::vector<char32_t>{no, no, no, no}));  // too large
}

TEST(Utf8, IsMadeOfCharacters) {
  std::string text;
  for (const char32_t c : {U'\x61', U'\x80', U'\x800', U'\x10000', U'\x10FFFF'})
    Utf8::append(text, c);

  EXPECT_EQ(text, "a\xC2\x80\xE0\xA0\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf8, IsValidAsAWholeOnly) {
  EXPECT_TRUE(Utf8::isValid(""));
  EXPECT_TRUE(Utf8::isValid("a\xC3\xA4"));
  EXPECT_FALSE(Utf8::isValid("\xC3\xA4\xFF"));
  EXPECT_FALSE(Utf8::isValid("a\xC3"));
}

TEST(Utf8Width, IsThatOfTerminals) {
  const struct {
    char32_t character;
    std::size_t width;
  } rows[] = {
      {U'a', 1},   {0xE4, 1},   {0x20AC, 1},  {0x0301, 0},  {0x0E34, 0},  {0x05BF, 0},
      {0x0670, 0}, {0x200B, 0}, {0xFE0F, 0},  {0x1100, 2},  {0x3042, 2},  {0x4E00, 2},
      {0xFF21, 2}, {0xFF71, 1}, {0x1F600, 2}, {0x1FAE0, 2}, {0x20000, 2}, {Utf8::invalid, 1},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Utf8::measure(row.character), row.width)
        << std::hex << static_cast<unsigned>(row.character);
}

TEST(Utf8Blank, IsWhatHasNoInk) {
  for (const char32_t c : {U'\x20', U'\xA0', U'\xAD', U'\x2003', U'\x200B', U'\x200D', U'\x202F',
                           U'\x2060', U'\x3000'})
    EXPECT_TRUE(Utf8::isBlank(c)) << std::hex << static_cast<unsigned>(c);
  for (const char32_t c : {U'\x61', U'\x2E', U'\x301', U'\x2800'})
    EXPECT_FALSE(Utf8::isBlank(c)) << std::hex << static_cast<unsigned>(c);
}

TEST(Utf8Blank, IsATextOfSuchCharactersOnly) {
  EXPECT_TRUE(Utf8::isBlank(""));
  EXPECT_TRUE(Utf8::isBlank(" \xC2\xA0\xE2\x80\x8B"));
  EXPECT_FALSE(Utf8::isBlank(" \xC3\xA4 "));
  EXPECT_FALSE(Utf8::isBlank(" \xFF"));
}

TEST(Utf8Blank, IsHiddenWithoutAWidth) {
  for (const char32_t c : {U'\xAD', U'\x200B', U'\x200D', U'\x2060'})
    EXPECT_TRUE(Utf8::isHidden(c));
  for (const char32_t c : {U'\x20', U'\xA0', U'\x2003', U'\x3000'}) EXPECT_FALSE(Utf8::isHidden(c));
}

TEST(Utf8Folding, MakesLettersSmall) {
  EXPECT_EQ(Utf8::fold(""), "");
  EXPECT_EQ(Utf8::fold("Raft 12, \xC3\x84X"), "raft 12, \xC3\xA4x");
  EXPECT_EQ(Utf8::fold("A\xFF"
                       "B"),
            "a\xFF"
            "b");
}

}  // namespace
