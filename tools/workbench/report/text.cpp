#include "report/text.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <vector>

#include "foundations/failures.h"
#include "text/display_text.h"

namespace ReportText {
namespace {

using Found::Foundation;

/// Of text in UTF-8.
std::vector<std::string> listCharacters(const std::string& text) {
  std::vector<std::string> characters;
  for (const char byte : text)
    if (!characters.empty() && (static_cast<unsigned char>(byte) & 0xC0) == 0x80)
      characters.back() += byte;
    else
      characters.emplace_back(1, byte);
  return characters;
}

/// Characters without ink, by their codes; those of no width have a code only.
struct Blank {
  const char* character;
  const char* code;
};
constexpr Blank blanks[] = {
    {" ", nullptr},
    {"\xC2\xA0", nullptr},      // no-break space
    {"\xC2\xAD", "\\u00AD"},    // soft hyphen
    {"\xE2\x80\x80", nullptr},  // spaces of several widths
    {"\xE2\x80\x81", nullptr},
    {"\xE2\x80\x82", nullptr},
    {"\xE2\x80\x83", nullptr},
    {"\xE2\x80\x84", nullptr},
    {"\xE2\x80\x85", nullptr},
    {"\xE2\x80\x86", nullptr},
    {"\xE2\x80\x87", nullptr},
    {"\xE2\x80\x88", nullptr},
    {"\xE2\x80\x89", nullptr},
    {"\xE2\x80\x8A", nullptr},
    {"\xE2\x80\x8B", "\\u200B"},  // zero-width space, non-joiner, joiner
    {"\xE2\x80\x8C", "\\u200C"},
    {"\xE2\x80\x8D", "\\u200D"},
    {"\xE2\x80\xAF", nullptr},    // narrow no-break space
    {"\xE2\x81\x9F", nullptr},    // mathematical space
    {"\xE2\x81\xA0", "\\u2060"},  // word joiner
    {"\xE3\x80\x80", nullptr},    // ideographic space
};

const Blank* findBlank(const std::string& character) {
  const auto found = std::find_if(std::begin(blanks), std::end(blanks),
                                  [&](const Blank& blank) { return character == blank.character; });
  return found == std::end(blanks) ? nullptr : found;
}

/// In quotation marks, and what has no width as its code.
std::string quoteBlanks(const std::string& text) {
  std::string quoted = "\"";
  for (const std::string& character : listCharacters(text)) {
    const Blank* const blank = findBlank(character);
    quoted += blank != nullptr && blank->code != nullptr ? blank->code : character;
  }
  return quoted + '"';
}

}  // namespace

std::string showValue(double value) {
  constexpr std::size_t longest = 9;
  std::string exact = DisplayText::fromNumber(value);
  if (exact.size() <= longest) return exact;
  std::string rounded;
  for (int digits = 6; rounded.empty() || rounded.size() >= longest; --digits) {
    char buffer[64];
    const auto result =
        std::to_chars(buffer, std::end(buffer), value, std::chars_format::general, digits);
    rounded.assign(buffer, result.ptr);
    if (digits == 1) break;
  }
  return rounded == exact ? exact : "\xE2\x89\x88" + rounded;
}

std::string showName(const std::string& name) {
  const std::string text = DisplayText::fromName(name);
  return isBlank(text) ? quoteBlanks(text) : limitMarks(text);
}

std::string limitMarks(const std::string& text) {
  constexpr std::size_t most = 4;  // more than any script has over a letter
  std::string limited;
  std::size_t marks = 0;
  for (const std::string& character : listCharacters(text)) {
    marks = DisplayText::measure(character) == 0 ? marks + 1 : 0;
    if (marks <= most) limited += character;
    if (marks == most + 1) limited += "\xE2\x80\xA6";
  }
  return limited;
}

bool isBlank(const std::string& text) {
  const std::vector<std::string> characters = listCharacters(text);
  return std::all_of(characters.begin(), characters.end(),
                     [](const std::string& character) { return findBlank(character) != nullptr; });
}

std::string nameFailure(Foundation::Failure failure) {
  if (failure == Foundation::None) return "";
  return (Failures::find(failure) != nullptr ? "" : "mode ") + Failures::getWord(failure);
}

std::string count(std::size_t number, const std::string& noun) {
  return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

std::string showSpan(const std::string& noun, std::size_t first, std::size_t last) {
  if (first == last) return noun + " " + std::to_string(first);
  return noun + "s " + std::to_string(first) + " to " + std::to_string(last);
}

std::string join(const std::string& first, const std::string& second) {
  return first + (first.empty() || second.empty() ? "" : ", ") + second;
}

std::string listMarks(bool isCurrent, bool isGenerated) {
  return join(isCurrent ? "current" : "", isGenerated ? "generated" : "");
}

}  // namespace ReportText
