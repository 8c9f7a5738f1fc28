#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "spreadsheets/rows.h"
#include "spreadsheets/sheet.h"

namespace Spreadsheets {

/// What stands before decimals in a table of these columns: what its numbers tell. Where one can be
/// read in two ways, what is wanted counts for all of them. Throws UserError where nothing is, and
/// no other number tells.
char recogniseDecimal(std::string_view text, char separator, const std::vector<Column>& columns,
                      std::optional<char> wanted, const std::string& shownPath);

}  // namespace Spreadsheets
