#pragma once

#include <optional>
#include <string>
#include <vector>

#include "documents/document.h"
#include "found/foundation_manager.h"

/// Documents that get other foundations while all the rest of them stays as it is. The document
/// then has no elements any more, which have changed; its foundations stay.
namespace Updating {

/// What becomes of a foundation: its number from now on, or none when it goes.
struct Change {
  int before;
  std::optional<int> after;
};

/// The text of `base` with the foundations of the manager in place of its own. In a legacy model
/// those that have the same number take over what the library does not know.
std::string update(Documents::Document& base, const Found::FoundationManager& manager);

/// The text of `base` with the foundations that are left of those that were read from it. There is
/// a change for each of these, in their order. A bedding stays as it is but for its number; where
/// beddings have none, it takes a document of which everything was read.
std::string prune(Documents::Document& base, const std::vector<Change>& changes,
                  const Found::FoundationManager& manager);

}  // namespace Updating
