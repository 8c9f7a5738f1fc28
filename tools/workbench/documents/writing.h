#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "documents/document.h"
#include "documents/editing.h"
#include "documents/losses.h"
#include "files/output_file.h"
#include "found/foundation_manager.h"

/// Writes documents to files.
namespace Writing {

/// A document that is being written to a file. It replaces the old file as a whole or not at all.
class Output {
 public:
  /// `read` is the document whose foundations are written; it may be the one in the file. Throws
  /// UserError when `to` cannot be written, and when the file holds a document that cannot be
  /// updated although it contains more than foundations. `tables` is how a table is written.
  Output(OutputFile& to, Documents::Form written, Documents::Document& read,
         const Spreadsheets::Dialect& tables = {});

  /// How a table or data shall name its units. Otherwise it names those of the document that is
  /// read.
  void nameUnits(const Units& named) { units = named; }

  /// True when the file already holds a document of this form, whose other content must stay.
  bool isUpdate() const { return isThere; }
  /// True when the document in the file is the one whose foundations are written.
  bool isSameFile() const { return old == &in; }

  /// Makes a document of the foundations only. Frees the elements of the document that was read.
  void write(Found::FoundationManager& manager);
  /// Makes a copy of the document in the file, with these foundations instead of its own.
  void update(const Found::FoundationManager& manager);
  /// Makes a copy of `base` with its foundations changed as wished.
  void edit(Documents::Document& base, const Editing::Wish& wish);

  /// What gets lost of `manager`, whose foundations are written, in the document that was made.
  std::vector<Losses::Loss> listLosses(const Found::FoundationManager& manager);
  /// What update() removes from the document in the file.
  std::vector<Losses::Loss> listReplaced();

  /// The same without what no edited document keeps: the first exchange version stores no numbers,
  /// which are the places of the remaining beddings.
  std::vector<Losses::Loss> listLossesOfEdit(const Found::FoundationManager& manager);
  /// All that is lost of the foundations, and all that goes from what is there.
  std::vector<Losses::Loss> listAllLosses(const Found::FoundationManager& manager);

  /// The beddings that are removed from the document although they were never read.
  const std::vector<Losses::Loss>& getUnread() const { return unread; }

  /// Throws UserError when the document that was made loses anything of the foundations.
  void requireAll(const Found::FoundationManager& manager);

  /// The document that was made.
  Documents::Document& getMade() { return *made; }

  /// Replaces the file by the document that was made. Does not touch the file when nothing changes.
  void commit();

  /// The name of the file in messages.
  const std::string& getShownPath() const { return file.getShownPath(); }

 private:
  void openOld();
  std::string print(Found::FoundationManager& manager) const;
  /// Opens the document in the file. Throws UserError when it must not be replaced.
  void protect();
  /// The keys that tell which foundations of the two documents belong together.
  std::vector<Matching::Key> listKeys() const;

  Documents::Document& in;
  OutputFile& file;
  Documents::Form form;
  Spreadsheets::Dialect dialect;
  std::optional<Units> units;
  std::unique_ptr<Documents::Document> other;
  Documents::Document* old = nullptr;  // the document in the file: `in`, `other` or none
  bool isThere = false;
  std::vector<Losses::Loss> unread;
  std::unique_ptr<Documents::Document> edited;
  Documents::Document* made = nullptr;  // `edited`, or an unchanged document
};

}  // namespace Writing
