#pragma once

/// Element and attribute names of the exchange format, one group an element.
namespace Found::Umo {

constexpr const char* firstVersion = "1.0";

/// One foundation, area and line part together, without a number. First version only.
struct BeddingKeys {
  static constexpr const char* element = "Bedding";
  static constexpr const char* name = "Name";
  static constexpr const char* areaX = "SurfaceStiffnessX";
  static constexpr const char* areaY = "SurfaceStiffnessY";
  static constexpr const char* areaZ = "SurfaceStiffnessZ";
  static constexpr const char* failAreaZ = "SurfaceStiffnessZFailure";
  static constexpr const char* factorArea = "TangentialSurfaceStiffnessXYFactor";
  static constexpr const char* lineX = "CurveStiffnessX";
  static constexpr const char* lineY = "CurveStiffnessY";
  static constexpr const char* lineZ = "CurveStiffnessZ";
  static constexpr const char* rotationX = "CurveStiffnessXX";
  static constexpr const char* failLineY = "CurveStiffnessYFailure";
  static constexpr const char* failLineZ = "CurveStiffnessZFailure";
  static constexpr const char* factorLine = "TangentialCurveStiffnessX";
};

/// The line part of a foundation.
struct CurveBeddingKeys {
  static constexpr const char* element = "CurveBedding";
  static constexpr const char* number = "Number";
  static constexpr const char* name = "Name";
  static constexpr const char* lineX = "StiffnessX";
  static constexpr const char* lineY = "StiffnessY";
  static constexpr const char* lineZ = "StiffnessZ";
  static constexpr const char* rotationX = "StiffnessXX";
  static constexpr const char* failLineY = "StiffnessYFailure";
  static constexpr const char* failLineZ = "StiffnessZFailure";
  static constexpr const char* factorLine = "TangentialStiffnessXFactor";
};

/// The area part of a foundation.
struct SurfaceBeddingKeys {
  static constexpr const char* element = "SurfaceBedding";
  static constexpr const char* number = "Number";
  static constexpr const char* name = "Name";
  static constexpr const char* areaX = "StiffnessX";
  static constexpr const char* areaY = "StiffnessY";
  static constexpr const char* areaZ = "StiffnessZ";
  static constexpr const char* failAreaZ = "StiffnessZFailure";
  static constexpr const char* factorArea = "TangentialStiffnessXYFactor";
};

}  // namespace Found::Umo
