#include "xml_print.h"

#include <ostream>
#include <string>
#include <vector>

#include "xml_text.h"
#include "xml_walk.h"

namespace XmlPrint {
namespace {

/// The top-level nodes to print.
std::vector<pugi::xml_node> listNodes(const pugi::xml_document& document,
                                      const pugi::xml_node& hidden) {
  std::vector<pugi::xml_node> nodes;
  for (const pugi::xml_node node : document.children())
    if (node.type() != pugi::node_declaration && node != hidden) nodes.push_back(node);
  return nodes;
}

const char* chooseEncoding(const std::vector<pugi::xml_node>& nodes) {
  XmlText::EncodingChoice choice;
  const auto add = [&choice](const pugi::xml_node& node, int /*level*/) {
    choice.add(node.name());
    choice.add(node.value());
    for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
      choice.add(a.name());
      choice.add(a.value());
    }
  };
  for (const pugi::xml_node& node : nodes) walkXml(node, add);
  return choice.get();
}

/// Version and standalone are kept of the declaration that was parsed.
std::string makeDeclaration(const pugi::xml_node& parsed, const char* encoding) {
  const auto attribute = [](const char* name, const std::string& value) {
    return value.empty() ? std::string() : " " + std::string(name) + "=\"" + value + "\"";
  };
  return "<?xml" + attribute("version", parsed.attribute("version").as_string("1.0")) +
         attribute("encoding", encoding) +
         attribute("standalone", parsed.attribute("standalone").value()) + "?>\n";
}

pugi::xml_node findDeclaration(const pugi::xml_document& document) {
  for (pugi::xml_node node : document.children())
    if (node.type() == pugi::node_declaration) return node;
  return {};
}

}  // namespace

void print(const pugi::xml_document& document, const pugi::xml_node& hidden, std::ostream& out) {
  const std::vector<pugi::xml_node> nodes = listNodes(document, hidden);
  out << makeDeclaration(findDeclaration(document), chooseEncoding(nodes));
  pugi::xml_writer_stream writer(out);
  for (const pugi::xml_node& node : nodes)
    node.print(writer, "  ", pugi::format_indent, pugi::encoding_utf8);
}

}  // namespace XmlPrint
