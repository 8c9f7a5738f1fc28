#pragma once

#include <algorithm>
#include <ctime>

namespace TestSupport {

/// The processor time that `work` takes, in seconds. The least of three runs: the first still has
/// to get its memory, and other processes disturb.
template <class Work>
double measureTime(const Work& work) {
  double least = 0.0;
  for (int run = 0; run < 3; ++run) {
    const std::clock_t before = std::clock();
    work();
    const double spent = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    least = run == 0 ? spent : std::min(least, spent);
  }
  return least;
}

/// How many times longer a crafted document may take than an ordinary one of the same size.
/// Comparing each of 20,000 foundations with each other takes more than a hundred times longer.
constexpr double mostTimes = 8.0;

}  // namespace TestSupport
