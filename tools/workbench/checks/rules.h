#pragma once

#include "checks/findings.h"
#include "documents/document.h"

/// What a reader of each form accepts in silence.
namespace Checks {

/// All that is found in a document, whatever its form, in its order.
Findings find(Documents::Document& document);

void checkLegacy(Documents::Document& document, Findings& findings);
void checkExchange(Documents::Document& document, Findings& findings);
void checkSheet(Documents::Document& document, Findings& findings);

}  // namespace Checks
