#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "support/manager_state.h"
#include "support/random.h"

// Pruning against a description of it that asks about one foundation after the other and then takes
// them out one by one, on random lists in which foundations stand several times.

namespace Found::Tests {
namespace {

using TestSupport::describeState;
using TestSupport::makeFoundation;
using TestSupport::Random;

// --- Pruning, step by step

/// A manager and, in order of registration, the users that were registered with it.
struct Asking {
  FoundationManager& manager;
  const std::vector<FoundationUser*>& users;
};

bool isUsed(const Asking& asking, const Foundation& foundation) {
  for (FoundationUser* user : asking.users)
    if (user != nullptr && user->usesFoundation(&foundation)) return true;
  return false;
}

using Selects = bool (*)(const Asking& asking, const Foundation& foundation);

void pruneOneByOne(const Asking& asking, Selects selects) {
  FoundationManager& manager = asking.manager;
  std::vector<Foundation*> selected;
  for (Foundation* foundation : manager.getFoundations())
    if (foundation != nullptr && selects(asking, *foundation)) selected.push_back(foundation);
  for (Foundation* foundation : selected) manager.remove(foundation, false, false);
}

void renumber(const FoundationManager& manager) {
  int number = 0;
  for (Foundation* foundation : manager.getFoundations())
    if (foundation != nullptr) foundation->setNumber(++number);
}

void removeAllGeneratedPlainly(const Asking& asking) {
  pruneOneByOne(asking, [](const Asking& /*asked*/, const Foundation& foundation) {
    return foundation.isGenerated();
  });
  renumber(asking.manager);
}

void removeAllNotUsedPlainly(const Asking& asking) {
  pruneOneByOne(asking, [](const Asking& asked, const Foundation& foundation) {
    return !isUsed(asked, foundation);
  });
}

void removeAllNotUsedGeneratedPlainly(const Asking& asking) {
  pruneOneByOne(asking, [](const Asking& asked, const Foundation& foundation) {
    return foundation.isGenerated() && !isUsed(asked, foundation);
  });
  renumber(asking.manager);
}

// --- Random managers and users

struct Refusal {};

/// What users were asked, in order, and who must not answer.
struct Hearing {
  std::vector<std::string> log;
  std::size_t questions = 0;
  std::size_t refused = 0;  // counted from 1
};

/// Answers by its choices and not by the foundation: asked twice about one, it may change its mind.
class MoodyUser : public FoundationUser {
 public:
  using Objects = std::vector<std::unique_ptr<Foundation>>;

  MoodyUser(std::string userName, unsigned seed, const FoundationManager& asking,
            const Objects& known, Hearing& heard)
      : name(std::move(userName)), random(seed), manager(asking), objects(known), hearing(heard) {
    yes = random.pick(std::vector<std::size_t>{1, 2, 3, 10});
  }

  bool usesFoundation(const Foundation* foundation) override {
    const auto place = std::find_if(objects.begin(), objects.end(),
                                    [=](const auto& object) { return object.get() == foundation; });
    hearing.log.push_back(name + " is asked about " + std::to_string(place - objects.begin()) +
                          " of " + std::to_string(manager.getFoundations().size()));
    if (++hearing.questions == hearing.refused) throw Refusal();
    return random.oneIn(yes);
  }

 private:
  std::string name;
  Random random;
  const FoundationManager& manager;
  const Objects& objects;
  Hearing& hearing;
  std::size_t yes = 1;  // one answer in so many
};

/// One of the two that are compared. Two of the same seed are alike.
class Scene {
 public:
  explicit Scene(unsigned seed) : random(seed) {
    for (std::size_t i = 1 + random.below(12); i > 0; --i) {
      const int number = random.between(-1, 9);
      objects.push_back(makeFoundation(random, number, "F" + std::to_string(i)));
    }
    fillList();
    addUsers();
    if (!random.oneIn(3)) manager.setCurrentFoundation(random.pick(objects).get());
    if (random.oneIn(2)) manager.remove(random.pick(objects).get(), false, true);
    if (random.oneIn(3)) hearing.refused = 1 + random.below(40);
  }
  ~Scene() {
    // The manager deletes what it lists, and the same foundation as often as it stands there.
    while (!manager.getFoundations().empty())
      manager.remove(manager.getFoundations().back(), false, false);
  }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  /// All that can be seen, with every list told by which of the objects stands where.
  std::vector<std::string> describe() const {
    std::vector<std::string> lines = hearing.log;
    for (const std::string& line : describeState(manager)) lines.push_back(line);
    for (const auto& object : objects) lines.push_back(TestSupport::describeWhole(object.get()));
    return lines;
  }

  template <class Prune>
  void run(const Prune& prune) {
    try {
      prune(Asking{manager, registered});
    } catch (const Refusal&) {
      hearing.log.emplace_back("no answer");
    }
  }

 private:
  void fillList() {
    const std::size_t longest = random.pick(std::vector<std::size_t>{2, 12, 40});
    const std::size_t null = random.pick(std::vector<std::size_t>{5, 1000});
    for (std::size_t left = random.below(longest + 1); left > 0; --left)
      manager.add(random.oneIn(null) ? nullptr : random.pick(objects).get());
  }

  void addUsers() {
    for (unsigned i = 0; i < 3; ++i) {
      const auto seed = static_cast<unsigned>(random.below(1000));
      users.push_back(std::make_unique<MoodyUser>("user " + std::to_string(i), seed, manager,
                                                  objects, hearing));
    }
    for (std::size_t left = random.below(5); left > 0; --left)
      registered.push_back(random.oneIn(8) ? nullptr : random.pick(users).get());
    for (FoundationUser* user : registered) manager.addUser(user);
  }

  Random random;
  FoundationManager manager;
  MoodyUser::Objects objects;
  Hearing hearing;
  std::vector<std::unique_ptr<MoodyUser>> users;
  std::vector<FoundationUser*> registered;
};

// --- Both against each other

using Prune = void (FoundationManager::*)();
using PlainPrune = void (*)(const Asking& asking);

void comparePrunings(unsigned firstSeed, Prune prune, PlainPrune plainPrune) {
  for (unsigned seed = firstSeed; seed < firstSeed + 1500; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Scene real(seed);
    Scene plain(seed);
    const std::vector<std::string> before = real.describe();

    real.run([=](const Asking& asking) { (asking.manager.*prune)(); });
    plain.run(plainPrune);

    EXPECT_EQ(real.describe(), plain.describe()) << testing::PrintToString(before);
    if (testing::Test::HasFailure()) return;  // one list is enough to look at
  }
}

TEST(PruningAsDescribed, OfAllGenerated) {
  comparePrunings(80000, &FoundationManager::removeAllGenerated, &removeAllGeneratedPlainly);
}

TEST(PruningAsDescribed, OfAllNotUsed) {
  comparePrunings(82000, &FoundationManager::removeAllNotUsed, &removeAllNotUsedPlainly);
}

TEST(PruningAsDescribed, OfAllNotUsedGenerated) {
  comparePrunings(84000, &FoundationManager::removeAllNotUsedGenerated,
                  &removeAllNotUsedGeneratedPlainly);
}

}  // namespace
}  // namespace Found::Tests
