#pragma once

#include "found/foundation.h"

/// Which parts of a foundation act: forms differ in whether they hold one that does not as absent
/// or as zeros.
namespace Parts {

/// A legacy document gives every foundation an area; where it says nothing, the line is enough.
bool hasArea(Found::Foundation& foundation);
bool hasLine(Found::Foundation& foundation);

}  // namespace Parts
