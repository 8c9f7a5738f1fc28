#pragma once

#include <iosfwd>
#include <optional>
#include <vector>

#include "documents/documents.h"
#include "found/foundation_manager.h"

/// Documents that get other foundations while all the rest of them stays as it is.
namespace Updating {

/// What becomes of a foundation: its number from now on, or none when it goes.
struct Change {
  int before;
  std::optional<int> after;
};

/// Prints `base`, a document of this form, with the foundations of the manager in place of its own.
/// In a legacy model those that have the same number take over what the library does not know.
void update(const Documents::Input& base, Documents::Form form,
            const Found::FoundationManager& manager, std::ostream& out);

/// Prints `base` with the foundations that are left of those that were read from it. There is a
/// change for each of these, in their order. A bedding stays as it is but for its number; where
/// beddings have none, it takes a document of which everything was read.
void prune(const Documents::Input& base, Documents::Form form, const std::vector<Change>& changes,
           const Found::FoundationManager& manager, std::ostream& out);

}  // namespace Updating
