#include "xml_prolog.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "xml_text.h"

namespace XmlProlog {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view whiteSpace = " \t\r\n";
constexpr std::string_view quotes = "\"'";

/// A place in a text. Each function that takes something moves the place behind it.
class Cursor {
 public:
  explicit Cursor(std::string_view all) : text(all) {}

  std::size_t getPlace() const { return at; }
  bool isAtEnd() const { return at == text.size(); }
  bool isAt(std::string_view mark) const { return text.compare(at, mark.size(), mark) == 0; }

  bool take(std::string_view mark) {
    const bool isThere = isAt(mark);
    if (isThere) at += mark.size();
    return isThere;
  }

  /// Takes all characters up to the next of `stops`, or to the end.
  std::string_view takeUntilAny(std::string_view stops) {
    const std::size_t start = at;
    at = std::min(text.size(), text.find_first_of(stops, at));
    return text.substr(start, at - start);
  }

  /// Takes everything up to `mark` and the mark, too; returns what stands before the mark. Without
  /// a mark, takes and returns all that is left.
  std::string_view takeThrough(std::string_view mark) {
    const std::size_t start = at;
    const std::size_t end = text.find(mark, at);
    at = end != text.npos ? end + mark.size() : text.size();
    return text.substr(start, std::min(end, text.size()) - start);
  }

  /// Takes a quoted text and returns it without its quotes. When it does not end, takes all that is
  /// left and returns none.
  std::optional<std::string_view> takeQuoted() {
    const std::string_view quote = isAt("\"") ? "\"" : "'";
    take(quote);
    const std::size_t start = at;
    const std::string_view content = takeThrough(quote);
    return at > start + content.size() ? std::optional(content) : std::nullopt;
  }

  bool skipWhiteSpace() {
    const std::size_t start = at;
    at = std::min(text.size(), text.find_first_not_of(whiteSpace, at));
    return at > start;
  }

 private:
  std::string_view text;
  std::size_t at = 0;
};

/// Checks a document type declaration, from behind its "<!DOCTYPE" on.
class DocumentType {
 public:
  DocumentType(Cursor& behindStart, const XmlSource::LineTable& table,
               const CodePages::CodePage* codePage)
      : cursor(behindStart), lines(table), page(codePage) {}

  void check() {
    const std::size_t start = cursor.getPlace() - std::string_view("<!DOCTYPE").size();
    require(cursor.skipWhiteSpace(), "\"<!DOCTYPE\" is followed by white space and a name");
    checkName(" \t\r\n[>", "this document type declaration has no name");
    if (cursor.skipWhiteSpace()) checkExternal();
    cursor.skipWhiteSpace();
    if (cursor.isAt("[")) checkSubset();
    cursor.skipWhiteSpace();
    if (cursor.isAtEnd()) fail("this document type declaration is not closed", start);
    require(cursor.isAt(">"), "here the document type declaration must end with '>'");
  }

 private:
  [[noreturn]] void fail(const std::string& reason, std::size_t place) const {
    XmlSource::fail(reason, lines.find(place));
  }

  void require(bool condition, const char* reason) const {
    if (!condition) fail(reason, cursor.getPlace());
  }

  void checkName(std::string_view stops, const char* reason) {
    const std::size_t start = cursor.getPlace();
    if (!XmlText::isName(cursor.takeUntilAny(stops), page)) fail(reason, start);
  }

  void checkExternal() {
    const bool isPublic = cursor.take("PUBLIC");
    if (!isPublic && !cursor.take("SYSTEM")) return;
    if (isPublic) {
      const std::string_view identifier = takeQuoted();
      const std::size_t start = cursor.getPlace() - identifier.size() - 2;  // less its quotes
      const bool isAllowed = std::all_of(identifier.begin(), identifier.end(), isOfIdentifier);
      if (!isAllowed) fail("this public identifier holds a character that none may hold", start);
    }
    takeQuoted();
  }

