#pragma once

#include <memory>
#include <string>
#include <vector>

#include "documents/document.h"
#include "documents/notes.h"
#include "files/content.h"
#include "found/foundation_manager.h"
#include "foundations/units.h"

/// Foundations that live on while the document that they came from is closed.
namespace Models {

/// What a document was read from, whole. It never changes, so that any thread may look at it.
struct Source {
  Files::Content content;
  Documents::ReadOptions options;
  Documents::Form form;
  std::string encoding;
  Units units;
  Units labels;
  Spreadsheets::Dialect dialect;       // of a table
  Spreadsheets::FieldSet fields;       // that it can hold
  std::vector<Documents::Note> notes;  // what was skipped or renamed
  bool isReadWhole;                    // whether all that stands for a foundation was read

  /// The notes as messages, a line each.
  std::vector<std::string> listLines() const;
};

/// What becomes of reading a document: what it is, and the foundations in its order.
struct Read {
  std::shared_ptr<const Source> source;
  Found::FoundationManager foundations;
};

/// Opens a document as hosts read it. Throws UserError.
std::unique_ptr<Read> read(Files::Content content, const Documents::ReadOptions& options);

/// Of an open document, whose bytes it takes.
std::shared_ptr<Source> describe(Documents::Document& document,
                                 const Documents::ReadOptions& options);

}  // namespace Models
