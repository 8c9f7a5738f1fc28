#include "xml_parse.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <istream>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "kv/xml_error.h"
#include "xml_walk.h"

namespace XmlParse {
namespace {

constexpr int greatestDepth = 1000;  // levels of elements, the root being the first

struct Position {
  std::size_t line = 1;
  std::size_t column = 1;
};

[[noreturn]] void fail(const std::string& reason, Position position) {
  throw KvXmlError(reason, position.line, position.column);
}

/// Where in its file the stream stands. A stream that cannot be rewound counts from where it is.
Position locate(std::streambuf& buffer) {
  const auto tell = [&buffer] { return buffer.pubseekoff(0, std::ios::cur, std::ios::in); };
  const std::streamoff here = tell();
  Position position;
  if (here <= 0 || buffer.pubseekpos(0, std::ios::in) != std::streampos(0)) return position;

  // Asks for the place at line ends only: where line ends are translated, characters cannot be
  // counted instead.
  std::streamoff lineStart = 0;
  for (int c = buffer.sbumpc(); c != std::char_traits<char>::eof(); c = buffer.sbumpc()) {
    if (c != '\n') continue;
    const std::streamoff next = tell();
    if (next > here) break;
    ++position.line;
    lineStart = next;
    if (next == here) break;
  }
  position.column += static_cast<std::size_t>(here - lineStart);
  buffer.pubseekpos(here, std::ios::in);
  return position;
}

struct FreeText {
  void operator()(char* text) const { pugi::get_memory_deallocation_function()(text); }
};

/// A text in memory that the parser can take over.
struct Text {
  std::unique_ptr<char, FreeText> data;
  std::size_t size = 0;
  std::size_t capacity = 0;
  Position start;

  void grow(std::size_t newCapacity) {
    std::unique_ptr<char, FreeText> grown(
        static_cast<char*>(pugi::get_memory_allocation_function()(newCapacity)));
    if (grown == nullptr) throw std::bad_alloc();
    if (size > 0) std::memcpy(grown.get(), data.get(), size);
    data = std::move(grown);
    capacity = newCapacity;
  }
};

/// One byte more than the stream seems to hold, so that its end is seen without growing.
std::size_t guessCapacity(std::streambuf& buffer) {
  constexpr std::size_t whenUnknown = 1 << 16;
  const std::streamoff here = buffer.pubseekoff(0, std::ios::cur, std::ios::in);
  if (here < 0) return whenUnknown;
  const std::streamoff end = buffer.pubseekoff(0, std::ios::end, std::ios::in);
  buffer.pubseekpos(here, std::ios::in);
  return end < here ? whenUnknown : static_cast<std::size_t>(end - here) + 1;
}

Text readAll(std::streambuf& buffer) {
  Text text;
  text.grow(guessCapacity(buffer));
  while (true) {
    const std::size_t room = text.capacity - text.size;
    const std::streamsize got =
        buffer.sgetn(text.data.get() + text.size, static_cast<std::streamsize>(room));
    if (got <= 0) return text;
    text.size += static_cast<std::size_t>(got);
    if (text.size == text.capacity) text.grow(text.capacity * 2);
  }
}

/// Reads what is left of the stream. Its buffer throws where a folder was opened as a file.
Text readRest(std::istream& in) {
  if (in.rdbuf() == nullptr) fail("there is nothing to read from", Position());
  const Position start = locate(*in.rdbuf());
  if (in.fail()) fail("the text cannot be read from here on", start);
  try {
    Text text = readAll(*in.rdbuf());
    text.start = start;
    return text;
  } catch (const std::ios_base::failure&) {
    fail("the text cannot be read from here on", start);
  }
}

/// Finds the line of an offset in a text. Made before the text is parsed, since the parser works
/// in place and overwrites line ends.
class LineTable {
 public:
  explicit LineTable(const Text& text) : begin(text.start) {
    const char* const first = text.data.get();
    const char* const last = first + text.size;
    for (const char* c = first; (c = findLineEnd(c, last)) != nullptr; ++c)
      lineEnds.push_back(static_cast<std::size_t>(c - first));
  }

