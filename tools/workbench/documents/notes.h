#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "documents/document.h"

/// What is told of reading a document.
namespace Documents {

/// A sentence about a place in the document, or, where the position is 0, about all of it.
struct Note {
  KvXmlPosition position;
  std::string sentence;
};

/// What was skipped or renamed, and how many beddings were read of each container of an exchange
/// document.
std::vector<Note> listNotes(Document& document);

/// How many foundations were skipped or renamed.
std::size_t countNotes(Document& document);

}  // namespace Documents
