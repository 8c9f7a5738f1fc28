#include "found/foundation_manager.h"
#include "manager/default_names.h"

namespace Found {

Foundation* FoundationManager::giveFoundation(const Foundation& foundation, bool findEqual) {
  if (findEqual)
    if (Foundation* const equal = findFoundation(foundation)) return equal;

  auto created = std::make_unique<Foundation>(foundation);
  created->setNumber(followNumber(findHighestNumber(foundations, 0)));
  if (created->getName().empty()) created->setName(giveNextFoundationName(created->getNumber()));
  add(std::move(created));
  return foundations.back();
}

Foundation* FoundationManager::giveFoundation(const std::string& name) {
  if (Foundation* const named = findFoundation(name)) return named;

  auto created = std::make_unique<Foundation>();
  created->setNumber(followNumber(findHighestNumber(foundations, 0)));
  created->setName(name);
  add(std::move(created));
  return foundations.back();
}

std::string FoundationManager::giveNextFoundationName(int start) const {
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
