#pragma once

#include <iosfwd>

#include "found/foundation_manager.h"
#include "foundations/units.h"

namespace Spreadsheets {

/// Writes the foundations as JSON, every field under its name, with numbers that read back as the
/// same double, and their largest stiffness, which the manager is made to know. One foundation at a
/// time is held in memory.
void writeJson(Found::FoundationManager& manager, const Units& units, std::ostream& out);

}  // namespace Spreadsheets
