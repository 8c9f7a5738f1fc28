#pragma once

#include <ostream>
#include <vector>

#include "comparing/differences.h"
#include "documents/document.h"
#include "documents/editing.h"

namespace Commands {

/// What came, went and changed, as people read it.
void printDifferences(const std::vector<Comparing::Difference>& differences, std::ostream& out);

/// What becomes of the foundations of `document`; that there is no change, `notes` are told.
void tellChanges(const Documents::Document& document, const Editing::Wish& wish, std::ostream& out,
                 std::ostream& notes);

}  // namespace Commands
