#pragma once

#include <cstddef>
#include <ostream>

#include "documents/document.h"

/// What the commands report about the documents that they read.
namespace Commands {

/// Prints to `notes`, a line each, what reading the foundations of a document skips or renames.
/// Returns how many it skips or renames. Throws UserError when nothing can be read.
std::size_t tellReading(Documents::Document& document, std::ostream& notes);

}  // namespace Commands
