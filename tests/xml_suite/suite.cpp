#include "xml_suite/suite.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>
#include <stdexcept>

namespace XmlSuite {
namespace {

std::string valueOf(xmlNode* element, const char* name) {
  const std::unique_ptr<xmlChar, void (*)(void*)> value(xmlGetProp(element, BAD_CAST name),
                                                        [](void* text) { xmlFree(text); });
  return value != nullptr ? reinterpret_cast<const char*>(value.get()) : "";
}

/// "error" stands for what a parser may take or not. Cases of earlier editions only are about names
/// that the fifth allows, by which libxml2 goes too.
Expectation expectationOf(const std::string& type, const std::string& editions) {
  if (!editions.empty() && editions.find('5') == std::string::npos) return Expectation::either;
  if (type == "valid" || type == "invalid") return Expectation::accepted;
  return type == "not-wf" ? Expectation::refused : Expectation::either;
}

/// The files of a collection lie where "base" says, below that of the collection around it.
void collect(xmlNode* element, const std::filesystem::path& folder, std::vector<Case>& cases) {
  for (xmlNode* child = xmlFirstElementChild(element); child != nullptr;
       child = xmlNextElementSibling(child)) {
    if (xmlStrEqual(child->name, BAD_CAST "TEST") != 0)
      cases.push_back({valueOf(child, "ID"), folder / valueOf(child, "URI"),
                       expectationOf(valueOf(child, "TYPE"), valueOf(child, "EDITION"))});
    else
      collect(child, folder / valueOf(child, "base"), cases);
  }
}

}  // namespace

std::vector<Case> readCases(const std::filesystem::path& folder) {
  const std::filesystem::path index = folder / "cleaned" / "xmlconf-flattened.xml";
  const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(
      xmlReadFile(index.c_str(), nullptr, XML_PARSE_NONET), xmlFreeDoc);
  if (document == nullptr) throw std::runtime_error(index.string() + " cannot be read");
  std::vector<Case> cases;
  collect(xmlDocGetRootElement(document.get()), folder / "xmlconf", cases);
  return cases;
}

}  // namespace XmlSuite
