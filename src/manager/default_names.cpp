#include "manager/default_names.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

namespace Found {
namespace {

constexpr const char* defaultName = "Found";

}  // namespace

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
  return defaultName + std::string(missing, '0') + digits;
}

long long findDefaultNumber(const std::string& name) {
  const std::size_t digits = std::strlen(defaultName);
  if (name.compare(0, digits, defaultName) != 0) return 0;
  long long number = 0;
  std::from_chars(name.data() + digits, name.data() + name.size(), number);
  return makeDefaultName(number) == name ? number : 0;
}

int Succession::giveNumber() const { return followNumber(highest); }

std::string Succession::giveName() {
  if (!namesKnown)
    for (const Foundation* foundation : list) noteName(*foundation);
  namesKnown = true;

  long long candidate = std::max<long long>(giveNumber(), nextCandidate);
  for (; !taken.empty() && taken.top() <= candidate; taken.pop())
    if (taken.top() == candidate) ++candidate;
  nextCandidate = candidate + 1;
  return makeDefaultName(candidate);
}

void Succession::noteLast() {
  highest = std::max(highest, list.back()->getNumber());
  if (namesKnown) noteName(*list.back());
}

void Succession::noteName(const Foundation& foundation) {
  const long long number = findDefaultNumber(foundation.getName());
  if (number > 0) taken.push(number);
}

}  // namespace Found
