#include "exchange/known_foundations.h"

#include <algorithm>

namespace Found::Umo {

bool KnownFoundations::hasName(const std::string& name) {
  refresh();
  return names.count(name) > 0;
}

bool KnownFoundations::hasNumber(int number) {
  refresh();
  return numbers.count(number) > 0;
}

std::string KnownFoundations::makeFreeName(const std::string& wanted) {
  refresh();
  int& counter = counters[wanted];
  std::string candidate;
  do {
    candidate = wanted + "_" + std::to_string(++counter);
  } while (names.count(candidate) > 0);
  return candidate;
}

void KnownFoundations::noteLast() { note(list.back()); }

void KnownFoundations::refresh() {
  if (isTrusted) return;
  if (!areEntriesValid()) {
    entries.clear();
    names.clear();
    numbers.clear();
    counters.clear();
  }
  for (std::size_t i = entries.size(); i < list.size(); ++i) note(list[i]);
  isTrusted = true;
}

bool KnownFoundations::areEntriesValid() const {
  const auto isSame = [](const Entry& entry, const Foundation* listed) {
    return entry.foundation == listed &&
           (listed == nullptr ||
            (entry.number == listed->getNumber() && entry.name == listed->getName()));
  };
  return entries.size() <= list.size() &&
         std::equal(entries.begin(), entries.end(), list.begin(), isSame);
}

void KnownFoundations::note(const Foundation* foundation) {
  if (foundation == nullptr) {
    entries.push_back({nullptr, 0, {}});
    return;
  }
  entries.push_back({foundation, foundation->getNumber(), foundation->getName()});
  names.insert(foundation->getName());
  numbers.insert(foundation->getNumber());
}

}  // namespace Found::Umo
