#include "report/subject.h"

#include "checks/rules.h"
#include "documents/units.h"
#include "files/dates.h"
#include "report/text.h"

namespace Report {

Labels chooseLabels(const Documents::Document& document, const Units& given) {
  Documents::chooseUnits(document, given);
  const Units ofDocument = document.getLabels();
  const bool isAsked = !given.force.empty();
  return {showUnits(isAsked ? given : ofDocument), isAsked ? UnitsFrom::user : UnitsFrom::document,
          showUnits(ofDocument)};
}

Date findDate(const Documents::Document& document) {
  const std::string& file = document.getContent().path;
  return file.empty() ? Date{Dates::now(), false} : Date{Dates::ofFile(file), true};
}

// Findings are of the whole document: what is left out must not look as if it were lacking.
Subject::Subject(Documents::Document& opened, const Selection& selection)
    : document(opened),
      findings(Checks::find(document)),
      current(document.getFoundations().getCurrentFoundation()),
      total(document.getFoundations().getFoundations().size()) {
  document.keep(selection);
}

Content Subject::tell(const Labels& labels, const Date& date) const {
  return {document,    document.getFoundations(), findings, current, total, labels.units,
          labels.from, labels.ofDocument,         date};
}

}  // namespace Report
