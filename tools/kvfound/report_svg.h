#pragma once

#include <ostream>

#include "found/foundation_manager.h"
#include "report_bars.h"

/// The pictures of a report.
namespace ReportSvg {

/// Draws one part of all foundations: a row for each, a bar for each direction, in pictures that
/// fit a sheet of paper. Where there are many, they stand in groups that open one by one, below a
/// picture of them all.
void print(const Found::FoundationManager& manager, ReportBars::Part part,
           const ReportBars::Units& units, std::ostream& out);

}  // namespace ReportSvg
