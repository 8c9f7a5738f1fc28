#include "spreadsheets/places.h"

#include <string>

#include <gtest/gtest.h>

#include "workbench/spreadsheets/sheets.h"

namespace {

using Found::FoundationManager;
using Spreadsheets::Sheet;

/// Where a field of each foundation stands: 2:1 3:1
std::string locateAll(const char* field, const Sheet& sheet, const std::string& bytes) {
  std::string places;
  for (const Spreadsheets::Origin& origin : sheet.origins) {
    const KvXmlPosition place = Spreadsheets::locate(*Fields::find(field), origin, sheet, bytes);
    if (!places.empty()) places += " ";
    places += std::to_string(place.line) + ":" + std::to_string(place.column);
  }
  return places;
}

std::string locateInTable(const char* field, const std::string& bytes) {
  FoundationManager manager;
  return locateAll(field, SheetTest::read(bytes, SheetTest::openDialect, manager), bytes);
}

std::string locateInData(const char* field, const std::string& bytes) {
  FoundationManager manager;
  return locateAll(field, SheetTest::readData(bytes, manager), bytes);
}

// --- Tables

TEST(Places, AreCellsOfTables) {
  const std::string table = "current,number,name,areaX\nyes,1,A,2\n,22,B B,3\n";
  EXPECT_EQ(locateInTable("number", table), "2:5 3:2");
  EXPECT_EQ(locateInTable("name", table), "2:7 3:5");
  EXPECT_EQ(locateInTable("areaX", table), "2:9 3:9");
}

TEST(Places, AreRowsWhereThereIsNoColumn) {
  EXPECT_EQ(locateInTable("name", "number,areaX\n1,2\n\n2,3\n"), "2:1 4:1");
}

TEST(Places, GoByTheSeparatorOfTheTable) {
  EXPECT_EQ(locateInTable("areaX", "name;areaX\nA,B;1,5\n"), "2:5");
  EXPECT_EQ(locateInTable("areaX", "name\tareaX\nA,B;C\t1\n"), "2:7");
}

TEST(Places, CountBytesBehindAByteOrderMark) {
  EXPECT_EQ(locateInTable("areaX", "\xEF\xBB\xBFname,areaX\n\xC3\xBC,1\n"), "2:4");
}

// --- Data

TEST(Places, AreMembersOfData) {
  const std::string data =
      "{\"foundations\": [{\"number\": 1, \"name\": \"A\"},\r\n\t{\"name\" : \"B\",\n"
      "\n  \"number\"\n: 2}]}";
  EXPECT_EQ(locateInData("number", data), "1:19 4:3");
  EXPECT_EQ(locateInData("name", data), "1:32 2:3");
}

TEST(Places, AreObjectsWhereThereIsNoMember) {
  EXPECT_EQ(locateInData("name", "{\"foundations\": [\n{}, {\"number\": 1}, {\"name\": \"A\"}]}"),
            "2:1 2:5 2:21");
}

TEST(Places, AreObjectsWhereTheNameIsSpeltWithEscapes) {
  EXPECT_EQ(locateInData("name", R"({"foundations": [{"\u006eame": "A"}, {"name": "B"}]})"),
            "1:18 1:39");
}

TEST(Places, AreNotWithinTextsOfData) {
  EXPECT_EQ(
      locateInData("number",
                   R"({"foundations": [{"name": "\"}\\", "number": 1}, )"
                   R"({"name": "number", "number": 2}, {"name": "\",\"number\":", "number": 3}]})"),
      "1:36 1:69 1:110");
}

}  // namespace
