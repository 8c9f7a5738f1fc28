#pragma once

#include <vector>

#include "comparing/differences.h"
#include "found/foundation.h"
#include "foundations/units.h"
#include "report/bars.h"
#include "report/listing.h"

/// What the tables of a page of changes hold.
namespace Report {

/// The foundations that both documents have, with a row for each field that differs.
Listing listChanged(const std::vector<Comparing::Difference>& changed, const Units& units);

/// Foundations that came or went, of which `current` may be one, with all that they have of these
/// parts. `label` says in words what they are.
Listing listWhole(const std::string& label, const std::vector<Found::Foundation*>& foundations,
                  const Found::Foundation* current, const std::vector<Part>& parts,
                  const Units& units);

}  // namespace Report
