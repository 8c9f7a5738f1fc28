#include "xml_suite/leniency.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <regex>
#include <string_view>

#include "xml_suite/other_parser.h"

namespace XmlSuite {
namespace {

constexpr std::string_view whiteSpace = " \t\r\n";
/// What ends a name in a tag.
constexpr std::string_view stops = " \t\r\n=/<>?\"'";

bool startsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

/// A document type declaration at the start of `text`.
class DocumentType {
 public:
  explicit DocumentType(std::string_view text) : rest(text) {}

  /// The declaration without what stands between its brackets, or nothing when it has no such form.
  /// What a document type declares is not looked into: inside of the brackets each declaration is
  /// passed over, with its quoted texts, as are comments, instructions and references.
  std::string read() {
    const std::string_view all = rest;
    const bool hasHead =
        take("<!DOCTYPE") && takeSpace() && takeName() && takeExternalId() && (takeSpace(), true);
    if (!hasHead) return {};
    const std::string head(all.substr(0, all.size() - rest.size()));
    const bool isWhole = (!take("[") || takeSubset()) && (takeSpace(), take(">"));
    return isWhole ? head + ">" : std::string();
  }

  std::string_view getRest() const { return rest; }

 private:
  bool take(std::string_view mark) {
    if (!startsWith(rest, mark)) return false;
    rest.remove_prefix(mark.size());
    return true;
  }

  bool takeTo(std::string_view mark) {
    const std::size_t place = rest.find(mark);
    if (place == rest.npos) return false;
    rest.remove_prefix(place + mark.size());
    return true;
  }

  bool takeSpace() {
    const std::size_t size = rest.size();
    rest.remove_prefix(std::min(size, rest.find_first_not_of(whiteSpace)));
    return rest.size() < size;
  }

  /// Whether it is an XML name libxml2 tells, since it is kept.
  bool takeName() {
    const std::size_t size = rest.size();
    rest.remove_prefix(std::min(size, rest.find_first_of(" \t\r\n[]<>\"'%&;()#")));
    return rest.size() < size;
  }

  bool takeQuoted() { return take("\"") ? takeTo("\"") : take("'") && takeTo("'"); }

  bool takeExternalId() {
    std::string_view before = rest;
    takeSpace();
    if (take("SYSTEM")) return takeSpace() && takeQuoted();
    if (take("PUBLIC")) return takeSpace() && takeQuoted() && takeSpace() && takeQuoted();
    rest = before;
    return true;
  }

  bool takeSubset() {
    while (!take("]")) {
      const bool isPassed = takeSpace() || (take("<!--") && takeComment()) ||
                            (startsWith(rest, "<?") && takeInstruction()) ||
                            (take("%") && takeName() && take(";")) ||
                            (take("<!") && takeDeclaration());
      if (!isPassed) return false;
    }
    return true;
  }

  bool takeComment() {
    const std::size_t end = rest.find("--");
    if (end == rest.npos) return false;
    rest.remove_prefix(end + 2);
    return take(">");
  }

  bool takeInstruction() {
    const std::string_view before = rest;
    if (!takeTo("?>")) return false;
    // Its target libxml2 judges.
    const std::string instruction(before.substr(0, before.size() - rest.size()));
    return readInfoset("<r/>" + instruction).has_value();
  }

  bool takeDeclaration() {
    const bool isNamed = !rest.empty() && std::isalpha(static_cast<unsigned char>(rest[0])) != 0;
    if (!isNamed) return false;
    while (!take(">")) {
      if (rest.empty() || rest[0] == '<') return false;
      const bool isQuote = rest[0] == '"' || rest[0] == '\'';
      if (isQuote && !takeQuoted()) return false;
      if (!isQuote) rest.remove_prefix(1);
    }
    return true;
  }

  std::string_view rest;
};

/// Walks through a document and makes of it one that is well-formed.
class Mending {
 public:
  Mending(const std::string& mended, EmptyDocument emptyDocument)
      : text(mended), rest(text), empty(emptyDocument) {}

  Mended run() {
    takeStart();
    while (!rest.empty()) takePiece();
    // A text of nothing but comments, instructions and white space is a document without a root.
    if (empty == EmptyDocument::allowed && !hasElement && !hasType) {
      result.text += "<none/>";
      pass("no-root");
    }
    return std::move(result);
  }

