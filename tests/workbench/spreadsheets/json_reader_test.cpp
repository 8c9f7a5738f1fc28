#include "spreadsheets/json_reader.h"

#include <string>

#include <gtest/gtest.h>

#include "workbench/spreadsheets/field_names.h"
#include "workbench/spreadsheets/sheets.h"

namespace {

using Found::FoundationManager;
using SheetTest::readData;
using Spreadsheets::Sheet;

struct DataRow {
  const char* bytes;
  const char* told;
};

template <std::size_t count>
void expectData(const DataRow (&rows)[count]) {
  for (const DataRow& row : rows)
    EXPECT_EQ(readData(std::string(row.bytes)), row.told) << row.bytes;
}

/// What is told of a foundation with these members, the first of which is in column 19.
std::string readMembers(const std::string& members) {
  return readData("{\"foundations\": [{" + members + "}]}");
}

TEST(JsonReader, TakesEveryFieldOfAFoundation) {
  EXPECT_EQ(
      readData(std::string(
          R"({"format": "kvfound-foundations", "version": 1, "foundations": [{"number": 7, "name": "Raft",
          "generated": true, "areaX": 1, "areaY": 2.0, "areaZ": 3e0, "areaFailureZ": "tension",
          "areaFactor": 0.1, "lineX": 4, "lineY": 5, "lineZ": 6, "lineRotationX": 8,
          "lineFailureX": "compression", "lineFailureY": "none", "lineFailureZ": "-7",
          "lineFactor": 0.2, "current": true}], "maximum": 6.0})")),
      "7 Raft generated=yes areaX=1 areaY=2 areaZ=3 areaFailureZ=tension areaFactor=0.1 "
      "lineX=4 lineY=5 lineZ=6 lineRotationX=8 lineFailureX=compression lineFailureZ=-7 "
      "lineFactor=0.2 current");
}

TEST(JsonReader, TakesMembersInAnyOrder) {
  EXPECT_EQ(readData(std::string(
                R"({"maximum":"inf","foundations":[{"current":false,"lineFactor":2,"name":"A",)"
                R"("number":7}],"version":1,"units":{},"format":"kvfound-foundations"})")),
            "7 A lineFactor=2");
}

TEST(JsonReader, LeavesFieldsWithoutAMemberAsTheyAre) {
  EXPECT_EQ(readMembers(""), "1 Found0001");
  EXPECT_EQ(readMembers("}, {\"number\": 7}, {\"name\": \"\""), "1 Found0001 | 7 Found0007 | 3 ");
  EXPECT_EQ(readMembers("\"areaX\": null, \"lineX\": 1"), "1 Found0001 lineX=1 lineY=0 lineZ=0");
  EXPECT_EQ(readData(std::string("{\"foundations\": []}")), "");
}

TEST(JsonReader, TakesNumbersAsTheyAreWritten) {
  const struct {
    const char* written;
    const char* shown;
  } rows[] = {{"1e-320", "1e-320"},
              {"-0.0", "-0"},
              {"1E5", "100000"},
              {"\"inf\"", "inf"},
              {"\"-inf\"", "-inf"},
              {"\"nan\"", "nan"},
              {"12345678901234567890", "1.2345678901234567e+19"}};
  for (const auto& row : rows)
    EXPECT_EQ(readMembers(std::string("\"areaZ\": ") + row.written),
              std::string("1 Found0001 areaX=0 areaY=0 areaZ=") + row.shown);
}

TEST(JsonReader, ResolvesEscapes) {
  EXPECT_EQ(readMembers(R"("n\u0061me": "\u00fc\ud83c\udfd7\"\\\/\n\t")"),
            "1 \xC3\xBC\xF0\x9F\x8F\x97\"\\/\n\t");
}

TEST(JsonReader, TakesUnits) {
  FoundationManager manager;

  const Sheet sheet =
      readData(R"({"units": {"length": "m", "force": "k\u00b5N"}, "foundations": []})", manager);

  EXPECT_EQ(sheet.units.force, "k\xC2\xB5N");
  EXPECT_EQ(sheet.units.length, "m");
}

TEST(JsonReader, TellsWhereFoundationsStandAndWhatTheyTell) {
  FoundationManager manager;

  const Sheet sheet = readData(
      "{\"foundations\": [\n  {\"name\": \"A\"},\n\n {\"areaX\": 1,\n"
      "\"current\": true}, {}]}",
      manager);

  std::string told;
  for (const Spreadsheets::Origin& origin : sheet.origins) {
    told += std::to_string(origin.line) + ":" + std::to_string(origin.column);
    for (const Fields::Field& field : Fields::list())
      if (origin.told.has(field)) told += std::string(" ") + field.name;
    told += "\n";
  }
  EXPECT_EQ(told, "2:3 name\n4:2 areaX\n5:19\n");
}

// --- Faults

