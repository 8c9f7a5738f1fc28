#pragma once

#include <sstream>
#include <string>
#include <utility>

#include "files/user_error.h"
#include "foundations/fields.h"
#include "spreadsheets/csv_reader.h"
#include "spreadsheets/csv_writer.h"
#include "spreadsheets/json_reader.h"
#include "spreadsheets/json_writer.h"

/// Tables and data as tests read and write them.
namespace SheetTest {

using Found::Foundation;
using Found::FoundationManager;
using Spreadsheets::Dialect;
using Spreadsheets::Sheet;

constexpr Dialect openDialect = {};
constexpr Dialect english = {',', '.'};
constexpr Dialect german = {';', ','};

/// Number and name, then the fields that are not as a new foundation has them: 1 A areaZ=2
inline std::string show(Foundation& foundation) {
  Foundation none;
  std::string text = std::to_string(foundation.getNumber()) + " " + foundation.getName();
  for (const Fields::Field& field : Fields::list()) {
    const std::string name = field.name;
    const Fields::Value value = field.get(foundation);
    if (name != "number" && name != "name" && value != field.get(none))
      text += " " + name + "=" + Fields::show(value);
  }
  return text;
}

/// With " | " between foundations.
inline std::string show(const FoundationManager& manager) {
  std::string text;
  for (Foundation* foundation : manager.getFoundations()) {
    if (!text.empty()) text += " | ";
    text += show(*foundation);
    if (foundation == manager.getCurrentFoundation()) text += " current";
  }
  return text;
}

inline Sheet read(const std::string& bytes, const Dialect& dialect, FoundationManager& manager) {
  return Spreadsheets::readCsv(bytes, Charset::recognise("", bytes), dialect, "table", manager);
}

/// The foundations of a table, or the error that it gives.
inline std::string readTable(const std::string& bytes, const Dialect& dialect = openDialect) {
  FoundationManager manager;
  try {
    read(bytes, dialect, manager);
  } catch (const UserError& error) {
    return error.what();
  }
  return show(manager);
}

/// The separator and the decimal sign of a table, or the error that it gives.
inline std::string recognise(const std::string& bytes, const Dialect& dialect = openDialect) {
  FoundationManager manager;
  try {
    const Dialect found = read(bytes, dialect, manager).dialect;
    return {*found.separator, *found.decimal};
  } catch (const UserError& error) {
    return error.what();
  }
}

inline Sheet readData(std::string bytes, FoundationManager& manager) {
  return Spreadsheets::readJson(bytes, "data", manager);
}

/// The foundations of data, or the error that it gives.
inline std::string readData(const std::string& bytes) {
  FoundationManager manager;
  try {
    readData(bytes, manager);
  } catch (const UserError& error) {
    return error.what();
  }
  return show(manager);
}

inline std::string writeTable(const FoundationManager& manager,
                              const Dialect& dialect = openDialect, const Units& units = {}) {
  std::ostringstream out;
  Spreadsheets::writeCsv(manager, dialect, units, out);
  return out.str();
}

inline std::string writeData(FoundationManager& manager, const Units& units = {}) {
  std::ostringstream out;
  Spreadsheets::writeJson(manager, units, out);
  return out.str();
}

inline void set(Foundation& foundation, const char* field, const Fields::Value& value) {
  Fields::find(field)->set(foundation, value);
}

}  // namespace SheetTest
