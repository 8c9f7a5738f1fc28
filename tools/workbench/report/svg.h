#pragma once

#include <string>

#include "report/bars.h"
#include "report/content.h"

namespace Report {

/// Adds drawings of one part of all foundations to a page: a row for each, a bar for each
/// direction, in pictures of which some fit a sheet of paper. Many of them stand in groups that
/// open one by one, below a picture of them all; each group tells what is in it.
void appendPictures(const Content& content, Part part, std::string& page);

}  // namespace Report
