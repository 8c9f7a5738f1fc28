#include "xml_inspection.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "xml_handles.h"
#include "xml_parse.h"
#include "xml_text.h"
#include "xml_value.h"
#include "xml_walk.h"

namespace XmlInspection {
namespace {

using KvXmlView::exists;
using XmlSource::LineTable;
using XmlText::greatestDepth;

/// The first attribute name that repeats an earlier one, or null. Sorts, since no choice of names
/// makes that slow. Equal names are sorted by address, which is their order in the text.
const char* findRepeated(std::vector<const char*> names) {
  std::sort(names.begin(), names.end(), [](const char* a, const char* b) {
    const int order = std::strcmp(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  const char* first = nullptr;
  for (std::size_t i = 1; i < names.size(); ++i)
    if (std::strcmp(names[i - 1], names[i]) == 0 && (first == nullptr || names[i] < first))
      first = names[i];
  return first;
}

/// Checks what the parser does not.
class Inspection {
 public:
  Inspection(pugi::xml_document& checked, const char* text, const LineTable& table,
             XmlParse::Parsed& known)
      : document(checked), begin(text), lines(table), parsed(known) {}

  void run(bool isPlain) {
    checkTopLevel();
    for (const pugi::xml_node top : document.children())
      if (!isPlain || top.type() != pugi::node_element)
        walkXml(top, [this](const pugi::xml_node& node, int level) { checkNode(node, level); });
  }

 private:
  [[noreturn]] void failAt(const std::string& reason, const char* place) const {
    XmlSource::fail(reason, lines.find(static_cast<std::size_t>(place - begin)));
  }

  /// White space that is written as a reference is accepted, too.
  static bool isWhiteSpace(const char* text) {
    constexpr std::string_view whiteSpace = " \t\r\n";
    return XmlValue::resolve(text, nullptr).find_first_not_of(whiteSpace) == std::string::npos;
  }

  void checkTopLevel() const {
    const pugi::xml_node root = document.document_element();
    bool isFirst = true;
    bool isDoctypeLate = false;
    for (const pugi::xml_node node : document.children()) {
      const pugi::xml_node_type type = node.type();
      const bool isText =
          type == pugi::node_cdata || (type == pugi::node_pcdata && !isWhiteSpace(node.value()));
      if (isText)
        failAt("text outside the root element",
               node.value() + std::strspn(node.value(), " \t\r\n"));
      if (type == pugi::node_element && node != root)
        failAt("a second root element, <" + std::string(node.name()) + ">", node.name());
      if (type == pugi::node_declaration && !isFirst)
        failAt("the XML declaration must come first", node.name());
      // White space is accepted, as it stands: behind a reference the encoding is not looked for.
      const bool isBlank = type == pugi::node_pcdata && std::strchr(node.value(), '&') == nullptr;
      isFirst = isFirst && isBlank;
      if (type == pugi::node_doctype && isDoctypeLate)
        failAt("one document type declaration may stand before the root element", node.value());
      isDoctypeLate = isDoctypeLate || type == pugi::node_doctype || node == root;
    }
  }

  void checkNode(const pugi::xml_node& node, int level) {
    switch (node.type()) {
      case pugi::node_element:
        if (level > greatestDepth)
          failAt("elements are nested more than " + std::to_string(greatestDepth) + " levels deep",
                 node.name());
        return keepShape(node, checkTag(node));
      case pugi::node_declaration:
        checkTag(node);
        return checkDeclaration(node);
      case pugi::node_comment:
        return checkComment(node);
      case pugi::node_pi:
        return requireName(node.name());
      case pugi::node_pcdata:
        return checkText(node);
      default:
        return;
    }
  }

  void checkDeclaration(const pugi::xml_node& declaration) const {
    for (const pugi::xml_attribute a : declaration.attributes())
      if (std::strchr(a.value(), '&') != nullptr)
        failAt("no reference may stand in the XML declaration", a.name());
  }

  /// Checks names and values in one pass, since nearly all elements have a known shape. Returns the
  /// shape, or null when there are too many shapes.
  KvXmlView::Shape* checkTag(const pugi::xml_node& node) {
    KvXmlView::Shape* shape = parsed.shapes.findEmpty(node.name());
    for (pugi::xml_attribute a = node.first_attribute(); exists(a); a = a.next_attribute()) {
      if (shape != nullptr) shape = shape->follow(a.name());
      checkValue(a);
    }
    return shape != nullptr ? shape : checkNewShape(node);
  }

  KvXmlView::Shape* checkNewShape(const pugi::xml_node& node) {
    std::vector<const char*> attributes;
    requireName(node.name());
    for (const pugi::xml_attribute a : node.attributes()) {
      requireName(a.name());
      attributes.push_back(a.name());
    }
    if (const char* name = findRepeated(attributes))
      failAt("the attribute \"" + std::string(name) + "\" is given twice", name);

    KvXmlView::Shape* shape = parsed.shapes.giveEmpty(node.name());
    for (std::size_t i = 0; i < attributes.size() && shape != nullptr; ++i)
      shape = shape->extend(attributes[i]);
    return shape;
  }

  void keepShape(const pugi::xml_node& element, KvXmlView::Shape* shape) const {
    if (!parsed.mayHoldText)
      XmlParse::setShapeNumber(element.name(), shape != nullptr ? shape->giveNumber() : 0);
  }

  void requireName(const char* name) const {
    if (!XmlText::isName(name, parsed.page)) failAt("this is no XML name", name);
  }

  void checkValue(const pugi::xml_attribute& attribute) const {
    const char* c = attribute.value();
    while (*c != '\0' && *c != '<' && *c != '&') ++c;
    if (*c != '\0') checkMarkup(attribute);
  }

  void checkMarkup(const pugi::xml_attribute& attribute) const {
    if (std::strchr(attribute.value(), '<') != nullptr)
      failAt("'<' in an attribute is written &lt;", attribute.name());
    checkReferences(attribute.value());
  }

  void checkReferences(const char* written) const {
    const std::size_t bad = XmlValue::findBadReference(written);
    if (bad != std::string_view::npos)
      failAt("this '&' starts no reference that can be resolved; '&' itself is written &amp;",
             written + bad);
  }

  void checkText(const pugi::xml_node& text) const {
    checkReferences(text.value());
    if (std::strstr(text.value(), "]]>") != nullptr) escapeSectionEnds(text);
  }

  /// "]]>" is accepted in a text but must not be printed.
  static void escapeSectionEnds(pugi::xml_node text) {
    constexpr std::string_view mark = "]]>";
    std::string written;
    std::string_view rest = text.value();
    for (std::size_t at = rest.find(mark); at != rest.npos; at = rest.find(mark)) {
      written.append(rest.substr(0, at)).append("]]&gt;");
      rest.remove_prefix(at + mark.size());
    }
    written.append(rest);
    if (!text.set_value(written.c_str())) throw std::bad_alloc();
  }

  void checkComment(const pugi::xml_node& comment) const {
    const std::string_view text = comment.value();
    const bool hasDashes = text.find("--") != text.npos || (!text.empty() && text.back() == '-');
    if (hasDashes) failAt("\"--\" must not stand in a comment", comment.value());
  }

  pugi::xml_document& document;
  const char* begin;
  const LineTable& lines;
  XmlParse::Parsed& parsed;
};

}  // namespace

void inspect(pugi::xml_document& document, const char* begin, const LineTable& lines,
             XmlParse::Parsed& parsed, bool isPlain) {
  Inspection(document, begin, lines, parsed).run(isPlain);
}

}  // namespace XmlInspection