 private:
  void pass(const char* leniency) { result.leniencies.insert(leniency); }

  /// White space may stand before a declaration.
  void takeStart() {
    if (startsWith(rest, "\xEF\xBB\xBF")) rest.remove_prefix(3);
    const std::size_t blanks = std::min(rest.size(), rest.find_first_not_of(whiteSpace));
    const std::string declaration = findDeclaration(rest.substr(blanks));
    if (!declaration.empty()) {
      if (blanks > 0) pass("declaration");
      rest.remove_prefix(blanks + declaration.size());
    }
    takeDeclaration(declaration);
  }

  /// A declaration may have other attributes than it should have, in any order, and its name be in
  /// capitals, too. Its values hold neither '<' nor references.
  static std::string findDeclaration(std::string_view start) {
    static const std::regex declaration(
        R"re(<\?[xX][mM][lL](?:[ \t\r\n]+[^-.0-9=<>&"'?/ \t\r\n][^=<>&"'?/ \t\r\n]*[ \t\r\n]*=[ \t\r\n]*(?:"[^"<&]*"|'[^'<&]*'))*[ \t\r\n]*\?>)re");
    std::match_results<std::string_view::const_iterator> match;
    const bool isFound =
        startsWith(start, "<?") && std::regex_search(start.begin(), start.end(), match, declaration,
                                                     std::regex_constants::match_continuous);
    return isFound ? match.str() : std::string();
  }

  void takeDeclaration(const std::string& declaration) {
    chosen = chooseEncoding(findValue(declaration, "encoding"));
    const std::string standalone = findValue(declaration, "standalone").value_or("");
    const bool hasStandalone = standalone == "yes" || standalone == "no";
    result.text = "<?xml version=\"1.0\" encoding=\"" + chosen + "\"" +
                  (hasStandalone ? " standalone=\"" + standalone + "\"" : "") + "?>";
    start = result.text;
    static const std::regex anyEncoding(
        "([ \\t\\r\\n]encoding[ \\t\\r\\n]*=[ \\t\\r\\n]*)(?:\"[^\"]*\"|'[^']*')");
    const std::string inUtf8 = std::regex_replace(declaration, anyEncoding, "$1'UTF-8'");
    if (!readInfoset(inUtf8 + "<r/>")) pass("declaration");
  }

