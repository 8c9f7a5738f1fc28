#include "spreadsheets/dialect.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "files/user_error.h"
#include "spreadsheets/cells.h"
#include "text/display_text.h"
#include "text/wording.h"

namespace Spreadsheets {
namespace {

/// What a number says of the character before its decimals.
enum class Hint { none, point, comma, either };

Hint judge(std::string_view number) {
  const std::size_t point = number.rfind('.');
  const std::size_t comma = number.rfind(',');
  if (point == number.npos && comma == number.npos) return Hint::none;
  if (point != number.npos && comma != number.npos)  // the other one is between thousands
    return point > comma ? Hint::point : Hint::comma;
  const char mark = point != number.npos ? '.' : ',';
  const bool isRepeated = number.find(mark) != number.rfind(mark);
  if (isRepeated) return mark == '.' ? Hint::comma : Hint::point;
  if (isGrouped(number, mark)) return Hint::either;
  return mark == '.' ? Hint::point : Hint::comma;
}

bool isNumber(const Column& column) {
  using Fields::Type;
  return column.field != nullptr &&
         (column.field->type == Type::stiffness || column.field->type == Type::factor);
}

/// The first number of a table that can be read in two ways.
struct Doubt {
  std::size_t line = 0;
  std::string column;
  std::string number;
};

class DecimalSearch {
 public:
  DecimalSearch(const std::vector<Column>& tableColumns, char tableSeparator)
      : columns(tableColumns), separator(tableSeparator) {}

  void look(const Row& row) {
    const std::size_t count = std::min(row.count, columns.size());
    for (std::size_t i = 0; i < count; ++i)
      if (isNumber(columns[i])) look(row, i);
  }

  std::optional<char> found;
  std::optional<Doubt> doubt;

 private:
  void look(const Row& row, std::size_t place) {
    const std::string_view number = trim(row.cells[place]);
    Hint hint = judge(number);
    // Where commas separate cells, decimals have a point.
    if (hint == Hint::either && separator == ',' && number.find(',') == number.npos)
      hint = Hint::point;
    if (!found && (hint == Hint::point || hint == Hint::comma))
      found = hint == Hint::point ? '.' : ',';
    if (hint == Hint::either && !doubt)
      doubt = {row.line, columns[place].field->name, std::string(number)};
  }

  const std::vector<Column>& columns;
  char separator;
};

}  // namespace

char recogniseDecimal(std::string_view text, char separator, const std::vector<Column>& columns,
                      std::optional<char> wanted, const std::string& shownPath) {
  // Without quotation marks, a comma that separates cells cannot stand in one.
  if (separator == ',' && text.find('"') == text.npos) return '.';
  DecimalSearch search(columns, separator);
  readRows(text, separator, shownPath, [&](const Row& row) {
    search.look(row);
    const bool isDone = search.found && (!wanted || search.doubt);
    return !isDone;
  });
  if (search.doubt && wanted) return *wanted;
  if (search.found) return *search.found;
  if (!search.doubt) return separator == ',' ? '.' : wanted.value_or(',');
  const auto& [line, column, number] = *search.doubt;
  throw DocumentError(
      shownPath, {line, 0},
      fmt::format("{} \"{}\" can have decimals or thousands, and nothing in the table tells which; "
                  "say {}",
                  column, DisplayText::fromName(number), Wording::get().decimal));
}

}  // namespace Spreadsheets
