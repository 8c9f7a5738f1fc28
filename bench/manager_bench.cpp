// Operations of the manager, each of which walks its list, and of single foundations.
#include <benchmark/benchmark.h>

#include <set>

#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "sizes.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;

Foundation makeFoundation(int i) {
  const KvVector3D disp(1.0 + i, 2.0 + i, 3.0 + i);
  const KvVector3D rot(4.0 + i, 0.0, 0.0);
  Foundation foundation(&disp, &rot);
  foundation.setName("Soil " + std::to_string(i));
  foundation.setNumber(i + 1);
  foundation.setGenerated(i % 2 == 0);
  return foundation;
}

void fill(FoundationManager& manager, const benchmark::State& state) {
  for (int i = 0; i < state.range(0); ++i) {
    auto foundation = std::make_unique<Foundation>(makeFoundation(i));
    foundation->setNumber(i + 1);
    manager.add(std::move(foundation));
  }
}

void findByValue(benchmark::State& state) {
  FoundationManager manager;
  fill(manager, state);
  const Foundation last = makeFoundation(static_cast<int>(state.range(0)) - 1);
  for (auto _ : state)
    if (manager.giveFoundation(last, true) != manager.getFoundations().back())
      state.SkipWithError("not found");
}

void findByName(benchmark::State& state) {
  FoundationManager manager;
  fill(manager, state);
  const std::string last = manager.getFoundations().back()->getName();
  for (auto _ : state)
    if (manager.giveFoundation(last) != manager.getFoundations().back())
      state.SkipWithError("not found");
}

void updateMaximum(benchmark::State& state) {
  FoundationManager manager;
  fill(manager, state);
  for (auto _ : state) manager.updateFoundationMaximum();
  if (manager.getMaxFoundationValue() <= 0.0) state.SkipWithError("no maximum");
}

/// Uses every third foundation, by its number.
class User : public Found::FoundationUser {
 public:
  bool usesFoundation(const Foundation* foundation) override {
    return foundation->getNumber() % 3 == 0;
  }
};

void prune(benchmark::State& state) {
  std::vector<User> users(5);
  for (auto _ : state) {
    state.PauseTiming();
    FoundationManager manager;
    fill(manager, state);
    const std::vector<Foundation*> before = manager.getFoundations();
    for (User& user : users) manager.addUser(&user);
    state.ResumeTiming();

    manager.removeAllNotUsedGenerated();

    state.PauseTiming();
    if (manager.getFoundations().size() >= before.size()) state.SkipWithError("nothing was pruned");
    const std::set<const Foundation*> kept(manager.getFoundations().begin(),
                                           manager.getFoundations().end());
    for (const Foundation* foundation : before)
      if (kept.count(foundation) == 0) delete foundation;
    state.ResumeTiming();
  }
}

void copyAndInterpolate(benchmark::State& state) {
  const Foundation a = makeFoundation(1);
  const Foundation b = makeFoundation(2);
  for (auto _ : state) {
    Foundation c(a);
    c.interpolate(a, b, 0.5);
    if (c.getValueArea(0) != 2.5) state.SkipWithError("not interpolated");
  }
}

BENCHMARK(findByValue)->Apply(Sizes::walks);
BENCHMARK(findByName)->Apply(Sizes::walks);
BENCHMARK(updateMaximum)->Apply(Sizes::walks);
BENCHMARK(prune)->Apply(Sizes::walks);
BENCHMARK(copyAndInterpolate);

}  // namespace
