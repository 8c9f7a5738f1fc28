#pragma once

#include <optional>

namespace kvt {

/// A value or none.
template <class T>
using Nullable = std::optional<T>;

}  // namespace kvt
