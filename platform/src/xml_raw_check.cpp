#include "xml_raw_check.h"

#include <algorithm>
#include <string_view>

#include "xml_text.h"

namespace XmlRawCheck {
namespace {

/// Which kinds of characters occur. The loop has no branch, so the compiler can vectorise it.
struct Kinds {
  void add(std::string_view text) {
    for (const char c : text) {
      forbidden |= XmlText::isForbidden(c);
      beyondAscii |= static_cast<unsigned char>(c);
    }
  }

  // As small as a character, so that one vector operation handles many.
  unsigned char forbidden = 0;
  unsigned char beyondAscii = 0;  // in the highest bit
};

[[noreturn]] void failAtForbidden(std::string_view text, const XmlSource::LineTable& lines) {
  const auto* const found = std::find_if(text.begin(), text.end(), XmlText::isForbidden);
  XmlSource::fail(*found == '\0' ? "a NUL character; only 8-bit text such as UTF-8 can be read"
                                 : "a control character that XML does not allow",
                  lines.find(static_cast<std::size_t>(found - text.begin())));
}

bool isWhiteSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

bool check(const XmlSource::Text& source, const XmlSource::LineTable& lines) {
  const std::string_view text = source.get();
  Kinds kinds;
  kinds.add(text);
  if (kinds.forbidden != 0) failAtForbidden(text, lines);
  return (kinds.beyondAscii & 0x80) == 0;
}

// True when something other than markup and white space follows a '>', since that may end a tag,
// and when an element says that its white space matters.
bool mayHoldText(std::string_view text) {
  for (std::size_t at = text.find('>'); at != text.npos; at = text.find('>', at)) {
    do ++at;
    while (at < text.size() && isWhiteSpace(text[at]));
    if (at < text.size() && (text[at] != '<' || text.compare(at, 3, "<![") == 0)) return true;
  }
  return text.find("xml:space") != text.npos;
}

}  // namespace XmlRawCheck
