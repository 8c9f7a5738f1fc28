#include "xml_inspection.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "xml_text.h"
#include "xml_walk.h"

namespace XmlInspection {
namespace {

using XmlSource::fail;
using XmlSource::LineTable;
using XmlSource::Position;

constexpr int greatestDepth = 1000;  // levels of elements, the root being the first

constexpr const char* whiteSpace = " \t\r\n";

bool isWhiteSpace(const char* text) { return text[std::strspn(text, whiteSpace)] == '\0'; }

/// Looks for names that are none and attributes that are given twice. Most elements have the same
/// names as one of a few before, and then nothing is left to look at.
class NameCheck {
 public:
  bool isKnown(const pugi::xml_node& element) const {
    return std::any_of(shapes.begin(), shapes.end(),
                       [&element](const Shape& shape) { return isLike(element, shape); });
  }

  /// The first name of the element and its attributes that is no XML name, or null.
  static const char* findInvalid(const pugi::xml_node& element) {
    if (!XmlText::isName(element.name())) return element.name();
    for (const pugi::xml_attribute a : element.attributes())
      if (!XmlText::isName(a.name())) return a.name();
    return nullptr;
  }

  /// The name of the first attribute that repeats an earlier one, or null; the element is known
  /// then.
  const char* findRepeated(const pugi::xml_node& element) {
    Shape shape{element.name(), {}};
    std::unordered_set<std::string_view> names;
    for (const pugi::xml_attribute a : element.attributes()) {
      if (!names.insert(a.name()).second) return a.name();
      shape.attributes.push_back(a.name());
    }
    remember(std::move(shape));
    return nullptr;
  }

 private:
  struct Shape {
    const char* element;
    std::vector<const char*> attributes;
  };

  static bool isLike(const pugi::xml_node& element, const Shape& shape) {
    if (std::strcmp(element.name(), shape.element) != 0) return false;
    pugi::xml_attribute a = element.first_attribute();
    for (const char* name : shape.attributes) {
      if (std::strcmp(a.name(), name) != 0) return false;  // that of no attribute is empty
      a = a.next_attribute();
    }
    return !a;
  }

  void remember(Shape shape) {
    constexpr std::size_t most = 8;
    if (shapes.size() < most)
      shapes.push_back(std::move(shape));
    else
      shapes[oldest++ % most] = std::move(shape);
  }

  std::vector<Shape> shapes;
  std::size_t oldest = 0;
};

/// Checks what the parser lets pass.
class Inspection {
 public:
  Inspection(const pugi::xml_document& checked, const char* text, const LineTable& table,
             const XmlRawCheck::MarkupCounts& counted)
      : document(checked), begin(text), lines(table), counts(counted) {}

  void run() {
    checkTopLevel();
    for (const pugi::xml_node top : document.children())
      walkXml(top, [this](const pugi::xml_node& node, int level) { checkNode(node, level); });
    // Each element has one plain '<' and one end, all other markup one plain '<'. Any more stand
    // where there should be text only, or in comments and the like, where they do no harm.
    const bool hasOthers = counts.plain > elements + otherMarkup || counts.ends > elements;
    if (hasOthers) checkLessThans();
  }

 private:
  [[noreturn]] void failAt(const std::string& reason, const char* place) const {
    fail(reason, lines.find(static_cast<std::size_t>(place - begin)));
  }

  /// Where a text starts behind its white space. The parser made one character of each line end,
  /// also where it was two.
  Position findText(const char* text) const {
    auto place = static_cast<std::size_t>(text - begin);
    for (const char c : std::string_view(text, std::strspn(text, whiteSpace))) {
      const bool wasPair = c == '\n' && !lines.hasEndAt(place) && lines.hasEndAt(place + 1);
      place += wasPair ? 2 : 1;
    }
    return lines.find(place);
  }

