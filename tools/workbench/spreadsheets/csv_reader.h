#pragma once

#include <string>

#include "found/foundation_manager.h"
#include "spreadsheets/sheet.h"
#include "text/charset.h"

namespace Spreadsheets {

/// Reads a table into `manager`, which is empty. Its first row names the columns, in any order: a
/// column that is missing leaves a field as foundations without it have it; numbers are 1, 2, 3,
/// ... then, and names as the library makes them from numbers. Rows before it that start with # are
/// remarks, and the one that starts with #units names the units of force and length.
///
/// Throws UserError, which names `shownPath`, line and column.
Sheet readCsv(const std::string& bytes, const Charset& charset, const Dialect& wanted,
              const std::string& shownPath, Found::FoundationManager& manager);

}  // namespace Spreadsheets
