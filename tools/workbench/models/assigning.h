#pragma once

#include <set>
#include <string>
#include <vector>

#include "documents/document.h"
#include "found/foundation_manager.h"
#include "foundations/fields.h"

/// Gives fields of foundations values that users write.
namespace Assigning {

/// A field and its new value.
struct Change {
  const Fields::Field& field;
  Fields::Value value;
};

/// Throws UserError where there is no such field, or where it does not take the text.
Change read(const std::string& field, const std::string& text);

void apply(const std::vector<Change>& changes, Found::Foundation& foundation);

/// Throws UserError where the form of the document has no numbers, and one is set.
void requireNumbers(Documents::Form form, const std::string& shownPath,
                    const std::vector<Change>& changes);

/// Whatever else a document may hold twice, what is changed must be unique in what is set. Throws
/// UserError.
void requireUnique(const Found::FoundationManager& manager,
                   const std::set<const Found::Foundation*>& changed,
                   const std::vector<Change>& changes);

}  // namespace Assigning
