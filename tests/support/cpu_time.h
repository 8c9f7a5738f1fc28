#pragma once

#include <algorithm>
#include <ctime>

namespace TestSupport {

/// The processor time that `work` takes, in seconds: the least of three runs, since the first finds
/// no memory and others disturb.
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

/// How many times as long something crafted may take as something ordinary of the same size. What
/// looks at each of 20,000 for each of them takes more than a hundred times as long.
constexpr double mostTimes = 8.0;

}  // namespace TestSupport
