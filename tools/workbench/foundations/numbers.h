#pragma once

#include <map>

#include "found/foundation.h"
#include "found/foundation_manager.h"

namespace Numbers {

/// One above the highest of these numbers, at least 1; where that is the largest there can be, the
/// next below it that is free.
int findFree(const std::map<int, Found::Foundation*>& taken);
/// The same for a number that none of these foundations has.
int findFree(const Found::FoundationManager& manager);

}  // namespace Numbers
