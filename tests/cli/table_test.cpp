#include "table.h"

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr auto right = Table::Align::right;

/// A table as a file gets it, whose lines have this width.
std::string print(const Table& table, std::size_t width) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
  std::ostringstream out;
  table.print(out, width, Terminal::Painter(file.get()));
  return out.str();
}

TEST(Table, AlignsItsColumns) {
  Table table({{"Name"}, {"No", right}});
  table.addRow({"A", "1"});
  table.addRow({"Raft", "100"});

  EXPECT_EQ(print(table, 100),
            "Name   No\n"
            "A       1\n"
            "Raft  100\n");
}

TEST(Table, HasNoBlanksAtLineEnds) {
  Table table({{"A"}, {"B"}});
  table.addRow({"1", ""});
  table.addRow({"", "22"});
  table.addRow({"", ""});

  EXPECT_EQ(print(table, 100), "A  B\n1\n   22\n\n");
}

TEST(Table, MeasuresCharactersByTheirPlaces) {
  Table table({{"Name"}, {"No"}});
  table.addRow({"\xE5\x9C\xB0\xE5\x9F\xBA\xE5\x9C\xB0", "1"});
  table.addRow({"u\xCC\x88", "2"});

  EXPECT_EQ(print(table, 100),
            "Name    No\n"
            "\xE5\x9C\xB0\xE5\x9F\xBA\xE5\x9C\xB0  1\n"
            "u\xCC\x88       2\n");
}

TEST(Table, WithoutRowsIsItsHeadings) {
  EXPECT_EQ(print(Table({{"A"}, {"B"}}), 100), "A  B\n");
  EXPECT_EQ(print(Table({}), 100), "\n");
}

TEST(Table, ShortensWhatMayBeShortenedDownToItsLeastWidth) {
  Table table({{"Name", Table::Align::left, true, 4}, {"x"}});
  table.addRow({"abcdefgh", "12"});

  EXPECT_EQ(print(table, 12), "Name      x\nabcdefgh  12\n");
  EXPECT_EQ(print(table, 11), "Name     x\nabcdef\xE2\x80\xA6  12\n");
  EXPECT_EQ(print(table, 8), "Name  x\nabc\xE2\x80\xA6  12\n");
}

TEST(Table, BreaksColumnsIntoBlocksThatBeginWithTheKeys) {
  Table table({{"No", right, true}, {"x"}, {"y"}, {"z"}});
  table.addRow({"1", "10", "20", "30"});

  EXPECT_EQ(print(table, 14), "No  x   y   z\n 1  10  20  30\n");
  EXPECT_EQ(print(table, 13), "No  x   y\n 1  10  20\n\nNo  z\n 1  30\n");
  EXPECT_EQ(print(table, 1), "No  x\n 1  10\n\nNo  y\n 1  20\n\nNo  z\n 1  30\n");
}

TEST(Table, ShortensKeysFurtherWhereAColumnHasNoRoomBesideThem) {
  Table table({{"Name", Table::Align::left, true, 4}, {"x"}});
  table.addRow({"abcdefgh", "123456"});

  EXPECT_EQ(print(table, 11), "Na\xE2\x80\xA6  x\nab\xE2\x80\xA6  123456\n");
  EXPECT_EQ(print(table, 5), "\xE2\x80\xA6  x\n\xE2\x80\xA6  123456\n");
}

}  // namespace
