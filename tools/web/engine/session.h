#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "documents/document.h"
#include "found/foundation_manager.h"
#include "history.h"
#include "models/rendering.h"
#include "models/snapshot.h"
#include "models/source.h"

namespace Engine {

/// Lends rows to what looks at managers. They must outlive it.
class Borrowed {
 public:
  explicit Borrowed(const Rows& rows);
  /// Gives them back: a manager deletes what it has.
  ~Borrowed() { manager = Found::FoundationManager(); }
  Borrowed(const Borrowed&) = delete;
  Borrowed& operator=(const Borrowed&) = delete;

  Found::FoundationManager& get() { return manager; }

 private:
  Found::FoundationManager manager;
};

/// The document as it stands, open, and which row each of its foundations is.
struct Standing {
  std::unique_ptr<Models::Snapshot> snapshot;
  std::unique_ptr<Models::Rendering> rendering;
  std::unique_ptr<Documents::Document> unchanged;  // instead of these
  std::vector<std::size_t> items;

  Documents::Document& get() { return unchanged ? *unchanged : rendering->getDocument(); }
  /// -1 for one that is no row.
  long findRow(std::size_t place) const;
};

/// An open document: what was read and what has changed since.
class Session {
 public:
  explicit Session(std::unique_ptr<Models::Read> read);

  const Models::Source& getSource() const { return *source; }
  History& getHistory() { return history; }
  const Rows& getRows() const { return history.getRows(); }
  /// Throws UserError where there is no such row.
  const Row& getRow(std::size_t index) const;
  /// As it was read; null for a row that is new.
  Found::Foundation* findOriginal(const Row& row) const;

  /// Makes the rows these, as one step. In the first exchange version they get the numbers that a
  /// reader gives them.
  void change(const std::string& label, Rows rows);

  /// The name of the file, safe to show.
  std::string getName() const;
  bool isUnchanged() const { return history.getVersion() == 0; }

  std::unique_ptr<Models::Snapshot> takeSnapshot() const;
  /// Throws LossFound where the form of the document cannot hold what has changed.
  Standing open() const;
  /// The bytes of the same, which are kept until something changes.
  const std::string& getBytes();
  /// The same, of a document that is open already.
  const std::string& getBytes(Standing& standing);

 private:
  std::shared_ptr<const Models::Source> source;
  std::vector<std::shared_ptr<Found::Foundation>> originals;
  History history;
  std::string made;
  std::optional<std::size_t> madeOf;  // the version of the history
};

}  // namespace Engine
