#include "excerpt.h"

#include <algorithm>

#include "documents/markup.h"
#include "results/columns.h"
#include "text/display_text.h"

namespace Engine {
namespace {

constexpr std::size_t mostBefore = 80;
constexpr std::size_t mostMarked = 60;
constexpr std::size_t mostAfter = 120;
constexpr std::size_t mostOfLine = 2000;

/// How much is marked from the start of `text` on: the name of an element, an attribute with its
/// value, or a cell.
std::size_t measureMark(std::string_view text) {
  if (text.empty()) return 0;
  const std::size_t end = text.find_first_of(" \t<>=/,;\"'", 1);
  if (end == text.npos) return text.size();
  const bool isAttribute = text[end] == '=' && end + 1 < text.size();
  const char quote = isAttribute ? text[end + 1] : text[0];
  if (quote != '"' && quote != '\'') return std::max<std::size_t>(end, 1);
  const std::size_t close = text.find(quote, isAttribute ? end + 2 : 1);
  return close == text.npos ? text.size() : close + 1;
}

}  // namespace

Lines::Lines(std::string_view document)
    : bytes(document), charset(Charset::recognise(Markup::readEncoding(document), document)) {
  std::size_t begin = 0;
  do {
    begins.push_back(begin);
    const std::size_t end = bytes.find('\n', begin);
    begin = end == bytes.npos ? bytes.npos : end + 1;
  } while (begin != bytes.npos && begin < bytes.size());
}

std::string_view Lines::get(std::size_t line) const {
  if (line < 1 || line > begins.size()) return {};
  const std::size_t begin = begins[line - 1];
  std::string_view text = bytes.substr(begin, bytes.find('\n', begin) - begin);
  if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
  return text;
}

std::size_t Lines::align(std::string_view text, std::size_t place) const {
  const auto isInside = [&] { return (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80; };
  if (charset.isUtf8())
    while (place < text.size() && isInside()) ++place;
  return place;
}

std::string Lines::makeVisible(std::string_view text) const {
  std::string utf8 = charset.toUtf8(text);
  std::replace(utf8.begin(), utf8.end(), '\t', ' ');
  return DisplayText::fromName(utf8);
}

Json Lines::cut(KvXmlPosition position) const {
  const std::string_view line = get(position.line);
  const bool isOfLine = position.column == 0;
  const std::size_t place = isOfLine ? 0 : std::min(position.column - 1, line.size());
  const std::size_t length = isOfLine ? line.size() : measureMark(line.substr(place));
  const std::size_t begin = place > mostBefore ? align(line, place - mostBefore) : 0;
  const std::size_t marked = align(line, place + std::min(length, mostMarked));
  const std::size_t end = align(line, std::min(marked + mostAfter, line.size()));
  return {{"before", makeVisible(line.substr(begin, place - begin))},
          {"marked", makeVisible(line.substr(place, marked - place))},
          {"after", makeVisible(line.substr(marked, end - marked))},
          {"isCutBefore", begin > 0},
          {"isCutAfter", end < line.size()}};
}

Json Lines::show(std::size_t line) const {
  const std::string_view text = get(line);
  const std::size_t end = align(text, std::min(text.size(), mostOfLine));
  return {
      {"number", line}, {"text", makeVisible(text.substr(0, end))}, {"isCut", end < text.size()}};
}

std::size_t Lines::countColumn(KvXmlPosition position) const {
  const std::string_view line = get(position.line);
  return position.column == 0 ? 0 : Results::Columns(line, charset).count({1, position.column});
}

}  // namespace Engine
