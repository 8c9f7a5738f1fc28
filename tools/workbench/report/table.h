#pragma once

#include <cstddef>
#include <ostream>
#include <string>

#include "report/content.h"

namespace Report {

/// The table of a report, which has everything that the pictures show.
void printTable(const Content& content, std::ostream& out);

/// The id of the row of a foundation that findings are about, by its place in the list.
std::string makeRowId(std::size_t place);

}  // namespace Report
