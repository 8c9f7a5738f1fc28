#pragma once

#include <cstddef>
#include <string>

#include "checks/findings.h"
#include "documents/document.h"
#include "found/foundation_manager.h"
#include "report/bars.h"

namespace Report {

/// Who tells how units are called.
enum class UnitsFrom { user, document };

/// When a document was saved, or when it was read where it comes from no file, as it is shown.
struct Date {
  std::string text;
  bool isOfFile = true;
};

/// What a report is about: a document or some of its foundations, what was found in the whole of
/// it, and how units are called.
struct Content {
  const Documents::Document& document;
  const Found::FoundationManager& manager;  // read from it
  const Checks::Findings& findings;
  const Found::Foundation* current;  // of the document, be it selected or not
  std::size_t total;  // of foundations in the document, of which some may be selected
  Units units;        // as they are shown
  UnitsFrom unitsFrom;
  Units documentUnits;  // as the document names them, whoever is followed
  Date date;

  bool isSelection() const { return manager.getFoundations().size() != total; }
};

}  // namespace Report