TEST(JsonReader, RefusesMembersThatAreNotKnown) {
  expectData({{"{\n  \"foundation\": []}", "data:2:3: there is no member \"foundation\""},
              {"{\"units\": {\"mass\": \"t\"}}", "data:1:12: there is no member \"mass\""}});
  EXPECT_EQ(readMembers("\"areaz\": 1"),
            "data:1:19: there is no field \"areaz\"; did you mean areaZ?");
  EXPECT_EQ(readMembers("\"name\": \"A\",\n \"colour\": 1"),
            "data:2:2: there is no field \"colour\"; " + SpreadsheetTest::fieldNames);
}

TEST(JsonReader, RefusesMembersThatAreGivenTwice) {
  expectData(
      {{"{\"foundations\": [],\n \"foundations\": []}", "data:2:2: foundations is given twice"},
       {"{\"format\": \"kvfound-foundations\", \"format\": \"kvfound-foundations\"}",
        "data:1:35: format is given twice"},
       {"{\"version\": 1, \"version\": 1}", "data:1:16: version is given twice"},
       {"{\"maximum\": 1, \"maximum\": 1}", "data:1:16: maximum is given twice"},
       {"{\"units\": {}, \"units\": {}}", "data:1:15: units is given twice"},
       {"{\"units\": {\"force\": \"N\", \"force\": \"N\"}}", "data:1:26: force is given twice"}});
  EXPECT_EQ(readMembers("\"name\": \"A\", \"name\": \"A\""), "data:1:32: name is given twice");
  EXPECT_EQ(readMembers("\"current\": true, \"current\": true"),
            "data:1:36: current is given twice");
}

TEST(JsonReader, RefusesValuesOfAnotherType) {
  const struct {
    const char* member;
    const char* told;
  } rows[] = {{"\"number\": \"1\"", "number can only be a whole number"},
              {"\"number\": 1.0", "number can only be a whole number"},
              {"\"number\": 2147483648", "number can only be a whole number"},
              {"\"number\": -2147483649", "number can only be a whole number"},
              {"\"number\": 18446744073709551615", "number can only be a whole number"},
              {"\"number\": null", "number can only be a whole number"},
              {"\"name\": 1", "name can only be a text"},
              {"\"name\": null", "name can only be a text"},
              {"\"generated\": 1", "generated can only be true or false"},
              {"\"current\": \"true\"", "current can only be true or false"},
              {"\"areaX\": \"1\"", "areaX can only be a number or null"},
              {"\"areaX\": true", "areaX can only be a number or null"},
              {"\"areaX\": {}", "areaX can only be a number or null"},
              {"\"areaX\": \"Infinity\"", "areaX can only be a number or null"},
              {"\"areaFactor\": null", "areaFactor can only be a number"},
              {"\"areaFactor\": \"1\"", "areaFactor can only be a number"},
              {"\"areaFailureZ\": -1", "areaFailureZ can only be a text"},
              {"\"areaFailureZ\": \"tensile\"",
               "areaFailureZ cannot be \"tensile\", only tension, compression or none"},
              {"\"name\": \"\\u0001\"",
               "name cannot be \"\\x01\", only a text in UTF-8, without control characters"},
              {"\"name\": \"\\u0000\"",
               "name cannot be \"\\x00\", only a text in UTF-8, without control characters"}};
  for (const auto& row : rows)
    EXPECT_EQ(readMembers(row.member), std::string("data:1:19: ") + row.told);
  expectData({{"{\"maximum\": null}", "data:1:2: maximum can only be a number"},
              {"{\"foundations\": {}}", "data:1:2: foundations can only be a list of foundations"},
              {"{\"foundations\": [\n1]}", "data:2:1: a foundation can only be an object"},
              {"{\"foundations\": [{}, [[]]]}", "data:1:22: a foundation can only be an object"},
              {"{\"units\": []}", "data:1:2: units can only be an object"},
              {"{\"units\": {\"force\": 1}}", "data:1:12: force can only be a text"},
              {"{\"units\": {\"force\": \"\\u0001\"}}",
               "data:1:12: force cannot be \"\\x01\", only a text in UTF-8, without control "
               "characters"}});
}

TEST(JsonReader, RefusesASecondCurrentFoundation) {
  EXPECT_EQ(readMembers("\"current\": true}, {\"current\": true"),
            "data:1:38: only one foundation can be the current one");
}

TEST(JsonReader, RefusesOtherFormatsAndVersions) {
  const char* const format =
      "data:1:2: format is not \"kvfound-foundations\": these are no foundations";
  const char* const version = "data:1:2: this version is not known; only version 1 can be read";
  expectData({{"{\"format\": \"other\"}", format},
              {"{\"format\": 1}", format},
              {"{\"version\": 2}", version},
              {"{\"version\": 1.5}", version},
              {"{\"version\": -1}", version},
              {"{\"version\": \"1\"}", version},
              {"{\"version\": 18446744073709551615}", version},
              {"{}", "data:1:1: there is no member \"foundations\""},
              {"{\"version\": 1}", "data:1:1: there is no member \"foundations\""}});
}

