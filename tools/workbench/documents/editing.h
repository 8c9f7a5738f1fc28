#pragma once

#include <memory>
#include <string>
#include <vector>

#include "documents/document.h"
#include "foundations/matching.h"

/// Documents whose foundations change while every other byte of them stays.
namespace Editing {

/// What becomes of the foundations of a document.
struct Wish {
  /// For each foundation of the document, in their order, what it shall be; null where it goes.
  /// Behind them those that are new, whose `first` is null. Names are UTF-8.
  std::vector<Matching::Pair> pairs;
  /// One of the pairs' second; null for none.
  const Found::Foundation* current = nullptr;
};

/// Copies of the foundations of a document, to be changed, removed and added to.
class Draft {
 public:
  explicit Draft(Documents::Document& document);
  ~Draft();
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  /// The copies, in the order of the document. Whatever is removed must not be deleted.
  Found::FoundationManager& getFoundations() { return copies; }

  /// Takes out one of the copies, or deletes one that was added.
  void remove(Found::Foundation& foundation);

  /// Of the foundation at this place in the document.
  Found::Foundation& getCopy(std::size_t place) { return *all[place].second; }

  /// That the document shall hold the copies that are left, and those that were added.
  Wish makeWish() const;

 private:
  Found::FoundationManager copies;
  std::vector<Matching::Pair> all;
};

/// Beddings of `base` that were not read, since other ones have their numbers, and go with these.
std::vector<const Documents::Entry*> listUnreadThatGo(Documents::Document& base, const Wish& wish);

/// `base` with attributes that change, and elements that come or go, and not a byte else; opened
/// once more. Null when nothing changes. What the form of the document cannot hold the result does
/// not tell, which is left to the caller to compare.
///
/// A bedding that was not read since another one has its number goes with that one, or gets its new
/// number: it would be read in its place. An element whose number or name depends on those of
/// others gets its own where it would become another one.
std::unique_ptr<Documents::Document> edit(Documents::Document& base, const Wish& wish);

}  // namespace Editing
