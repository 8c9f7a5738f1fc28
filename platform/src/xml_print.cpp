#include "xml_print.h"

#include <ostream>
#include <string>

#include "xml_text.h"

namespace XmlPrint {
namespace {

struct StringWriter : pugi::xml_writer {
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

/// Version and standalone are kept of the declaration that was parsed.
std::string makeDeclaration(const pugi::xml_node& parsed, const char* encoding) {
  const auto attribute = [](const char* name, const std::string& value) {
    return value.empty() ? std::string() : " " + std::string(name) + "=\"" + value + "\"";
  };
  return "<?xml" + attribute("version", parsed.attribute("version").as_string("1.0")) +
         attribute("encoding", encoding) +
         attribute("standalone", parsed.attribute("standalone").value()) + "?>\n";
}

}  // namespace

void print(const pugi::xml_document& document, const pugi::xml_node& hidden, std::ostream& out) {
  pugi::xml_node declaration;
  StringWriter body;
  for (pugi::xml_node node : document.children()) {
    if (node.type() == pugi::node_declaration)
      declaration = node;
    else if (node != hidden)
      node.print(body, "  ", pugi::format_indent, pugi::encoding_utf8);
  }
  out << makeDeclaration(declaration, XmlText::chooseEncoding(body.text)) << body.text;
}

}  // namespace XmlPrint
