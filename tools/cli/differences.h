#pragma once

#include <ostream>
#include <vector>

#include "comparing/differences.h"
#include "documents/document.h"
#include "documents/editing.h"
#include "notes.h"
#include "terminal.h"

namespace Commands {

/// What came, went and changed, as people read it.
void printDifferences(const std::vector<Comparing::Difference>& differences,
                      const Terminal::Painter& painter, std::ostream& out);

/// Prints what becomes of the foundations of `document`. Where `out` is null, since nothing else
/// may stand beside a document, `notes` are told, and always when there is no change.
void tellChanges(const Documents::Document& document, const Editing::Wish& wish, std::ostream* out,
                 Notes& notes);

}  // namespace Commands
