#include "foundations/matching.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace Matching {
namespace {

using Found::Foundation;
using KeyValue = std::pair<int, std::string>;

/// Pairs those of the still unmatched that have the same key.
void pairBy(const std::function<KeyValue(const Foundation&)>& getKey, std::vector<Pair>& pairs,
            std::vector<Foundation*>& unmatched) {
  std::map<KeyValue, std::vector<std::size_t>> places;  // of those still free, the last one first
  for (std::size_t i = unmatched.size(); i > 0; --i)
    if (unmatched[i - 1] != nullptr) places[getKey(*unmatched[i - 1])].push_back(i - 1);

  for (Pair& pair : pairs) {
    if (pair.second != nullptr) continue;
    const auto found = places.find(getKey(*pair.first));
    if (found == places.end() || found->second.empty()) continue;
    pair.second = std::exchange(unmatched[found->second.back()], nullptr);
    found->second.pop_back();
  }
}

std::function<KeyValue(const Foundation&)> makeGetter(Key key) {
  switch (key) {
    case Key::number:
      return [](const Foundation& foundation) { return KeyValue(foundation.getNumber(), ""); };
    case Key::name:
      return [](const Foundation& foundation) { return KeyValue(0, foundation.getName()); };
    case Key::place:
      break;
  }
  return [](const Foundation&) { return KeyValue(); };
}

}  // namespace

std::vector<Pair> match(const std::vector<Foundation*>& first,
                        const std::vector<Foundation*>& second, const std::vector<Key>& keys) {
  std::vector<Pair> pairs;
  pairs.reserve(first.size());
  for (Foundation* foundation : first) pairs.push_back({foundation, nullptr});
  std::vector<Foundation*> unmatched = second;
  pairBy(
      [](const Foundation& foundation) {
        return KeyValue(foundation.getNumber(), foundation.getName());
      },
      pairs, unmatched);
  for (const Key key : keys) pairBy(makeGetter(key), pairs, unmatched);
  for (Foundation* foundation : unmatched)
    if (foundation != nullptr) pairs.push_back({nullptr, foundation});
  return pairs;
}

}  // namespace Matching
