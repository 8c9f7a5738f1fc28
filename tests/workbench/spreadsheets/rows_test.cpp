#include "spreadsheets/rows.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "files/user_error.h"

namespace {

using Spreadsheets::locateCell;
using Spreadsheets::readRows;
using Spreadsheets::Row;

/// The rows of a table: the line of each, then its cells in brackets.
std::string listRows(std::string_view text, char separator = ',') {
  std::string rows;
  readRows(text, separator, "table", [&rows](const Row& row) {
    rows += std::to_string(row.line) + ":";
    for (std::size_t i = 0; i < row.count; ++i) rows += "[" + row.cells[i] + "]";
    return true;
  });
  return rows;
}

std::string refuseRows(std::string_view text) {
  try {
    listRows(text);
  } catch (const UserError& error) {
    return error.what();
  }
  return "";
}

TEST(Rows, AreCutAtTheSeparator) {
  EXPECT_EQ(listRows("a,b;c\td\n"), "1:[a][b;c\td]");
  EXPECT_EQ(listRows("a,b;c\td\n", ';'), "1:[a,b][c\td]");
  EXPECT_EQ(listRows("a,b;c\td\n", '\t'), "1:[a,b;c][d]");
}

TEST(Rows, EndWithTheirLinesWhateverEndsThese) {
  EXPECT_EQ(listRows("a,b\nc,d\n"), "1:[a][b]2:[c][d]");
  EXPECT_EQ(listRows("a,b\r\nc,d\r\n"), "1:[a][b]2:[c][d]");
  EXPECT_EQ(listRows("a,b\rc,d\r"), "1:[a][b]2:[c][d]");
  EXPECT_EQ(listRows("a,b\nc,d"), "1:[a][b]2:[c][d]");
}

TEST(Rows, AreNotThereInAnEmptyTable) {
  EXPECT_EQ(listRows(""), "");
  EXPECT_EQ(listRows("\n\r\n\r"), "");
}

TEST(Rows, AreCountedWithTheBlankLinesBetweenThem) {
  EXPECT_EQ(listRows("\na\n\n\nb\n"), "2:[a]5:[b]");
  EXPECT_EQ(listRows("\r\na\r\n\r\nb\r\n"), "2:[a]4:[b]");
}

TEST(Rows, KeepEmptyCellsAndBlanks) {
  EXPECT_EQ(listRows(",,\n"), "1:[][][]");
  EXPECT_EQ(listRows(" a ,\n"), "1:[ a ][]");
  EXPECT_EQ(listRows(" \n"), "1:[ ]");
  EXPECT_EQ(listRows("\"\"\n"), "1:[]");
}

TEST(Rows, HoldWhatStandsInQuotationMarks) {
  EXPECT_EQ(listRows("\"a,b\",\"c \"\"d\"\"\"\n"), "1:[a,b][c \"d\"]");
  EXPECT_EQ(listRows("\"a\nb\",c\nd\n"), "1:[a\nb][c]3:[d]");
  EXPECT_EQ(listRows("\"a\r\n\r\nb\"\r\nd\r\n"), "1:[a\r\n\r\nb]4:[d]");
  EXPECT_EQ(listRows("\"\n\n\"\nd"), "1:[\n\n]4:[d]");
}

TEST(Rows, CanHoldAnyByte) {
  EXPECT_EQ(listRows(std::string_view("a\0b,c\n", 6)), std::string("1:[a\0b][c]", 10));
  EXPECT_EQ(listRows("\xFC,\xFF\n"), "1:[\xFC][\xFF]");
}

TEST(Rows, TellWhereTheyStand) {
  const std::string text = "ab\r\n\r\n\"c\r\nd\"\r\ne";
  std::vector<std::string> cut;
  readRows(text, ',', "table", [&](const Row& row) {
    cut.push_back(text.substr(row.begin, row.end - row.begin));
    return true;
  });

  EXPECT_EQ(cut, (std::vector<std::string>{"ab\r\n", "\"c\r\nd\"\r\n", "e"}));
}

TEST(Rows, AreReadUntilNoMoreIsWanted) {
  std::string first;
  readRows("a\nb\n\"", ',', "table", [&first](const Row& row) {
    first = row.cells[0];
    return false;
  });

  EXPECT_EQ(first, "a");
}

TEST(Rows, HaveQuotationMarksOnlyAroundCells) {
  const std::string advice = "a quotation mark stands in a cell that is not in quotation marks";
  EXPECT_EQ(refuseRows("a\nb 5\" c\n"), "table:2: " + advice);
  EXPECT_EQ(refuseRows("a\n\"b\" c\n"), "table:2: " + advice);
  EXPECT_EQ(refuseRows("\"a\nb\"c\n"), "table:1: " + advice);
}

TEST(Rows, HaveNoQuotationMarkThatIsNotClosed) {
  EXPECT_EQ(refuseRows("a\nb,\"c\nd\n"), "table:2: a quotation mark is not closed");
  EXPECT_EQ(refuseRows("\""), "table:1: a quotation mark is not closed");
}

// --- Cells

/// Where each cell of a row in line 5 starts: 5:1 5:3
std::string locateCells(std::string_view row, std::size_t count) {
  std::string places;
  for (std::size_t i = 0; i < count; ++i) {
    const KvXmlPosition place = locateCell(row, 5, ',', i);
    places += (i > 0 ? " " : "") + std::to_string(place.line) + ":" + std::to_string(place.column);
  }
  return places;
}

TEST(Cells, StartBehindTheSeparator) {
  EXPECT_EQ(locateCells("a,,b;b\tb,c\r\n", 4), "5:1 5:3 5:4 5:10");
  EXPECT_EQ(locateCells("a,", 2), "5:1 5:3");
}

TEST(Cells, MayHoldSeparatorsInQuotationMarks) {
  EXPECT_EQ(locateCells("\"a,b\",\"\"\"c\"\",\",\",\",d\n", 4), "5:1 5:7 5:16 5:20");
}

TEST(Cells, MayHoldLineBreaksInQuotationMarks) {
  EXPECT_EQ(locateCells("\"a\nb\",c\n", 2), "5:1 6:4");
  EXPECT_EQ(locateCells("\"a\r\n\r\n,b\",c,\"\n\"\r\n", 3), "5:1 7:5 7:7");
  EXPECT_EQ(locateCells("\"a\rbc\",d,\"\n\",e\r", 4), "5:1 6:5 6:7 7:3");
}

}  // namespace
