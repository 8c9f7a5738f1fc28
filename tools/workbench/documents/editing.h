#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "documents/document.h"
#include "foundations/matching.h"
#include "foundations/units.h"

/// Changes the foundations of a document and keeps every other byte.
namespace Editing {

/// What the foundations of a document should become.
struct Wish {
  /// For each foundation of the document, in its order: what it should become; null to remove it.
  /// Then the new ones, whose `first` is null. Names are UTF-8.
  std::vector<Matching::Pair> pairs;
  /// The `second` of one of the pairs; null for none.
  const Found::Foundation* current = nullptr;
  /// How a table or data shall name its units; without a value, as it does.
  std::optional<Units> units;
};

/// Copies of the foundations of a document, to be changed, removed and added to.
class Draft {
 public:
  explicit Draft(Documents::Document& document);
  ~Draft();
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  /// The copies, in the order of the document. To remove one, call remove(): copies must not be
  /// deleted.
  Found::FoundationManager& getFoundations() { return copies; }

  /// Removes one of the copies, or deletes a foundation that was added.
  void remove(Found::Foundation& foundation);

  /// The copy of the foundation at this place in the document.
  Found::Foundation& getCopy(std::size_t place) { return *all[place].second; }

  /// The wish that the document holds the remaining copies and the foundations that were added.
  Wish makeWish() const;

 private:
  Found::FoundationManager copies;
  std::vector<Matching::Pair> all;
};

/// The beddings of `base` that edit() removes although they were not read: a bedding that is
/// removed has the same number.
std::vector<const Documents::Entry*> listUnreadThatGo(Documents::Document& base, const Wish& wish);

/// Returns `base` with attributes changed and elements added or removed, and no other byte changed.
/// Null when nothing changes. The result is opened again. It lacks what the form of the document
/// cannot store; the caller has to compare.
///
/// A bedding that was not read because another one has its number is removed together with that
/// one, or gets the same new number; otherwise it would be read instead. When the number or name of
/// an element depends on others and would change, it is written down.
std::unique_ptr<Documents::Document> edit(Documents::Document& base, const Wish& wish);

}  // namespace Editing
