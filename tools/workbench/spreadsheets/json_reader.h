#pragma once

#include <string>

#include "found/foundation_manager.h"
#include "spreadsheets/sheet.h"

namespace Spreadsheets {

/// Reads foundations from JSON as writeJson() writes it into `manager`, which is empty. Members may
/// come in any order. One that is missing leaves a field as foundations without it have it; numbers
/// are 1, 2, 3, ... then, and names as the library makes them from numbers.
///
/// `bytes` is given more room behind its end, which the parser needs. Throws UserError, which names
/// `shownPath`, line and column.
Sheet readJson(std::string& bytes, const std::string& shownPath, Found::FoundationManager& manager);

}  // namespace Spreadsheets
