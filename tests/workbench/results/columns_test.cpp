#include "results/columns.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using Results::Columns;

const Charset utf8 = Charset::recognise("UTF-8", "");

TEST(ResultColumns, AreThoseOfBytesInAscii) {
  Columns columns("<A>\n <B/>", utf8);

  EXPECT_EQ(columns.count({1, 1}), 1U);
  EXPECT_EQ(columns.count({1, 3}), 3U);
  EXPECT_EQ(columns.count({2, 2}), 2U);
}

TEST(ResultColumns, CountOneForACharacterOfSeveralBytesAndTwoForOneBeyondThem) {
  Columns columns("\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80x", utf8);

  EXPECT_EQ(columns.count({1, 3}), 2U);
  EXPECT_EQ(columns.count({1, 6}), 3U);
  EXPECT_EQ(columns.count({1, 10}), 5U);
}

TEST(ResultColumns, CountTheCharactersOfACodePage) {
  const std::string bytes = "\xFC\xFC<A/>";
  Columns columns(bytes, Charset::recognise("windows-1252", bytes));

  EXPECT_EQ(columns.count({1, 3}), 3U);
}

TEST(ResultColumns, AreFoundInAnyOrder) {
  Columns columns("ab\n\xC3\xBC\xC3\xBC\nc", utf8);

  EXPECT_EQ(columns.count({3, 1}), 1U);
  EXPECT_EQ(columns.count({2, 5}), 3U);
  EXPECT_EQ(columns.count({2, 3}), 2U);
  EXPECT_EQ(columns.count({1, 2}), 2U);
}

TEST(ResultColumns, EndWithTheDocument) {
  Columns columns("ab\n", utf8);

  EXPECT_EQ(columns.count({2, 1}), 1U);
  EXPECT_EQ(columns.count({9, 5}), 1U);
}

}  // namespace