  static bool isOfIdentifier(char c) {
    const bool isLetterOrDigit =
        (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    constexpr std::string_view others = " \r\n-'()+,./:=?;!*#@$_%";
    return isLetterOrDigit || others.find(c) != others.npos;
  }

  std::string_view takeQuoted() {
    require(cursor.skipWhiteSpace(), "white space and a quoted text must stand here");
    require(cursor.isAt("\"") || cursor.isAt("'"), "a quoted text must stand here");
    return takeQuotedHere();
  }

  std::string_view takeQuotedHere() {
    const std::size_t start = cursor.getPlace();
    const std::optional<std::string_view> content = cursor.takeQuoted();
    if (!content) fail("this quoted text is not closed", start);
    return *content;
  }

  std::string_view takeClosed(std::string_view end, const char* reason, std::size_t start) {
    const std::size_t from = cursor.getPlace();
    const std::string_view content = cursor.takeThrough(end);
    if (cursor.getPlace() < from + content.size() + end.size()) fail(reason, start);
    return content;
  }

  void checkSubset() {
    const std::size_t start = cursor.getPlace();
    for (cursor.take("["); !cursor.take("]"); cursor.skipWhiteSpace()) {
      if (cursor.isAtEnd()) fail("this '[' of the document type is not closed", start);
      if (!cursor.skipWhiteSpace()) checkMarkup();
    }
  }

  void checkMarkup() {
    const std::size_t start = cursor.getPlace();
    if (cursor.take("<!--")) return checkComment(start);
    if (cursor.take("<?")) return checkInstruction(start);
    if (cursor.take("%")) {
      checkName(";]>\"' \t\r\n", "'%' is followed by the name of an entity and ';'");
      return require(cursor.take(";"), "the name of an entity ends with ';'");
    }
    constexpr std::string_view kinds[] = {"<!ELEMENT", "<!ATTLIST", "<!ENTITY", "<!NOTATION"};
    const bool isKnown = std::any_of(std::begin(kinds), std::end(kinds),
                                     [this](std::string_view kind) { return cursor.take(kind); });
    require(isKnown, "this cannot stand in a document type");
    require(cursor.skipWhiteSpace(), "white space must stand here");
    checkDeclaration(start);
  }

  void checkComment(std::size_t start) {
    takeClosed("--", "this comment is not closed", start);
    if (!cursor.take(">")) fail("\"--\" must not stand in a comment", start);
  }

  void checkInstruction(std::size_t start) {
    const std::string_view content =
        takeClosed("?>", "this processing instruction is not closed", start);
    const std::string_view target = content.substr(0, content.find_first_of(whiteSpace));
    if (!XmlText::isName(target, page)) fail("this is no XML name", start + 2);
    if (XmlText::isReservedTarget(target)) fail("no instruction may be named like this", start + 2);
  }

  void checkDeclaration(std::size_t start) {
    while (true) {
      cursor.takeUntilAny("<>\"'");
      if (cursor.isAtEnd()) fail("this declaration is not closed", start);
      if (cursor.take(">")) return;
      require(!cursor.isAt("<"), "'<' must not stand in a declaration");
      takeQuotedHere();
    }
  }

  Cursor& cursor;
  const XmlSource::LineTable& lines;
  const CodePages::CodePage* page;
};

/// Takes the declaration at the start of a document. Empty when there is none or when a byte order
/// mark stands before it: the mark means UTF-8, whatever is declared.
std::string_view takeDeclaration(Cursor& cursor) {
  cursor.skipWhiteSpace();
  if (!cursor.take("<?")) return {};
  const bool isDeclaration = XmlText::isReservedTarget(cursor.takeUntilAny(" \t\r\n?"));
  const std::string_view content = cursor.takeThrough("?>");
  return isDeclaration ? content : std::string_view();
}

/// For the parser, a "?>" ends the declaration even when it stands in a quoted text.
void checkDeclaration(std::string_view text, const XmlSource::LineTable& lines) {
  Cursor start(text);
  start.take(byteOrderMark);
  Cursor declaration(takeDeclaration(start));
  for (declaration.takeUntilAny(quotes); !declaration.isAtEnd(); declaration.takeUntilAny(quotes))
    if (!declaration.takeQuoted())
      XmlSource::fail("a text in the XML declaration is not closed", lines.find(text.find("<?")));
}

}  // namespace

std::string findEncoding(std::string_view text) {
  Cursor start(text);
  Cursor declaration(takeDeclaration(start));
  while (!declaration.isAtEnd()) {
    declaration.skipWhiteSpace();
    const std::string_view name = declaration.takeUntilAny(" \t\r\n=");
    declaration.takeUntilAny(quotes);
    const std::optional<std::string_view> value = declaration.takeQuoted();
    if (name == "encoding") return std::string(value.value_or(""));
  }
  return {};
}

std::size_t check(const XmlSource::Text& text, const XmlSource::LineTable& lines,
                  const CodePages::CodePage* page) {
  checkDeclaration(text.get(), lines);
  Cursor cursor(text.get());
  // The parser reports whatever is malformed before the document type. Text passes here, since it
  // may be a byte order mark or refer to white space; other text is told when the whole is looked
  // at.
  while (!cursor.take("<!DOCTYPE")) {
    if (cursor.take("<!--"))
      cursor.takeThrough("-->");
    else if (cursor.take("<?"))
      cursor.takeThrough("?>");
    else if (cursor.takeUntilAny("<").empty())
      return 0;
  }
  DocumentType(cursor, lines, page).check();
  return cursor.getPlace();
}

}  // namespace XmlProlog
