#include "exchange/known_foundations.h"

#include <algorithm>
#include <functional>

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

std::uint32_t hash(const std::string& name) {
  return static_cast<std::uint32_t>(std::hash<std::string>()(name));
}

/// Numbers that follow one another stand side by side, which is how most documents ask for them;
/// those that differ in their upper bits only stand apart.
std::uint32_t hash(int number) {
  const auto bits = static_cast<std::uint32_t>(number);
  return bits ^ (bits >> 16);
}

}  // namespace

bool KnownFoundations::hasName(const std::string& name) {
  const auto isNamed = [&name](const Foundation& listed) { return listed.getName() == name; };
  if (!useTables()) return hasAny(list, isNamed);
  return tables->names.contains(hash(name),
                                [&](std::size_t place) { return isNamed(*list[place]); });
}

bool KnownFoundations::hasNumber(int number) {
  const auto isNumbered = [=](const Foundation& listed) { return listed.getNumber() == number; };
  if (!useTables()) return hasAny(list, isNumbered);
  return tables->numbers.contains(hash(number),
                                  [&](std::size_t place) { return isNumbered(*list[place]); });
}

std::string KnownFoundations::makeFreeName(const std::string& wanted) {
  int counter = useTables() ? tables->counters[wanted] : 0;
  std::string candidate;
  do {
    candidate = wanted + "_" + std::to_string(++counter);
  } while (hasName(candidate));
  if (tables) tables->counters[wanted] = counter;
  return candidate;
}

void KnownFoundations::noteLast() {
  if (tables) note(list.back());
}

bool KnownFoundations::useTables() {
  if (!tables && walks++ < fewWalks) return false;
  if (areTrusted) return true;
  if (!tables || !areTablesValid()) tables.emplace(std::max(expectedSize, list.size()));
  while (tables->noted < list.size()) note(list[tables->noted]);
  areTrusted = true;
  return true;
}

bool KnownFoundations::areTablesValid() const {
  const auto isSame = [](const Entry& entry, const Foundation* listed) {
    return entry.foundation == listed &&
           (listed == nullptr ||
            (entry.number == listed->getNumber() && entry.name == listed->getName()));
  };
  const std::vector<Entry>& entries = tables->entries;
  return entries.size() <= list.size() &&
         std::equal(entries.begin(), entries.end(), list.begin(), isSame);
}

void KnownFoundations::note(const Foundation* foundation) {
  // In doubt it may stand elsewhere, but then the tables are not asked before they are made anew.
  const std::size_t place = tables->noted++;
  if (foundation != nullptr) {
    tables->names.add(hash(foundation->getName()), place);
    tables->numbers.add(hash(foundation->getNumber()), place);
  }
  if (!isWatched) return;
  if (foundation != nullptr)
    tables->entries.push_back({foundation, foundation->getNumber(), foundation->getName()});
  else
    tables->entries.push_back({nullptr, 0, {}});
}

}  // namespace Found::Umo
