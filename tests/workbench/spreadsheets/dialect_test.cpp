#include "spreadsheets/dialect.h"

#include <string>

#include <gtest/gtest.h>

#include "workbench/spreadsheets/field_names.h"
#include "workbench/spreadsheets/sheets.h"

namespace {

using SheetTest::readTable;
using SheetTest::recognise;
using Spreadsheets::Dialect;

TEST(DialectSeparator, IsTheOneThatMakesNamesOfTheFirstRow) {
  EXPECT_EQ(recognise("number,name,areaZ\n1,A,2\n"), ",.");
  EXPECT_EQ(recognise("number;name;areaZ\n1;A;2\n"), ";,");
  EXPECT_EQ(recognise("number\tname\tareaZ\n1\tA\t2\n"), "\t,");
  EXPECT_EQ(recognise("name;areaZ\n\"A,B,C\";2\n"), ";,");
}

TEST(DialectSeparator, IsToldByTheNamesBehindRemarks) {
  EXPECT_EQ(recognise("# a, b, c\n#units;kN;m\nname;areaZ\n"), ";,");
}

TEST(DialectSeparator, OfASingleColumnIsNoCommaWhereItsNumbersHaveOne) {
  EXPECT_EQ(recognise("areaZ\n1.5\n"), ",.");
  EXPECT_EQ(recognise("areaZ\n1,5\n"), ";,");
  EXPECT_EQ(readTable("areaZ\n1,5\n"), "1 Found0001 areaX=0 areaY=0 areaZ=1.5");
  EXPECT_EQ(readTable("areaZ\n\"1,5\"\n"), "1 Found0001 areaX=0 areaY=0 areaZ=1.5");
}

TEST(DialectSeparator, OfASingleColumnIsACommaWhereItsQuotationMarksAreWrong) {
  EXPECT_EQ(recognise("name\n5\" pipe\n"),
            "table:2: a quotation mark stands in a cell that is not in quotation marks");
}

TEST(DialectSeparator, CutsMostWhereNoNameIsKnown) {
  EXPECT_EQ(recognise("Nummer;Cz\n"),
            "table:1: there is no column \"Nummer\"; did you mean number?");
  EXPECT_EQ(recognise("Nummer\tCz\n"),
            "table:1: there is no column \"Nummer\"; did you mean number?");
}

TEST(DialectSeparator, IsWhatTheUserSaysWhereNamesLeaveItOpen) {
  EXPECT_EQ(recognise("areaZ\n", {'\t', '.'}), "\t.");
  EXPECT_EQ(recognise("areaZ\n1,5\n", {',', {}}),
            "table:2: this row has too many cells: 2 instead of 1");
  EXPECT_EQ(recognise("Nummer;Cz\n", {',', {}}),
            "table:1: there is no column \"Nummer;Cz\"; " + SpreadsheetTest::fieldNames);
}

TEST(DialectSeparator, IsWhatNamesTellWhateverTheUserSays) {
  EXPECT_EQ(recognise("name;areaZ\n", {',', {}}), ";,");
}

TEST(DialectDecimal, IsAPointWhereCommasSeparateCells) {
  for (const char* bytes : {"name,areaZ\nA,1.500\n", "name,areaZ\n\"A\",1.500\n",
                            "name,areaZ\n\"A,B\",1500\n", "areaZ,areaX\n1.500,\"1.5\"\n"})
    EXPECT_EQ(recognise(bytes), ",.") << bytes;
}

TEST(DialectDecimal, IsTheOneInTheLastPlaceOfANumber) {
  const struct {
    const char* number;
    const char* dialect;
  } rows[] = {{"1,5", ";,"},   {"1.5", ";."},    {"1,5000", ";,"},   {"1.5000", ";."},
              {"0,500", ";,"}, {"0.500", ";."},  {"1234,500", ";,"}, {"1234.500", ";."},
              {"1500", ";,"},  {"-0,125", ";,"}, {"2.5e4", ";."},    {"1,125e4", ";,"}};
  for (const auto& row : rows)
    EXPECT_EQ(recognise(std::string("name;areaZ\nA;") + row.number + "\n"), row.dialect)
        << row.number;
}

TEST(DialectDecimal, IsToldByNumbersThatHaveThousandsAsWell) {
  const std::string advice = ", without marks between thousands";
  EXPECT_EQ(
      readTable("name;areaZ\nA;1.500,0\n"),
      "table:2: areaZ cannot be \"1.500,0\", only a number such as 1500 or 2,5e4, or nothing" +
          advice);
  EXPECT_EQ(
      readTable("name;areaZ\nA;1,500.0\n"),
      "table:2: areaZ cannot be \"1,500.0\", only a number such as 1500 or 2.5e4, or nothing" +
          advice);
  EXPECT_EQ(readTable("name;areaZ\nA;1.500.000\n"),
            "table:2: areaZ cannot be \"1.500.000\", only a number such as 1500 or 2,5e4, or "
            "nothing" +
                advice);
  EXPECT_EQ(readTable("name;areaZ\nA;1,500,000\n"),
            "table:2: areaZ cannot be \"1,500,000\", only a number such as 1500 or 2.5e4, or "
            "nothing" +
                advice);
  EXPECT_EQ(readTable("name;areaX;areaZ\nA;1,5;1.500\n"),
            "table:2: areaZ cannot be \"1.500\", only a number such as 1500 or 2,5e4, or nothing" +
                advice);
}

TEST(DialectDecimal, IsToldByTheFirstNumberThatCanBeReadInOneWay) {
  EXPECT_EQ(readTable("name;areaX;areaZ\nA;1,500;2,5\n"), "1 A areaX=1.5 areaY=0 areaZ=2.5");
  EXPECT_EQ(readTable("name;areaX;areaZ\nA;1.500;2.5\n"), "1 A areaX=1.5 areaY=0 areaZ=2.5");
}

TEST(DialectDecimal, IsNotToldByOtherCells) {
  EXPECT_EQ(recognise("name;areaZ\n\"1.5\";2\n"), ";,");
  EXPECT_EQ(readTable("number;areaZ\n1.5;2\n"),
            "table:2: number cannot be \"1.5\", only a whole number");
}

TEST(DialectDecimal, MustBeSaidWhereAllNumbersCanBeReadInTwoWays) {
  const std::string advice =
      " can have decimals or thousands, and nothing in the table tells which; say which";
  EXPECT_EQ(recognise("name;areaX;areaZ\nA;1;1.500\nB;2;2.500\n"),
            "table:2: areaZ \"1.500\"" + advice);
  EXPECT_EQ(recognise("name\tareaZ\nA\t1\nB\t-12,500\n"), "table:3: areaZ \"-12,500\"" + advice);
  EXPECT_EQ(recognise("name,areaZ\nA,\"1,500\"\n"), "table:2: areaZ \"1,500\"" + advice);
  EXPECT_EQ(recognise("name;areaZ\nA; 1,500\t\n"), "table:2: areaZ \"1,500\"" + advice);
}

TEST(DialectDecimal, IsWhatTheUserSaysWhereANumberCanBeReadInTwoWays) {
  EXPECT_EQ(readTable("name;areaZ\nA;1.500\n", {{}, '.'}), "1 A areaX=0 areaY=0 areaZ=1.5");
  EXPECT_EQ(readTable("name;areaZ\nA;1,500\n", {{}, ','}), "1 A areaX=0 areaY=0 areaZ=1.5");
  EXPECT_EQ(readTable("name,areaZ\nA,\"1,500\"\n", {{}, ','}), "1 A areaX=0 areaY=0 areaZ=1.5");
  EXPECT_EQ(readTable("name;areaX;areaZ\nA;2,5;1,500\n", {{}, '.'}),
            "table:2: areaX cannot be \"2,5\", only a number such as 1500 or 2.5e4, or nothing");
  EXPECT_EQ(recognise("name;areaZ\nA;2\n", {{}, '.'}), ";.");
}

TEST(DialectDecimal, IsWhatNumbersTellWhateverTheUserSays) {
  EXPECT_EQ(readTable("name;areaZ\nA;2,5\n", {{}, '.'}), "1 A areaX=0 areaY=0 areaZ=2.5");
  EXPECT_EQ(readTable("name,areaZ\nA,1.500\n", {{}, ','}), "1 A areaX=0 areaY=0 areaZ=1.5");
  EXPECT_EQ(recognise("name,areaZ\nA,2\n", {{}, ','}), ",.");
}

}  // namespace
