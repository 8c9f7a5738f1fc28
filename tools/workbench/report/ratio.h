#pragma once

#include <optional>
#include <string>

#include "foundations/fields.h"

/// How the value after a change compares with the one before.
namespace Report {

/// The value after as a multiple of the one before; none where either is no finite number, and
/// where such a multiple says nothing, as it does of zero.
std::optional<double> findRatio(const Fields::Difference& field);

/// "× 1.25", in at most three significant digits, in UTF-8; "≈ 1" for what would look like no
/// change.
std::string showRatio(double ratio);

/// Adds a cell with a bar from 1 to the ratio, on a linear axis from 0 to 2. An arrow stands at the
/// end where the ratio lies beyond the axis.
void appendRatioBar(double ratio, std::string& page);

/// Adds the heading of these cells.
void appendRatioAxis(std::string& page);

}  // namespace Report
