#include "history.h"

#include <algorithm>
#include <utility>

namespace Engine {

using Offset = Rows::difference_type;

History::Step History::makeStep(std::string label, const Rows& before, const Rows& after) {
  const auto [begin, otherBegin] =
      std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto [end, otherEnd] =
      std::mismatch(before.rbegin(), std::make_reverse_iterator(begin), after.rbegin(),
                    std::make_reverse_iterator(otherBegin));
  return {std::move(label),
          static_cast<std::size_t>(begin - before.begin()),
          {begin, end.base()},
          {otherBegin, otherEnd.base()}};
}

void History::change(std::string label, Rows changed) {
  constexpr auto never = static_cast<std::size_t>(-1);
  Step step = makeStep(std::move(label), rows, changed);
  if (saved > done.size()) saved = never;  // what was saved can no longer be reached
  done.push_back(std::move(step));
  undone.clear();
  rows = std::move(changed);
  ++version;
}

History::Span History::replace(std::size_t first, const Rows& gone, const Rows& coming) {
  const auto begin = rows.begin() + static_cast<Offset>(first);
  if (gone.size() == coming.size()) {
    std::copy(coming.begin(), coming.end(), begin);
  } else {
    const auto place = rows.erase(begin, begin + static_cast<Offset>(gone.size()));
    rows.insert(place, coming.begin(), coming.end());
  }
  ++version;
  return {first, coming.size()};
}

void History::makeRoom(const Rows& gone, const Rows& coming) {
  rows.reserve(rows.size() - gone.size() + coming.size());
}

// Whatever may fail comes before the first change.

History::Span History::undo() {
  makeRoom(done.back().after, done.back().before);
  undone.push_back(std::move(done.back()));
  done.pop_back();
  return replace(undone.back().first, undone.back().after, undone.back().before);
}

History::Span History::redo() {
  makeRoom(undone.back().before, undone.back().after);
  done.push_back(std::move(undone.back()));
  undone.pop_back();
  return replace(done.back().first, done.back().before, done.back().after);
}

}  // namespace Engine
