#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "found/foundation_manager.h"
#include "foundations/matching.h"
#include "spreadsheets/sheet.h"
#include "text/charset.h"

namespace Spreadsheets {

/// What is left open in `dialect`: a comma between cells and a point before decimals, or with a
/// decimal comma a semicolon between cells.
Dialect complete(const Dialect& dialect);

/// Writes a table of all fields, and a row of the units where there are any. One with a decimal
/// comma starts with a byte order mark, as spreadsheets of such a language expect of UTF-8.
void writeCsv(const Found::FoundationManager& manager, const Dialect& dialect, const Units& units,
              std::ostream& out);

/// Which rows of foundations that stay are written anew.
enum class Rows { changed, all };

/// The table with rows that change, come and go, and not a byte else. `pairs` are its foundations
/// in order, and what they shall be; null where they go. Behind them are new ones. What the columns
/// cannot hold the result does not tell. Throws UserError, which starts with `shownPath`, where the
/// encoding lacks a character.
std::string editCsv(const std::string& bytes, const Charset& charset, const Sheet& sheet,
                    const std::vector<Matching::Pair>& pairs, const Found::Foundation* before,
                    const Found::Foundation* current, Rows rewritten, const std::string& shownPath);

/// The table with these units in the row that names them, which goes where there are none.
std::string editUnits(const std::string& bytes, const Charset& charset, const Sheet& sheet,
                      const Units& units, const std::string& shownPath);

}  // namespace Spreadsheets
