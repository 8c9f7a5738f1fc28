#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "documents/document.h"

/// What is told of reading an exchange document.
namespace Documents {

/// What was skipped or renamed of each container, a sentence each, and how many beddings were read.
/// Of a model nothing is told.
std::vector<std::string> listNotes(Document& document);

/// How many beddings were skipped or renamed.
std::size_t countNotes(Document& document);

}  // namespace Documents
