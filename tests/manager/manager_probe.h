#pragma once

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "model/foundation_probe.h"

namespace Found::Tests {

using List = std::vector<Foundation*>;

/// Takes a foundation that the manager gave up: it is deleted at the end of the test.
using Adopted = std::unique_ptr<Foundation>;

inline Foundation* addFoundation(FoundationManager& manager, const std::string& name = "",
                                 int number = -1) {
  auto made = std::make_unique<Foundation>();
  made->setName(name);
  made->setNumber(number);
  Foundation* const added = made.get();
  manager.add(std::move(made));
  return added;
}

inline Foundation* addGenerated(FoundationManager& manager, int number = -1) {
  Foundation* const added = addFoundation(manager, "", number);
  added->setGenerated(true);
  return added;
}

inline void addNull(FoundationManager& manager) { manager.add(static_cast<Foundation*>(nullptr)); }

/// The numbers in list order, without the null entries.
inline std::vector<int> numbersOf(const FoundationManager& manager) {
  std::vector<int> numbers;
  for (const Foundation* foundation : manager.getFoundations())
    if (foundation != nullptr) numbers.push_back(foundation->getNumber());
  return numbers;
}

/// The names in list order, without the null entries.
inline std::vector<std::string> namesOf(const FoundationManager& manager) {
  std::vector<std::string> names;
  for (const Foundation* foundation : manager.getFoundations())
    if (foundation != nullptr) names.push_back(foundation->getName());
  return names;
}

/// What can be seen of a manager from outside: live list, removed list, current foundation,
/// maximum, numbers and names.
using State =
    std::tuple<List, List, Foundation*, double, std::vector<int>, std::vector<std::string>>;

inline State stateOf(const FoundationManager& manager) {
  return {manager.getFoundations(),
          manager.getRemovedFoundations(),
          manager.getCurrentFoundation(),
          manager.getMaxFoundationValue(),
          numbersOf(manager),
          namesOf(manager)};
}

/// Who was asked about which foundation, in order.
using Questions = std::vector<std::pair<std::string, const Foundation*>>;

/// Uses the given foundations and records every question in a log that users may share.
class RecordingUser : public FoundationUser {
 public:
  RecordingUser(std::string userName, Questions& questionLog, std::vector<const Foundation*> uses)
      : name(std::move(userName)), log(&questionLog), used(std::move(uses)) {}

  bool usesFoundation(const Foundation* foundation) override {
    log->emplace_back(name, foundation);
    return std::find(used.begin(), used.end(), foundation) != used.end();
  }

 private:
  std::string name;
  Questions* log;
  std::vector<const Foundation*> used;
};

struct NoAnswer : std::runtime_error {
  NoAnswer() : std::runtime_error("no answer") {}
};

/// Answers that nothing is used, and throws NoAnswer at one foundation.
class ThrowingUser : public FoundationUser {
 public:
  explicit ThrowingUser(const Foundation* throwsAt) : place(throwsAt) {}

  bool usesFoundation(const Foundation* foundation) override {
    if (foundation == place) throw NoAnswer();
    return false;
  }

 private:
  const Foundation* place;
};

}  // namespace Found::Tests
