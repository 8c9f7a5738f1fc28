#include "spreadsheets/csv_writer.h"

#include <limits>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "workbench/spreadsheets/sheets.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;
using SheetTest::english;
using SheetTest::german;
using SheetTest::openDialect;
using SheetTest::writeTable;

const std::string names =
    "number,name,generated,areaX,areaY,areaZ,areaFailureZ,areaFactor,lineX,lineY,lineZ,"
    "lineRotationX,lineFailureX,lineFailureY,lineFailureZ,lineFactor,current\n";
const std::string germanNames =
    "\xEF\xBB\xBFnumber;name;generated;areaX;areaY;areaZ;areaFailureZ;areaFactor;lineX;lineY;lineZ;"
    "lineRotationX;lineFailureX;lineFailureY;lineFailureZ;lineFactor;current\n";

Foundation& addNamed(FoundationManager& manager, int number, const std::string& name) {
  auto foundation = std::make_unique<Foundation>();
  Foundation& added = *foundation;
  added.setNumber(number);
  added.setName(name);
  manager.add(std::move(foundation));
  return added;
}

void fill(FoundationManager& manager) {
  Foundation& raft = addNamed(manager, 7, "Raft");
  const KvVector3D area(1.5, -0.0, 1.125);
  raft.setDispArea(&area);
  raft.setGenerated(true);
  raft.setFailAreaZ(Foundation::Tension);
  raft.setFactorArea(0.1);
  manager.setCurrentFoundation(&raft);
  Foundation& strip = addNamed(manager, -3, "Strip");
  const KvVector3D line(1e300, 0.0, std::numeric_limits<double>::infinity());
  strip.setDispLine(&line);
  strip.setFailLineX(static_cast<Foundation::Failure>(-7));
}

TEST(CsvWriter, WritesEveryFieldOfEveryFoundation) {
  FoundationManager manager;
  fill(manager);

  EXPECT_EQ(writeTable(manager),
            names +
                "7,Raft,true,1.5,-0,1.125,tension,0.1,,,,,none,none,none,0,true\n"
                "-3,Strip,false,,,,none,0,1e+300,0,inf,,-7,none,none,0,false\n");
}

TEST(CsvWriter, WritesForGermanSpreadsheetsWhereDecimalsHaveAComma) {
  FoundationManager manager;
  fill(manager);

  EXPECT_EQ(writeTable(manager, {{}, ','}),
            germanNames +
                "7;Raft;true;1,5;-0;1,1250;tension;0,1;;;;;none;none;none;0;true\n"
                "-3;Strip;false;;;;none;0;1e+300;0;inf;;-7;none;none;0;false\n");
}

TEST(CsvWriter, SeparatesCellsAsItIsTold) {
  FoundationManager manager;
  Foundation& foundation = addNamed(manager, 1, "A;B\tC");
  foundation.setFactorArea(0.5);

  EXPECT_NE(writeTable(manager, {';', {}}).find("\n1;\"A;B\tC\";false;;;;none;0.5;"),
            std::string::npos);
  EXPECT_NE(writeTable(manager, {'\t', '.'}).find("\n1\t\"A;B\tC\"\tfalse\t\t\t\tnone\t0.5\t"),
            std::string::npos);
  EXPECT_NE(writeTable(manager, {',', ','}).find("\n1,A;B\tC,false,,,,none,\"0,5\","),
            std::string::npos);
}

TEST(CsvWriter, QuotesWhatWouldEndACell) {
  const struct {
    const char* name;
    const char* cell;
  } rows[] = {{"A, B", "\"A, B\""}, {"\"A\" B", "\"\"\"A\"\" B\""},
              {"\"", "\"\"\"\""},   {"A\nB", "\"A\nB\""},
              {"A\rB", "\"A\rB\""}, {"=A,B", "\"'=A,B\""},
              {" A ", " A "},       {"A;B", "A;B"}};
  for (const auto& row : rows) {
    FoundationManager manager;
    addNamed(manager, 1, row.name);
    EXPECT_EQ(writeTable(manager),
              names + "1," + row.cell + ",false,,,,none,0,,,,,none,none,none,0,false\n");
  }
}

TEST(CsvWriter, NamesTheColumnsOfATableWithoutFoundations) {
  EXPECT_EQ(writeTable(FoundationManager()), names);
}

TEST(CsvWriter, WritesUnitsBeforeTheNamesOfTheColumns) {
  const FoundationManager manager;

  EXPECT_EQ(writeTable(manager, english, {"kN", "m"}), "#units,kN,m\n" + names);
  EXPECT_EQ(writeTable(manager, german, {"k;N", "=m"}),
            "\xEF\xBB\xBF#units;\"k;N\";'=m\n" + germanNames.substr(3));
  EXPECT_EQ(writeTable(manager, openDialect, {"", ""}), names);
}

TEST(CsvWriter, CompletesADialect) {
  const struct {
    Spreadsheets::Dialect given;
    char separator;
    char decimal;
  } rows[] = {{{}, ',', '.'},
              {{{}, ','}, ';', ','},
              {{{}, '.'}, ',', '.'},
              {{'\t', {}}, '\t', '.'},
              {{',', ','}, ',', ','}};
  for (const auto& row : rows) {
    EXPECT_EQ(*Spreadsheets::complete(row.given).separator, row.separator);
    EXPECT_EQ(*Spreadsheets::complete(row.given).decimal, row.decimal);
  }
}

}  // namespace
