#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "report/bars.h"
#include "report/scale.h"

namespace Report {

/// Adds a row of a dot plot: a mark of its own for each direction, where its value stands on the
/// scale, or left of it for zero. The style sheet knows the marks by their elements, so that there
/// is little to write. All values are of directions that share `scale`; `first` is the first of
/// them.
void appendStrip(const std::vector<Bar>& bars, std::size_t first, std::size_t last,
                 const Scale& scale, std::string& page);

/// Where the mark of a zero stands, in pixels from the start of the scale.
constexpr int placeOfZero = -24;

/// The heading of the rows: the powers of ten of the scale.
void appendAxis(const Scale& scale, std::string& page);

/// The mark of a direction, to stand before its name.
void appendSample(std::size_t direction, std::string& page);

}  // namespace Report
