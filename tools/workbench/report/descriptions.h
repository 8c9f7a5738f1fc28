#pragma once

#include <string>
#include <vector>

#include "documents/form.h"
#include "found/foundation.h"
#include "report/bars.h"
#include "report/content.h"
#include "report/scale.h"

namespace Report {

/// What foundations have of a part, direction by direction, in words of HTML.
std::string describeGroup(const std::vector<Summary>& summaries,
                          const std::vector<Direction>& directions);

// Sentences about a table, each with a space before it.

/// From where to where the scales of a part go.
std::string describeScales(const Scales& scales, const std::vector<Direction>& directions);

/// Which foundations the table of a part leaves out.
std::string describeLacking(const std::vector<Found::Foundation*>& foundations, Part part);

/// What the columns tell that are no stiffness.
std::string describeColumns(const std::vector<Summary>& summaries);

// Words

/// How a foundation fails in the directions of a part: "x tension" and so on.
std::vector<std::string> listFailures(const std::vector<Direction>& directions,
                                      const std::vector<Bar>& bars);
/// The same as one text; "none" where it does not fail.
std::string describeFailures(const std::vector<Direction>& directions,
                             const std::vector<Bar>& bars);

/// "kN, m", or that they are not stated, as HTML.
std::string describeUnits(const Units& units);

/// "2026-03-01 09:30", or "read" and that; empty where it is not known.
std::string describeDate(const Date& date);

/// What kind of document this is.
const char* describeForm(Documents::Form form);

/// The unit of a direction as HTML, with a space before it; empty where none is claimed.
std::string showUnit(const Direction& direction);

}  // namespace Report
