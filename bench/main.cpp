// Runs the benchmarks that repeat each operation in one process.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

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

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  keepMemory();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
