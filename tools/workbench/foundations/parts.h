#pragma once

#include "found/foundation.h"

/// Which parts of a foundation act. A part that does not act is absent in some forms and consists
/// of zeros in others.
namespace Parts {

/// A legacy document gives every foundation an area; one of zeros counts only without a line.
bool hasArea(Found::Foundation& foundation);
bool hasLine(Found::Foundation& foundation);

/// True when something of a part is there, be it zeros; those of a rotation say nothing, since
/// exchange documents always give one.
bool tellsArea(Found::Foundation& foundation);
bool tellsLine(Found::Foundation& foundation);

}  // namespace Parts
