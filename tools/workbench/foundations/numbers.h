#pragma once

#include <map>

#include "found/foundation.h"

namespace Numbers {

/// One above the highest of these numbers, at least 1; where that is the largest there can be, the
/// next below it that is free.
int findFree(const std::map<int, Found::Foundation*>& taken);

}  // namespace Numbers
