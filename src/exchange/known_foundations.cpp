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
  if (useTables()) return tables->names.find(name) != nullptr;
  return hasAny(list, [&name](const Foundation& listed) { return listed.getName() == name; });
}

bool KnownFoundations::hasNumber(int number) {
  if (useTables()) return tables->numbers.find(number) != nullptr;
  return hasAny(list, [number](const Foundation& listed) { return listed.getNumber() == number; });
}

std::string KnownFoundations::makeFreeName(const std::string& wanted) {
  int counter = useTables() ? *tables->names.find(wanted) : 0;
  std::string candidate;
  do {
    candidate = wanted + "_" + std::to_string(++counter);
  } while (hasName(candidate));
  if (tables) *tables->names.find(wanted) = counter;
  return candidate;
}

void KnownFoundations::recordLast() {
  if (!tables) return;
  if (isWatched) addEntry(list.back());
  if (tablesMatchList) enterNext();
}

bool KnownFoundations::useTables() {
  if (!tables && walks++ < fewWalks) return false;
  if (tablesMatchList) return true;
  if (!tables || !areEntriesValid()) tables.emplace(std::max(expectedSize, list.size()));
  if (isWatched)
    while (tables->entries.size() < list.size()) addEntry(list[tables->entries.size()]);
  while (tables->entered < list.size()) enterNext();
  tablesMatchList = true;
  return true;
}

bool KnownFoundations::areEntriesValid() const {
  const auto isSame = [](const Entry& entry, const Foundation* listed) {
    return entry.foundation == listed &&
           (listed == nullptr ||
            (entry.number == listed->getNumber() && entry.name == listed->getName()));
  };
  const std::deque<Entry>& entries = tables->entries;
  return entries.size() <= list.size() &&
         std::equal(entries.begin(), entries.end(), list.begin(), isSame);
}

void KnownFoundations::addEntry(const Foundation* foundation) {
  if (foundation != nullptr)
    tables->entries.push_back({foundation, foundation->getNumber(), foundation->getName()});
  else
    tables->entries.push_back({nullptr, 0, {}});
}

void KnownFoundations::enterNext() {
  const std::size_t place = tables->entered++;
  if (list[place] == nullptr) return;
  const std::string& name = isWatched ? tables->entries[place].name : list[place]->getName();
  tables->names.add(name, 0);
  tables->numbers.add(list[place]->getNumber(), {});
}

}  // namespace Found::Umo
