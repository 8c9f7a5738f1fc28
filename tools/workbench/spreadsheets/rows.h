#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "kv/xml_position.h"

namespace Spreadsheets {

/// A row of a table.
struct Row {
  std::vector<std::string> cells;  // without quotation marks; only the first `count` are of the row
  std::size_t count = 0;
  std::size_t line = 0;  // from 1, where it starts
  std::size_t begin = 0;
  std::size_t end = 0;  // behind the end of its last line
};

/// Calls `take` with each row of a table that is not blank, until it returns false. Throws
/// UserError, which starts with `shownPath` and the line, at quotation marks that do not enclose a
/// cell.
void readRows(std::string_view text, char separator, const std::string& shownPath,
              const std::function<bool(const Row&)>& take);

/// Where a cell starts in the bytes of a row, which starts in line `line`. Cells count from 0.
KvXmlPosition locateCell(std::string_view row, std::size_t line, char separator, std::size_t cell);

}  // namespace Spreadsheets
