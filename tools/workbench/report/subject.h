#pragma once

#include <cstddef>

#include "checks/findings.h"
#include "documents/document.h"
#include "foundations/selection.h"
#include "foundations/units.h"
#include "report/content.h"

namespace Report {

/// How a page calls units and who says so. A model says it for those who ask for nothing else.
struct Labels {
  Units units;
  UnitsFrom from = UnitsFrom::document;
  Units ofDocument;
};

/// With the units that are given, if any are. Throws UserError where the document names others.
Labels chooseLabels(const Documents::Document& document, const Units& given);

/// When the file of a document was written, or else the present.
Date findDate(const Documents::Document& document);

/// A document as it is reported about: what is found in it, and the foundations that are shown.
class Subject {
 public:
  /// Leaves of the document, which must outlive it, only the foundations that are selected. Throws
  /// UserError where there are none, as Document::keep() does.
  explicit Subject(Documents::Document& document, const Selection& selection = {});

  /// Good as long as this.
  Content tell(const Labels& labels, const Date& date) const;

 private:
  Documents::Document& document;
  Checks::Findings findings;
  const Found::Foundation* current;
  std::size_t total;
};

}  // namespace Report
