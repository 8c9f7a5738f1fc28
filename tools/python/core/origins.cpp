#include "origins.h"

#include <algorithm>
#include <functional>

namespace Python {
namespace {

using Found::Foundation;

void sort(std::vector<Origins::Place>& places) {
  std::sort(places.begin(), places.end(), [](const Origins::Place& a, const Origins::Place& b) {
    return std::less<>()(a.first, b.first);
  });
}

/// The place of the foundation in the list, or the end of the list.
template <class Places>
auto findIn(Places& places, const Foundation* foundation) {
  const auto place = std::lower_bound(places.begin(), places.end(), foundation,
                                      [](const Origins::Place& known, const Foundation* wanted) {
                                        return std::less<>()(known.first, wanted);
                                      });
  return place != places.end() && place->first == foundation ? place : places.end();
}

}  // namespace

void Origins::reset(std::vector<Place> known) {
  sort(known);
  places = std::move(known);
}

std::size_t Origins::find(const Foundation& foundation) const noexcept {
  const auto place = findIn(places, &foundation);
  return place != places.end() ? place->second : nowhere;
}

void Origins::leave(const Foundation& foundation) noexcept {
  const auto place = findIn(places, &foundation);
  if (place != places.end()) place->second = nowhere;
  for (Watch* watch : watches) {
    const auto watched = findIn(watch->order, &foundation);
    if (watched != watch->order.end()) watch->gone[watched->second] = true;
  }
}

Origins::Watch::Watch(Origins& watched, const std::vector<const Foundation*>& foundations)
    : origins(watched), gone(foundations.size()) {
  for (std::size_t i = 0; i < foundations.size(); ++i) order.emplace_back(foundations[i], i);
  sort(order);
  origins.watches.push_back(this);
}

Origins::Watch::~Watch() {
  origins.watches.erase(std::find(origins.watches.begin(), origins.watches.end(), this));
}

}  // namespace Python
