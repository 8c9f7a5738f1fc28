#include <algorithm>
#include <unordered_map>

#include "found/foundation_manager.h"

namespace Found {

/// Selects foundations. No virtual destructor: the operation that selects has it on its stack.
struct FoundationManager::Predicate {
  virtual bool operator()(const Foundation* foundation) const = 0;

 protected:
  ~Predicate() = default;
};

std::vector<Foundation*> FoundationManager::collectFoundations(const Predicate& predicate) {
  std::vector<Foundation*> selected;
  for (Foundation* foundation : foundations)
    if (foundation != nullptr && predicate(foundation)) selected.push_back(foundation);
  return selected;
}

void FoundationManager::removeToPredicate(const Predicate& predicate) {
  // All users are asked before anything is taken out, so each of them sees the whole list.
  removeFoundations(collectFoundations(predicate));
}

void FoundationManager::removeFoundations(const std::vector<Foundation*>& selected) {
  // In one pass: a foundation that was selected n times loses its first n entries.
  std::unordered_map<const Foundation*, int> leaving;
  for (const Foundation* foundation : selected) ++leaving[foundation];
  const auto leaves = [&leaving](const Foundation* foundation) {
    const auto entry = leaving.find(foundation);
    return entry != leaving.end() && entry->second-- > 0;
  };
  foundations.erase(std::remove_if(foundations.begin(), foundations.end(), leaves),
                    foundations.end());
  if (leaving.count(currentFoundation) > 0) currentFoundation = nullptr;
}

void FoundationManager::removeAllGenerated() {
  struct Generated final : Predicate {
    bool operator()(const Foundation* foundation) const override {
      return foundation->isGenerated();
    }
  };
  removeToPredicate(Generated());
  renumberFoundations();
}

void FoundationManager::removeAllNotUsed() {
  struct NotUsed final : Predicate {
    explicit NotUsed(const FoundationManager* asked) : manager(asked) {}
    bool operator()(const Foundation* foundation) const override {
      return !manager->checkUsed(foundation);
    }
    const FoundationManager* manager;
  };
  // The numbers stay, gaps included: whoever goes on using the rest may know them by number.
  removeToPredicate(NotUsed(this));
}

void FoundationManager::removeAllNotUsedGenerated() {
  struct NotUsedGenerated final : Predicate {
    explicit NotUsedGenerated(const FoundationManager* asked) : manager(asked) {}
    bool operator()(const Foundation* foundation) const override {
      return foundation->isGenerated() && !manager->checkUsed(foundation);
    }
    const FoundationManager* manager;
  };
  removeToPredicate(NotUsedGenerated(this));
  renumberFoundations();
}

}  // namespace Found
