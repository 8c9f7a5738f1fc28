#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "documents/document.h"

/// Messages about reading a document.
namespace Documents {

/// A sentence about a place in the document, or about all of it when the position is 0.
struct Note {
  KvXmlPosition position;
  std::string sentence;
};

/// Lists what was skipped or renamed and, for each container of an exchange document, how many
/// beddings were read.
std::vector<Note> listNotes(Document& document);

/// How many foundations were skipped or renamed.
std::size_t countNotes(Document& document);

}  // namespace Documents
