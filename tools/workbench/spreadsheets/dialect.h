#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "spreadsheets/rows.h"
#include "spreadsheets/sheet.h"

namespace Spreadsheets {

/// What stands before decimals in a table of these columns. Throws UserError where numbers can be
/// read in two ways and `wanted` does not say how.
char recogniseDecimal(std::string_view text, char separator, const std::vector<Column>& columns,
                      std::optional<char> wanted, const std::string& shownPath);

}  // namespace Spreadsheets
