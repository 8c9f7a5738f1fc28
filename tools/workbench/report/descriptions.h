#pragma once

#include <string>
#include <vector>

#include "found/foundation.h"
#include "report/bars.h"
#include "report/scale.h"

namespace Report {

/// What foundations have of a part, direction by direction, in words of HTML: the odd one is found
/// in a group that is closed.
std::string describeGroup(const std::vector<Found::Foundation*>& foundations, Part part,
                          const std::vector<Direction>& directions);

/// From where to where the scales of a part go, a sentence each, with a space before it.
std::string describeScales(const Scales& scales, const std::vector<Direction>& directions);

/// The unit of a direction as HTML, with a space before it; empty where none is claimed.
std::string showUnit(const Direction& direction);

}  // namespace Report
