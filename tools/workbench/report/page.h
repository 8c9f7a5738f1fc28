#pragma once

#include <string>
#include <string_view>

#include "report/content.h"

namespace Report {

/// The page of a report, which needs no network and is complete without scripts.
std::string makePage(const Content& content);

/// True for a text that is such a page.
bool isPage(std::string_view text);

}  // namespace Report
