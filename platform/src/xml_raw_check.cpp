#include "xml_raw_check.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <optional>
#include <string_view>

#include "xml_text.h"

namespace XmlRawCheck {
namespace {

/// The first control character that XML does not allow. Whole blocks are looked at without a
/// branch, so that the compiler takes many characters at a time.
std::size_t findForbidden(std::string_view text) {
  constexpr std::size_t blockSize = 64;
  const auto hasForbidden = [](const char* block) {
    unsigned char found = 0;  // of the size of a character, so that it is one operation for many
    for (std::size_t i = 0; i < blockSize; ++i) found |= XmlText::isForbidden(block[i]);
    return found != 0;
  };
  std::size_t i = 0;
  while (i + blockSize <= text.size() && !hasForbidden(text.data() + i)) i += blockSize;
  const auto found =
      std::find_if(text.begin() + static_cast<std::ptrdiff_t>(i), text.end(), XmlText::isForbidden);
  return found != text.end() ? static_cast<std::size_t>(found - text.begin()) : text.npos;
}

MarkupCounts countMarkup(std::string_view text) {
  MarkupCounts counts;
  for (std::size_t at = text.find('<'); at != text.npos; at = text.find('<', at + 1)) {
    const bool isEnd = text.compare(at, 2, "</") == 0;
    ++(isEnd ? counts.ends : counts.plain);
    if (text.compare(at, 9, "<![CDATA[") == 0) counts.hasCdata = true;
  }
  for (std::size_t at = text.find('>', 1); at != text.npos; at = text.find('>', at + 1))
    if (text[at - 1] == '/') ++counts.ends;
  return counts;
}

/// True when `digits` are the number of a character that XML allows.
bool isCharacterNumber(std::string_view digits, int base) {
  std::uint32_t character = 0;
  const char* const end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, character, base);
  return result.ec == std::errc() && result.ptr == end && digits[0] != '-' &&
         XmlText::isXmlCharacter(character);
}

/// The reference at the start of `text`, which starts with '&', without '&' and ';'; empty when
/// there is none that can be resolved.
std::string_view findReference(std::string_view text) {
  const std::size_t end =
      text.find_first_not_of("#0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ", 1);
  if (end == text.npos || text[end] != ';') return {};
  const std::string_view name = text.substr(1, end - 1);
  constexpr std::string_view entities[] = {"amp", "lt", "gt", "quot", "apos"};
  const bool isKnown =
      name.substr(0, 2) == "#x" ? isCharacterNumber(name.substr(2), 16)
      : name.substr(0, 1) == "#"
          ? isCharacterNumber(name.substr(1), 10)
          : std::find(std::begin(entities), std::end(entities), name) != std::end(entities);
  return isKnown ? name : std::string_view();
}

bool isLessThan(std::string_view reference) {
  if (reference[0] != '#') return reference == "lt";
  const std::size_t digits = reference.find_first_not_of("#x0");
  const std::string_view number = digits != reference.npos ? reference.substr(digits) : "";
  return reference[1] == 'x' ? number == "3c" || number == "3C" : number == "60";
}

/// The sections of a text in which an '&' is nothing but itself, passed from first to last.
class LiteralSections {
 public:
  explicit LiteralSections(std::string_view passed) : text(passed) {}

  /// `place` must not be before the one asked for last.
  bool contain(std::size_t place) {
    while (end <= place) {
      const Kind& next = findNext();
      if (*next.place > place) return false;
      end = findEnd(next);
    }
    return true;
  }

 private:
  struct Kind {
    const char* first;
    const char* last;                  // null: more is to be looked at than one mark
    std::optional<std::size_t> place;  // of the next one, where it was looked for
  };

  const Kind& findNext() {
    for (Kind& kind : kinds)
      if (!kind.place || *kind.place < end) kind.place = text.find(kind.first, end);
    return *std::min_element(std::begin(kinds), std::end(kinds),
                             [](const Kind& a, const Kind& b) { return a.place < b.place; });
  }

  std::size_t findEnd(const Kind& section) const {
    const std::size_t content = *section.place + std::strlen(section.first);
    if (section.last == nullptr) return findEndOfDoctype(content);
    return std::min(text.size(), text.find(section.last, content));
  }

  /// Where the declaration ends: behind its internal subset, in which quoted texts, comments and
  /// processing instructions may hold brackets.
  std::size_t findEndOfDoctype(std::size_t at) const {
    const auto skip = [this](std::size_t from, const char* last) {
      return std::min(text.size(), text.find(last, from));
    };
    bool isInSubset = false;
    for (; at < text.size(); ++at) {
      const char c = text[at];
      if (c == '"' || c == '\'')
        at = skip(at + 1, c == '"' ? "\"" : "'");
      else if (text.compare(at, 4, "<!--") == 0)
        at = skip(at + 4, "-->");
      else if (text.compare(at, 2, "<?") == 0)
        at = skip(at + 2, "?>") + 1;
      else if (c == '[' || c == ']')
        isInSubset = c == '[';
      else if (c == '>' && !isInSubset)
        return at;
    }
    return text.size();
  }

  std::string_view text;
  std::size_t end = 0;  // of the section passed last
  Kind kinds[4] = {
      {"<!--", "-->", {}}, {"<![CDATA[", "]]>", {}}, {"<?", "?>", {}}, {"<!DOCTYPE", nullptr, {}}};
};

}  // namespace

MarkupCounts check(const XmlSource::Text& source, const XmlSource::LineTable& lines) {
  const std::string_view text = source.get();
  const std::size_t forbidden = findForbidden(text);
  if (forbidden != text.npos) {
    const bool isNul = text[forbidden] == '\0';
    XmlSource::fail(isNul ? "a NUL character; only 8-bit text such as UTF-8 can be read"
                          : "a control character that XML does not allow",
                    lines.find(forbidden));
  }

  MarkupCounts counts = countMarkup(text);
  LiteralSections literals(text);
  for (std::size_t at = text.find('&'); at != text.npos; at = text.find('&', at + 1)) {
    const std::string_view reference = findReference(text.substr(at));
    const bool isSpecial = reference.empty() || isLessThan(reference);
    if (!isSpecial || literals.contain(at)) continue;
    if (reference.empty())
      XmlSource::fail(
          "this '&' starts no reference that can be resolved; '&' itself is written &amp;",
          lines.find(at));
    ++counts.references;
  }
  return counts;
}

}  // namespace XmlRawCheck
