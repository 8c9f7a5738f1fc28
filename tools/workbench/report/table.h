#pragma once

#include <cstddef>
#include <string>

#include "report/content.h"

namespace Report {

/// Adds the table to a page. It has everything that the pictures show.
void appendTable(const Content& content, std::string& page);

/// The id of the row of a foundation that findings are about, by its place in the list.
std::string makeRowId(std::size_t place);

}  // namespace Report
