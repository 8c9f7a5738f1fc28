#include <algorithm>
#include <limits>

#include "found/foundation_manager.h"

namespace Found {
namespace {

/// The greater of `floor` and the highest number in the list.
int findHighestNumber(const std::vector<Foundation*>& list, int floor) {
  int highest = floor;
  for (const Foundation* foundation : list)
    if (foundation != nullptr) highest = std::max(highest, foundation->getNumber());
  return highest;
}

/// Behind the largest int there is no other; the number is then given again.
int giveNextNumber(const std::vector<Foundation*>& list) {
  const int highest = findHighestNumber(list, 0);
  return highest < std::numeric_limits<int>::max() ? highest + 1 : highest;
}

/// "Found" and the number in at least four places, filled up on the left, before a sign too.
std::string makeDefaultName(long long number) {
  constexpr std::size_t places = 4;
  const std::string digits = std::to_string(number);
  const std::size_t missing = digits.size() < places ? places - digits.size() : 0;
  return "Found" + std::string(missing, '0') + digits;
}

}  // namespace

Foundation* FoundationManager::giveFoundation(const Foundation& foundation, bool findEqual) {
  if (findEqual)
    if (Foundation* const equal = findFoundation(foundation)) return equal;

  auto created = std::make_unique<Foundation>(foundation);
  created->setNumber(giveNextNumber(foundations));
  if (created->getName().empty()) created->setName(giveNextFoundationName(created->getNumber()));
  add(std::move(created));
  return foundations.back();
}

Foundation* FoundationManager::giveFoundation(const std::string& name) {
  if (Foundation* const named = findFoundation(name)) return named;

  auto created = std::make_unique<Foundation>();
  created->setNumber(giveNextNumber(foundations));
  created->setName(name);
  add(std::move(created));
  return foundations.back();
}

std::string FoundationManager::giveNextFoundationName(int start) const {
  // Counts beyond the range of int, so that a free name is found behind the largest number too.
  long long candidate = findHighestNumber(foundations, start);
  std::string name = makeDefaultName(candidate);
  while (!hasUniqueName(name)) name = makeDefaultName(++candidate);
  return name;
}

bool FoundationManager::hasUniqueName(const std::string& name) const {
  return findFoundation(name) == nullptr;
}

void FoundationManager::renumberFoundations() {
  int number = 0;
  for (Foundation* foundation : foundations)
    if (foundation != nullptr) foundation->setNumber(++number);
}

}  // namespace Found
