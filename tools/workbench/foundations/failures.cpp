#include "foundations/failures.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <system_error>

namespace Failures {
namespace {

template <class Test>
const Mode* findIf(const Test& test) {
  const Mode* const found = std::find_if(std::begin(modes), std::end(modes), test);
  return found == std::end(modes) ? nullptr : found;
}

}  // namespace

const Mode* find(Found::Foundation::Failure failure) {
  return findIf([failure](const Mode& mode) { return mode.value == failure; });
}

const Mode* find(std::string_view word) {
  return findIf([word](const Mode& mode) { return mode.word == word; });
}

std::optional<Found::Foundation::Failure> read(std::string_view text) {
  if (const Mode* const mode = find(text)) return mode->value;
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || read != end) return std::nullopt;
  return static_cast<Found::Foundation::Failure>(number);
}

std::string getWord(Found::Foundation::Failure failure) {
  const Mode* const mode = find(failure);
  return mode != nullptr ? std::string(mode->word) : std::to_string(static_cast<int>(failure));
}

}  // namespace Failures
