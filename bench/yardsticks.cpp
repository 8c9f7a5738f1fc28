#include "yardsticks.h"

#include <charconv>
#include <cstring>
#include <string_view>

#include <fast_float/fast_float.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <pugixml.hpp>

#include "found/foundation.h"

namespace Yardsticks {

const std::vector<const char*> legacyAttributes = {
    "NUMBER",  "FXAREA",  "FYAREA",      "FZAREA",    "FXLINE",    "FYLINE",
    "FZLINE",  "FXX",     "FAILZAREA",   "FAILXLINE", "FAILYLINE", "FAILZLINE",
    "FACAREA", "FACLINE", "IsGenerated", "NAME"};
const std::vector<const char*> exchangeAttributes = {"Number",
                                                     "Name",
                                                     "StiffnessX",
                                                     "StiffnessY",
                                                     "StiffnessZ",
                                                     "StiffnessXX",
                                                     "StiffnessYFailure",
                                                     "StiffnessZFailure",
                                                     "TangentialStiffnessXFactor"};
const std::vector<const char*> firstExchangeAttributes = {"Name",
                                                          "SurfaceStiffnessX",
                                                          "SurfaceStiffnessY",
                                                          "SurfaceStiffnessZ",
                                                          "SurfaceStiffnessZFailure",
                                                          "TangentialSurfaceStiffnessXYFactor",
                                                          "CurveStiffnessX",
                                                          "CurveStiffnessY",
                                                          "CurveStiffnessZ",
                                                          "CurveStiffnessXX",
                                                          "CurveStiffnessYFailure",
                                                          "CurveStiffnessZFailure",
                                                          "TangentialCurveStiffnessX"};

namespace {

double convert(const char* text) {
  double value = 0.0;
  fast_float::from_chars(text, text + std::strlen(text), value);
  return value;
}

template <class Number>
const char* print(Number value) {
  static char text[40];
  *std::to_chars(text, text + sizeof text - 1, value).ptr = '\0';
  return text;
}

double sumBelow(const pugi::xml_node& element, const std::vector<const char*>& attributes) {
  double sum = 0.0;
  for (const char* name : attributes) sum += convert(element.attribute(name).value());
  for (const pugi::xml_node child : element.children()) sum += sumBelow(child, attributes);
  return sum;
}

double sumBelow(const xmlNode* element, const std::vector<const char*>& attributes) {
  double sum = 0.0;
  for (const char* name : attributes) {
    xmlChar* const text = xmlGetProp(element, BAD_CAST name);
    if (text != nullptr) sum += convert(reinterpret_cast<const char*>(text));
    xmlFree(text);
  }
  for (const xmlNode* child = element->children; child != nullptr; child = child->next)
    if (child->type == XML_ELEMENT_NODE) sum += sumBelow(child, attributes);
  return sum;
}

struct PugiElement {
  explicit PugiElement(pugi::xml_node appended) : node(appended) {}
  void set(const char* key, const char* value) { node.append_attribute(key).set_value(value); }
  pugi::xml_node node;
};

struct LibxmlElement {
  void set(const char* key, const char* value) { xmlNewProp(node, BAD_CAST key, BAD_CAST value); }
  xmlNode* node;
};

/// Sets all that the library sets, in its order.
template <class Element>
void fillLegacy(Element element, Found::Foundation& foundation) {
  KvVector3D v;
  element.set("NUMBER", print(foundation.getNumber()));
  element.set("NAME", foundation.getName().c_str());
  const auto setVector = [&](const char* x, const char* y, const char* z) {
    element.set(x, print(v.x));
    element.set(y, print(v.y));
    element.set(z, print(v.z));
  };
  if (foundation.getDispArea(v)) setVector("FXAREA", "FYAREA", "FZAREA");
  if (foundation.getDispLine(v)) setVector("FXLINE", "FYLINE", "FZLINE");
  if (foundation.getRotLine(v)) element.set("FXX", print(v.x));
  const auto setFailure = [&](const char* key, Found::Foundation::Failure failure) {
    if (failure != Found::Foundation::None) element.set(key, print(static_cast<int>(failure)));
  };
  setFailure("FAILZAREA", foundation.getFailAreaZ());
  setFailure("FAILXLINE", foundation.getFailLineX());
  setFailure("FAILYLINE", foundation.getFailLineY());
  setFailure("FAILZLINE", foundation.getFailLineZ());
  element.set("FACAREA", print(foundation.getFactorArea()));
  element.set("FACLINE", print(foundation.getFactorLine()));
  element.set("IsGenerated", foundation.isGenerated() ? "1" : "0");
}

const char* nameFailure(Found::Foundation::Failure failure) {
  return failure == Found::Foundation::None ? "none" : failure < 0 ? "tension" : "compression";
}

struct PartKeys {
  const char* x;
  const char* y;
  const char* z;
  const char* factor;
};

void fillArea(PugiElement element, Found::Foundation& foundation, const PartKeys& keys,
              const char* failZ) {
  KvVector3D v;
  if (foundation.getDispArea(v)) {
    element.set(keys.x, print(v.x));
    element.set(keys.y, print(v.y));
    element.set(keys.z, print(v.z));
  }
  element.set(failZ, nameFailure(foundation.getFailAreaZ()));
  element.set(keys.factor, print(foundation.getFactorArea()));
}

void fillLine(PugiElement element, Found::Foundation& foundation, const PartKeys& keys,
              const char* xx, const char* failY, const char* failZ) {
  KvVector3D v;
  if (foundation.getDispLine(v)) {
    element.set(keys.x, print(v.x));
    element.set(keys.y, print(v.y));
    element.set(keys.z, print(v.z));
  }
  if (foundation.getRotLine(v)) element.set(xx, print(v.x));
  element.set(failY, nameFailure(foundation.getFailLineY()));
  element.set(failZ, nameFailure(foundation.getFailLineZ()));
  element.set(keys.factor, print(foundation.getFactorLine()));
}

}  // namespace

double readWithPugixml(const std::string& path, const std::vector<const char*>& attributes) {
  pugi::xml_document document;
  document.load_file(path.c_str(), pugi::parse_default, pugi::encoding_utf8);
  return sumBelow(document.document_element(), attributes);
}

double readWithLibxml2(const std::string& path, const std::vector<const char*>& attributes) {
  xmlDoc* const document = xmlReadFile(path.c_str(), nullptr, XML_PARSE_HUGE | XML_PARSE_NOBLANKS);
  const double sum = sumBelow(xmlDocGetRootElement(document), attributes);
  xmlFreeDoc(document);
  return sum;
}

void writeWithPugixml(const std::string& path, const std::vector<Found::Foundation*>& foundations) {
  pugi::xml_document document;
  pugi::xml_node list = document.append_child("SMOD").append_child("FOUNDATIONS");
  for (Found::Foundation* foundation : foundations)
    fillLegacy(PugiElement(list.append_child("FOUND")), *foundation);
  document.save_file(path.c_str(), "  ", pugi::format_default, pugi::encoding_utf8);
}

void writeWithLibxml2(const std::string& path, const std::vector<Found::Foundation*>& foundations) {
  xmlDoc* const document = xmlNewDoc(BAD_CAST "1.0");
  xmlNode* const root = xmlNewNode(nullptr, BAD_CAST "SMOD");
  xmlDocSetRootElement(document, root);
  xmlNode* const list = xmlNewChild(root, nullptr, BAD_CAST "FOUNDATIONS", nullptr);
  for (Found::Foundation* foundation : foundations)
    fillLegacy(LibxmlElement{xmlNewChild(list, nullptr, BAD_CAST "FOUND", nullptr)}, *foundation);
  xmlSaveFormatFileEnc(path.c_str(), document, "UTF-8", 1);
  xmlFreeDoc(document);
}

void writeExchangeWithPugixml(const std::string& path,
                              const std::vector<Found::Foundation*>& foundations,
                              bool isFirstVersion) {
  pugi::xml_document document;
  pugi::xml_node list = document.append_child("Beddings");
  for (Found::Foundation* foundation : foundations) {
    if (isFirstVersion) {
      PugiElement element(list.append_child("Bedding"));
      element.set("Name", foundation->getName().c_str());
      fillArea(element, *foundation,
               {"SurfaceStiffnessX", "SurfaceStiffnessY", "SurfaceStiffnessZ",
                "TangentialSurfaceStiffnessXYFactor"},
               "SurfaceStiffnessZFailure");
      fillLine(
          element, *foundation,
          {"CurveStiffnessX", "CurveStiffnessY", "CurveStiffnessZ", "TangentialCurveStiffnessX"},
          "CurveStiffnessXX", "CurveStiffnessYFailure", "CurveStiffnessZFailure");
      continue;
    }
    const auto append = [&](const char* name) {
      PugiElement element(list.append_child(name));
      element.set("Number", print(foundation->getNumber()));
      element.set("Name", foundation->getName().c_str());
      return element;
    };
    if (foundation->hasLineValues())
      fillLine(append("CurveBedding"), *foundation,
               {"StiffnessX", "StiffnessY", "StiffnessZ", "TangentialStiffnessXFactor"},
               "StiffnessXX", "StiffnessYFailure", "StiffnessZFailure");
    if (foundation->hasAreaValues())
      fillArea(append("SurfaceBedding"), *foundation,
               {"StiffnessX", "StiffnessY", "StiffnessZ", "TangentialStiffnessXYFactor"},
               "StiffnessZFailure");
  }
  document.save_file(path.c_str(), "  ", pugi::format_default, pugi::encoding_utf8);
}

}  // namespace Yardsticks
