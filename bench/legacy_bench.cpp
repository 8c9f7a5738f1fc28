// Reading, writing and updating legacy model documents, beside what a host would write itself.
#include <benchmark/benchmark.h>

#include <fstream>

#include "found/foundation_manager.h"
#include "kv/xml_tree.h"
#include "sizes.h"
#include "texts.h"
#include "yardsticks.h"

namespace {

using Found::FoundationManager;
using Texts::Names;

void checkCount(benchmark::State& state, const FoundationManager& manager) {
  if (manager.getFoundations().size() != static_cast<std::size_t>(state.range(0)))
    state.SkipWithError("a foundation is missing");
}

void fill(FoundationManager& manager, benchmark::State& state) {
  manager.readXml(
      Texts::makeFile(Texts::makeLegacy(static_cast<std::size_t>(state.range(0)), Names::unique)));
  checkCount(state, manager);
}

void readLegacy(benchmark::State& state, Names names) {
  const std::string path =
      Texts::makeFile(Texts::makeLegacy(static_cast<std::size_t>(state.range(0)), names));
  for (auto _ : state) {
    FoundationManager manager;
    manager.readXml(path);
    checkCount(state, manager);
  }
}

void readLegacyWith(benchmark::State& state,
                    double read(const std::string&, const std::vector<const char*>&)) {
  const std::string path =
      Texts::makeFile(Texts::makeLegacy(static_cast<std::size_t>(state.range(0)), Names::unique));
  for (auto _ : state)
    if (read(path, Yardsticks::legacyAttributes) <= 0.0) state.SkipWithError("nothing was read");
}

void writeLegacy(benchmark::State& state) {
  FoundationManager manager;
  fill(manager, state);
  const std::string path = Texts::makeFile("");
  for (auto _ : state) {
    std::ofstream out(path);
    manager.writeXml(out);
  }
}

void writeLegacyWith(benchmark::State& state,
                     void write(const std::string&, const std::vector<Found::Foundation*>&)) {
  FoundationManager manager;
  fill(manager, state);
  const std::string path = Texts::makeFile("");
  for (auto _ : state) write(path, manager.getFoundations());
}

void updateLegacy(benchmark::State& state) {
  FoundationManager manager;
  fill(manager, state);
  KvXmlTree tree;
  manager.updateXml(&tree);
  for (auto _ : state) manager.updateXml(&tree);
  if (tree.findRoot("FOUNDATIONS", true)->getChildren().size() != manager.getFoundations().size())
    state.SkipWithError("an element is missing");
}

BENCHMARK_CAPTURE(readLegacy, readXml, Names::unique)->Apply(Sizes::all);
BENCHMARK_CAPTURE(readLegacy, readXml_unnamed, Names::none)->Apply(Sizes::all);
BENCHMARK_CAPTURE(readLegacyWith, pugixml, Yardsticks::readWithPugixml)->Apply(Sizes::all);
BENCHMARK_CAPTURE(readLegacyWith, libxml2, Yardsticks::readWithLibxml2)->Apply(Sizes::all);
BENCHMARK_CAPTURE(writeLegacyWith, pugixml, Yardsticks::writeWithPugixml)->Apply(Sizes::all);
BENCHMARK_CAPTURE(writeLegacyWith, libxml2, Yardsticks::writeWithLibxml2)->Apply(Sizes::all);
BENCHMARK(writeLegacy)->Name("writeLegacy/writeXml")->Apply(Sizes::all);
BENCHMARK(updateLegacy)->Name("updateLegacy/updateXml")->Apply(Sizes::all);

}  // namespace
