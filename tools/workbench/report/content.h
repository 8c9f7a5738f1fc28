#pragma once

#include "checks/findings.h"
#include "documents/document.h"
#include "found/foundation_manager.h"
#include "report/bars.h"

namespace Report {

/// What a report is about: a document, what was made of it, and how units are called.
struct Content {
  const Documents::Document& document;
  const Found::FoundationManager& manager;  // read from it
  const Checks::Findings& findings;
  const Units& units;
};

}  // namespace Report
