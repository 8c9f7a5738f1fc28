#pragma once

#include <string>
#include <vector>

#include "documents/document.h"
#include "documents/form.h"
#include "found/foundation_manager.h"
#include "foundations/fields.h"
#include "foundations/matching.h"

/// What a document does not keep of what was to be written, or of what stood in it.
namespace Losses {

struct Loss {
  std::string foundation;  // that it is about, as messages call it
  std::string kind;        // the same for all losses that need not be told apart
  std::string sentence;    // without the foundation
};

/// A field that does not stay what it is.
Loss describe(const Found::Foundation& foundation, const Fields::Difference& lost);

/// Compares with what reads back. `keys` tell which foundations belong together.
std::vector<Loss> list(const Found::FoundationManager& wanted,
                       const Found::FoundationManager& readBack,
                       const std::vector<Matching::Key>& keys);

/// The same for a Kvml listing, which no reader reads: looks at what stands in it.
std::vector<Loss> listOfKvml(const Found::FoundationManager& wanted);

/// What goes from a document whose foundations were `before` and are `after`, as those of a
/// document of the form `source` were written into it: all foundations that have no counterpart,
/// and of others what such a document cannot tell.
std::vector<Loss> listReplaced(const Found::FoundationManager& before,
                               const Found::FoundationManager& after, Documents::Form source,
                               const std::vector<Matching::Key>& keys);

/// Foundations of two parts in an exchange document, of which the library reads the first.
std::vector<Loss> listHalved(Documents::Document& document);

/// Beddings that go although they were never read.
std::vector<Loss> listUnread(const std::vector<const Documents::Entry*>& entries);

}  // namespace Losses
