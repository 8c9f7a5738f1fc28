#pragma once

#include <cstddef>
#include <string>

#include "report/content.h"
#include "report/scale.h"

namespace Report {

/// Where there are more foundations, the rows of tables are made when they are looked at, from the
/// text that the page holds, since a browser takes long for many elements.
constexpr std::size_t mostRows = 500;

/// Adds the table of a part to a page: its foundations with all their values, and dots that show
/// how they compare. Without its rows where there are too many foundations.
void appendTable(const Content& content, Part part, const Scales& scales, std::string& page);

/// Adds all values of all foundations as text, a line each, with a tab between two of them. The
/// script of the page makes rows of it.
void appendText(const Content& content, std::string& page);

/// Where a foundation is found, by its place in the list: the address within the page.
std::string makeAddress(const Content& content, const Found::Foundation& foundation,
                        std::size_t place);

}  // namespace Report
