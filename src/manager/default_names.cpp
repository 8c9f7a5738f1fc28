#include "manager/default_names.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace Found {
namespace {

constexpr std::string_view defaultName = "Found";
constexpr std::size_t places = 4;

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
  const std::string digits = std::to_string(number);
  std::string name(defaultName);
  if (digits.size() < places) name.append(places - digits.size(), '0');
  return name += digits;
}

long long findDefaultNumber(std::string_view name) {
  if (name.substr(0, defaultName.size()) != defaultName) return 0;
  const std::string_view digits = name.substr(defaultName.size());
  const bool isFilledUp = digits.size() == places || (digits.size() > places && digits[0] != '0');
  const char* const end = digits.data() + digits.size();
  long long number = 0;  // stays 0 for what is no number or does not fit
  const bool isWhole = std::from_chars(digits.data(), end, number).ptr == end;
  return isFilledUp && isWhole && number > 0 ? number : 0;
}

int DefaultNumbering::giveNumber() const { return followNumber(highest); }

std::string DefaultNumbering::giveName() {
  if (!namesKnown)
    for (const Foundation* foundation : list) recordName(*foundation);
  namesKnown = true;

  long long candidate = std::max<long long>(giveNumber(), nextCandidate);
  for (; !taken.empty() && taken.top() <= candidate; taken.pop())
    if (taken.top() == candidate) ++candidate;
  nextCandidate = candidate + 1;
  return makeDefaultName(candidate);
}

void DefaultNumbering::recordLast() {
  highest = std::max(highest, list.back()->getNumber());
  if (namesKnown) recordName(*list.back());
}

void DefaultNumbering::recordName(const Foundation& foundation) {
  const long long number = findDefaultNumber(foundation.getName());
  if (number > 0) taken.push(number);
}

}  // namespace Found
