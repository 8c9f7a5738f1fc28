#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "found/foundation.h"
#include "models/snapshot.h"

namespace Python {

/// Where the foundations of a manager stood in the document that they were read from. Guarded by
/// the interpreter lock.
class Origins {
 public:
  static constexpr std::size_t nowhere = Models::nowhere;

  /// A foundation and its place in the document, which counts from 0.
  using Place = std::pair<const Found::Foundation*, std::size_t>;

  void reset(std::vector<Place> known);

  /// `nowhere` for one that was added.
  std::size_t find(const Found::Foundation& foundation) const noexcept;

  /// Is told of each that leaves the manager: another one may come to the same address.
  void leave(const Found::Foundation& foundation) noexcept;

  /// Tells which of some foundations are still there when work without the lock has ended.
  class Watch {
   public:
    Watch(Origins& watched, const std::vector<const Found::Foundation*>& foundations);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// Whether the one of this index has been there all the time.
    bool isThere(std::size_t index) const { return !gone[index]; }

   private:
    friend class Origins;

    Origins& origins;
    std::vector<Place> order;  // by address, with indices
    std::vector<bool> gone;
  };

 private:
  std::vector<Place> places;  // by address
  std::vector<Watch*> watches;
};

}  // namespace Python
