#include "documents/layout.h"

#include <algorithm>

namespace Documents {
namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view whiteSpace = " \t\r\n";

/// The white space at the start of the first indented line; two blanks when no line is indented.
std::string findUnit(std::string_view text) {
  for (std::size_t line = text.find('\n'); line != text.npos; line = text.find('\n', line + 1)) {
    const std::size_t end = text.find_first_not_of(blanks, line + 1);
    if (end != text.npos && end > line + 1 && text[end] == '<')
      return std::string(text.substr(line + 1, end - line - 1));
  }
  return "  ";
}

}  // namespace

Layout::Layout(std::string_view bytes) : text(bytes), unit(findUnit(bytes)) {
  const std::size_t end = text.find('\n');
  lineEnd = end != text.npos && end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

TagStyle Layout::findStyle(const Markup::StartTag& tag) const {
  TagStyle style;
  if (tag.attributes.empty()) return style;
  const Markup::Attribute& last = tag.attributes.back();
  const std::size_t name = text.find(last.name, last.all.begin);
  style.separator = std::string(text.substr(last.all.begin, name - last.all.begin));
  style.quote = last.quote;
  if (tag.isEmpty) style.closing = std::string(text.substr(last.all.end, tag.end - last.all.end));
  return style;
}

std::size_t Layout::findAttributeEnd(const Markup::StartTag& tag) const {
  return tag.attributes.empty() ? tag.nameEnd : tag.attributes.back().all.end;
}

std::string Layout::findIndentation(std::size_t place) const {
  const std::string_view before = text.substr(0, place);
  const std::size_t behindBlanks = before.find_last_not_of(blanks) + 1;
  if (behindBlanks == 0 || before[behindBlanks - 1] != '\n') return "";
  const bool hasReturn = behindBlanks > 1 && before[behindBlanks - 2] == '\r';
  return (hasReturn ? "\r\n" : "\n") + std::string(before.substr(behindBlanks));
}

std::size_t Layout::findLineEnd(std::size_t place) const {
  std::size_t end = place;
  while (true) {
    const std::size_t next = std::min(text.find_first_not_of(blanks, end), text.size());
    if (next == text.size() || text[next] == '\n' || text[next] == '\r') return end;
    if (text.substr(next, 4) != "<!--") return Markup::nowhere;
    end = Markup::findEnd(text, next);
  }
}

Markup::Range Layout::widenToLines(Markup::Range element) const {
  const std::string_view before = text.substr(0, element.begin);
  const std::size_t begin = before.find_last_not_of(blanks) + 1;
  const std::size_t end = std::min(text.find_first_not_of(" \t\r", element.end), text.size());
  const bool startsLine = begin > 0 && before[begin - 1] == '\n';
  if (!startsLine || end == text.size() || text[end] != '\n') return element;
  return {begin, end + 1};
}

void Layout::append(Markup::Range element, const std::vector<Line>& lines, Edit& edit) const {
  std::string indentation = findIndentation(element.begin);
  if (indentation.empty()) indentation = lineEnd;
  std::string added;
  for (const Line& line : lines) {
    added += indentation;
    for (int i = 0; i < line.depth; ++i) added += unit;
    added += line.bytes;
  }

  const Markup::StartTag tag = Markup::readStartTag(text, element.begin);
  if (tag.isEmpty) {
    const std::string name(Markup::readName(text, element.begin));
    edit.replace({findAttributeEnd(tag), tag.end}, ">" + added + indentation + "</" + name + ">");
    return;
  }
  const std::size_t endTag = text.substr(0, element.end).rfind("</");
  const std::size_t content = text.substr(0, endTag).find_last_not_of(whiteSpace) + 1;
  const bool isOnLineOfItsOwn = text.substr(content, endTag - content).find('\n') != text.npos;
  edit.insert(content, isOnLineOfItsOwn ? added : added + indentation);
}

void Layout::addChildren(Markup::Range element, const std::vector<std::string>& children,
                         Edit& edit) const {
  std::vector<Line> lines;
  lines.reserve(children.size());
  for (const std::string& child : children) lines.push_back({1, child});
  append(element, lines, edit);
}

void Layout::addChild(Markup::Range element, const std::string& start,
                      const std::vector<std::string>& children, const std::string& end,
                      Edit& edit) const {
  std::vector<Line> lines = {{1, start}};
  for (const std::string& child : children) lines.push_back({2, child});
  lines.push_back({1, end});
  append(element, lines, edit);
}

}  // namespace Documents
