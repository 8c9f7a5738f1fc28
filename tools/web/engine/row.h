#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "found/foundation.h"

namespace Engine {

/// A foundation of an open document. Rows that share a foundation are the same, so that steps to
/// undo take little memory; what changes is copied first.
struct Row {
  std::shared_ptr<Found::Foundation> foundation;
  std::size_t origin;  // its place in the document that was read, or Models::nowhere
  bool isCurrent = false;
};

inline bool operator==(const Row& a, const Row& b) {
  return a.foundation == b.foundation && a.isCurrent == b.isCurrent;
}

using Rows = std::vector<Row>;

}  // namespace Engine
