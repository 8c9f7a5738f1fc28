#pragma once

#include <string>
#include <vector>

#include "documents/document.h"
#include "documents/form.h"
#include "found/foundation_manager.h"
#include "foundations/fields.h"
#include "foundations/matching.h"

/// What gets lost when a document is written, of the foundations or of its old content.
namespace Losses {

struct Loss {
  std::string foundation;  // which one, as messages call it
  std::string kind;        // the same for losses that can be reported together
  std::string sentence;    // does not repeat the foundation
};

/// The loss of a field that is removed or changes.
Loss describe(const Found::Foundation& foundation, const Fields::Difference& lost);

/// Compares with the foundations that were read back. `keys` tell which foundations belong
/// together.
std::vector<Loss> list(const Found::FoundationManager& wanted,
                       const Found::FoundationManager& readBack,
                       const std::vector<Matching::Key>& keys);

/// The same for a Kvml listing. No reader reads these, so this examines what is written.
std::vector<Loss> listOfKvml(const Found::FoundationManager& wanted);

/// What is removed from a document when foundations of a document of the form `source` are written
/// into it, so that its foundations change from `before` to `after`: all foundations without a
/// counterpart, and those fields of the others that `source` cannot store.
std::vector<Loss> listReplaced(const Found::FoundationManager& before,
                               const Found::FoundationManager& after, Documents::Form source,
                               const std::vector<Matching::Key>& keys);

/// Foundations of an exchange document that have two parts: the library reads only the first part.
std::vector<Loss> listHalved(Documents::Document& document);

/// Beddings that are removed although they were never read.
std::vector<Loss> listUnread(const std::vector<const Documents::Entry*>& entries);

}  // namespace Losses
