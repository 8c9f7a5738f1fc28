#include "documents/edit.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Documents {

void Edit::replace(Markup::Range range, std::string bytes) {
  changes.push_back({range, std::move(bytes)});
}

std::string Edit::apply(std::string_view text) const {
  std::vector<const Change*> sorted;
  sorted.reserve(changes.size());
  for (const Change& change : changes) sorted.push_back(&change);
  std::stable_sort(sorted.begin(), sorted.end(), [](const Change* a, const Change* b) {
    return std::pair(a->range.begin, a->range.end) < std::pair(b->range.begin, b->range.end);
  });

  std::string result;
  result.reserve(text.size());
  std::size_t place = 0;
  for (const Change* change : sorted) {
    if (change->range.begin < place) throw std::logic_error("two edits of the same bytes");
    result += text.substr(place, change->range.begin - place);
    result += change->bytes;
    place = change->range.end;
  }
  return result += text.substr(place);
}

}  // namespace Documents
