#include "xml_print.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "code_pages.h"
#include "xml_text.h"
#include "xml_walk.h"
#include "xml_white_space.h"

namespace XmlPrint {
namespace {

/// Collects what is printed and writes it in large pieces. Output is unformatted: the width and the
/// fill character of the stream have no effect.
class Output {
 public:
  explicit Output(std::ostream& stream) : out(stream) {}

  Output& operator<<(std::string_view more) {
    while (more.size() > piece - used) {
      const std::size_t fitting = piece - used;
      add(more.substr(0, fitting));
      more.remove_prefix(fitting);
      flush();
    }
    add(more);
    return *this;
  }

  Output& operator<<(char c) { return *this << std::string_view(&c, 1); }

  void flush() {
    out.write(text.get(), static_cast<std::streamsize>(used));
    used = 0;
  }

 private:
  static constexpr std::size_t piece = 32768;

  void add(std::string_view more) {
    std::memcpy(text.get() + used, more.data(), more.size());
    used += more.size();
  }

  std::ostream& out;
  std::unique_ptr<char[]> text{new char[piece]};
  std::size_t used = 0;
};

/// Prints a top-level node and everything below it. An element that holds text keeps its white
/// space, and so does everything below it; the children of other elements get a line each.
class Printer {
 public:
  Printer(const XmlParse::Parsed& parsedDocument, Output& output)
      : parsed(parsedDocument), out(output) {}

  /// Not recursive, so deep documents need no deep stack.
  void print(const pugi::xml_node& top) {
    pugi::xml_node node = top;
    for (level = 0; node; node = follow(node, top)) {
      const bool isOmitted = !kept && XmlWhiteSpace::isWhiteSpace(node);
      if (!isOmitted) printStart(node);
    }
    out << '\n';
  }

 private:
  /// The next node in document order. Prints the end tags of the elements that it leaves.
  pugi::xml_node follow(pugi::xml_node node, const pugi::xml_node& top) {
    if (node.first_child()) {
      if (!kept && keepsWhiteSpace(node)) kept = node;
      ++level;
      return node.first_child();
    }
    while (node != top && !node.next_sibling()) {
      node = node.parent();
      --level;
      printEnd(node);
    }
    return node != top ? node.next_sibling() : pugi::xml_node();
  }

  bool keepsWhiteSpace(const pugi::xml_node& element) const {
    return XmlWhiteSpace::isTextAlone(element) ||
           (parsed.mayHoldText && XmlWhiteSpace::isKeptIn(element));
  }

  void startLine() {
    if (kept) return;
    out << '\n';
    for (int i = 0; i < std::min(level, deepestIndent); ++i) out << "  ";
  }

  void printStart(const pugi::xml_node& node) {
    if (level > 0) startLine();
    switch (node.type()) {
      case pugi::node_element:
        return printTag(node);
      case pugi::node_comment:
        return void(out << "<!--" << node.value() << "-->");
      case pugi::node_cdata:
        return void(out << "<![CDATA[" << node.value() << "]]>");
      case pugi::node_pi:
        out << "<?" << node.name();
        if (*node.value() != '\0') out << ' ' << node.value();
        return void(out << "?>");
      case pugi::node_doctype:
        return void(out << "<!DOCTYPE " << node.value() << '>');
      default:
        return void(out << node.value());
    }
  }

  void printTag(const pugi::xml_node& element) {
    out << '<' << element.name();
    for (pugi::xml_attribute a = element.first_attribute(); a; a = a.next_attribute()) {
      const char quote = XmlParse::findQuote(a, parsed.origin);
      out << ' ' << a.name() << '=' << quote << a.value() << quote;
    }
    out << (element.first_child() ? ">" : " />");
  }

  void printEnd(const pugi::xml_node& element) {
    startLine();
    if (kept == element) kept = pugi::xml_node();
    out << "</" << element.name() << '>';
  }

  // With deeper indentation, a deep document would mostly consist of blanks.
  static constexpr int deepestIndent = 50;

  const XmlParse::Parsed& parsed;
  Output& out;
  int level = 0;
  pugi::xml_node kept;  // the outermost element that holds text, while in it
};

/// The top-level nodes to print; text among them is white space.
std::vector<pugi::xml_node> listNodes(const pugi::xml_document& document,
                                      const pugi::xml_node& hidden) {
  std::vector<pugi::xml_node> nodes;
  for (const pugi::xml_node node : document.children()) {
    const bool isOmitted =
        node.type() == pugi::node_declaration || node.type() == pugi::node_pcdata;
    if (!isOmitted && node != hidden) nodes.push_back(node);
  }
  return nodes;
}

/// An encoding in which all bytes of the document are valid.
std::string chooseEncoding(const std::vector<pugi::xml_node>& nodes,
                           const XmlParse::Parsed& parsed) {
  if (CodePages::isOtherThanUtf8(parsed.encoding)) return parsed.encoding;
  XmlText::EncodingChoice choice;
  if (parsed.isAscii) return choice.get();
  const auto addNode = [&choice](const pugi::xml_node& node, int /*level*/) {
    choice.addName(node.name());
    choice.add(node.value());
    for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
      choice.addName(a.name());
      choice.add(a.value());
    }
  };
  for (const pugi::xml_node& node : nodes) walkXml(node, addNode);
  return choice.get();
}

/// Keeps version and standalone of the parsed declaration when they are valid.
std::string makeDeclaration(const pugi::xml_document& document, const std::string& encoding) {
  const pugi::xml_node declared = document.find_child(
      [](const pugi::xml_node& node) { return node.type() == pugi::node_declaration; });
  const std::string version = declared.attribute("version").value();
  const std::string standalone = declared.attribute("standalone").value();
  std::string text = "<?xml version=\"";
  text += version == "1.1" ? version : "1.0";
  text += "\" encoding=\"" + encoding + "\"";
  if (standalone == "yes" || standalone == "no") text += " standalone=\"" + standalone + "\"";
  return text + "?>\n";
}

}  // namespace

void print(const pugi::xml_document& document, const pugi::xml_node& hidden,
           const XmlParse::Parsed& parsed, std::ostream& out) {
  const std::vector<pugi::xml_node> nodes = listNodes(document, hidden);
  Output output(out);
  output << makeDeclaration(document, chooseEncoding(nodes, parsed));
  Printer printer(parsed, output);
  for (const pugi::xml_node& node : nodes) printer.print(node);
  output.flush();
}

}  // namespace XmlPrint
