#pragma once

#include "found/foundation.h"

/// Which parts of a foundation act. A part that does not act is absent in some forms and consists
/// of zeros in others.
namespace Parts {

/// A legacy document gives every foundation an area; one of zeros counts only without a line.
bool hasArea(Found::Foundation& foundation);
bool hasLine(Found::Foundation& foundation);

}  // namespace Parts
