#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "documents/document.h"
#include "documents/updating.h"
#include "files/output_file.h"
#include "found/foundation_manager.h"

/// Documents as they are written to files.
namespace Writing {

/// A document on its way to a file, which takes the place of the old one as a whole or not at all.
class Output {
 public:
  /// `read` is the document whose foundations are written, and may be what is there. Throws
  /// UserError when nothing can be written to `to`, and when a document is there that cannot be
  /// updated but holds more than foundations.
  Output(OutputFile& to, Documents::Form written, Documents::Document& read);

  /// True when a document of this form is there, whose other content must stay.
  bool isUpdate() const { return isThere; }
  /// True when that is the document whose foundations are written.
  bool isSameFile() const { return old == &in; }

  /// Writes a document of nothing but the foundations. Of the document that was read, the elements
  /// are forgotten; so they are by the next two.
  void write(const Found::FoundationManager& manager);
  /// Writes the document that is there with these foundations in place of its own.
  void update(const Found::FoundationManager& manager);
  /// Writes the document that was read with what is left of its foundations; see
  /// Updating::prune().
  void prune(const std::vector<Updating::Change>& changes, const Found::FoundationManager& manager);

  /// What the document that was written does not keep, a line each.
  std::vector<std::string> listLosses(const Found::FoundationManager& manager) const;

  /// Lets the document take its place.
  void commit() { file.commit(); }

  /// As messages call the file.
  const std::string& getShownPath() const { return file.getShownPath(); }

 private:
  void openOld();
  /// Looks at the document that is there.
  void protect();

  Documents::Document& in;
  OutputFile& file;
  Documents::Form form;
  std::unique_ptr<Documents::Document> other;
  Documents::Document* old = nullptr;  // the document that is there: `in`, `other` or none
  bool isThere = false;
};

}  // namespace Writing
