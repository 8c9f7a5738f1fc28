#pragma once

#include <cstddef>

#include "documents/document.h"
#include "notes.h"

/// What the commands report about the documents that they read.
namespace Commands {

/// Tells what reading the foundations of a document skips or renames, and how many beddings it
/// reads of an exchange document. Returns how many it skips or renames. Throws UserError when
/// nothing can be read.
std::size_t tellReading(Documents::Document& document, Notes& notes);

}  // namespace Commands
