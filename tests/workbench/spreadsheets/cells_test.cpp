#include "spreadsheets/cells.h"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/double_bits.h"

namespace {

using Fields::Value;
using Spreadsheets::isGrouped;
using Spreadsheets::readCell;
using Spreadsheets::readFlag;
using Spreadsheets::readName;
using TestSupport::bitsOf;

Value readFieldCell(const char* field, const std::string& text, char decimal = '.') {
  return readCell(*Fields::find(field), text, decimal);
}

/// What the error says that the field takes; empty when there is none.
std::string refuseCell(const char* field, const std::string& text, char decimal = '.') {
  try {
    readFieldCell(field, text, decimal);
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "";
}

std::string writeFieldCell(const char* field, const Value& value,
                           const Spreadsheets::Dialect& dialect) {
  std::string text;
  Spreadsheets::writeCell(text, *Fields::find(field), value, dialect);
  return text;
}

constexpr Spreadsheets::Dialect inEnglish = {',', '.'};
constexpr Spreadsheets::Dialect inGerman = {';', ','};
constexpr Spreadsheets::Dialect withSemicolons = {';', '.'};

const std::string stiffnessAdvice = "a number such as 1500 or 2.5e4, or nothing";
const std::string thousandsAdvice = stiffnessAdvice + ", without marks between thousands";

// --- Numbers

TEST(CellNumber, HasAPointOrACommaBeforeItsDecimals) {
  const struct {
    const char* text;
    char decimal;
    double number;
  } rows[] = {
      {"1500", '.', 1500.0},     {"1500", ',', 1500.0},
      {"2.5e4", '.', 25000.0},   {"2,5e4", ',', 25000.0},
      {"2,5E+4", ',', 25000.0},  {"-1.25", '.', -1.25},
      {"+1.25", '.', 1.25},      {"+1,25", ',', 1.25},
      {" 1.25\t", '.', 1.25},    {".5", '.', 0.5},
      {"5.", '.', 5.0},          {",5", ',', 0.5},
      {"0.1", '.', 0.1},         {"1e-320", '.', 1e-320},
      {"-1e-320", '.', -1e-320}, {"1e308", '.', 1e308},
      {"00012", '.', 12.0},      {"1.500", '.', 1.5},
      {"1,500", ',', 1.5},       {"4.9e-324", '.', 4.9e-324},
  };
  for (const auto& row : rows)
    EXPECT_EQ(readFieldCell("areaZ", row.text, row.decimal), Value(row.number)) << row.text;
}

TEST(CellNumber, KeepsTheSignOfZero) {
  EXPECT_EQ(bitsOf(std::get<double>(readFieldCell("areaZ", "-0"))), bitsOf(-0.0));
  EXPECT_EQ(bitsOf(std::get<double>(readFieldCell("areaZ", "-0,0", ','))), bitsOf(-0.0));
  EXPECT_EQ(bitsOf(std::get<double>(readFieldCell("areaZ", "0"))), bitsOf(0.0));
}

TEST(CellNumber, CanBeInfiniteOrNoneAtAllInWords) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(readFieldCell("areaZ", "inf"), Value(infinity));
  EXPECT_EQ(readFieldCell("areaZ", "+INF"), Value(infinity));
  EXPECT_EQ(readFieldCell("areaZ", "-inf"), Value(-infinity));
  EXPECT_TRUE(std::isnan(std::get<double>(readFieldCell("lineFactor", "NaN"))));
}

TEST(CellNumber, IsNothingWhereTheCellIsEmpty) {
  EXPECT_EQ(readFieldCell("areaZ", ""), Value());
  EXPECT_EQ(readFieldCell("areaZ", " \t "), Value());
}

TEST(CellNumber, OfAFactorIsZeroWhereTheCellIsEmpty) {
  EXPECT_EQ(readFieldCell("areaFactor", " "), Value(0.0));
  EXPECT_EQ(readFieldCell("areaFactor", "0,5", ','), Value(0.5));
}

TEST(CellNumber, IsNoTextAndNotTooLarge) {
  for (const char* text : {"1e999", "-1e999", "x", "1500 kN", "1,5", "--1", "+-1", "+", "-", "1e",
                           "0x10", "infinity", "nan(1)", "1_000", "1.2.3"})
    EXPECT_EQ(refuseCell("areaZ", text), stiffnessAdvice) << text;
  EXPECT_EQ(refuseCell("areaZ", "1.5", ','), "a number such as 1500 or 2,5e4, or nothing");
  EXPECT_EQ(refuseCell("areaFactor", "x"), "a number such as 0.1");
  EXPECT_EQ(refuseCell("areaFactor", "x", ','), "a number such as 0,1");
}

TEST(CellNumber, HasNoMarksBetweenThousands) {
  for (const char* text : {"1,500", "1,500.0", "1 500", "1'500.25", "-12,345,678", "1 500 000"})
    EXPECT_EQ(refuseCell("areaZ", text), thousandsAdvice) << text;
  for (const char* text : {"1.500", "1.500,0", "1 500,5", "1'500"})
    EXPECT_EQ(refuseCell("areaZ", text, ','),
              "a number such as 1500 or 2,5e4, or nothing, without marks between thousands")
        << text;
}

TEST(CellNumber, IsGroupedWhereThreeDigitsStandBetweenMarks) {
  for (const char* text : {"1.500", "12.500", "123.500", "-1.500", "+1.500", "1.500.000"})
    EXPECT_TRUE(isGrouped(text, '.')) << text;
  for (const char* text : {"", "-", ".500", "1500", "1234.500", "1.50", "1.5000", "0.500", "-0.500",
                           "1.50x", "x.500", "1.500,000", "1.500.", "1.500.00"})
    EXPECT_FALSE(isGrouped(text, '.')) << text;
}

// --- Whole numbers, flags, failure modes

TEST(CellInteger, IsAnyWholeNumber) {
  const struct {
    const char* text;
    int number;
  } rows[] = {{"3", 3}, {" 3 ", 3}, {"+3", 3}, {"-3", -3}, {"2147483647", 2147483647}};
  for (const auto& row : rows)
    EXPECT_EQ(readFieldCell("number", row.text), Value(row.number)) << row.text;
  for (const char* text : {"", "3.0", "3,0", "x", "2147483648", "1 000", "+-3", "+"})
    EXPECT_EQ(refuseCell("number", text), "a whole number") << text;
}

TEST(CellFlag, IsReadAsSpreadsheetsAndPeopleWriteIt) {
  for (const char* text : {"true", "TRUE", "True", "yes", "1", "WAHR", "wahr", " true "})
    EXPECT_TRUE(readFlag(text)) << text;
  for (const char* text : {"false", "FALSE", "no", "0", "FALSCH", "", " "})
    EXPECT_FALSE(readFlag(text)) << text;
  EXPECT_EQ(readFieldCell("generated", "WAHR"), Value(true));
  for (const char* text : {"2", "x", "tru", "truee", "ja"})
    EXPECT_EQ(refuseCell("generated", text), "true or false") << text;
}

TEST(CellFailure, IsAModeOrItsNumber) {
  const struct {
    const char* text;
    const char* word;
  } rows[] = {{"tension", "tension"},
              {" compression ", "compression"},
              {"none", "none"},
              {"", "none"},
              {"7", "7"},
              {"-7", "-7"}};
  for (const auto& row : rows)
    EXPECT_EQ(readFieldCell("areaFailureZ", row.text), Value(std::string(row.word))) << row.text;
  for (const char* text : {"Tension", "tensile", "7.5", "'-7"})
    EXPECT_EQ(refuseCell("areaFailureZ", text), "tension, compression or none") << text;
}

// --- Names

TEST(CellName, IsTheTextOfTheCell) {
  for (const char* text : {"", " A ", "1.5", "true", "'", "''", "'A", "A\nB", "\xF0\x9F\x8F\x97",
                           "=1+1", "@A", "\x7F", "\xC2\x85"})
    EXPECT_EQ(readFieldCell("name", text), Value(std::string(text))) << text;
}

TEST(CellName, HasOnlyCharactersThatDocumentsCanHold) {
  const std::string advice = "a text in UTF-8, without control characters";
  for (const std::string& text :
       {std::string("A\0B", 3), std::string("\x01"), std::string("\x1F"), std::string("\xFC"),
        std::string("\xED\xA0\x80"), std::string("\xEF\xBF\xBE"), std::string("\xEF\xBF\xBF"),
        std::string("\xC3")})
    EXPECT_EQ(refuseCell("name", text), advice) << text;
  EXPECT_EQ(readName("\t\n\r "), "\t\n\r ");
}

TEST(CellName, ThatStartsLikeAFormulaStandsBehindAnApostrophe) {
  const struct {
    const char* name;
    const char* cell;
  } rows[] = {{"=1+1", "'=1+1"}, {"+A", "'+A"},   {"-A", "'-A"},   {"@A", "'@A"},
              {"\tA", "'\tA"},   {"\rA", "'\rA"}, {"'=A", "''=A"}, {"''-A", "'''-A"},
              {"A=B", "A=B"},    {"'A", "'A"},    {"'", "'"},      {" =A", " =A"},
              {"", ""},          {"\nA", "\nA"}};
  for (const auto& row : rows) {
    EXPECT_EQ(writeFieldCell("name", std::string(row.name), inEnglish), row.cell);
    EXPECT_EQ(readFieldCell("name", row.cell), Value(std::string(row.name))) << row.cell;
  }
}

// --- Writing

TEST(CellWriting, SpellsValuesAsTheyAreRead) {
  EXPECT_EQ(writeFieldCell("areaZ", Value(), inEnglish), "");
  EXPECT_EQ(writeFieldCell("generated", true, inEnglish), "true");
  EXPECT_EQ(writeFieldCell("generated", false, inGerman), "false");
  EXPECT_EQ(writeFieldCell("number", -3, inEnglish), "-3");
  EXPECT_EQ(writeFieldCell("areaFailureZ", std::string("tension"), inEnglish), "tension");
  EXPECT_EQ(writeFieldCell("areaZ", 1.5e300, inEnglish), "1.5e+300");
  EXPECT_EQ(writeFieldCell("areaZ", 1.5e300, inGerman), "1,5e+300");
  EXPECT_EQ(writeFieldCell("areaZ", -0.0, inGerman), "-0");
  EXPECT_EQ(writeFieldCell("areaZ", -std::numeric_limits<double>::infinity(), inGerman), "-inf");
}

TEST(CellWriting, KeepsAFailureModeThatIsANegativeNumber) {
  EXPECT_EQ(writeFieldCell("areaFailureZ", std::string("-7"), inEnglish), "-7");
}

TEST(CellWriting, MakesNoNumberThatCouldHaveThousands) {
  const struct {
    double number;
    Spreadsheets::Dialect dialect;
    const char* cell;
  } rows[] = {{1.125, inGerman, "1,1250"},     {-12.375, inGerman, "-12,3750"},
              {0.125, inGerman, "0,125"},      {1.5, inGerman, "1,5"},
              {1.125, inEnglish, "1.125"},     {1.125, withSemicolons, "1.1250"},
              {1234.125, inGerman, "1234,125"}};
  for (const auto& row : rows)
    EXPECT_EQ(writeFieldCell("areaZ", row.number, row.dialect), row.cell);
}

}  // namespace
