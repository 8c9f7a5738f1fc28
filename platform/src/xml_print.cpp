#include "xml_print.h"

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "xml_text.h"
#include "xml_walk.h"

namespace XmlPrint {
namespace {

/// Passes the text on. A carriage return can only stand in it where it was given as a reference; as
/// a plain character it would read back as a line end.
class Writer : public pugi::xml_writer {
 public:
  explicit Writer(std::ostream& stream) : out(stream) {}

  void write(const void* data, std::size_t size) override {
    std::string_view text(static_cast<const char*>(data), size);
    for (std::size_t at = text.find('\r'); at != text.npos; at = text.find('\r')) {
      put(text.substr(0, at));
      put("&#13;");
      text.remove_prefix(at + 1);
    }
    put(text);
  }

  /// Unformatted: neither the width nor the fill character of the stream must show.
  void put(std::string_view text) {
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
  }

 private:
  std::ostream& out;
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

const char* chooseEncoding(const std::vector<pugi::xml_node>& nodes) {
  XmlText::EncodingChoice choice;
  const auto add = [&choice](const char* text) {
    // Nearly all texts are short and plain: one look at each character tells.
    const char* c = text;
    while (*c != '\0' && (*c & 0x80) == 0) ++c;
    if (*c != '\0') choice.add(text);
  };
  const auto addNode = [&add](const pugi::xml_node& node, int /*level*/) {
    add(node.name());
    add(node.value());
    for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
      add(a.name());
      add(a.value());
    }
  };
  for (const pugi::xml_node& node : nodes) walkXml(node, addNode);
  return choice.get();
}

/// Version and standalone are kept of the declaration that was parsed, where they are valid.
std::string makeDeclaration(const pugi::xml_document& document, const char* encoding) {
  pugi::xml_node parsed = document.first_child();
  if (parsed.type() != pugi::node_declaration) parsed = pugi::xml_node();
  const std::string version = parsed.attribute("version").value();
  const std::string standalone = parsed.attribute("standalone").value();
  std::string text = "<?xml version=\"";
  text += version == "1.1" ? version : "1.0";
  text += "\" encoding=\"" + std::string(encoding) + "\"";
  if (standalone == "yes" || standalone == "no") text += " standalone=\"" + standalone + "\"";
  return text + "?>\n";
}

}  // namespace

void print(const pugi::xml_document& document, const pugi::xml_node& hidden,
           XmlParse::Layout layout, std::ostream& out) {
  const std::vector<pugi::xml_node> nodes = listNodes(document, hidden);
  const bool isFree = layout == XmlParse::Layout::free;
  Writer writer(out);
  writer.put(makeDeclaration(document, chooseEncoding(nodes)));
  for (const pugi::xml_node& node : nodes) {
    node.print(writer, "  ", isFree ? pugi::format_indent : pugi::format_raw, pugi::encoding_utf8);
    if (!isFree) writer.put("\n");
  }
}

}  // namespace XmlPrint
