#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Found::Umo {

/// Places in a list, found by a hash of what stands there. One stretch of memory without a pointer
/// in it: asking it for hundreds of thousands of names costs a fraction of asking a standard set.
class PlaceTable {
 public:
  /// Has room for `expected` places before it must grow.
  explicit PlaceTable(std::size_t expected) {
    std::size_t size = 64;
    while (size < 2 * expected) size *= 2;
    slots.resize(size);
  }

  /// Adds a place, unless `isSame` is true of one with this hash: those that hold the same would
  /// stand in one another's way.
  template <class Test>
  void add(std::uint32_t hash, std::size_t place, const Test& isSame) {
    if (2 * (used + 1) > slots.size()) grow();
    Slot& slot = slots[find(hash, isSame)];
    if (slot.placePlusOne != 0) return;
    slot = {hash, static_cast<std::uint32_t>(place) + 1};
    ++used;
  }

  /// True when `isWanted` is true of a place with this hash.
  template <class Test>
  bool contains(std::uint32_t hash, const Test& isWanted) const {
    return slots[find(hash, isWanted)].placePlusOne != 0;
  }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t placePlusOne = 0;  // 0: the slot is free
  };

  /// The slot of the place that `isWanted` is true of, or a free one.
  template <class Test>
  std::size_t find(std::uint32_t hash, const Test& isWanted) const {
    std::size_t i = wrap(hash);
    for (; slots[i].placePlusOne != 0; i = wrap(i + findStep(hash)))
      if (slots[i].hash == hash && isWanted(std::size_t{slots[i].placePlusOne} - 1)) break;
    return i;
  }

  std::size_t wrap(std::size_t i) const { return i & (slots.size() - 1); }

  /// From a slot that is taken to the next one to try: another way for nearly every hash, so that
  /// hashes that follow one another can start side by side and yet leave a crowd at once. Odd, so
  /// that the way passes all slots.
  static std::size_t findStep(std::uint32_t hash) { return (hash * 0x9E3779B9u) >> 12 | 1; }

  void grow() {
    std::vector<Slot> grown(2 * slots.size());
    grown.swap(slots);
    for (const Slot& slot : grown) {
      if (slot.placePlusOne == 0) continue;
      std::size_t i = wrap(slot.hash);
      while (slots[i].placePlusOne != 0) i = wrap(i + findStep(slot.hash));
      slots[i] = slot;
    }
  }

  std::vector<Slot> slots;  // a power of two, at most half of them taken
  std::size_t used = 0;
};

}  // namespace Found::Umo
