#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Found::Umo {

/// Places in a list, found by a hash of what stands there. One stretch of memory without a pointer
/// in it: asking it for hundreds of thousands of names costs a fraction of asking a standard set.
/// Hashes must differ in their lower bits.
class PlaceTable {
 public:
  /// Has room for `expected` places before it must grow.
  explicit PlaceTable(std::size_t expected) {
    while (slots.size() < 2 * expected) slots.resize(2 * slots.size());
  }

  void add(std::uint32_t hash, std::size_t place) {
    if (2 * ++used > slots.size()) grow();
    insert({hash, static_cast<std::uint32_t>(place) + 1});
  }

  /// True when `isWanted` is true of a place with this hash.
  template <class Test>
  bool contains(std::uint32_t hash, const Test& isWanted) const {
    for (std::size_t i = hash; slots[wrap(i)].follower != 0; ++i) {
      const Slot& slot = slots[wrap(i)];
      if (slot.hash == hash && isWanted(std::size_t{slot.follower} - 1)) return true;
    }
    return false;
  }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t follower = 0;  // of the place; 0: the slot is free
  };

  std::size_t wrap(std::size_t i) const { return i & (slots.size() - 1); }

  void insert(const Slot& slot) {
    std::size_t i = slot.hash;
    while (slots[wrap(i)].follower != 0) ++i;
    slots[wrap(i)] = slot;
  }

  void grow() {
    std::vector<Slot> grown(2 * slots.size());
    grown.swap(slots);
    for (const Slot& slot : grown)
      if (slot.follower != 0) insert(slot);
  }

  std::vector<Slot> slots = std::vector<Slot>(64);  // a power of two, at most half of them taken
  std::size_t used = 0;
};

}  // namespace Found::Umo
