#pragma once

#include <memory>

#include "found/foundation.h"

/// Whole copies of foundations.
namespace Copying {

/// Gives a foundation everything that `other` has, name, number and marks included.
void overwrite(Found::Foundation& foundation, const Found::Foundation& other);

/// A foundation with everything that `other` has, name, number and marks included.
std::unique_ptr<Found::Foundation> duplicate(const Found::Foundation& other);

}  // namespace Copying
