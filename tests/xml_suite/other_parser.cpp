#include "xml_suite/other_parser.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>

#include "xml_suite/items.h"

namespace XmlSuite {
namespace {

struct FreeContext {
  void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
};
struct FreeDocument {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
struct FreeText {
  void operator()(xmlChar* text) const { xmlFree(text); }
};
struct FreeBuffer {
  void operator()(xmlBuffer* buffer) const { xmlBufferFree(buffer); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

std::string toText(const xmlChar* text) {
  return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

xmlParserInputPtr loadNothing(const char*, const char*, xmlParserCtxtPtr) { return nullptr; }
void sayNothing(void*, const char*, ...) {}

Document parse(const std::string& text) {
  static const bool isSetUp = [] {
    xmlInitParser();
    xmlSetExternalEntityLoader(loadNothing);
    xmlSetGenericErrorFunc(nullptr, sayNothing);
    return true;
  }();
  static_cast<void>(isSetUp);
  // Without entities a document cannot grow, so depth and size need no limit.
  const int hugeWhereSafe = text.find("<!ENTITY") == std::string::npos ? XML_PARSE_HUGE : 0;
  const std::unique_ptr<xmlParserCtxt, FreeContext> context(xmlNewParserCtxt());
  return Document(
      xmlCtxtReadMemory(context.get(), text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                        XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | hugeWhereSafe));
}

std::string nameOf(const xmlChar* name, const xmlNs* space) {
  const bool hasPrefix = space != nullptr && space->prefix != nullptr;
  return hasPrefix ? toText(space->prefix) + ":" + toText(name) : toText(name);
}

std::string valueOf(xmlAttr* attribute) {
  const std::unique_ptr<xmlChar, FreeText> value(
      xmlNodeListGetString(attribute->doc, attribute->children, 1));
  return toText(value.get());
}

void addAttributes(std::string& all, const xmlNode& element) {
  for (xmlAttr* a = element.properties; a != nullptr; a = a->next)
    addItem(all, '@', nameOf(a->name, a->ns) + "=" + valueOf(a));
}

void addNamespaces(std::string& all, const xmlNode& element) {
  for (const xmlNs* space = element.nsDef; space != nullptr; space = space->next)
    addItem(all, '#', toText(space->prefix) + "=" + toText(space->href));
}

/// Its declarations but notations, which libxml2 does not keep in order.
void addDocumentType(std::string& all, xmlDoc* document, const xmlDtd& type) {
  addItem(all, '!', toText(type.name));
  addItem(all, '!', toText(type.ExternalID));
  addItem(all, '!', toText(type.SystemID));
  for (xmlNode* node = type.children; node != nullptr; node = node->next) {
    const std::unique_ptr<xmlBuffer, FreeBuffer> buffer(xmlBufferCreate());
    xmlNodeDump(buffer.get(), document, node, 0, 0);
    addItem(all, '!', toText(xmlBufferContent(buffer.get())));
  }
}

bool isText(const xmlNode& node) {
  return node.type == XML_TEXT_NODE || node.type == XML_CDATA_SECTION_NODE;
}

bool isBlank(const xmlNode& node) {
  return node.type == XML_TEXT_NODE &&
         toText(node.content).find_first_not_of(" \t\r\n") == std::string::npos;
}

/// White space counts where an element holds nothing else, or text as well.
bool doesBlankCount(const xmlNode& parent) {
  bool isOnlyBlank = true;
  for (const xmlNode* node = parent.children; node != nullptr; node = node->next) {
    if (isText(*node) && !isBlank(*node)) return true;
    if (node->type == XML_ENTITY_REF_NODE) return true;
    isOnlyBlank = isOnlyBlank && isBlank(*node);
  }
  return isOnlyBlank;
}

void addNode(std::string& all, xmlDoc* document, xmlNode* node);

void addChildren(std::string& all, xmlDoc* document, const xmlNode& parent) {
  const bool isBlankKept = doesBlankCount(parent);
  std::string text;
  const auto addText = [&] {
    if (!text.empty()) addItem(all, '"', text);
    text.clear();
  };
  for (xmlNode* node = parent.children; node != nullptr; node = node->next) {
    if (isText(*node)) {
      if (isBlankKept || !isBlank(*node)) text += toText(node->content);
      continue;
    }
    addText();
    addNode(all, document, node);
  }
  addText();
}

void addNode(std::string& all, xmlDoc* document, xmlNode* node) {
  switch (node->type) {
    case XML_ELEMENT_NODE:
      addItem(all, '<', nameOf(node->name, node->ns));
      addNamespaces(all, *node);
      addAttributes(all, *node);
      addChildren(all, document, *node);
      return addItem(all, '>', "");
    case XML_COMMENT_NODE:
      return addItem(all, '-', toText(node->content));
    case XML_PI_NODE:
      return addItem(all, '?', toText(node->name) + " " + toText(node->content));
    case XML_DTD_NODE:
      return addDocumentType(all, document, *reinterpret_cast<xmlDtd*>(node));
    default:
      return addItem(all, '&', toText(node->name));
  }
}

void addElements(std::string& all, const xmlNode& node) {
  if (node.type != XML_ELEMENT_NODE) return;
  addItem(all, '<', nameOf(node.name, node.ns));
  addAttributes(all, node);
  for (const xmlNode* child = node.children; child != nullptr; child = child->next)
    addElements(all, *child);
  addItem(all, '>', "");
}

}  // namespace

std::optional<Infoset> readInfoset(const std::string& text) {
  const Document document = parse(text);
  if (document == nullptr) return std::nullopt;
  Infoset all;
  if (document->standalone == 1) addItem(all, '!', "standalone");
  for (xmlNode* node = document->children; node != nullptr; node = node->next)
    addNode(all, document.get(), node);
  return all;
}

std::optional<std::string> readElements(const std::string& text) {
  const Document document = parse(text);
  if (document == nullptr) return std::nullopt;
  const bool isUtf8 = document->encoding == nullptr || toText(document->encoding) == "UTF-8";
  if (!isUtf8) return std::nullopt;
  std::string all;
  addElements(all, *xmlDocGetRootElement(document.get()));
  return all;
}

}  // namespace XmlSuite
