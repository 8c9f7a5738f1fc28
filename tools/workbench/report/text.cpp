#include "report/text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <string_view>

#include <fast_float/fast_float.h>
#include <fmt/format.h>

#include "foundations/failures.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace Report {
namespace {

using Found::Foundation;

constexpr const char* approximately = "\xE2\x89\x88";

/// `text` in quotation marks, with characters that have no width as their codes.
std::string quoteBlanks(const std::string& text) {
  std::string quoted = "\"";
  for (std::string_view rest = text; !rest.empty();) {
    const char32_t c = Utf8::take(rest);
    if (Utf8::isHidden(c))
      quoted += fmt::format("\\u{:04X}", static_cast<std::uint32_t>(c));
    else
      Utf8::append(quoted, c);
  }
  return quoted + '"';
}

/// The number that a text of format() stands for.
double readNumber(const std::string& text) {
  double number = 0.0;
  fast_float::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

std::string limitDigits(double value, int most) {
  std::string text;
  fmt::format_to(std::back_inserter(text), "{:.{}g}", value, most);
  const double rounded = readNumber(text);
  const bool isEveryday = std::fabs(rounded) >= 1.0 && std::fabs(rounded) <= 1e9;
  const bool hasExponent = text.find('e') != text.npos;
  return isEveryday && hasExponent ? fmt::format("{:.0f}", rounded) : text;
}

std::string showRounded(double value) {
  constexpr int most = 5;
  const std::string text = limitDigits(value, most);
  if (readNumber(text) == value || std::isnan(value)) return DisplayText::fromNumber(value);
  return approximately + text;
}

std::string showRanges(std::vector<int> numbers) {
  constexpr std::size_t mostRanges = 40;
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  std::string text;
  std::size_t ranges = 0;
  for (std::size_t i = 0; i < numbers.size();) {
    std::size_t end = i + 1;
    while (end < numbers.size() && numbers[end - 1] + 1 == numbers[end]) ++end;
    if (++ranges > mostRanges) return text + fmt::format(" and {} more", numbers.size() - i);
    const bool isRange = end > i + 1;
    const char* const to = numbers[i] < 0 ? " to " : "-";  // no sign
    text = join(text, isRange ? fmt::format("{}{}{}", numbers[i], to, numbers[end - 1])
                              : std::to_string(numbers[i]));
    i = end;
  }
  return text;
}

std::string showName(const std::string& name) {
  const std::string text = DisplayText::fromName(name);
  return Utf8::isBlank(text) ? quoteBlanks(text) : limitMarks(text);
}

std::string shortenName(const std::string& name) {
  constexpr std::size_t longest = 40;
  return DisplayText::shorten(showName(name), longest);
}

std::string limitMarks(const std::string& text) {
  constexpr std::size_t most = 4;  // more than any script has over a letter
  std::string limited;
  std::size_t marks = 0;
  for (std::string_view rest = text; !rest.empty();) {
    const char32_t c = Utf8::take(rest);
    marks = Utf8::measure(c) == 0 ? marks + 1 : 0;
    if (marks <= most) Utf8::append(limited, c);
    if (marks == most + 1) limited += "\xE2\x80\xA6";
  }
  return limited;
}

Units showUnits(const Units& units) {
  constexpr std::size_t longest = 12;
  return {DisplayText::shorten(DisplayText::fromName(units.force), longest),
          DisplayText::shorten(DisplayText::fromName(units.length), longest)};
}

std::string nameFailure(Foundation::Failure failure) {
  if (failure == Foundation::None) return "";
  return (Failures::find(failure) != nullptr ? "" : "mode ") + Failures::getWord(failure);
}

std::string count(std::size_t number, const std::string& noun) {
  return fmt::format("{} {}{}", number, noun, number == 1 ? "" : "s");
}

std::string showSpan(const std::string& noun, std::size_t first, std::size_t last) {
  if (first == last) return fmt::format("{} {}", noun, first);
  return fmt::format("{}s {} to {}", noun, first, last);
}

std::string join(const std::string& first, const std::string& second) {
  return first + (first.empty() || second.empty() ? "" : ", ") + second;
}

std::string listMarks(bool isCurrent, bool isGenerated) {
  return join(isCurrent ? "current" : "", isGenerated ? "generated" : "");
}

}  // namespace Report
