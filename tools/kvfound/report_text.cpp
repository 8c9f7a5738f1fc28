#include "report_text.h"

#include <charconv>
#include <iterator>

#include "display_text.h"

namespace ReportText {
namespace {

/// In small letters; never too narrow, whatever the font.
double measureName(const std::string& text) {
  auto width = static_cast<double>(DisplayText::measure(text));
  for (const char c : text)
    if (c >= 'A' && c <= 'Z') width += c == 'W' || c == 'M' ? 0.75 : 0.25;
  return width;
}

}  // namespace

std::string showValue(double value) {
  constexpr std::size_t longest = 9;
  std::string exact = DisplayText::fromNumber(value);
  if (exact.size() <= longest) return exact;
  char buffer[64];
  const auto result = std::to_chars(buffer, std::end(buffer), value, std::chars_format::general, 6);
  std::string rounded(buffer, result.ptr);
  return rounded == exact ? exact : "\xE2\x89\x88" + rounded;
}

std::string shortenName(const std::string& name, double widest) {
  auto places = static_cast<std::size_t>(widest);
  std::string text = DisplayText::shorten(name, places);
  while (measureName(text) > widest) text = DisplayText::shorten(name, --places);
  return text;
}

}  // namespace ReportText
