#include "spreadsheets/csv_reader.h"

#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "files/user_error.h"
#include "spreadsheets/cells.h"
#include "spreadsheets/csv_words.h"
#include "spreadsheets/dialect.h"
#include "spreadsheets/names.h"
#include "spreadsheets/rows.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace Spreadsheets {
namespace {

using Found::Foundation;
using Found::FoundationManager;

/// What stands before the foundations.
struct Head {
  Row names;  // of the columns; with none when the table is empty
  Row units;  // with no cells when there are none
};

bool isRemark(const Row& row) { return row.cells[0].compare(0, 1, remarkStart) == 0; }

/// A row that names units, if with another separator than the table.
bool isOfUnits(const Row& row) {
  const std::string_view cell = row.cells[0];
  return cell.substr(0, cell.find_first_of(",;\t ")) == unitsStart;
}

Head readHead(std::string_view text, char separator, const std::string& shownPath) {
  Head head;
  readRows(text, separator, shownPath, [&](const Row& row) {
    if (!isRemark(row)) {
      head.names = row;
      return false;
    }
    if (!isOfUnits(row)) return true;
    if (head.units.count > 0)
      throw DocumentError(shownPath, {row.line, 0}, "the units are named twice");
    head.units = row;
    return true;
  });
  return head;
}

std::size_t countKnown(const Row& names) {
  return static_cast<std::size_t>(std::count_if(
      names.cells.begin(), names.cells.begin() + static_cast<std::ptrdiff_t>(names.count),
      [](const std::string& name) { return isName(trim(name)); }));
}

/// What a separator makes of the head: names that are known, first of all, and units.
struct Rating {
  std::size_t known = 0;
  std::size_t cells = 0;  // of the row of names
};

/// All 0 where the separator cannot cut the head.
Rating rate(std::string_view text, char separator) {
  try {
    const Head head = readHead(text, separator, "");
    const bool cutsUnits = head.units.count > 0 && head.units.cells[0] == unitsStart;
    return {2 * countKnown(head.names) + (cutsUnits ? 1 : 0), head.names.count};
  } catch (const UserError&) {
    return {};
  }
}

/// True where a single name stands over rows that have commas.
bool hasCommasInOneColumn(std::string_view text) {
  bool isBehindName = false;
  bool hasComma = false;
  try {
    readRows(text, ',', "", [&](const Row& row) {
      if (!isBehindName && isRemark(row)) return true;
      if (!isBehindName && row.count > 1) return false;
      isBehindName = true;
      hasComma = row.count > 1;
      return !hasComma;
    });
  } catch (const UserError&) {
    return true;
  }
  return hasComma;
}

/// The separator that makes the most of the head; of known names if it can.
char recogniseSeparator(std::string_view text, std::optional<char> wanted) {
  if (wanted && rate(text, *wanted).known > 0) return *wanted;
  char best = wanted.value_or(',');
  Rating most = rate(text, best);
  for (const char separator : {';', ',', '\t'}) {
    const Rating rated = rate(text, separator);
    const bool hasMore = !wanted && most.known == 0 && rated.cells > most.cells;
    if (rated.known <= most.known && !hasMore) continue;
    best = separator;
    most = rated;
  }
  // A single name has none behind it, but its numbers may have a comma in them.
  const bool isOneName = best == ',' && most.known == 2;
  return isOneName && hasCommasInOneColumn(text) ? ';' : best;
}

std::string readUnitCell(const Row& row, std::size_t place, const Charset& charset,
                         const std::string& shownPath) {
  const std::string unit = charset.toUtf8(row.cells[place]);
  try {
    return readUnit(readText(unit));
  } catch (const std::invalid_argument& error) {
    throw DocumentError(
        shownPath, {row.line, 0},
        fmt::format("a unit cannot be \"{}\", only {}",
                    DisplayText::shorten(DisplayText::fromName(unit), 60), error.what()));
  }
}

Units readUnits(const Row& row, char separator, const Charset& charset,
                const std::string& shownPath) {
  if (row.count == 0) return {};
  Units units;
  const bool isWhole = row.cells[0] == unitsStart;
  if (row.count > 1) units.force = readUnitCell(row, 1, charset, shownPath);
  if (row.count > 2) units.length = readUnitCell(row, 2, charset, shownPath);
  if (!isWhole || units.force.empty() != units.length.empty())
    throw DocumentError(
        shownPath, {row.line, 0},
        fmt::format("this row names units of force and length, such as {}{}kN{}m, or none",
                    unitsStart, separator, separator));
  return units;
}

std::vector<Column> readColumns(const Row& names, const std::string& shownPath) {
  std::vector<Column> columns;
  std::set<std::string_view> known;
  const auto fail = [&](const std::string& fault) {
    throw DocumentError(shownPath, {names.line, 0}, fault);
  };
  for (std::size_t i = 0; i < names.count; ++i) {
    const std::string_view name = trim(names.cells[i]);
    if (name.empty()) fail(fmt::format("column {} of {} has no name", i + 1, names.count));
    if (!isName(name)) fail(describeUnknown("column", name));
    if (!known.insert(name).second) fail(fmt::format("the column {} is given twice", name));
    columns.push_back({Fields::find(name)});
  }
  return columns;
}

bool isEmpty(const Row& row) {
  return std::all_of(row.cells.begin(), row.cells.begin() + static_cast<std::ptrdiff_t>(row.count),
                     [](const std::string& cell) { return cell.empty(); });
}

class Reader {
 public:
  Reader(Sheet& target, const Charset& bytesAreOf, std::string path, FoundationManager& foundations)
      : sheet(target), charset(bytesAreOf), shownPath(std::move(path)), manager(foundations) {
    for (const Column& column : sheet.columns)
      if (column.field != nullptr) told.add(*column.field);
  }

