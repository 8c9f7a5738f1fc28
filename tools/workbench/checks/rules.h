#pragma once

#include "checks/findings.h"
#include "documents/documents.h"
#include "found/foundation_manager.h"

/// What a reader of each form accepts in silence.
namespace Checks {

/// All that is found in a document, whatever its form, in its order. `read` holds what the reader
/// made of it; for an exchange document it may be empty, and then no foundations are told.
Findings find(const Documents::Tree& tree, const Found::FoundationManager& read);

void checkLegacy(const Documents::Tree& tree, const Found::FoundationManager& read,
                 Findings& findings);
void checkExchange(const Documents::Tree& tree, Findings& findings);

}  // namespace Checks
