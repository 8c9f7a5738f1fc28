#pragma once

#include <cstddef>
#include <ostream>

#include "documents/document.h"

/// What the commands say of the documents that they read.
namespace Commands {

/// Tells on `notes`, a line each, what is skipped or renamed of a document as its foundations are
/// read. Returns how much that is. Throws UserError when nothing can be read.
std::size_t tellReading(Documents::Document& document, std::ostream& notes);

}  // namespace Commands
