#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "documents/form.h"

/// The names of elements and attributes in each form of document, and the values that they may
/// have.
///
/// Here and elsewhere in the workbench constants are never destroyed, since threads may still work
/// with them while the process of a host ends.
namespace Documents {

enum class Kind {
  identity,       // number or name, checked against those of the other foundations
  flag,           // an integer, false when it is 0
  stiffness,      // finite, 0 or more
  lineStiffness,  // the same; NaN makes the reader ignore the whole vector
  factor,         // finite, 0 or more
  failureNumber,  // -1, 0 or 1
  failureWord     // one of three words
};

struct AttributeWord {
  const char* name;
  Kind kind;
  const char* field = nullptr;  // of a foundation, see foundations/fields.h
};

/// An element and all of its attributes that a reader knows.
struct ElementWord {
  const char* name;
  std::vector<AttributeWord> attributes;
};

/// A model of the older form.
namespace Legacy {

constexpr const char* root = "SMOD";
constexpr const char* version = "VERSION";  // of the root
constexpr const char* current = "CURRENT";
constexpr const char* number = "NUMBER";
constexpr const char* name = "NAME";

constexpr const char* project = "PROJECT";  // a child of the root
constexpr const char* unitOfForce = "UNITFORCE";
constexpr const char* unitOfLength = "UNITLENGTH";

inline const ElementWord& list = *new const ElementWord{"FOUNDATIONS", {{current, Kind::identity}}};

inline const ElementWord& foundation =
    *new const ElementWord{"FOUND",
                           {{number, Kind::identity, "number"},
                            {name, Kind::identity, "name"},
                            {"FXAREA", Kind::stiffness, "areaX"},
                            {"FYAREA", Kind::stiffness, "areaY"},
                            {"FZAREA", Kind::stiffness, "areaZ"},
                            {"FXLINE", Kind::lineStiffness, "lineX"},
                            {"FYLINE", Kind::lineStiffness, "lineY"},
                            {"FZLINE", Kind::lineStiffness, "lineZ"},
                            {"FXX", Kind::lineStiffness, "lineRotationX"},
                            {"FAILZAREA", Kind::failureNumber, "areaFailureZ"},
                            {"FAILXLINE", Kind::failureNumber, "lineFailureX"},
                            {"FAILYLINE", Kind::failureNumber, "lineFailureY"},
                            {"FAILZLINE", Kind::failureNumber, "lineFailureZ"},
                            {"FACAREA", Kind::factor, "areaFactor"},
                            {"FACLINE", Kind::factor, "lineFactor"},
                            {"IsGenerated", Kind::flag, "generated"}}};

}  // namespace Legacy

/// An exchange document.
namespace Exchange {

constexpr const char* container = "Beddings";  // the usual name of an element for beddings
constexpr const char* version = "Version";     // of the root
constexpr const char* number = "Number";
constexpr const char* name = "Name";

/// The line part of a foundation.
inline const ElementWord& curve =
    *new const ElementWord{"CurveBedding",
                           {{number, Kind::identity, "number"},
                            {name, Kind::identity, "name"},
                            {"StiffnessX", Kind::stiffness, "lineX"},
                            {"StiffnessY", Kind::stiffness, "lineY"},
                            {"StiffnessZ", Kind::stiffness, "lineZ"},
                            {"StiffnessXX", Kind::stiffness, "lineRotationX"},
                            {"StiffnessYFailure", Kind::failureWord, "lineFailureY"},
                            {"StiffnessZFailure", Kind::failureWord, "lineFailureZ"},
                            {"TangentialStiffnessXFactor", Kind::factor, "lineFactor"}}};

/// The area part of a foundation.
inline const ElementWord& surface =
    *new const ElementWord{"SurfaceBedding",
                           {{number, Kind::identity, "number"},
                            {name, Kind::identity, "name"},
                            {"StiffnessX", Kind::stiffness, "areaX"},
                            {"StiffnessY", Kind::stiffness, "areaY"},
                            {"StiffnessZ", Kind::stiffness, "areaZ"},
                            {"StiffnessZFailure", Kind::failureWord, "areaFailureZ"},
                            {"TangentialStiffnessXYFactor", Kind::factor, "areaFactor"}}};

/// A whole foundation. Only the first version has these; they have no numbers.
inline const ElementWord& whole =
    *new const ElementWord{"Bedding",
                           {{name, Kind::identity, "name"},
                            {"SurfaceStiffnessX", Kind::stiffness, "areaX"},
                            {"SurfaceStiffnessY", Kind::stiffness, "areaY"},
                            {"SurfaceStiffnessZ", Kind::stiffness, "areaZ"},
                            {"SurfaceStiffnessZFailure", Kind::failureWord, "areaFailureZ"},
                            {"TangentialSurfaceStiffnessXYFactor", Kind::factor, "areaFactor"},
                            {"CurveStiffnessX", Kind::stiffness, "lineX"},
                            {"CurveStiffnessY", Kind::stiffness, "lineY"},
                            {"CurveStiffnessZ", Kind::stiffness, "lineZ"},
                            {"CurveStiffnessXX", Kind::stiffness, "lineRotationX"},
                            {"CurveStiffnessYFailure", Kind::failureWord, "lineFailureY"},
                            {"CurveStiffnessZFailure", Kind::failureWord, "lineFailureZ"},
                            {"TangentialCurveStiffnessX", Kind::factor, "lineFactor"}}};

/// The description of the element of this name; null when it does not describe a foundation.
inline const ElementWord* findWord(std::string_view element) {
  for (const ElementWord* const word : {&curve, &surface, &whole})
    if (element == word->name) return word;
  return nullptr;
}

}  // namespace Exchange

/// True when documents of this form store the field of this name.
inline bool carries(Form form, std::string_view field) {
  const auto tells = [field](const ElementWord& element) {
    return std::any_of(element.attributes.begin(), element.attributes.end(),
                       [field](const AttributeWord& word) {
                         return word.field != nullptr && field == word.field;
                       });
  };
  switch (form) {
    case Form::legacy:
      return tells(Legacy::foundation);
    case Form::exchange:
      return tells(Exchange::curve) || tells(Exchange::surface);
    case Form::firstExchange:
      return tells(Exchange::whole);
    case Form::kvml:
      return false;
    case Form::csv:
    case Form::json:
      break;
  }
  return true;
}

/// A listing in Kvml.
namespace Kvml {

constexpr const char* root = "Kvml";
constexpr const char* area = "BeddingArea";
constexpr const char* x = "ksx";
constexpr const char* y = "ksy";
constexpr const char* z = "ksz";
constexpr const char* rotationX = "ksxx";
constexpr const char* factor = "Tangential";

}  // namespace Kvml

}  // namespace Documents
