#include "comparing/differences.h"

#include <utility>

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

}  // namespace

Differences compare(Documents::Document& first, Documents::Document& second) {
  using Matching::Key;
  const Pairs pairs =
      Matching::match(first.getFoundations().getFoundations(),
                      second.getFoundations().getFoundations(), {Key::number, Key::name});
  Differences differences;
  for (const Matching::Pair& pair : pairs) {
    const bool isInBoth = pair.first != nullptr && pair.second != nullptr;
    std::vector<Fields::Difference> fields;
    if (isInBoth) fields = Fields::compare(*pair.first, *pair.second);
    if (!isInBoth || !fields.empty()) differences.foundations.push_back({pair, std::move(fields)});
  }
  differences.isCurrentSame = isCurrentSame(pairs, first.getFoundations(), second.getFoundations());
  return differences;
}

}  // namespace Comparing
