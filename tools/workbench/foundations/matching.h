#pragma once

#include <vector>

#include "found/foundation.h"

/// Finds the same foundations in two lists.
namespace Matching {

/// Foundations that belong together; null where one has no counterpart.
struct Pair {
  Found::Foundation* first;
  Found::Foundation* second;
};

enum class Key { number, name, place };

/// Pairs foundations of equal number and name first, then, key by key, those that are left. Of
/// several with the same key, the first of one list goes with the first of the other. `Key::place`
/// pairs whatever is left in order. The result is in the order of the first list; what only the
/// second has comes last.
std::vector<Pair> match(const std::vector<Found::Foundation*>& first,
                        const std::vector<Found::Foundation*>& second,
                        const std::vector<Key>& keys);

}  // namespace Matching
