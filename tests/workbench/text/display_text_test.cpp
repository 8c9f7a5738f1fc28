#include "text/display_text.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(DisplayName, IsInUtf8) {
  EXPECT_EQ(DisplayText::fromName("R\xFC"), "R\xC3\xBC");
  EXPECT_EQ(DisplayText::fromName("R\xC3\xBC"), "R\xC3\xBC");
  EXPECT_EQ(DisplayText::fromName("\xF0\x9F\xAB\xA0"), "\xF0\x9F\xAB\xA0");
}

TEST(DisplayName, ShowsControlCharactersAsEscapes) {
  EXPECT_EQ(DisplayText::fromName("a\nb\tc\rd\x1B[m\x7F"), "a\\nb\\tc\\x0Dd\\x1B[m\\x7F");
  EXPECT_EQ(DisplayText::fromName("\xC2\x80\xC2\x9F\xC2\xA0"), "\\x80\\x9F\xC2\xA0");
}

TEST(DisplayName, ShowsWhatTurnsTheDirectionOfWritingAsEscapes) {
  EXPECT_EQ(DisplayText::fromName("\xD8\x9C\xE2\x80\x8E\xE2\x80\x8F\xE2\x80\xA8\xE2\x80\xAE\xE2\x81"
                                  "\xA6\xE2\x81\xA9\xEF\xBB\xBF"),
            "\\u061C\\u200E\\u200F\\u2028\\u202E\\u2066\\u2069\\uFEFF");
  EXPECT_EQ(DisplayText::fromName("\xE2\x80\x8D\xE2\x80\xAF"), "\xE2\x80\x8D\xE2\x80\xAF");
}

TEST(DisplayNumber, IsTheShortestThatReadsBack) {
  const struct {
    double number;
    const char* text;
  } rows[] = {
      {0.0, "0"},
      {-0.0, "-0"},
      {0.1, "0.1"},
      {350730.6658962116, "350730.6658962116"},
      {1e-6, "0.000001"},
      {9.9e-7, "9.9e-07"},
      {-1.5e-6, "-0.0000015"},
      {9.87654e-5, "0.0000987654"},
      {1e-4, "0.0001"},
      {999999999999999.0, "999999999999999"},
      {1e15, "1e+15"},
      {-1e15, "-1e+15"},
      {1234567890123456.0, "1.234567890123456e+15"},
      {1e16, "1e+16"},
      {std::numeric_limits<double>::infinity(), "inf"},
      {-std::numeric_limits<double>::infinity(), "-inf"},
      {std::numeric_limits<double>::quiet_NaN(), "nan"},
      {-std::numeric_limits<double>::quiet_NaN(), "nan"},
  };
  for (const auto& row : rows) EXPECT_EQ(DisplayText::fromNumber(row.number), row.text);
}

TEST(DisplayWidth, CountsPlacesAndNotBytes) {
  EXPECT_EQ(DisplayText::measure(""), 0u);
  EXPECT_EQ(DisplayText::measure("ab\xC3\xBC"), 3u);
  EXPECT_EQ(DisplayText::measure("a\xCC\x81"), 1u);                 // an accent over it
  EXPECT_EQ(DisplayText::measure("\xE5\x9F\xBA"), 2u);              // an ideograph
  EXPECT_EQ(DisplayText::measure("\xE0\xB8\x81\xE0\xB8\xB4"), 1u);  // a vowel over a letter
  EXPECT_EQ(DisplayText::measure("\xF0\x9F\xAB\xA0"), 2u);          // a face
}

TEST(DisplayShort, EndsWithAnEllipsisWhereThereIsNoRoom) {
  EXPECT_EQ(DisplayText::shorten("abc", 3), "abc");
  EXPECT_EQ(DisplayText::shorten("abcd", 3), "ab\xE2\x80\xA6");
  EXPECT_EQ(DisplayText::shorten("abcd", 1), "\xE2\x80\xA6");
  EXPECT_EQ(DisplayText::shorten("", 0), "");
}

TEST(DisplayShort, CutsNoCharacterInTwo) {
  EXPECT_EQ(DisplayText::shorten("a\xE5\x9F\xBA\xE7\xA4\x8E", 4), "a\xE5\x9F\xBA\xE2\x80\xA6");
  EXPECT_EQ(DisplayText::shorten("a\xE5\x9F\xBA\xE7\xA4\x8E", 3), "a\xE2\x80\xA6");
  EXPECT_EQ(DisplayText::shorten("ab\xCC\x81yz", 3), "ab\xCC\x81\xE2\x80\xA6");
}

TEST(DisplayLines, HoldWhatHasRoom) {
  EXPECT_EQ(DisplayText::wrap({}, ", ", 10), "");
  EXPECT_EQ(DisplayText::wrap({"ab", "cd"}, ", ", 6), "ab, cd");
  EXPECT_EQ(DisplayText::wrap({"ab", "cd"}, ", ", 5), "ab\ncd");
  EXPECT_EQ(DisplayText::wrap({"abcdef", "g", "h"}, " ", 3), "abcdef\ng h");
}

}  // namespace
