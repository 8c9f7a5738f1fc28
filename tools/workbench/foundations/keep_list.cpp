#include "foundations/keep_list.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "found/foundation.h"
#include "text/charset.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace {

/// Blanks around names do not count.
std::string trim(const std::string& text) {
  constexpr const char* blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == text.npos) return "";
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace

KeepList::KeepList(std::istream& in) {
  bool isFirst = true;
  for (std::string line; std::getline(in, line); isFirst = false) {
    if (isFirst) line.erase(0, Utf8::measureMark(line));
    line = trim(Charset::recognise("", line).toUtf8(line));
    if (!line.empty()) add(line);
  }
}

void KeepList::add(const std::string& line) {
  lines.insert(line);
  std::istringstream text(line);
  int number = 0;
  if (text >> number && (text >> std::ws).eof()) numbers.emplace(number, line);
}

bool KeepList::usesFoundation(const Found::Foundation* foundation) {
  const std::string& name = foundation->getName();
  const auto [firstNumber, lastNumber] = numbers.equal_range(foundation->getNumber());
  bool isListed = firstNumber != lastNumber;
  for (auto number = firstNumber; number != lastNumber; ++number) matched.insert(number->second);
  for (const std::string& text : {trim(name), trim(DisplayText::fromName(name))}) {
    if (lines.count(text) == 0) continue;
    matched.insert(text);
    isListed = true;
  }
  return isListed;
}

std::vector<std::string> KeepList::listUnmatched() const {
  std::vector<std::string> unmatched;
  std::set_difference(lines.begin(), lines.end(), matched.begin(), matched.end(),
                      std::back_inserter(unmatched));
  return unmatched;
}
