#include "foundations/numbers.h"

#include <algorithm>
#include <limits>

int Numbers::findFree(const std::map<int, Found::Foundation*>& taken) {
  int number = taken.empty() ? 0 : std::max(taken.rbegin()->first, 0);
  if (number < std::numeric_limits<int>::max()) return number + 1;
  while (taken.count(number) > 0) --number;
  return number;
}

int Numbers::findFree(const Found::FoundationManager& manager) {
  std::map<int, Found::Foundation*> taken;
  for (Found::Foundation* foundation : manager.getFoundations())
    taken.emplace(foundation->getNumber(), foundation);
  return findFree(taken);
}
