#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "documents/document.h"
#include "files/content.h"
#include "found/foundation_manager.h"
#include "foundations/units.h"
#include "origins.h"

namespace Python {

/// What a document was read from, whole. It never changes, so that any thread may look at it.
struct Source {
  Files::Content content;  // its path is absolute, or empty
  Documents::ReadOptions options;
  Documents::Form form;
  std::string encoding;
  Units units;
  Units labels;
  Spreadsheets::Dialect dialect;   // of a table
  std::vector<std::string> notes;  // what was skipped or renamed, a line each
  bool isReadWhole;                // whether all that stands for a foundation was read
};

/// What becomes of reading a document: what it is, and the foundations in its order.
struct Read {
  std::shared_ptr<const Source> source;
  Found::FoundationManager foundations;
};

/// Opens a document as hosts read it. Needs no lock. Throws UserError.
std::unique_ptr<Read> read(Files::Content content, const Documents::ReadOptions& options);

/// The content of the file at `path`, which messages call `shownPath`. Throws UserError.
Files::Content readFile(const std::string& path, const std::string& shownPath,
                        const Documents::ReadOptions& options);

/// Of an open document, whose bytes it takes.
std::shared_ptr<Source> describe(Documents::Document& document,
                                 const Documents::ReadOptions& options);

/// What a model knows beside its manager. Guarded by the interpreter lock.
struct ModelState {
  std::shared_ptr<const Source> source;
  std::shared_ptr<Origins> origins;
  std::optional<Units> units;  // that it names from now on
  int savedBy = 0;             // the process that has a thread save it at this moment
};

/// Foundations as they were at one moment, for work without the lock.
struct Snapshot {
  /// The index in `items` is the place in `copies`.
  struct Item {
    const Found::Foundation* original;  // only to compare with, and for Origins::Watch
    std::size_t origin;
    Found::Foundation* copy;
  };

  std::shared_ptr<const Source> source;
  std::optional<Units> units;
  Found::FoundationManager copies;
  std::vector<Item> items;

  std::vector<const Found::Foundation*> listOriginals() const;
};

/// Needs the lock, runs no code of Python.
std::unique_ptr<Snapshot> takeSnapshot(const ModelState& state,
                                       const Found::FoundationManager& manager);

}  // namespace Python
