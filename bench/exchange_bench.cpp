// Reading and writing exchange documents and writing Kvml listings.
#include <benchmark/benchmark.h>

#include <fstream>
#include <set>

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "found/kvml_writer.h"
#include "found/read_messenger.h"
#include "sizes.h"
#include "texts.h"
#include "yardsticks.h"

namespace {

using Found::FoundationManager;
using Texts::Names;

class SilentMessenger : public Found::Umo::ReadMessenger {
 public:
  void onReadFinished(std::size_t /*count*/) override {}
  void onUnknownElement(const std::string& /*elementName*/) override {}
  void onMissingName(int /*number*/) override {}
  void onMissingBeddingName() override {}
  void onEmptyName(int /*number*/, const std::string& /*name*/) override {}
  void onEmptyBeddingName(const std::string& /*name*/) override {}
  void onMissingNumber(const std::string& /*elementName*/) override {}
  void onInvalidNumber(const std::string& /*elementName*/, int /*number*/) override {}
  void onNameChanged(const std::string& /*oldName*/, const std::string& /*newName*/) override {}
};

std::string makeFile(const benchmark::State& state, const char* version, Names names) {
  const auto n = static_cast<std::size_t>(state.range(0));
  return Texts::makeFile(Texts::makeExchange(n, std::string(version) == "1.0", names));
}

void read(FoundationManager& manager, const std::string& path, const char* version,
          Found::Umo::ReadMessenger* messenger) {
  std::ifstream file(path);
  const KvXmlN::Document document(file);
  const Tools::VersionText versionText(version);
  Found::Umo::BeddingReader reader(manager, versionText);
  reader.setMessenger(messenger);
  reader.read(document.getRoot());
}

void readExchange(benchmark::State& state, const char* version, Names names, bool hasMessenger) {
  const std::string path = makeFile(state, version, names);
  SilentMessenger messenger;
  for (auto _ : state) {
    FoundationManager manager;
    read(manager, path, version, hasMessenger ? &messenger : nullptr);
    if (manager.getFoundations().size() != static_cast<std::size_t>(state.range(0)))
      state.SkipWithError("a foundation is missing");
  }
}

void readExchangeWithPugixml(benchmark::State& state, const char* version,
                             const std::vector<const char*>& attributes) {
  const std::string path = makeFile(state, version, Names::unique);
  for (auto _ : state)
    if (Yardsticks::readWithPugixml(path, attributes) <= 0.0)
      state.SkipWithError("nothing was read");
}

void writeExchange(benchmark::State& state, const char* version) {
  FoundationManager manager;
  read(manager, makeFile(state, version, Names::unique), version, nullptr);
  const Tools::VersionText versionText(version);
  const std::string path = Texts::makeFile("");
  for (auto _ : state) {
    KvXmlN::Document document("Beddings");
    Found::Umo::BeddingWriter(manager, versionText).write(document.getRoot());
    std::ofstream out(path);
    document.putToStream(out);
  }
}

void writeExchangeWithPugixml(benchmark::State& state, const char* version) {
  FoundationManager manager;
  read(manager, makeFile(state, version, Names::unique), version, nullptr);
  const std::string path = Texts::makeFile("");
  for (auto _ : state)
    Yardsticks::writeExchangeWithPugixml(path, manager.getFoundations(),
                                         std::string(version) == "1.0");
}

void writeKvml(benchmark::State& state) {
  FoundationManager manager;
  read(manager, makeFile(state, "1.0", Names::unique), "1.0", nullptr);
  const std::set<Found::Foundation*> all(manager.getFoundations().begin(),
                                         manager.getFoundations().end());
  const std::string path = Texts::makeFile("");
  for (auto _ : state) {
    KvXmlN::Document document("Kvml");
    Found::KvmlWriter().write(document.getRoot(), all, all);
    std::ofstream out(path);
    document.putToStream(out);
  }
}

BENCHMARK_CAPTURE(readExchange, current, "2.0", Names::unique, false)->Apply(Sizes::all);
BENCHMARK_CAPTURE(readExchange, current_clashing, "2.0", Names::clashing, false)->Apply(Sizes::all);
BENCHMARK_CAPTURE(readExchange, current_messenger, "2.0", Names::unique, true)->Apply(Sizes::all);
BENCHMARK_CAPTURE(readExchange, first, "1.0", Names::unique, false)->Apply(Sizes::all);
BENCHMARK_CAPTURE(readExchange, first_clashing, "1.0", Names::clashing, false)->Apply(Sizes::all);
BENCHMARK_CAPTURE(readExchange, first_messenger, "1.0", Names::unique, true)->Apply(Sizes::all);
// Every message makes the reader look at the whole list anew, since a messenger may change it.
BENCHMARK_CAPTURE(readExchange, current_clashing_messenger, "2.0", Names::clashing, true)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readExchangeWithPugixml, current, "2.0", Yardsticks::exchangeAttributes)
    ->Apply(Sizes::all);
BENCHMARK_CAPTURE(readExchangeWithPugixml, first, "1.0", Yardsticks::firstExchangeAttributes)
    ->Apply(Sizes::all);
BENCHMARK_CAPTURE(writeExchange, current, "2.0")->Apply(Sizes::all);
BENCHMARK_CAPTURE(writeExchange, first, "1.0")->Apply(Sizes::all);
BENCHMARK_CAPTURE(writeExchangeWithPugixml, current, "2.0")->Apply(Sizes::all);
BENCHMARK_CAPTURE(writeExchangeWithPugixml, first, "1.0")->Apply(Sizes::all);
BENCHMARK(writeKvml)->Apply(Sizes::all);

}  // namespace
