#include "text/near_name.h"

#include <algorithm>

namespace {

/// How many letters must be put in, left out, replaced, or swapped with their neighbour.
std::size_t measureDistance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> distances(a.size() + 1,
                                                  std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) distances[i][0] = i;
  for (std::size_t j = 0; j <= b.size(); ++j) distances[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i)
    for (std::size_t j = 1; j <= b.size(); ++j) {
      std::size_t& distance = distances[i][j];
      distance = std::min({distances[i - 1][j] + 1, distances[i][j - 1] + 1,
                           distances[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        distance = std::min(distance, distances[i - 2][j - 2] + 1);
    }
  return distances[a.size()][b.size()];
}

}  // namespace

std::optional<std::string> findNearName(const std::string& asked,
                                        const std::vector<std::string>& names) {
  const auto isNearer = [&asked](const std::string& a, const std::string& b) {
    return measureDistance(asked, a) < measureDistance(asked, b);
  };
  const auto near = std::min_element(names.begin(), names.end(), isNearer);
  if (near == names.end() || measureDistance(asked, *near) * 3 > near->size()) return {};
  return *near;
}
