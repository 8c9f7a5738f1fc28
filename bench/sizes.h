#pragma once

#include <benchmark/benchmark.h>

/// How many foundations a benchmark runs with.
namespace Sizes {

inline void all(benchmark::internal::Benchmark* benchmark) {
  for (const int n : {100, 1000, 10000, 100000, 1000000}) benchmark->Arg(n);
  benchmark->Unit(benchmark::kMillisecond)->MinWarmUpTime(0.01);
}

/// For single operations, each of which walks the whole list.
inline void walks(benchmark::internal::Benchmark* benchmark) {
  for (const int n : {100, 10000, 1000000}) benchmark->Arg(n);
  benchmark->Unit(benchmark::kMicrosecond);
}

}  // namespace Sizes
