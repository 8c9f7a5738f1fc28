#pragma once

#include <ostream>

#include "report/content.h"

/// The page of a report.
namespace ReportPage {

/// HTML that stands for itself: no network, and complete without scripts.
void print(const ReportContent& content, std::ostream& out);

}  // namespace ReportPage
