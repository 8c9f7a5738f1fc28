#include "text/encoding.h"

#include <algorithm>
#include <map>

#include "text/display_text.h"

namespace Encoding {
namespace {

bool isAscii(char byte) { return (byte & 0x80) == 0; }
bool isContinuation(char byte) { return (byte & 0xC0) == 0x80; }

/// The bytes of the code page beyond ASCII, by the UTF-8 of their characters.
std::map<std::string, char> listBytes() {
  std::map<std::string, char> bytes;
  for (int code = 0x80; code <= 0xFF; ++code) {
    const char byte = static_cast<char>(code);
    bytes.emplace(DisplayText::toUtf8(std::string(1, byte)), byte);
  }
  return bytes;
}

std::string toCodePage(const std::string& utf8) {
  static const std::map<std::string, char> bytes = listBytes();
  std::string text;
  for (std::size_t start = 0, end = 0; start < utf8.size(); start = end) {
    end = start + 1;
    while (end < utf8.size() && isContinuation(utf8[end])) ++end;
    const auto found = bytes.find(utf8.substr(start, end - start));
    if (isAscii(utf8[start]))
      text += utf8[start];
    else
      text += found != bytes.end() ? found->second : '?';
  }
  return text;
}

}  // namespace

Kind recognise(const std::string& text) {
  if (std::all_of(text.begin(), text.end(), isAscii)) return Kind::ascii;
  return DisplayText::toUtf8(text) == text ? Kind::utf8 : Kind::codePage;
}

std::string convert(const std::string& name, Kind kind) {
  if (kind == Kind::ascii) return name;
  const std::string utf8 = DisplayText::toUtf8(name);
  return kind == Kind::utf8 ? utf8 : toCodePage(utf8);
}

}  // namespace Encoding
