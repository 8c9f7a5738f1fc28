#pragma once

#include <string>

#include "report/content.h"

namespace Report {

/// The page of a report, which needs no network and is complete without scripts.
std::string makePage(const Content& content);

}  // namespace Report