  Position find(std::size_t offset) const {
    const auto line = std::lower_bound(lineEnds.begin(), lineEnds.end(), offset);
    const auto lines = static_cast<std::size_t>(line - lineEnds.begin());
    if (lines == 0) return {begin.line, begin.column + offset};
    return {begin.line + lines, offset - lineEnds[lines - 1]};
  }

 private:
  static const char* findLineEnd(const char* from, const char* last) {
    return static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(last - from)));
  }

  Position begin;
  std::vector<std::size_t> lineEnds;
};

std::string describe(const pugi::xml_parse_result& result, bool atEnd) {
  switch (result.status) {
    case pugi::status_end_element_mismatch:
      return atEnd ? "the text ends before its last element is closed"
                   : "this end tag does not close the element that is open";
    case pugi::status_bad_attribute:
      return "this attribute is malformed or not closed";
    case pugi::status_bad_start_element:
      return "this start tag is malformed or not closed";
    case pugi::status_bad_end_element:
      return "this end tag is malformed or not closed";
    case pugi::status_bad_comment:
      return "this comment is malformed or not closed";
    case pugi::status_bad_cdata:
      return "this CDATA section is malformed or not closed";
    case pugi::status_bad_doctype:
      return "this document type declaration is malformed or not closed";
    case pugi::status_bad_pi:
      return "this processing instruction is malformed or not closed";
    case pugi::status_unrecognized_tag:
      return "a tag cannot start like this";
    default:
      return result.description();
  }
}

constexpr const char* whiteSpace = " \t\r\n";

bool isWhiteSpace(const char* text) { return text[std::strspn(text, whiteSpace)] == '\0'; }

/// The character that the reference "&#...;" at the start of `text` stands for, cut off behind the
/// last one there is; none when it is no such reference.
std::optional<unsigned long> resolveReference(std::string_view text) {
  const bool isHexadecimal = text.size() > 2 && text[2] == 'x';
  text.remove_prefix(isHexadecimal ? 3 : 2);
  const std::string_view digits = text.substr(
      0, text.find_first_not_of(isHexadecimal ? "0123456789abcdefABCDEF" : "0123456789"));
  if (digits.empty() || digits.size() == text.size() || text[digits.size()] != ';') return {};
  unsigned long character = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), character,
                                      isHexadecimal ? 16 : 10);
  return result.ec == std::errc() ? character : std::numeric_limits<unsigned long>::max();
}

/// The sections of a text in which nothing is resolved, passed from first to last.
class LiteralSections {
 public:
  explicit LiteralSections(std::string_view passed) : text(passed) {}

  /// `place` must not be before the one asked for last.
  bool contain(std::size_t place) {
    while (end <= place) {
      const Kind& next = findNext();
      if (next.place > place) return false;
      end = std::min(text.size(), text.find(next.last, next.place));
    }
    return true;
  }

 private:
  struct Kind {
    const char* first;
    const char* last;
    std::size_t place;  // of the next one, once known
  };

  const Kind& findNext() {
    for (Kind& kind : kinds)
      if (kind.place < end || end == 0) kind.place = text.find(kind.first, end);
    return *std::min_element(std::begin(kinds), std::end(kinds),
                             [](const Kind& a, const Kind& b) { return a.place < b.place; });
  }

  std::string_view text;
  std::size_t end = 0;  // of the section passed last
  Kind kinds[3] = {{"<!--", "-->", 0}, {"<![CDATA[", "]]>", 0}, {"<?", "?>", 0}};
};

/// Refuses what the parser would take for the end of a text: the NUL character, as a byte or as a
/// reference, and references beyond the last character, which it may reduce to NUL.
void checkCharacters(std::string_view text, const LineTable& lines) {
  const std::size_t nul = text.find('\0');
  if (nul != text.npos)
    fail("a NUL character; only 8-bit text such as UTF-8 can be read", lines.find(nul));
  LiteralSections literals(text);
  for (std::size_t at = text.find("&#"); at != text.npos; at = text.find("&#", at + 1)) {
    const std::optional<unsigned long> character = resolveReference(text.substr(at));
    constexpr unsigned long lastCharacter = 0x10FFFF;
    if (character && (*character == 0 || *character > lastCharacter) && !literals.contain(at))
      fail("a reference to a character that there is not", lines.find(at));
  }
}

