#include "foundations/selection.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "foundations/parts.h"
#include "text/utf8.h"

namespace {

using Found::Foundation;

[[noreturn]] void failAtNumbers() {
  throw std::invalid_argument("numbers and ranges of them, such as 3,5-9");
}

int readNumber(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 0) failAtNumbers();
  return number;
}

std::pair<int, int> readRange(std::string_view text) {
  const std::size_t dash = text.find('-');
  if (dash == text.npos) return {readNumber(text), readNumber(text)};
  const std::pair<int, int> range = {readNumber(text.substr(0, dash)),
                                     readNumber(text.substr(dash + 1))};
  if (range.first > range.second) failAtNumbers();
  return range;
}

/// Goes back to the last * where what follows it does not fit; that is enough, since the one before
/// it has taken as little as it could.
bool fits(std::string_view text, std::string_view pattern) {
  std::optional<std::string_view> patternBehindStar;
  std::string_view textBehindStar;
  while (!text.empty()) {
    std::string_view rest = text;
    Utf8::take(rest);
    const std::string_view character = text.substr(0, text.size() - rest.size());
    if (!pattern.empty() && pattern.front() == '*') {
      pattern.remove_prefix(1);
      patternBehindStar = pattern;
      textBehindStar = text;
    } else if (!pattern.empty() && pattern.front() == '?') {
      pattern.remove_prefix(1);
      text = rest;
    } else if (pattern.substr(0, character.size()) == character) {
      pattern.remove_prefix(character.size());
      text = rest;
    } else if (patternBehindStar) {
      Utf8::take(textBehindStar);
      text = textBehindStar;
      pattern = *patternBehindStar;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*') == pattern.npos;
}

}  // namespace

void Selection::selectNumbers(const std::string& text) {
  std::string_view rest = text;
  while (true) {
    const std::size_t comma = rest.find(',');
    ranges.push_back(readRange(rest.substr(0, comma)));
    if (comma == rest.npos) return;
    rest.remove_prefix(comma + 1);
  }
}

bool Selection::isOfAll() const { return ranges.empty() && !namePattern && !isGenerated && !part; }

bool Selection::includes(Foundation& foundation) const {
  const int number = foundation.getNumber();
  const auto holds = [number](const std::pair<int, int>& range) {
    return range.first <= number && number <= range.second;
  };
  if (!ranges.empty() && std::none_of(ranges.begin(), ranges.end(), holds)) return false;
  if (namePattern && !fits(foundation.getName(), *namePattern)) return false;
  if (isGenerated && !foundation.isGenerated()) return false;
  if (!part) return true;
  return *part == Part::area ? Parts::hasArea(foundation) : Parts::hasLine(foundation);
}

std::optional<int> Selection::findMissing(const std::vector<Foundation*>& foundations) const {
  for (const auto& [first, last] : ranges) {
    const int number = first;
    const auto hasNumber = [number](const Foundation* foundation) {
      return foundation->getNumber() == number;
    };
    if (first == last && std::none_of(foundations.begin(), foundations.end(), hasNumber))
      return number;
  }
  return std::nullopt;
}
