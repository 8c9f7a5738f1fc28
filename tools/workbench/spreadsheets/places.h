#pragma once

#include <string_view>

#include "kv/xml_position.h"
#include "spreadsheets/sheet.h"

namespace Spreadsheets {

/// Where a table or data of these bytes tells a field of a foundation: the cell, or the member. The
/// whole row or object where it does not tell it, or spells the name with escapes.
KvXmlPosition locate(const Fields::Field& field, const Origin& origin, const Sheet& sheet,
                     std::string_view bytes);

}  // namespace Spreadsheets