  /// Spreadsheets leave rows of empty cells behind those that were cleared.
  void take(const Row& row) {
    if (isEmpty(row)) return;
    if (row.count != sheet.columns.size())
      fail(row, fmt::format("this row has too {} cells: {} instead of {}",
                            row.count < sheet.columns.size() ? "few" : "many", row.count,
                            sheet.columns.size()));
    auto foundation = std::make_unique<Foundation>();
    foundation->setNumber(static_cast<int>(sheet.origins.size()) + 1);
    Origin origin{row.line, 1, row.begin, row.end, told, {}};
    for (std::size_t i = 0; i < row.count; ++i) readField(row, i, origin, *foundation);
    if (!told.has(*Fields::find("name")))
      foundation->setName(makeDefaultName(foundation->getNumber()));
    sheet.origins.push_back(origin);
    manager.add(std::move(foundation));
  }

 private:
  void readField(const Row& row, std::size_t place, Origin& origin, Foundation& foundation) {
    const Fields::Field* const field = sheet.columns[place].field;
    const std::string& cell = row.cells[place];
    try {
      if (field == nullptr) return readCurrent(row, cell, foundation);
      const bool isEncoded = !charset.isUtf8() && field->type == Fields::Type::text;
      if (isEncoded) decoded = charset.toUtf8(cell);
      const Fields::Value value =
          readCell(*field, isEncoded ? decoded : cell, *sheet.dialect.decimal);
      if (trim(cell).empty()) origin.blank.add(*field);
      if (!std::holds_alternative<std::monostate>(value)) field->set(foundation, value);
    } catch (const std::invalid_argument& error) {
      const char* const name = field != nullptr ? field->name : currentField;
      fail(row, fmt::format("{} cannot be \"{}\", only {}", name,
                            DisplayText::shorten(DisplayText::fromName(charset.toUtf8(cell)), 60),
                            error.what()));
    }
  }

  void readCurrent(const Row& row, const std::string& cell, Foundation& foundation) {
    if (!readFlag(cell)) return;
    if (manager.getCurrentFoundation() != nullptr)
      fail(row, "only one foundation can be the current one");
    manager.setCurrentFoundation(&foundation);
  }

  [[noreturn]] void fail(const Row& row, const std::string& fault) const {
    throw DocumentError(shownPath, {row.line, 0}, fault);
  }

  Sheet& sheet;
  const Charset& charset;
  std::string shownPath;
  FoundationManager& manager;
  FieldSet told;
  std::string decoded;
};

void refuseUtf16(std::string_view bytes, const std::string& shownPath) {
  const std::string_view start = bytes.substr(0, 2);
  if (start == "\xFF\xFE" || start == "\xFE\xFF")
    throw DocumentError(shownPath, {}, "this is a table in UTF-16; save it as CSV in UTF-8");
}

}  // namespace

Sheet readCsv(const std::string& bytes, const Charset& charset, const Dialect& wanted,
              const std::string& shownPath, FoundationManager& manager) {
  refuseUtf16(bytes, shownPath);
  const std::size_t mark = Utf8::measureMark(bytes);
  const std::string_view text = std::string_view(bytes).substr(mark);
  Sheet sheet;
  const char separator = recogniseSeparator(text, wanted.separator);
  const Head head = readHead(text, separator, shownPath);
  if (head.names.count == 0)
    throw DocumentError(shownPath, {}, "this table is empty; its first row names the columns");
  sheet.units = readUnits(head.units, separator, charset, shownPath);
  const bool namesUnits = head.units.count > 0;
  sheet.unitsBegin = mark + (namesUnits ? head.units.begin : head.names.begin);
  sheet.unitsEnd = mark + (namesUnits ? head.units.end : head.names.begin);
  sheet.columns = readColumns(head.names, shownPath);
  sheet.dialect = {separator,
                   recogniseDecimal(text, separator, sheet.columns, wanted.decimal, shownPath)};
  Reader reader(sheet, charset, shownPath, manager);
  readRows(text, separator, shownPath, [&](const Row& row) {
    if (row.begin > head.names.begin) reader.take(row);
    return true;
  });
  for (Origin& origin : sheet.origins) {
    origin.begin += mark;
    origin.end += mark;
  }
  return sheet;
}

}  // namespace Spreadsheets
