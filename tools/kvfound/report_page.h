#pragma once

#include <ostream>

#include "check_findings.h"
#include "documents.h"
#include "found/foundation_manager.h"
#include "report_bars.h"

/// The page of a report.
namespace ReportPage {

/// A document and what was made of it.
struct Content {
  const Documents::Tree& tree;
  const Found::FoundationManager& manager;
  Checks::Findings& findings;
  ReportBars::Units units;
};

/// HTML that stands for itself: no network, and complete without scripts.
void print(const Content& content, std::ostream& out);

}  // namespace ReportPage
