#pragma once

#include <optional>
#include <string>

#include "documents/document.h"

namespace Comparing {

/// What users should know of the units of two documents.
struct UnitNote {
  bool isWarning;  // since values may mean something else
  const Documents::Document& about;
  std::string sentence;
};

/// Of documents that name different units, or of which only one names any; of others nothing.
/// Throws UserError where tables or data name different ones.
std::optional<UnitNote> compareUnits(const Documents::Document& document,
                                     const Documents::Document& other);

}  // namespace Comparing
