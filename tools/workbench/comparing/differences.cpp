#include "comparing/differences.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <variant>

namespace Comparing {
namespace {

using Found::FoundationManager;
using Pairs = std::vector<Matching::Pair>;

bool isCurrentSame(const Pairs& pairs, const FoundationManager& first,
                   const FoundationManager& second) {
  if (first.getCurrentFoundation() == nullptr) return second.getCurrentFoundation() == nullptr;
  bool isSame = false;
  for (const Matching::Pair& pair : pairs)
    if (pair.first == first.getCurrentFoundation() && pair.second != nullptr)
      isSame = pair.second == second.getCurrentFoundation();
  return isSame;
}

bool areClose(const Fields::Difference& field, double relative) {
  const double* const first = std::get_if<double>(&field.first);
  const double* const second = std::get_if<double>(&field.second);
  if (first == nullptr || second == nullptr) return false;
  return std::fabs(*first - *second) <= relative * std::max(std::fabs(*first), std::fabs(*second));
}

}  // namespace

std::vector<Difference> listDifferences(const Pairs& pairs, double relative) {
  std::vector<Difference> differences;
  for (const Matching::Pair& pair : pairs) {
    const bool isInBoth = pair.first != nullptr && pair.second != nullptr;
    std::vector<Fields::Difference> fields;
    if (isInBoth)
      for (Fields::Difference& field : Fields::compare(*pair.first, *pair.second))
        if (relative == 0.0 || !areClose(field, relative)) fields.push_back(std::move(field));
    if (!isInBoth || !fields.empty()) differences.push_back({pair, std::move(fields)});
  }
  return differences;
}

Differences compare(Documents::Document& first, Documents::Document& second,
                    const Options& options) {
  const Pairs pairs = Matching::match(first.getFoundations().getFoundations(),
                                      second.getFoundations().getFoundations(), options.keys);
  return {listDifferences(pairs, options.relative),
          isCurrentSame(pairs, first.getFoundations(), second.getFoundations())};
}

}  // namespace Comparing
