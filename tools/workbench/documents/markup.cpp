#include "documents/markup.h"

#include <algorithm>

#include "text/utf8.h"

namespace Markup {
namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

bool startsWith(std::string_view text, std::size_t place, std::string_view start) {
  return text.compare(place, start.size(), start) == 0;
}

/// The place behind the first `end` at or after `start`; nowhere when there is none.
std::size_t findBehind(std::string_view text, std::string_view end, std::size_t start) {
  const std::size_t found = text.find(end, std::min(start, text.size()));
  return found == nowhere ? nowhere : found + end.size();
}

/// The end of a tag. Its quoted values may hold anything, '>' included.
std::size_t findTagEnd(std::string_view text, std::size_t start) {
  for (std::size_t i = start; i < text.size();) {
    i = text.find_first_of(">\"'", i);
    if (i == nowhere) return nowhere;
    if (text[i] == '>') return i + 1;
    i = findBehind(text, text.substr(i, 1), i + 1);
  }
  return nowhere;
}

/// The end of a document type declaration, which may hold other declarations in brackets.
std::size_t findDoctypeEnd(std::string_view text, std::size_t start) {
  bool isInBrackets = false;
  for (std::size_t i = start; i < text.size();) {
    i = text.find_first_of("<>\"'[]", i);
    if (i == nowhere) return nowhere;
    const char c = text[i];
    if (c == '>' && !isInBrackets) return i + 1;
    if (c == '[' || c == ']') isInBrackets = c == '[';
    i = c == '<'                ? findEnd(text, i)
        : c == '"' || c == '\'' ? findBehind(text, text.substr(i, 1), i + 1)
                                : i + 1;
  }
  return nowhere;
}

/// Skips white space and everything else that may come before a root element.
std::size_t skipProlog(std::string_view text, std::size_t place) {
  while (true) {
    place = std::min(text.find_first_not_of(whiteSpace, place), text.size());
    if (!startsWith(text, place, "<?") && !startsWith(text, place, "<!")) return place;
    const std::size_t end = findEnd(text, place);
    if (end == nowhere) return place;
    place = end;
  }
}

}  // namespace

std::size_t findEnd(std::string_view text, std::size_t start) {
  if (startsWith(text, start, "<!--")) return findBehind(text, "-->", start + 4);
  if (startsWith(text, start, "<![CDATA[")) return findBehind(text, "]]>", start + 9);
  if (startsWith(text, start, "<?")) return findBehind(text, "?>", start + 2);
  if (startsWith(text, start, "<!")) return findDoctypeEnd(text, start + 2);
  return findTagEnd(text, start);
}

std::size_t findElementEnd(std::string_view text, std::size_t start) {
  std::size_t depth = 0;
  while (start != nowhere) {
    const std::size_t end = findEnd(text, start);
    if (end == nowhere) return nowhere;
    const bool isOther = startsWith(text, start, "<!") || startsWith(text, start, "<?");
    if (startsWith(text, start, "</"))
      --depth;
    else if (!isOther && text[end - 2] != '/')
      ++depth;
    if (depth == 0) return end;
    start = text.find('<', end);
  }
  return nowhere;
}

std::size_t findRoot(std::string_view text) {
  const std::size_t place = skipProlog(text, Utf8::measureMark(text));
  return startsWith(text, place, "<") ? place : nowhere;
}

std::string_view readName(std::string_view text, std::size_t start) {
  const std::size_t end = text.find_first_of(" \t\r\n/>", start + 1);
  return text.substr(start + 1, std::min(end, text.size()) - start - 1);
}

const Attribute* StartTag::find(std::string_view name) const {
  for (const Attribute& attribute : attributes)
    if (attribute.name == name) return &attribute;
  return nullptr;
}

StartTag readStartTag(std::string_view text, std::size_t start) {
  StartTag tag;
  tag.begin = start;
  tag.end = findEnd(text, start);
  tag.isEmpty = text[tag.end - 2] == '/';
  tag.nameEnd = start + 1 + readName(text, start).size();
  const std::string_view inside = text.substr(0, tag.end - (tag.isEmpty ? 2 : 1));
  std::size_t place = tag.nameEnd;
  while (true) {
    const std::size_t name = inside.find_first_not_of(whiteSpace, place);
    if (name == nowhere) return tag;
    const std::size_t nameEnd = inside.find_first_of(" \t\r\n=", name);
    const std::size_t open = inside.find_first_of("\"'", nameEnd);
    const std::size_t close = inside.find(inside[open], open + 1);
    tag.attributes.push_back(
        {inside.substr(name, nameEnd - name), {place, close + 1}, {open + 1, close}, inside[open]});
    place = close + 1;
  }
}

std::string_view readEncoding(std::string_view text) {
  if (!startsWith(text, 0, "<?xml")) return "";
  const std::size_t end = findEnd(text, 0);
  const std::size_t name = text.substr(0, end).find("encoding");
  if (end == nowhere || name == nowhere) return "";
  const std::size_t open = text.find_first_of("\"'", name);
  const std::size_t close = open < end ? text.find(text[open], open + 1) : nowhere;
  return close < end ? text.substr(open + 1, close - open - 1) : "";
}

bool isProlog(std::string_view text) {
  return skipProlog(text, Utf8::measureMark(text)) == text.size();
}

}  // namespace Markup