  void checkTopLevel() const {
    const pugi::xml_node root = document.document_element();
    bool isDoctypeLate = false;
    for (const pugi::xml_node node : document.children()) {
      const pugi::xml_node_type type = node.type();
      const bool isText =
          type == pugi::node_cdata || (type == pugi::node_pcdata && !isWhiteSpace(node.value()));
      if (isText) fail("text outside the root element", findText(node.value()));
      if (type == pugi::node_element && node != root)
        failAt("a second root element, <" + std::string(node.name()) + ">", node.name());
      if (type == pugi::node_declaration && node.previous_sibling())
        failAt("the XML declaration must come first", node.name());
      if (type == pugi::node_doctype && isDoctypeLate)
        failAt("one document type declaration may stand before the root element", node.value());
      isDoctypeLate = isDoctypeLate || type == pugi::node_doctype || node == root;
    }
  }

  void checkNode(const pugi::xml_node& node, int level) {
    const pugi::xml_node_type type = node.type();
    if (type == pugi::node_element)
      ++elements;
    else if (type != pugi::node_pcdata)
      ++otherMarkup;

    switch (type) {
      case pugi::node_element:
        if (level > greatestDepth)
          failAt("elements are nested more than " + std::to_string(greatestDepth) + " levels deep",
                 node.name());
        return checkNames(node);
      case pugi::node_declaration:
        return checkNames(node);
      case pugi::node_comment:
        return checkComment(node);
      case pugi::node_pi:
        if (!XmlText::isName(node.name())) failAt("this is no XML name", node.name());
        return unifyLineEnds(node);
      case pugi::node_doctype:
        if (std::strcspn(node.value(), " \t\r\n[>") == 0)
          failAt("this document type declaration has no name", node.value());
        return unifyLineEnds(node);
      default:
        return;
    }
  }

  void checkNames(const pugi::xml_node& node) {
    if (names.isKnown(node)) return;
    if (const char* name = NameCheck::findInvalid(node)) failAt("this is no XML name", name);
    if (const char* name = names.findRepeated(node))
      failAt("the attribute \"" + std::string(name) + "\" is given twice", name);
  }

  /// Of all '<' that attributes and text hold, no more must be in the attributes than came from
  /// references.
  void checkLessThans() const {
    std::size_t found = 0;
    const char* first = nullptr;  // in an attribute
    const auto count = [&](const pugi::xml_node& node, int /*level*/) {
      if (node.type() == pugi::node_pcdata) found += countLessThans(node.value());
      for (const pugi::xml_attribute a : node.attributes()) {
        const std::size_t before = found;
        found += countLessThans(a.value());
        if (found > before && first == nullptr) first = a.value();
      }
    };
    for (const pugi::xml_node top : document.children()) walkXml(top, count);
    if (found > counts.references && first != nullptr)
      failAt("'<' in an attribute is written &lt;; here or further on it is not", first);
  }

  static std::size_t countLessThans(const char* text) {
    const std::string_view all = text;
    return static_cast<std::size_t>(std::count(all.begin(), all.end(), '<'));
  }

  void checkComment(const pugi::xml_node& comment) const {
    const std::string_view text = comment.value();
    const bool hasDashes = text.find("--") != text.npos || (!text.empty() && text.back() == '-');
    if (hasDashes) failAt("\"--\" must not stand in a comment", comment.value());
  }

  /// The parser does so everywhere else.
  static void unifyLineEnds(pugi::xml_node node) {
    const std::string_view text = node.value();
    if (text.find('\r') == text.npos) return;
    std::string unified;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
      if (!isPair) unified += text[i] == '\r' ? '\n' : text[i];
    }
    if (!node.set_value(unified.c_str())) throw std::bad_alloc();
  }

  const pugi::xml_document& document;
  const char* begin;
  const LineTable& lines;
  NameCheck names;
  XmlRawCheck::MarkupCounts counts;
  std::size_t elements = 0;
  std::size_t otherMarkup = 0;
};

}  // namespace

void inspect(const pugi::xml_document& document, const char* begin, const LineTable& lines,
             const XmlRawCheck::MarkupCounts& counts) {
  Inspection(document, begin, lines, counts).run();
}

}  // namespace XmlInspection
