#include <algorithm>

#include "found/foundation_manager.h"

namespace Found {
namespace {

template <class Test>
Foundation* findFirst(const std::vector<Foundation*>& list, const Test& test) {
  const auto place = std::find_if(list.begin(), list.end(),
                                  [&](const Foundation* f) { return f != nullptr && test(*f); });
  return place != list.end() ? *place : nullptr;
}

}  // namespace

FoundationManager::FoundationManager() = default;

FoundationManager::FoundationManager(const FoundationManager& other) = default;

FoundationManager& FoundationManager::operator=(const FoundationManager& other) {
  if (this == &other) return *this;
  // Copied first, since copying may fail: half an assignment would share foundations unnoticed.
  std::vector<Foundation*> otherFoundations = other.foundations;
  std::vector<Foundation*> otherRemoved = other.removedFoundations;
  std::vector<FoundationUser*> otherUsers = other.users;
  maxFoundationValue = other.maxFoundationValue;
  foundations.swap(otherFoundations);
  removedFoundations.swap(otherRemoved);
  users.swap(otherUsers);
  currentFoundation = other.currentFoundation;
  return *this;
}

FoundationManager::~FoundationManager() { reset(); }

void FoundationManager::reset() {
  for (const Foundation* foundation : foundations) delete foundation;
  foundations.clear();
}

void FoundationManager::add(Foundation* f) { foundations.push_back(f); }

void FoundationManager::add(std::unique_ptr<Foundation> f) {
  add(f.get());
  static_cast<void>(f.release());  // owned by the list from here on
}

Foundation* FoundationManager::findFoundation(const Foundation& f) const {
  return findFirst(foundations, [&](const Foundation& listed) { return listed == f; });
}

Foundation* FoundationManager::findFoundation(const std::string& name) const {
  return findFirst(foundations, [&](const Foundation& listed) { return listed.getName() == name; });
}

Foundation* FoundationManager::findFoundation(int number) const {
  return findFirst(foundations,
                   [=](const Foundation& listed) { return listed.getNumber() == number; });
}

Foundation* FoundationManager::getCurrentFoundation() const { return currentFoundation; }

void FoundationManager::setCurrentFoundation(Foundation* f) { currentFoundation = f; }

const std::vector<Foundation*>& FoundationManager::getFoundations() const { return foundations; }

const std::vector<Foundation*>& FoundationManager::getRemovedFoundations() const {
  return removedFoundations;
}

void FoundationManager::remove(Foundation* f, bool deleteFoundation, bool keepRemoved) {
  // What may fail comes first: when memory runs out, the foundation stays where it is.
  if (keepRemoved) removedFoundations.push_back(f);
  const auto place = std::find(foundations.begin(), foundations.end(), f);
  if (place != foundations.end()) foundations.erase(place);
  if (f == currentFoundation) currentFoundation = nullptr;
  if (deleteFoundation && !keepRemoved) delete f;
}

void FoundationManager::redo(Foundation* f) {
  if (f == nullptr) return;
  const auto place = std::find(removedFoundations.begin(), removedFoundations.end(), f);
  if (place == removedFoundations.end()) return;
  foundations.push_back(f);
  removedFoundations.erase(place);
}

}  // namespace Found