/// Finds attributes that are given twice. Most elements have the same attributes as the one before,
/// and then nothing is left to compare.
class NameCheck {
 public:
  /// The name of the first attribute that repeats an earlier one, or null.
  const char* findRepeated(const pugi::xml_node& element) {
    if (isLikeLast(element)) return nullptr;
    last.clear();
    known.clear();
    for (pugi::xml_attribute a = element.first_attribute(); a; a = a.next_attribute()) {
      if (!known.insert(a.name()).second) return a.name();
      last.push_back(a.name());
    }
    return nullptr;
  }

 private:
  bool isLikeLast(const pugi::xml_node& element) const {
    auto name = last.begin();
    for (pugi::xml_attribute a = element.first_attribute(); a; a = a.next_attribute(), ++name)
      if (name == last.end() || std::strcmp(a.name(), *name) != 0) return false;
    return name == last.end();
  }

  std::vector<const char*> last;
  std::unordered_set<std::string_view> known;
};

/// Checks what the parser lets pass.
class Inspection {
 public:
  Inspection(const pugi::xml_document& checked, const char* text, const LineTable& table)
      : document(checked), begin(text), lines(table) {}

  void run() {
    checkTopLevel();
    for (const pugi::xml_node top : document.children())
      walkXml(top, [this](const pugi::xml_node& node, int level) {
        if (node.type() == pugi::node_element) checkElement(node, level);
      });
  }

 private:
  [[noreturn]] void failAt(const std::string& reason, const char* place) const {
    fail(reason, lines.find(static_cast<std::size_t>(place - begin)));
  }

  /// Where a text starts behind its white space. Its line ends were shortened, so they are counted.
  Position findText(const char* text) const {
    Position position = lines.find(static_cast<std::size_t>(text - begin));
    for (const char* c = text; std::strchr(whiteSpace, *c) != nullptr; ++c) {
      ++position.column;
      if (*c == '\n') position = {position.line + 1, 1};
    }
    return position;
  }

  void checkTopLevel() const {
    const pugi::xml_node root = document.document_element();
    for (pugi::xml_node node : document.children()) {
      const bool isText = node.type() == pugi::node_cdata ||
                          (node.type() == pugi::node_pcdata && !isWhiteSpace(node.value()));
      if (isText) fail("text outside the root element", findText(node.value()));
      if (node.type() == pugi::node_element && node != root)
        failAt("a second root element, <" + std::string(node.name()) + ">", node.name());
    }
  }

  void checkElement(const pugi::xml_node& element, int level) {
    if (level > greatestDepth)
      failAt("elements are nested more than " + std::to_string(greatestDepth) + " levels deep",
             element.name());
    if (const char* name = names.findRepeated(element))
      failAt("the attribute \"" + std::string(name) + "\" is given twice", name);
  }

  const pugi::xml_document& document;
  const char* begin;
  const LineTable& lines;
  NameCheck names;
};

}  // namespace

void parse(std::istream& in, pugi::xml_document& document, Root root) {
  Text text = readRest(in);
  const LineTable lines(text);
  const char* const begin = text.data.get();
  checkCharacters(std::string_view(begin, text.size), lines);

  // The encoding is named so that no byte is converted. Text at the top level is kept as in a
  // fragment so that it can be refused; white space is kept where it is all that an element holds.
  constexpr unsigned options =
      pugi::parse_full | pugi::parse_fragment | pugi::parse_ws_pcdata_single;
  const std::size_t size = text.size;
  const pugi::xml_parse_result result =
      document.load_buffer_inplace_own(text.data.release(), size, options, pugi::encoding_utf8);
  if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
  if (!result) {
    const std::size_t offset = std::min(static_cast<std::size_t>(result.offset), size);
    const bool atEnd = offset + 1 >= size;  // the parser stops one short of the end
    fail(describe(result, atEnd), lines.find(offset));
  }
  Inspection(document, begin, lines).run();
  if (root == Root::required && !document.document_element())
    fail("the document has no root element", lines.find(size));
}

}  // namespace XmlParse
