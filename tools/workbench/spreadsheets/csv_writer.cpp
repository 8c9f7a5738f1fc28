#include "spreadsheets/csv_writer.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string_view>
#include <variant>

#include <fmt/format.h>

#include "files/user_error.h"
#include "kv/code_page.h"
#include "spreadsheets/cells.h"
#include "spreadsheets/csv_words.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace Spreadsheets {
namespace {

using Found::Foundation;

/// Rows of a table, one behind the other.
class RowWriter {
 public:
  RowWriter(const Dialect& complete, std::string_view lineEnd)
      : dialect(complete), rowEnd(lineEnd) {}

  void addText(std::string_view cell) {
    addCell([&] { writeText(text, cell); });
  }

  void endRow() {
    text += rowEnd;
    isFirst = true;
  }

  void addRow(const std::vector<Column>& columns, Foundation& foundation, bool isCurrent) {
    for (const auto& [field] : columns)
      addCell([&, known = field] {
        if (known != nullptr)
          writeCell(text, *known, known->get(foundation), dialect);
        else
          text += isCurrent ? "true" : "false";
      });
    endRow();
  }

  /// No row where there are none.
  void addUnits(const Units& units) {
    if (units.force.empty()) return;
    for (const std::string& cell : {std::string(unitsStart), units.force, units.length})
      addText(cell);
    endRow();
  }

  std::string text;

 private:
  template <class Write>
  void addCell(const Write& write) {
    if (!isFirst) text += *dialect.separator;
    isFirst = false;
    const std::size_t begin = text.size();
    write();
    const auto isQuoted = [this](char c) {
      return c == *dialect.separator || c == '"' || c == '\r' || c == '\n';
    };
    if (std::any_of(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), isQuoted))
      quote(begin);
  }

  void quote(std::size_t begin) {
    for (std::size_t i = text.find('"', begin); i != text.npos; i = text.find('"', i + 2))
      text.insert(i, 1, '"');
    text.insert(begin, 1, '"');
    text += '"';
  }

  Dialect dialect;
  std::string rowEnd;
  bool isFirst = true;
};

std::vector<Column> listColumns() {
  std::vector<Column> columns;
  for (const Fields::Field& field : Fields::list()) columns.push_back({&field});
  columns.push_back({nullptr});
  return columns;
}

/// What ends the line of a row; nothing behind the last one of some tables.
std::string_view cutLineEnd(std::string_view row) {
  const std::size_t last = row.find_last_not_of("\r\n");
  return row.substr(last == row.npos ? 0 : last + 1);
}

bool endsLine(std::string_view text) { return !cutLineEnd(text).empty(); }

void dropLineEnd(std::string& text) {
  if (!text.empty() && text.back() == '\n') text.pop_back();
  if (!text.empty() && text.back() == '\r') text.pop_back();
}

std::string_view findLineEnd(std::string_view text) {
  const std::size_t end = text.find_first_of("\r\n");
  if (end == text.npos || text[end] == '\n') return "\n";
  return text.compare(end, 2, "\r\n") == 0 ? "\r\n" : "\r";
}

/// `text`, which is UTF-8, in the bytes of a table.
std::string encode(const std::string& text, const Charset& charset, const std::string& shownPath) {
  if (charset.isUtf8()) return text;
  const KvCodePage page = KvCodePage::find("windows-1252").value();
  std::string bytes;
  for (std::string_view rest = text; !rest.empty();) {
    const char32_t character = Utf8::take(rest);
    const std::optional<char> byte = page.encode(character);
    if (!byte) {
      std::string shown;
      Utf8::append(shown, character);
      throw DocumentError(
          shownPath, {},
          fmt::format("this table is in windows-1252, which has no \"{}\"; save it in UTF-8",
                      DisplayText::fromName(shown)));
    }
    bytes += *byte;
  }
  return bytes;
}

bool isNan(const Fields::Value& value) {
  const double* const number = std::get_if<double>(&value);
  return number != nullptr && std::isnan(*number);
}

/// True when the row of one would be that of the other.
bool areSame(const std::vector<Column>& columns, Foundation& first, Foundation& second) {
  return std::all_of(columns.begin(), columns.end(), [&](const Column& column) {
    if (column.field == nullptr) return true;
    const Fields::Value before = column.field->get(first);
    const Fields::Value after = column.field->get(second);
    return before == after || (isNan(before) && isNan(after));
  });
}

bool tellsCurrent(const std::vector<Column>& columns) {
  return std::any_of(columns.begin(), columns.end(),
                     [](const Column& column) { return column.field == nullptr; });
}

}  // namespace

Dialect complete(const Dialect& dialect) {
  const char decimal = dialect.decimal.value_or('.');
  return {dialect.separator.value_or(decimal == ',' ? ';' : ','), decimal};
}

void writeCsv(const Found::FoundationManager& manager, const Dialect& dialect, const Units& units,
              std::ostream& out) {
  const std::vector<Column> columns = listColumns();
  RowWriter row(complete(dialect), "\n");
  if (dialect.decimal == ',') row.text += Utf8::byteOrderMark;
  row.addUnits(units);
  for (const Column& column : columns)
    row.addText(column.field != nullptr ? column.field->name : currentField);
  row.endRow();
  for (Foundation* foundation : manager.getFoundations()) {
    row.addRow(columns, *foundation, foundation == manager.getCurrentFoundation());
    out << row.text;
    row.text.clear();
  }
  out << row.text;
}

std::string editCsv(const std::string& bytes, const Charset& charset, const Sheet& sheet,
                    const std::vector<Matching::Pair>& pairs, const Foundation* before,
                    const Foundation* current, Rows rewritten, const std::string& shownPath) {
  const bool hasCurrent = tellsCurrent(sheet.columns);
  const std::string_view lineEnd = findLineEnd(bytes);
  RowWriter row(sheet.dialect, "");
  const auto makeRow = [&](Foundation& foundation) {
    row.text.clear();
    row.addRow(sheet.columns, foundation, &foundation == current);
    return encode(row.text, charset, shownPath);
  };
  std::string edited;
  std::size_t copied = 0;
  std::size_t place = 0;
  for (const auto& [old, now] : pairs) {
    if (old == nullptr) continue;
    const Origin& origin = sheet.origins[place++];
    const bool staysCurrent = (old == before) == (now != nullptr && now == current);
    const bool isSame = now != nullptr && areSame(sheet.columns, *old, *now);
    if (rewritten == Rows::changed && isSame && (staysCurrent || !hasCurrent)) continue;
    edited.append(bytes, copied, origin.begin - copied);
    copied = origin.end;
    if (now == nullptr) continue;
    edited += makeRow(*now);
    edited += cutLineEnd(std::string_view(bytes).substr(origin.begin, origin.end - origin.begin));
  }
  edited.append(bytes, copied);
  for (const auto& [old, now] : pairs) {
    if (old != nullptr) continue;
    if (!endsLine(edited)) edited += lineEnd;
    edited += makeRow(*now);
    edited += lineEnd;
  }
  if (!endsLine(bytes)) dropLineEnd(edited);
  return edited;
}

std::string editUnits(const std::string& bytes, const Charset& charset, const Sheet& sheet,
                      const Units& units, const std::string& shownPath) {
  if (units == sheet.units) return bytes;
  RowWriter row(sheet.dialect, findLineEnd(bytes));
  row.addUnits(units);
  std::string edited = bytes;
  edited.replace(sheet.unitsBegin, sheet.unitsEnd - sheet.unitsBegin,
                 encode(row.text, charset, shownPath));
  return edited;
}

}  // namespace Spreadsheets
