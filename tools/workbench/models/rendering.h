#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "documents/document.h"
#include "documents/editing.h"
#include "documents/losses.h"
#include "documents/writing.h"
#include "files/output_file.h"
#include "files/user_error.h"
#include "models/snapshot.h"

namespace Models {

/// Something would be lost, a line each, so that nothing was done.
class LossFound : public UserError {
 public:
  LossFound(const std::string& sentence, std::vector<std::string> lost)
      : UserError(sentence), losses(std::move(lost)) {}

  const std::vector<std::string>& getLosses() const { return losses; }

 private:
  std::vector<std::string> losses;
};

/// What a model shall become.
struct Target {
  Documents::Form form;
  std::optional<Spreadsheets::Dialect> dialect;  // of a table that is written anew
};

/// A model as a document, in memory. In its own form, the document that it was read from with what
/// has changed since; in another form, or as another table, a new document.
class Rendering {
 public:
  /// Throws UserError, also where a foundation that is new or named anew has number or name of
  /// another one.
  Rendering(Snapshot& rendered, const Target& target);
  /// The document in the file `into`, with these foundations instead of its own.
  Rendering(Snapshot& rendered, const Target& target, const std::string& into);

  Documents::Document& getDocument() { return output->getMade(); }
  /// How the document is read.
  const Documents::ReadOptions& getOptions() const { return options; }

  /// What gets lost, a line each.
  std::vector<std::string> listLosses() const;
  /// Of the fields alone, and of what no field tells: rotation about y and z.
  const std::vector<std::string>& getLostFields() const { return losses; }
  const std::vector<std::string>& getLostRotations() const { return rotations; }
  /// Throws LossFound.
  void requireAll() const;
  void requireFields() const;

  /// Reads the document anew, as hosts do. Throws UserError where that gives something else.
  std::unique_ptr<Documents::Document> readBack(const std::string& path);

  /// For each foundation of the document, which of the snapshot it is; nowhere for none.
  std::vector<std::size_t> listItems(Documents::Document& made) const;

  /// Writes the file that it was made for.
  void commit() { output->commit(); }

 private:
  void edit();
  void writeAnew();
  Editing::Wish makeWish();
  void setLosses(const std::vector<Losses::Loss>& found);

  Snapshot& snapshot;
  Documents::ReadOptions options;
  Documents::Document base;
  std::ostringstream unused;  // what is made stays in memory
  OutputFile file;
  std::unique_ptr<Writing::Output> output;
  std::vector<std::size_t> order;  // of the items, as an edited document has them
  std::vector<std::string> losses;
  std::vector<std::string> rotations;
};

/// A document that holds all of the model: in its own form where that can be, else as data.
std::unique_ptr<Rendering> renderWhole(Snapshot& snapshot);

/// A model without foundations of this form.
std::string makeEmpty(Documents::Form form);

}  // namespace Models