  static std::optional<std::string> findValue(const std::string& declaration,
                                              const std::string& name) {
    if (declaration.empty()) return std::nullopt;
    // One after the other, since a value may look like an attribute.
    static const std::regex attribute(
        R"re([ \t\r\n]([^=<>&"'?/ \t\r\n]+)[ \t\r\n]*=[ \t\r\n]*(?:"([^"]*)"|'([^']*)'))re");
    const std::sregex_iterator end;
    for (std::sregex_iterator it(declaration.begin(), declaration.end(), attribute); it != end;
         ++it)
      if ((*it)[1] == name) return (*it)[2].matched ? it->str(2) : it->str(3);
    return std::nullopt;
  }

  /// An encoding may be declared that nobody knows, or none, or one that the bytes belie: then they
  /// are taken for UTF-8 when they are that, else for the usual code page.
  std::string chooseEncoding(const std::optional<std::string>& declared) {
    if (declared && isReadableAs(*declared)) return *declared;
    const bool isUtf8 = isReadableAs("UTF-8");
    isGuessed = true;
    if (declared || !isUtf8) pass("encoding");
    if (isUtf8) return "UTF-8";
    return isReadableAs("windows-1252") ? "windows-1252" : "ISO-8859-1";
  }

  /// True when the bytes beyond ASCII behind the declaration are such in this encoding, by libxml2.
  bool isReadableAs(const std::string& encoding) const {
    std::string bytes(rest);
    for (char& c : bytes)
      if ((c & 0x80) == 0) c = ' ';
    return readInfoset("<?xml version='1.0' encoding='" + encoding + "'?><r>" + bytes + "</r>")
        .has_value();
  }

  void takePiece() {
    if (startsWith(rest, "<!--")) return copyTo("-->", 4);
    if (startsWith(rest, "<?")) return takeInstruction();
    if (startsWith(rest, "<![CDATA[")) return copyTo("]]>", 9);
    if (startsWith(rest, "<!DOCTYPE")) return takeType();
    if (rest[0] == '<') return takeTag();
    takeText();
  }

  void copy(std::size_t size) {
    result.text += rest.substr(0, size);
    rest.remove_prefix(std::min(size, rest.size()));
  }

  void copyTo(std::string_view mark, std::size_t from) {
    const std::size_t place = rest.find(mark, from);
    copy(place != rest.npos ? place + mark.size() : rest.size());
  }

  /// A name may be in UTF-8 although the document is not, or in the usual code page where no
  /// encoding tells its own, and has then its bytes beyond ASCII spelt in ASCII. Other names stay
  /// as they are.
  std::string mendName(std::string_view written) {
    std::string name(written);
    const bool isAscii =
        std::all_of(name.begin(), name.end(), [](char c) { return (c & 0x80) == 0; });
    const auto isNameIn = [&](const std::string& encoding) {
      return readInfoset("<?xml version='1.0' encoding='" + encoding + "'?><" + name + "/>")
          .has_value();
    };
    if (isAscii || isNameIn(chosen)) return name;
    if (!isNameIn("UTF-8") && !(isGuessed && isNameIn("windows-1252"))) return name;
    pass("name");
    std::string spelt;
    for (const char c : name)
      spelt += (c & 0x80) == 0 ? std::string(1, c) : "_" + std::to_string(c & 0xFF);
    return spelt;
  }

  /// Markup in which names, and quoted texts, may stand.
  std::string mendNames(std::string_view markup) {
    std::string mended;
    while (!markup.empty()) {
      const bool isQuote = markup[0] == '"' || markup[0] == '\'';
      const std::size_t end = isQuote ? markup.find(markup[0], 1) : markup.find_first_of(stops);
      const std::size_t size =
          isQuote && end != markup.npos ? end + 1 : std::max<std::size_t>(end, 1);
      const std::string_view piece = markup.substr(0, size);
      mended += isQuote ? std::string(piece) : mendName(piece);
      markup.remove_prefix(piece.size());
    }
    return mended;
  }

  void takeInstruction() {
    rest.remove_prefix(2);
    const std::string_view target = rest.substr(0, rest.find_first_of(stops));
    result.text += "<?" + mendName(target);
    rest.remove_prefix(target.size());
    copyTo("?>", 0);
  }

  void takeType() {
    hasType = true;
    DocumentType type(rest);
    const std::string bare = type.read();
    if (bare.empty()) return copy(1);
    const std::string whole(rest.substr(0, rest.size() - type.getRest().size()));
    if (readInfoset(start + whole + "<r/>")) return copy(whole.size());
    if (bare != whole) pass("document-type");
    result.text += mendNames(bare);
    rest = type.getRest();
  }

  void takeTag() {
    hasElement = true;
    char quote = '\0';
    std::size_t end = 1;
    while (end < rest.size() && (quote != '\0' || rest[end] != '>')) {
      const char c = rest[end++];
      if (quote == c)
        quote = '\0';
      else if (quote == '\0' && (c == '"' || c == '\''))
        quote = c;
    }
    if (startsWith(rest, "</"))
      --depth;
    else if (rest[end - 1] != '/')
      ++depth;
    result.text += mendNames(rest.substr(0, end + 1));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }

  void takeText() {
    const std::string piece(rest.substr(0, rest.find('<')));
    rest.remove_prefix(piece.size());
    // The end of a CDATA section may stand in a text, and references to white space outside the
    // root.
    static const std::regex sectionEnd("\\]\\]>");
    static const std::regex blank("&#(?:0*(?:9|10|13|32)|x0*(?:9|[aA]|[dD]|20));");
    const bool isInside = depth > 0;
    const std::string mended = isInside ? std::regex_replace(piece, sectionEnd, "]]&gt;")
                                        : std::regex_replace(piece, blank, " ");
    if (mended != piece) pass(isInside ? "section-end" : "reference-outside");
    result.text += mended;
  }

  const std::string& text;
  std::string_view rest;
  EmptyDocument empty;
  Mended result;
  std::string start;       // the declaration that the result has
  std::string chosen;      // encoding
  bool isGuessed = false;  // what is chosen
  int depth = 0;
  bool hasElement = false;
  bool hasType = false;
};

}  // namespace

Mended makeWellFormed(const std::string& text, EmptyDocument empty) {
  return Mending(text, empty).run();
}

}  // namespace XmlSuite
