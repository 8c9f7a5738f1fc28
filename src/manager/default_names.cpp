#include "manager/default_names.h"

#include <algorithm>
#include <limits>

namespace Found {

int findHighestNumber(const std::vector<Foundation*>& list, int floor) {
  int highest = floor;
  for (const Foundation* foundation : list)
    if (foundation != nullptr) highest = std::max(highest, foundation->getNumber());
  return highest;
}

int followNumber(int highest) {
  return highest < std::numeric_limits<int>::max() ? highest + 1 : highest;
}

std::string makeDefaultName(long long number) {
  constexpr std::size_t places = 4;
  const std::string digits = std::to_string(number);
  const std::size_t missing = digits.size() < places ? places - digits.size() : 0;
  return "Found" + std::string(missing, '0') + digits;
}

Succession::Succession(const std::vector<Foundation*>& growing)
    : list(growing), highest(findHighestNumber(growing, 0)) {}

int Succession::giveNumber() const { return followNumber(highest); }

std::string Succession::giveName() {
  if (!namesKnown)
    for (const Foundation* foundation : list) noteName(foundation);
  namesKnown = true;

  long long candidate = std::max<long long>(giveNumber(), nextCandidate);
  std::string name =
      findFreeName(candidate, [this](const std::string& tried) { return names.count(tried) == 0; });
  nextCandidate = candidate + 1;
  return name;
}

void Succession::noteLast() {
  highest = std::max(highest, list.back()->getNumber());
  if (namesKnown) noteName(list.back());
}

void Succession::noteName(const Foundation* foundation) {
  if (foundation != nullptr) names.insert(foundation->getName());
}

}  // namespace Found
