#include "exchange/known_foundations.h"

#include <algorithm>

namespace Found::Umo {
namespace {

// Making the tables costs more than so many walks.
constexpr int fewWalks = 16;

template <class Test>
bool hasAny(const std::vector<Foundation*>& list, const Test& test) {
  return std::any_of(list.begin(), list.end(), [&test](const Foundation* foundation) {
    return foundation != nullptr && test(*foundation);
  });
}

}  // namespace

bool KnownFoundations::hasName(const std::string& name) {
  if (useTables()) return names.count(name) > 0;
  return hasAny(list, [&name](const Foundation& listed) { return listed.getName() == name; });
}

bool KnownFoundations::hasNumber(int number) {
  if (useTables()) return numbers.count(number) > 0;
  return hasAny(list, [number](const Foundation& listed) { return listed.getNumber() == number; });
}

std::string KnownFoundations::makeFreeName(const std::string& wanted) {
  int counter = useTables() ? counters[wanted] : 0;
  std::string candidate;
  do {
    candidate = wanted + "_" + std::to_string(++counter);
  } while (hasName(candidate));
  if (isMade) counters[wanted] = counter;
  return candidate;
}

void KnownFoundations::noteLast() {
  if (isMade) note(list.back());
}

bool KnownFoundations::useTables() {
  if (!isMade && walks++ < fewWalks) return false;
  if (isTrusted) return true;
  if (!areEntriesValid()) {
    entries.clear();
    names.clear();
    numbers.clear();
    counters.clear();
  }
  for (std::size_t i = entries.size(); i < list.size(); ++i) note(list[i]);
  isMade = true;
  isTrusted = true;
  return true;
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
