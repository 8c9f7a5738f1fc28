#pragma once

#include <ostream>

#include "found/foundation_manager.h"
#include "report_bars.h"

/// The table of a report, which has everything that the pictures show.
namespace ReportTable {

void print(const Found::FoundationManager& manager, const ReportBars::Units& units,
           std::ostream& out);

}  // namespace ReportTable
