#pragma once

#include <string>
#include <vector>

#include "report/content.h"
#include "report/scale.h"

namespace Report {

/// Adds how the values of a part are spread, for documents of many foundations: for each direction
/// a histogram on the scale, the same as a table by decades, and the odd foundations by name.
void appendDistribution(const Content& content, Part part, const Scales& scales, std::string& page);

}  // namespace Report