TEST(JsonReader, RefusesWhatIsNoJsonAndTellsWhere) {
  const std::string start = "this is no JSON that can be read: ";
  for (const char* bytes : {"",
                            " ",
                            "{",
                            "{\"foundations\": [}",
                            "{\"foundations\": [],}",
                            "{\"foundations\": [] \"version\": 1}",
                            "{\"foundations\" []}",
                            "{\"foundations\": [{]}",
                            "{\"foundations\": [{\"number\": 01}]}",
                            "{\"foundations\": [{\"areaX\": .5}]}",
                            "{\"foundations\": [{\"areaX\": nul}]}",
                            "{\"foundations\": [{\"generated\": truex}]}",
                            "{\"foundations\": [{\"name\": \"A}]}",
                            "{\"foundations\": [{\"name\": \"\\x\"}]}",
                            "{\"foundations\": [{\"name\": \"\\ud800\"}]}",
                            "{\"foundations\": [{\"name\": \"\\udc00\"}]}",
                            "{\"foundations\": [{\"name\": \"\xFF\"}]}",
                            "{\"foundations\": [{\"name\": \"A\nB\"}]}",
                            "{'foundations': []}",
                            "{\"foundations\": [{} {}]}",
                            "{\"foundations\": [{},]}",
                            "{\"foundations\": []"})
    EXPECT_NE(readData(std::string(bytes)).find(start), std::string::npos)
        << bytes << "\n"
        << readData(std::string(bytes));
}

TEST(JsonReader, RefusesUnitsThatAreNotWhole) {
  expectData({{"{\"units\": {\"force\": \"kN\"}}",
               "data:1:12: units are those of force and length, or none"},
              {"{\"units\": {\"force\": \" \", \"length\": \"m\"}}",
               "data:1:26: units are those of force and length, or none"},
              {"{\"units\": {\"force\": \"\", \"length\": \" \"}, \"foundations\": []}", ""}});
}

TEST(JsonReader, RefusesWhatIsNoObject) {
  const char* const told = "data:1:1: this is no JSON object with the member \"foundations\"";
  expectData({{"[]", told}, {"1", told}, {"null", told}, {"number,name\n1,A\n", told}});
  // Whatever else is wrong with it.
  expectData({{"\r\n\t [\"", told}, {"1;\"A\n\"", told}, {"<\xFF>", told}});
}

TEST(JsonReader, RefusesNumbersThatDoublesCannotHold) {
  expectData({{"{\"foundations\": [{\"areaX\": 1e999 }]}",
               "data:1:19: \"1e999\" is no number that JSON can hold"},
              {"{\"foundations\": [], \"maximum\": 01}",
               "data:1:21: \"01\" is no number that JSON can hold"}});
}

TEST(JsonReader, RoundsNumbersOfManyDigitsExactly) {
  const struct {
    const char* text;
    double number;
  } rows[] = {{"0.50000000000000000000", 0.5},
              {"0.05000000000000000000000", 0.05},
              {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
              {"-0.12345678901234567890e-300", -0.12345678901234567890e-300},
              {"12345678901234567890.12345678901234567890", 12345678901234567890.0},
              {"9007199254740993.0000000000000000000001", 9007199254740994.0},
              {"0.000000000000000000000000000000", 0.0}};
  for (const auto& row : rows) {
    FoundationManager manager;
    SheetTest::readData("{\"foundations\": [{\"areaX\": " + std::string(row.text) + " }]}",
                        manager);
    KvVector3D area;
    ASSERT_TRUE(manager.getFoundations().at(0)->getDispArea(area));
    EXPECT_EQ(area.x, row.number) << row.text;
  }
}

TEST(JsonReader, TellsThePlaceOfAFaultInText) {
  const std::string start = ": this is no JSON that can be read: ";
  const struct {
    const char* bytes;
    const char* place;
  } rows[] = {{"", "data:1:1"},
              {"{\n \"version\": 01}", "data:2:13"},
              {"{\"foundations\": [\n{\"name\":\n\"\\x\"}]}", "data:3:5"},
              {"{\"foundations\": [\n\"\xFF\"]}", "data:2:2"}};
  for (const auto& row : rows) {
    const std::string told = readData(std::string(row.bytes));
    EXPECT_EQ(told.substr(0, told.find(start)), row.place) << told;
  }
}

TEST(JsonReader, RefusesWhatFollowsTheDocument) {
  expectData(
      {{"{\"foundations\": []}\n {}", "data:2:2: there is more behind the end of the document"},
       {"{\"foundations\": []}]",
        "data:1:1: this is no JSON that can be read: it ends early, or goes on behind its end"},
       {"{\"foundations\": []}\n ", ""}});
}

TEST(JsonReader, RefusesEndlesslyNestedData) {
  const std::string deep(100000, '[');
  EXPECT_NE(readData("{\"foundations\": " + deep), "");
  EXPECT_NE(readMembers("\"name\": " + deep), "");
}

TEST(JsonReader, TakesAByteOrderMark) {
  EXPECT_EQ(readData(std::string("\xEF\xBB\xBF{\"foundations\": [{}]}")), "1 Found0001");
  EXPECT_EQ(readData(std::string("\xEF\xBB\xBF{\"foundation\": [{}]}")),
            "data:1:5: there is no member \"foundation\"");
}

}  // namespace
