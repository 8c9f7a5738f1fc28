#include "spreadsheets/csv_reader.h"

#include <string>

#include <gtest/gtest.h>

#include "workbench/spreadsheets/field_names.h"
#include "workbench/spreadsheets/sheets.h"

namespace {

using Found::FoundationManager;
using SheetTest::openDialect;
using SheetTest::readTable;
using Spreadsheets::Origin;
using Spreadsheets::Sheet;

struct TableRow {
  const char* bytes;
  std::string told;
};

template <std::size_t count>
void expectTables(const TableRow (&rows)[count]) {
  for (const TableRow& row : rows) EXPECT_EQ(readTable(row.bytes), row.told) << row.bytes;
}

const std::string allColumns =
    "number,name,generated,areaX,areaY,areaZ,areaFailureZ,areaFactor,lineX,lineY,lineZ,"
    "lineRotationX,lineFailureX,lineFailureY,lineFailureZ,lineFactor,current\n";

// --- As spreadsheets write it

TEST(CsvReader, TakesEveryFieldOfAFoundation) {
  EXPECT_EQ(readTable(allColumns +
                      "7,Raft,true,1,2,3,tension,0.1,4,5,6,8,compression,none,-7,0.2,true\n"),
            "7 Raft generated=yes areaX=1 areaY=2 areaZ=3 areaFailureZ=tension areaFactor=0.1 "
            "lineX=4 lineY=5 lineZ=6 lineRotationX=8 lineFailureX=compression lineFailureZ=-7 "
            "lineFactor=0.2 current");
}

TEST(CsvReader, TakesWhatAnEnglishSpreadsheetWrites) {
  EXPECT_EQ(readTable("\xEF\xBB\xBFnumber,name,generated,areaX,current\r\n"
                      "1,\"Raft, stiff \"\"A\"\"\",TRUE,1500.5,FALSE\r\n"
                      "2,\"Strip\nfooting\",FALSE,2.50E+04,TRUE\r\n"),
            "1 Raft, stiff \"A\" generated=yes areaX=1500.5 areaY=0 areaZ=0 | "
            "2 Strip\nfooting areaX=25000 areaY=0 areaZ=0 current");
}

TEST(CsvReader, TakesWhatAGermanSpreadsheetWrites) {
  EXPECT_EQ(readTable("number;name;generated;areaX;current\r\n"
                      "1;W\xFCst, lehmig;WAHR;1500,5;FALSCH\r\n"
                      "2;\"Stra\xDF\x65\r\n\x80\";FALSCH;2,50E+04;WAHR\r\n"),
            "1 W\xC3\xBCst, lehmig generated=yes areaX=1500.5 areaY=0 areaZ=0 | "
            "2 Stra\xC3\x9F\x65\r\n\xE2\x82\xAC areaX=25000 areaY=0 areaZ=0 current");
  EXPECT_EQ(readTable("\xEF\xBB\xBFname;areaX\r\nW\xC3\xBCst;1,5\r\n"),
            "1 W\xC3\xBCst areaX=1.5 areaY=0 areaZ=0");
}

TEST(CsvReader, TakesTabsAndLinesThatEndLikeThoseOfOldComputers) {
  EXPECT_EQ(readTable("name\tareaX\rA\t1.5\rB\t2,\r"),
            "table:3: areaX cannot be \"2,\", only a number such as 1500 or 2.5e4, or nothing");
  EXPECT_EQ(readTable("name\tareaX\rA\t1.5\rB\t2"),
            "1 A areaX=1.5 areaY=0 areaZ=0 | 2 B areaX=2 areaY=0 areaZ=0");
}

TEST(CsvReader, SkipsRowsThatSpreadsheetsLeaveEmpty) {
  EXPECT_EQ(readTable("number;name\r\n\r\n1;A\r\n;\r\n;\r\n2;B\r\n;\r\n"), "1 A | 2 B");
  EXPECT_EQ(readTable("name;areaX\n;\nA;1\n"), "1 A areaX=1 areaY=0 areaZ=0");
}

TEST(CsvReader, TakesFormulaTextsForWhatTheyStandFor) {
  EXPECT_EQ(readTable("name\n'=A1\n''=A1\n=A1\n'A\n\"'\tA\"\n'-1\n"),
            "1 =A1 | 2 '=A1 | 3 =A1 | 4 'A | 5 \tA | 6 -1");
}

// --- Columns

TEST(CsvReader, TakesColumnsInAnyOrder) {
  expectTables({{"areaX,name,number\n1.5,A,7\n", "7 A areaX=1.5 areaY=0 areaZ=0"},
                {" name , number \nA,7\n", "7 A"},
                {"\"name\",\"number\"\n\"A\",\"7\"\n", "7 A"}});
}

TEST(CsvReader, CountsFoundationsThatHaveNoNumbers) {
  EXPECT_EQ(readTable("name\nA\nB\n"), "1 A | 2 B");
}

TEST(CsvReader, NamesFoundationsThatHaveNoNamesAsTheLibraryDoes) {
  expectTables(
      {{"number\n7\n12345\n", "7 Found0007 | 12345 Found12345"},
       {"areaFactor\n0.5\n0.25\n", "1 Found0001 areaFactor=0.5 | 2 Found0002 areaFactor=0.25"},
       {"number,name\n7,\n", "7 "}});
}

TEST(CsvReader, LeavesFieldsWithoutAColumnOrATextAsTheyAre) {
  expectTables({{"name,areaX,areaFailureZ,areaFactor,generated,current\nA,,,,,\n", "1 A"},
                {"name,areaX,lineRotationX\nA,,2\n", "1 A lineRotationX=2"}});
}

TEST(CsvReader, RefusesColumnsThatAreNotKnown) {
  expectTables(
      {{"number,areaz\n1,2\n", "table:1: there is no column \"areaz\"; did you mean areaZ?"},
       {"number,colour\n1,2\n",
        "table:1: there is no column \"colour\"; " + SpreadsheetTest::fieldNames},
       {"number,name,\n1,A,\n", "table:1: column 3 of 3 has no name"},
       {"# remark\n\nnumber,curent\n1,2\n",
        "table:3: there is no column \"curent\"; did you mean current?"},
       {"sep=;\nnumber;name\n",
        "table:1: there is no column \"sep=\"; " + SpreadsheetTest::fieldNames},
       {"number;W\xFC\n1;2\n",
        "table:1: there is no column \"W\xC3\xBC\"; " + SpreadsheetTest::fieldNames}});
}

TEST(CsvReader, RefusesColumnsThatAreGivenTwice) {
  expectTables({{"number,name,number\n1,A,1\n", "table:1: the column number is given twice"},
                {"current,name,current\ntrue,A,\n", "table:1: the column current is given twice"}});
}

// --- Remarks and units

TEST(CsvReader, SkipsRemarksBeforeTheNamesOfTheColumns) {
  EXPECT_EQ(readTable("# Soil report, page 3\n#\n\"# \"\"A\"\"\"\nnumber,name\n1,#A\n"), "1 #A");
}

TEST(CsvReader, TakesUnitsOfRemarks) {
  const struct {
    const char* bytes;
    const char* force;
    const char* length;
  } rows[] = {{"#units,kN,m\nname\n", "kN", "m"},
              {"#units;kN;m;;;\r\nname;number\r\n", "kN", "m"},
              {"# first\n#units\tN\tmm\n# last\nname\tnumber\n", "N", "mm"},
              {"#units;k\xB5N;m\nname;number\n", "k\xC2\xB5N", "m"},
              {"#units,'=N,'@m\nname\n", "=N", "@m"},
              {"#units;kN;m\nareaX\n15\n", "kN", "m"},
              {"#units;kN;m\nareaX\n1,5\n", "kN", "m"},
              {"#units, ,\nname\n", "", ""},
              {"#units\nname\n", "", ""},
              {"#unit,kN,m\nname\n", "", ""},
              {"name\nA\n", "", ""}};
  for (const auto& row : rows) {
    FoundationManager manager;
    const Units units = SheetTest::read(row.bytes, openDialect, manager).units;
    EXPECT_EQ(units.force, row.force) << row.bytes;
    EXPECT_EQ(units.length, row.length) << row.bytes;
  }
}

TEST(CsvReader, RefusesUnitsThatAreNotWhole) {
  const std::string told = ": this row names units of force and length, such as ";
  expectTables({{"#units,kN\nname\n", "table:1" + told + "#units,kN,m, or none"},
                {"# A\n#units;;m\nname;number\n", "table:2" + told + "#units;kN;m, or none"},
                {"#units,kN,m\nname;number\n", "table:1" + told + "#units;kN;m, or none"},
                {"#units kN m\nname,number\n", "table:1" + told + "#units,kN,m, or none"},
                {"#units,kN,m\n#units,N,mm\nname\n", "table:2: the units are named twice"}});
}

TEST(CsvReader, RefusesUnitsThatDocumentsCannotHold) {
  EXPECT_EQ(readTable("#units,k\x01N,m\nname\n"),
            "table:1: a unit cannot be \"k\\x01N\", only a text in UTF-8, without control "
            "characters");
}

// --- Faults

TEST(CsvReader, RefusesTablesWithoutColumns) {
  const char* const told = "table: this table is empty; its first row names the columns";
  expectTables({{"", told}, {"\n\r\n", told}, {"\xEF\xBB\xBF", told}, {"# remark\n", told}});
}

TEST(CsvReader, TakesATableWithoutRows) {
  expectTables({{"number,name", ""}, {"number,name\r\n", ""}, {"\xEF\xBB\xBFname", ""}});
}

TEST(CsvReader, RefusesRowsThatHaveOtherCellsThanTheTable) {
  expectTables({{"number,name\n1,A\n2\n", "table:3: this row has too few cells: 1 instead of 2"},
                {"number,name\n1,\"A\nB\"\n1,500,A\n",
                 "table:4: this row has too many cells: 3 instead of 2"}});
}

TEST(CsvReader, TellsTheRowAndTheColumnOfACellThatItCannotRead) {
  expectTables(
      {{"number,name\nx,A\n", "table:2: number cannot be \"x\", only a whole number"},
       {"number,name\n,A\n", "table:2: number cannot be \"\", only a whole number"},
       {"# remark\nname,generated\n\"A\nB\",no\nC,maybe\n",
        "table:5: generated cannot be \"maybe\", only true or false"},
       {"name,current\nA,maybe\n", "table:2: current cannot be \"maybe\", only true or false"},
       {"name,areaX\nA,1 500\n",
        "table:2: areaX cannot be \"1 500\", only a number such as 1500 or 2.5e4, or nothing, "
        "without marks between thousands"},
       {"name,areaX\nA,1'500\n",
        "table:2: areaX cannot be \"1'500\", only a number such as 1500 or 2.5e4, or nothing, "
        "without marks between thousands"},
       {"name,areaX\nA,1500 kN/m3\n",
        "table:2: areaX cannot be \"1500 kN/m3\", only a number such as 1500 or 2.5e4, or nothing"},
       {"name,lineFactor\nA,1e999\n",
        "table:2: lineFactor cannot be \"1e999\", only a number such as 0.1"},
       {"name,areaFailureZ\nA,tensile\n",
        "table:2: areaFailureZ cannot be \"tensile\", only tension, compression or none"},
       {"name,areaX\nA,W\xFCst\n",
        "table:2: areaX cannot be \"W\xC3\xBCst\", only a number such as 1500 or 2.5e4, or "
        "nothing"},
       {"name,areaX\n\x01,1\n",
        "table:2: name cannot be \"\\x01\", only a text in UTF-8, without control characters"},
       {"number\n1234567890123456789012345678901234567890123456789012345678901234567890\n",
        "table:2: number cannot be "
        "\"12345678901234567890123456789012345678901234567890123456789\xE2\x80\xA6\", only a whole "
        "number"}});
}

TEST(CsvReader, RefusesTheByteZero) {
  EXPECT_EQ(readTable(std::string("name\nA\0B\n", 9)),
            "table:2: name cannot be \"A\\x00"
            "B\", only a text in UTF-8, without control characters");
}

TEST(CsvReader, RefusesASecondCurrentFoundation) {
  EXPECT_EQ(readTable("name,current\nA,true\nB,\nC,yes\n"),
            "table:4: only one foundation can be the current one");
}

TEST(CsvReader, RefusesQuotationMarksThatEncloseNoCell) {
  expectTables({{"name,areaX\nA,1\nA 5\" B,2\n",
                 "table:3: a quotation mark stands in a cell that is not in quotation marks"},
                {"name,areaX\nA,1\n\"B,2\n", "table:3: a quotation mark is not closed"},
                {"name,\"areaX\n", "table:1: a quotation mark is not closed"}});
}

TEST(CsvReader, RefusesUtf16) {
  const std::string told = "table: this is a table in UTF-16; save it as CSV in UTF-8";
  EXPECT_EQ(readTable(std::string("\xFF\xFEn\0a\0", 6)), told);
  EXPECT_EQ(readTable(std::string("\xFE\xFF\0n\0a", 6)), told);
}

// --- Where foundations stand

TEST(CsvReader, TellsWhereFoundationsStand) {
  const std::string bytes = "\xEF\xBB\xBFname,areaX\r\n\"A\nB\",1\r\n,\r\n\r\nC,2";
  FoundationManager manager;

  const Sheet sheet = SheetTest::read(bytes, openDialect, manager);

  ASSERT_EQ(sheet.origins.size(), 2u);
  const Origin& first = sheet.origins[0];
  const Origin& second = sheet.origins[1];
  EXPECT_EQ(first.line, 2u);
  EXPECT_EQ(first.column, 1u);
  EXPECT_EQ(bytes.substr(first.begin, first.end - first.begin), "\"A\nB\",1\r\n");
  EXPECT_EQ(second.line, 6u);
  EXPECT_EQ(bytes.substr(second.begin, second.end - second.begin), "C,2");
}

TEST(CsvReader, TellsWhichFieldsHaveAColumn) {
  FoundationManager manager;

  const Sheet sheet = SheetTest::read("current,name,areaX\n,A,\n", openDialect, manager);

  for (const Fields::Field& field : Fields::list()) {
    const bool isTold = std::string(field.name) == "name" || std::string(field.name) == "areaX";
    EXPECT_EQ(sheet.origins.at(0).told.has(field), isTold) << field.name;
  }
}

}  // namespace
