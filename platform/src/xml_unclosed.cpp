#include "xml_unclosed.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace XmlUnclosed {
namespace {

struct Section {
  std::string_view start;
  std::string_view end;
};

constexpr Section sections[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"</", ">"}};

/// Walks from one piece of markup to the next.
class Walk {
 public:
  Walk(std::string_view all, std::size_t from) : text(all), at(from) {}

  std::size_t findOpen() {
    for (at = text.find('<', at); at != none; at = text.find('<', at)) {
      const std::size_t unclosed = pass();
      if (unclosed != none) return unclosed;
    }
    return elements.empty() ? none : elements.back();
  }

 private:
  /// Moves behind the markup that starts here and returns none. When the markup or a quoted value
  /// in it does not end, returns where that starts.
  std::size_t pass() {
    const auto* const section =
        std::find_if(std::begin(sections), std::end(sections), [this](const Section& kind) {
          return text.compare(at, kind.start.size(), kind.start) == 0;
        });
    return section != std::end(sections) ? passSection(*section) : passStartTag();
  }

  std::size_t passSection(const Section& section) {
    const std::size_t start = at;
    const std::size_t end = text.find(section.end, start + section.start.size());
    if (end == none) return start;
    at = end + section.end.size();
    if (section.start == "</" && !elements.empty()) elements.pop_back();
    return none;
  }

  std::size_t passStartTag() {
    const std::size_t start = at;
    for (at = text.find_first_of(">\"'", at); at != none; at = text.find_first_of(">\"'", at + 1)) {
      if (text[at] == '>') {
        if (text[at - 1] != '/') elements.push_back(start);
        return none;
      }
      const std::size_t quote = at;
      at = text.find(text[quote], quote + 1);
      if (at == none) return quote + 1;
    }
    return start;
  }

  std::string_view text;
  std::size_t at;
  std::vector<std::size_t> elements;  // those that are open
};

}  // namespace

std::size_t find(std::string_view text, std::size_t from) { return Walk(text, from).findOpen(); }

}  // namespace XmlUnclosed
