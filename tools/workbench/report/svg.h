#pragma once

#include <ostream>

#include "report/bars.h"
#include "report/content.h"

namespace Report {

/// Draws one part of all foundations: a row for each, a bar for each direction, in pictures of
/// which some fit a sheet of paper. Where there are many, they stand in groups that open one by
/// one, below a picture of them all; each group tells what is in it.
void printPictures(const Content& content, Part part, std::ostream& out);

}  // namespace Report
