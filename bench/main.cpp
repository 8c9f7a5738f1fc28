// Runs the benchmarks, or with --memory FILE tells how much memory readXml() takes for FILE.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstring>
#include <filesystem>
#include <iostream>

#include "found/foundation_manager.h"
#include "texts.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

/// The greatest memory that the process has taken, in bytes.
long long measurePeak() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss * 1024LL;
}

/// Takes more memory than any benchmark needs, and lets the process keep what it frees. Small
/// documents find theirs warm from the run before; so must large ones, or the time per foundation
/// would tell how the system hands out memory.
void keepMemory() {
#if defined(__GLIBC__)
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, -1);
  std::vector<char>(std::size_t{2} << 30, 'x');
#endif
}

int reportMemory(const std::string& path) {
  const long long before = measurePeak();
  Found::FoundationManager manager;
  if (!manager.readXml(path)) return 2;
  const auto size = static_cast<long long>(std::filesystem::file_size(path));
  const long long peak = measurePeak() - before;
  std::cout << "readXml of " << manager.getFoundations().size() << " foundations: file "
            << size / 1000000 << " MB, peak memory " << peak / 1000000 << " MB, "
            << static_cast<double>(peak) / static_cast<double>(size) << " times the file\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::strcmp(argv[1], "--memory") == 0) return reportMemory(argv[2]);
  if (argc == 3 && std::strcmp(argv[1], "--make") == 0) {
    std::cout << Texts::makeLegacy(std::stoul(argv[2]), Texts::Names::unique);
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  keepMemory();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
