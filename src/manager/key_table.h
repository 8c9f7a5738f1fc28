#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

namespace Found {

/// Values by key. No choice of keys makes a look-up slower than in a tree, although the author of
/// a document may choose names and numbers that hash alike.
///
/// The keys of a bucket form a chain of a few links. A key that finds its chain full goes into an
/// ordered map, which stays empty for all ordinary keys.
template <class Key, class Value>
class KeyTable {
 public:
  /// For about `expected` keys. More fit in, but fill the map.
  explicit KeyTable(std::size_t expected) {
    std::size_t size = 64;
    while (size < 2 * expected) size *= 2;
    firsts.resize(size);
    entries.reserve(expected);
  }

  /// The value of `key`, or null. It stays where it is until another key is added.
  Value* find(const Key& key) {
    const std::uint32_t hash = hashOf(key);
    for (Entry* entry = getEntry(findFirst(hash)); entry != nullptr; entry = getEntry(entry->next))
      if (entry->hash == hash && entry->key == key) return &entry->value;
    const auto place = overflow.find(key);
    return place != overflow.end() ? &place->second : nullptr;
  }

  /// Adds `key`, unless it is there.
  void add(const Key& key, const Value& value) {
    if (find(key) != nullptr) return;
    const std::uint32_t hash = hashOf(key);
    std::uint32_t& first = findFirst(hash);
    if (isFull(first)) {
      overflow.emplace(key, value);
      return;
    }
    entries.push_back({key, value, hash, first});
    first = static_cast<std::uint32_t>(entries.size());
  }

 private:
  static constexpr int longestChain = 8;

  struct Entry {
    Key key;
    Value value;
    std::uint32_t hash;
    std::uint32_t next;  // as in `firsts`
  };

  static std::uint32_t hashOf(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
  }

  /// Consecutive numbers get neighbouring buckets, since most documents ask for them in that order;
  /// numbers that differ only in their upper bits get different buckets.
  static std::uint32_t hashOf(int number) {
    const auto bits = static_cast<std::uint32_t>(number);
    return bits ^ (bits >> 16);
  }

  std::uint32_t& findFirst(std::uint32_t hash) { return firsts[hash & (firsts.size() - 1)]; }

  Entry* getEntry(std::uint32_t placePlusOne) {
    return placePlusOne != 0 ? &entries[placePlusOne - 1] : nullptr;
  }

  bool isFull(std::uint32_t first) {
    int links = 0;
    for (Entry* entry = getEntry(first); entry != nullptr; entry = getEntry(entry->next)) ++links;
    return links == longestChain;
  }

  std::vector<std::uint32_t> firsts;  // of each bucket: 1 + place in `entries`, 0 where it is empty
  std::vector<Entry> entries;
  std::map<Key, Value> overflow;
};

}  // namespace Found
