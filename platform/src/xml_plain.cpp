#include "xml_plain.h"

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "xml_text.h"
#include "xml_value.h"

namespace XmlPlain {
namespace {

using KvXmlView::Shape;
using KvXmlView::Shapes;

enum Kind : unsigned char { namePart = 1, whiteSpace = 2, markup = 4 };

/// What each character may be part of. A table, since it is looked up for every character.
struct Kinds {
  constexpr Kinds() {
    for (int c = 0; c < 128; ++c)
      if (XmlText::isPlainPart(static_cast<char>(c))) add(static_cast<char>(c), namePart);
    for (const char c : {' ', '\t', '\r', '\n'}) add(c, whiteSpace);
    for (const char c : {'"', '<', '&', '\0'}) add(c, markup);
  }

  constexpr void add(char c, Kind kind) { kinds[static_cast<unsigned char>(c)] |= kind; }

  unsigned char kinds[256] = {};
};

constexpr Kinds table;

bool is(Kind kind, char c) { return (table.kinds[static_cast<unsigned char>(c)] & kind) != 0; }

// Each of these functions expects a certain construct at `c` and returns where it ends, or null
// when something else stands there. The text ends with a NUL, at which all of them stop.

const char* skip(char expected, const char* c) { return *c == expected ? c + 1 : nullptr; }

const char* skipWhiteSpace(const char* c) {
  while (is(whiteSpace, *c)) ++c;
  return c;
}

const char* skipName(const char* c) {
  if (!XmlText::isPlainLetter(*c)) return nullptr;
  while (is(namePart, *c)) ++c;
  return c;
}

/// From the '=' on.
const char* skipValue(const char* c) {
  if (c[0] != '=' || c[1] != '"') return nullptr;
  const char* const start = c += 2;
  bool hasReference = false;
  for (;; ++c) {
    while (!is(markup, *c)) ++c;
    if (*c != '&') break;
    hasReference = true;
  }
  if (*c != '"') return nullptr;
  const std::string_view written(start, static_cast<std::size_t>(c - start));
  if (hasReference && XmlValue::findBadReference(written) != written.npos) return nullptr;
  ++c;
  return is(whiteSpace, *c) || *c == '/' || *c == '>' ? c : nullptr;
}

/// Its content is checked after it is parsed.
const char* skipDeclaration(const char* c) {
  constexpr std::string_view mark = "?>";
  if (c[0] != '<' || c[1] != '?') return c;
  const char* const end = std::strstr(c, mark.data());
  return end != nullptr ? end + mark.size() : nullptr;
}

/// The parser checks that its name matches the start tag.
const char* skipEndTag(const char* c) {
  c = skipName(c);
  return c != nullptr ? skip('>', skipWhiteSpace(c)) : nullptr;
}

/// Skips an attribute and extends `shape` by it. Tries first the attribute that followed last time.
const char* skipAttribute(const char* c, Shape*& shape) {
  Shape* const likely = shape->getLikely();
  if (likely != nullptr) {
    const std::string& name = likely->getLastName();
    if (std::strncmp(c, name.data(), name.size()) == 0 && c[name.size()] == '=') {
      shape = likely;
      return skipValue(c + name.size());
    }
  }
  const char* const end = skipName(c);
  if (end == nullptr) return nullptr;
  shape = shape->extendByNew({c, static_cast<std::size_t>(end - c)});
  return shape != nullptr ? skipValue(end) : nullptr;
}

/// Skips a start tag and sets `shape` to its name and attributes.
const char* skipStartTag(const char* c, Shapes& shapes, Shape*& shape) {
  const char* const end = skipName(c);
  if (end == nullptr) return nullptr;
  shape = shapes.giveEmpty({c, static_cast<std::size_t>(end - c)});
  if (shape == nullptr) return nullptr;
  for (c = skipWhiteSpace(end); XmlText::isPlainLetter(*c); c = skipWhiteSpace(c)) {
    c = skipAttribute(c, shape);
    if (c == nullptr) return nullptr;
  }
  return skip('>', *c == '/' ? c + 1 : c);
}

}  // namespace

std::optional<std::deque<Tag>> findTags(const char* text, Shapes& shapes) {
  std::deque<Tag> tags;
  int depth = 0;  // how many elements are open
  const char* c = skipDeclaration(text);
  do {
    const char* const tag = c != nullptr ? skipWhiteSpace(c) : nullptr;
    if (tag == nullptr || *tag != '<') return std::nullopt;
    if (tag[1] == '/') {
      c = skipEndTag(tag + 2);
      --depth;
      continue;
    }
    Shape* shape = nullptr;
    c = depth < XmlText::greatestDepth ? skipStartTag(tag + 1, shapes, shape) : nullptr;
    if (c == nullptr) return std::nullopt;
    tags.push_back({static_cast<std::size_t>(tag - text), shape->giveNumber()});
    const bool isEmpty = c[-2] == '/';
    if (!isEmpty) ++depth;
  } while (depth > 0);
  const bool isWhole = c != nullptr && *skipWhiteSpace(c) == '\0';
  return isWhole ? std::optional(std::move(tags)) : std::nullopt;
}

}  // namespace XmlPlain
