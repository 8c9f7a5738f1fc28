#pragma once

#include <string>
#include <vector>

#include "checks/findings.h"
#include "kv/xml_n.h"

/// What each element may hold, and what its attributes may be.
namespace Checks {

enum class Kind {
  identity,       // number or name, judged beside those of the other foundations
  flag,           // a whole number, false when it is 0
  number,         // a stiffness or a factor: finite, 0 or more
  partOfLine,     // the same; when it is NaN, its whole vector is not read
  failureNumber,  // -1, 0 or 1
  failureText     // one of three words
};

struct Attribute {
  const char* name;
  Kind kind;
};

struct Element {
  const char* name;
  std::vector<Attribute> attributes;
};

/// Names and kinds of all attributes that a reader knows, element by element.
namespace Elements {

inline const Element foundations = {"FOUNDATIONS", {{"CURRENT", Kind::identity}}};

inline const Element found = {"FOUND",
                              {{"NUMBER", Kind::identity},
                               {"NAME", Kind::identity},
                               {"FXAREA", Kind::number},
                               {"FYAREA", Kind::number},
                               {"FZAREA", Kind::number},
                               {"FXLINE", Kind::partOfLine},
                               {"FYLINE", Kind::partOfLine},
                               {"FZLINE", Kind::partOfLine},
                               {"FXX", Kind::partOfLine},
                               {"FAILZAREA", Kind::failureNumber},
                               {"FAILXLINE", Kind::failureNumber},
                               {"FAILYLINE", Kind::failureNumber},
                               {"FAILZLINE", Kind::failureNumber},
                               {"FACAREA", Kind::number},
                               {"FACLINE", Kind::number},
                               {"IsGenerated", Kind::flag}}};

inline const Element curveBedding = {"CurveBedding",
                                     {{"Number", Kind::identity},
                                      {"Name", Kind::identity},
                                      {"StiffnessX", Kind::number},
                                      {"StiffnessY", Kind::number},
                                      {"StiffnessZ", Kind::number},
                                      {"StiffnessXX", Kind::number},
                                      {"StiffnessYFailure", Kind::failureText},
                                      {"StiffnessZFailure", Kind::failureText},
                                      {"TangentialStiffnessXFactor", Kind::number}}};

inline const Element surfaceBedding = {"SurfaceBedding",
                                       {{"Number", Kind::identity},
                                        {"Name", Kind::identity},
                                        {"StiffnessX", Kind::number},
                                        {"StiffnessY", Kind::number},
                                        {"StiffnessZ", Kind::number},
                                        {"StiffnessZFailure", Kind::failureText},
                                        {"TangentialStiffnessXYFactor", Kind::number}}};

/// Of version 1.0.
inline const Element bedding = {"Bedding",
                                {{"Name", Kind::identity},
                                 {"SurfaceStiffnessX", Kind::number},
                                 {"SurfaceStiffnessY", Kind::number},
                                 {"SurfaceStiffnessZ", Kind::number},
                                 {"SurfaceStiffnessZFailure", Kind::failureText},
                                 {"TangentialSurfaceStiffnessXYFactor", Kind::number},
                                 {"CurveStiffnessX", Kind::number},
                                 {"CurveStiffnessY", Kind::number},
                                 {"CurveStiffnessZ", Kind::number},
                                 {"CurveStiffnessXX", Kind::number},
                                 {"CurveStiffnessYFailure", Kind::failureText},
                                 {"CurveStiffnessZFailure", Kind::failureText},
                                 {"TangentialCurveStiffnessX", Kind::number}}};

}  // namespace Elements

/// Judges every attribute of `element` but numbers and names.
void checkAttributes(const KvXmlN::Data& element, const Element& known, Findings& findings);

/// A child element of one that has all it tells in attributes.
void checkHasNoChildren(const KvXmlN::Data& element, Findings& findings);

/// Why an attribute that there is cannot be read as a whole number.
std::string tellNoInteger(const KvXmlN::Data& element, const std::string& name);

}  // namespace Checks
