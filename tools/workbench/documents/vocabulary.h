#pragma once

#include <vector>

/// What elements and attributes are called in each form of document, and what they may hold.
namespace Documents {

enum class Kind {
  identity,       // number or name, judged beside those of the other foundations
  flag,           // a whole number, false when it is 0
  stiffness,      // finite, 0 or more
  lineStiffness,  // the same; when it is NaN, its whole vector is not read
  factor,         // finite, 0 or more
  failureNumber,  // -1, 0 or 1
  failureWord     // one of three words
};

struct AttributeWord {
  const char* name;
  Kind kind;
};

/// An element and all attributes of it that a reader knows.
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

inline const ElementWord list = {"FOUNDATIONS", {{current, Kind::identity}}};

inline const ElementWord foundation = {"FOUND",
                                       {{number, Kind::identity},
                                        {name, Kind::identity},
                                        {"FXAREA", Kind::stiffness},
                                        {"FYAREA", Kind::stiffness},
                                        {"FZAREA", Kind::stiffness},
                                        {"FXLINE", Kind::lineStiffness},
                                        {"FYLINE", Kind::lineStiffness},
                                        {"FZLINE", Kind::lineStiffness},
                                        {"FXX", Kind::lineStiffness},
                                        {"FAILZAREA", Kind::failureNumber},
                                        {"FAILXLINE", Kind::failureNumber},
                                        {"FAILYLINE", Kind::failureNumber},
                                        {"FAILZLINE", Kind::failureNumber},
                                        {"FACAREA", Kind::factor},
                                        {"FACLINE", Kind::factor},
                                        {"IsGenerated", Kind::flag}}};

}  // namespace Legacy

/// An exchange document.
namespace Exchange {

constexpr const char* container = "Beddings";  // how an element for beddings is made
constexpr const char* version = "Version";     // of the root
constexpr const char* number = "Number";
constexpr const char* name = "Name";

/// The line part of a foundation.
inline const ElementWord curve = {"CurveBedding",
                                  {{number, Kind::identity},
                                   {name, Kind::identity},
                                   {"StiffnessX", Kind::stiffness},
                                   {"StiffnessY", Kind::stiffness},
                                   {"StiffnessZ", Kind::stiffness},
                                   {"StiffnessXX", Kind::stiffness},
                                   {"StiffnessYFailure", Kind::failureWord},
                                   {"StiffnessZFailure", Kind::failureWord},
                                   {"TangentialStiffnessXFactor", Kind::factor}}};

/// The area part of a foundation.
inline const ElementWord surface = {"SurfaceBedding",
                                    {{number, Kind::identity},
                                     {name, Kind::identity},
                                     {"StiffnessX", Kind::stiffness},
                                     {"StiffnessY", Kind::stiffness},
                                     {"StiffnessZ", Kind::stiffness},
                                     {"StiffnessZFailure", Kind::failureWord},
                                     {"TangentialStiffnessXYFactor", Kind::factor}}};

/// A whole foundation, of the first version only, which has no numbers.
inline const ElementWord whole = {"Bedding",
                                  {{name, Kind::identity},
                                   {"SurfaceStiffnessX", Kind::stiffness},
                                   {"SurfaceStiffnessY", Kind::stiffness},
                                   {"SurfaceStiffnessZ", Kind::stiffness},
                                   {"SurfaceStiffnessZFailure", Kind::failureWord},
                                   {"TangentialSurfaceStiffnessXYFactor", Kind::factor},
                                   {"CurveStiffnessX", Kind::stiffness},
                                   {"CurveStiffnessY", Kind::stiffness},
                                   {"CurveStiffnessZ", Kind::stiffness},
                                   {"CurveStiffnessXX", Kind::stiffness},
                                   {"CurveStiffnessYFailure", Kind::failureWord},
                                   {"CurveStiffnessZFailure", Kind::failureWord},
                                   {"TangentialCurveStiffnessX", Kind::factor}}};

}  // namespace Exchange

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
