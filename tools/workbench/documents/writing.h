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

  /// Makes a document of nothing but the foundations. Of the document that was read, the elements
  /// are forgotten.
  void write(const Found::FoundationManager& manager);
  /// Makes the document that is there with these foundations in place of its own.
  void update(const Found::FoundationManager& manager);
  /// Makes `base` with what is wished of its foundations.
  void edit(Documents::Document& base, const Editing::Wish& wish);

  /// What the document that was made does not keep of the foundations that it was made of.
  std::vector<Losses::Loss> listLosses(const Found::FoundationManager& manager);
  /// What update() takes from the document that is there.
  std::vector<Losses::Loss> listReplaced();

  /// What goes of the document without ever having been read.
  const std::vector<Losses::Loss>& getUnread() const { return unread; }

  /// Throws UserError when the document that was made does not keep all of the foundations.
  void requireAll(const Found::FoundationManager& manager);

  /// The document that was made.
  Documents::Document& getMade() { return *made; }

  /// Lets the document take its place. What does not change stays untouched.
  void commit();

  /// As messages call the file.
  const std::string& getShownPath() const { return file.getShownPath(); }

 private:
  void openOld();
  /// Looks at the document that is there.
  void protect();
  /// Which foundations of the two documents belong together.
  std::vector<Matching::Key> listKeys() const;

  Documents::Document& in;
  OutputFile& file;
  Documents::Form form;
  std::unique_ptr<Documents::Document> other;
  Documents::Document* old = nullptr;  // the document that is there: `in`, `other` or none
  bool isThere = false;
  std::vector<Losses::Loss> unread;
  std::unique_ptr<Documents::Document> edited;
  Documents::Document* made = nullptr;  // `edited`, or what is written as it is
};

}  // namespace Writing
