#pragma once

#include <string>

/// Element and attribute names of the exchange format, one group an element.
namespace Found::Umo {

inline const std::string firstVersion = "1.0";

/// One foundation, area and line part together, without a number. First version only.
struct BeddingKeys {
  inline static const std::string element = "Bedding";
  inline static const std::string name = "Name";
  inline static const std::string areaX = "SurfaceStiffnessX";
  inline static const std::string areaY = "SurfaceStiffnessY";
  inline static const std::string areaZ = "SurfaceStiffnessZ";
  inline static const std::string failAreaZ = "SurfaceStiffnessZFailure";
  inline static const std::string factorArea = "TangentialSurfaceStiffnessXYFactor";
  inline static const std::string lineX = "CurveStiffnessX";
  inline static const std::string lineY = "CurveStiffnessY";
  inline static const std::string lineZ = "CurveStiffnessZ";
  inline static const std::string rotationX = "CurveStiffnessXX";
  inline static const std::string failLineY = "CurveStiffnessYFailure";
  inline static const std::string failLineZ = "CurveStiffnessZFailure";
  inline static const std::string factorLine = "TangentialCurveStiffnessX";
};

/// The line part of a foundation.
struct CurveBeddingKeys {
  inline static const std::string element = "CurveBedding";
  inline static const std::string number = "Number";
  inline static const std::string name = "Name";
  inline static const std::string lineX = "StiffnessX";
  inline static const std::string lineY = "StiffnessY";
  inline static const std::string lineZ = "StiffnessZ";
  inline static const std::string rotationX = "StiffnessXX";
  inline static const std::string failLineY = "StiffnessYFailure";
  inline static const std::string failLineZ = "StiffnessZFailure";
  inline static const std::string factorLine = "TangentialStiffnessXFactor";
};

/// The area part of a foundation.
struct SurfaceBeddingKeys {
  inline static const std::string element = "SurfaceBedding";
  inline static const std::string number = "Number";
  inline static const std::string name = "Name";
  inline static const std::string areaX = "StiffnessX";
  inline static const std::string areaY = "StiffnessY";
  inline static const std::string areaZ = "StiffnessZ";
  inline static const std::string failAreaZ = "StiffnessZFailure";
  inline static const std::string factorArea = "TangentialStiffnessXYFactor";
};

}  // namespace Found::Umo
