#pragma once

#include <string>
#include <vector>

#include "found/foundation_manager.h"
#include "foundations/matching.h"

/// What a document does not keep of what was to be written.
namespace Losses {

/// Compares with what reads back, a line for each foundation and field that does not, starting with
/// the foundation. `keys` tell which foundations belong together.
std::vector<std::string> list(const Found::FoundationManager& wanted,
                              const Found::FoundationManager& readBack,
                              const std::vector<Matching::Key>& keys);

/// The same for a Kvml listing, which no reader reads: looks at what stands in it.
std::vector<std::string> listOfKvml(const Found::FoundationManager& wanted);

}  // namespace Losses
