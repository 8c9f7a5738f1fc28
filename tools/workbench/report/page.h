#pragma once

#include <ostream>

#include "report/content.h"

namespace Report {

/// The page of a report, which needs no network and is complete without scripts.
void printPage(const Content& content, std::ostream& out);

}  // namespace Report
