#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "found/foundation_manager.h"
#include "foundations/units.h"
#include "models/source.h"

namespace Models {

/// The place of what the document that was read does not hold.
constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

/// Foundations as they were at one moment.
struct Snapshot {
  /// The index in `items` is the place in `copies`.
  struct Item {
    const Found::Foundation* original;  // which may be gone
    std::size_t origin;                 // its place in the document that was read
    Found::Foundation* copy;
  };

  /// Copies a foundation to the end; `origin` may be `nowhere`.
  void add(const Found::Foundation& original, std::size_t origin);

  std::shared_ptr<const Source> source;
  std::optional<Units> units;  // that the model names from now on
  /// Whether new ones come last even where they have the number of one that is gone; else they take
  /// its place, so that whatever else stands there stays.
  bool keepsOrder = false;
  Found::FoundationManager copies;
  std::vector<Item> items;
};

}  // namespace Models
