#include "report/text.h"

#include <cstdint>
#include <string_view>

#include <fmt/format.h>

#include "foundations/failures.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace Report {
namespace {

using Found::Foundation;

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

}  // namespace

std::string showValue(double value) {
  constexpr std::size_t longest = 9;
  std::string exact = DisplayText::fromNumber(value);
  if (exact.size() <= longest) return exact;
  std::string rounded;
  for (int digits = 6; digits > 0 && (rounded.empty() || rounded.size() >= longest); --digits)
    rounded = fmt::format("{:.{}g}", value, digits);
  return "\xE2\x89\x88" + rounded;
}

std::string showName(const std::string& name) {
  const std::string text = DisplayText::fromName(name);
  return Utf8::isBlank(text) ? quoteBlanks(text) : limitMarks(text);
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
