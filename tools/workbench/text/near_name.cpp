#include "text/near_name.h"

#include <algorithm>

namespace {

constexpr std::size_t wrongLetter = 8;
constexpr std::size_t wrongCase = 1;  // areaz means areaZ rather than areaX

char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::size_t measureDistance(char a, char b) {
  if (a == b) return 0;
  return toLower(a) == toLower(b) ? wrongCase : wrongLetter;
}

/// What the letters weigh that must be put in, left out, replaced, or swapped with their neighbour.
std::size_t measureDistance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> distances(a.size() + 1,
                                                  std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) distances[i][0] = i * wrongLetter;
  for (std::size_t j = 0; j <= b.size(); ++j) distances[0][j] = j * wrongLetter;
  for (std::size_t i = 1; i <= a.size(); ++i)
    for (std::size_t j = 1; j <= b.size(); ++j) {
      std::size_t& distance = distances[i][j];
      distance = std::min({distances[i - 1][j] + wrongLetter, distances[i][j - 1] + wrongLetter,
                           distances[i - 1][j - 1] + measureDistance(a[i - 1], b[j - 1])});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        distance = std::min(distance, distances[i - 2][j - 2] + wrongLetter);
    }
  return distances[a.size()][b.size()];
}

/// False without a comparison of letters for a text that has too many of them.
bool canBeNear(const std::string& asked, const std::string& name) {
  return asked.size() <= 2 * name.size();
}

}  // namespace

std::optional<std::string> findNearName(const std::string& asked,
                                        const std::vector<std::string>& names) {
  const std::string* nearest = nullptr;
  std::size_t least = 0;
  for (const std::string& name : names) {
    if (!canBeNear(asked, name)) continue;
    const std::size_t distance = measureDistance(asked, name);
    if (distance * 3 > name.size() * wrongLetter) continue;
    if (nearest != nullptr && distance >= least) continue;
    nearest = &name;
    least = distance;
  }
  if (nearest == nullptr) return {};
  return *nearest;
}
