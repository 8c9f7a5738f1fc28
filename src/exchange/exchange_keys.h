#pragma once

#include <string>

namespace Found::Umo {

/// One foundation, area and line part together, without a number. First version only.
struct BeddingKeys {
  const std::string element = "Bedding";
  const std::string name = "Name";
  const std::string areaX = "SurfaceStiffnessX";
  const std::string areaY = "SurfaceStiffnessY";
  const std::string areaZ = "SurfaceStiffnessZ";
  const std::string failAreaZ = "SurfaceStiffnessZFailure";
  const std::string factorArea = "TangentialSurfaceStiffnessXYFactor";
  const std::string lineX = "CurveStiffnessX";
  const std::string lineY = "CurveStiffnessY";
  const std::string lineZ = "CurveStiffnessZ";
  const std::string rotationX = "CurveStiffnessXX";
  const std::string failLineY = "CurveStiffnessYFailure";
  const std::string failLineZ = "CurveStiffnessZFailure";
  const std::string factorLine = "TangentialCurveStiffnessX";
};

/// The line part of a foundation.
struct CurveBeddingKeys {
  const std::string element = "CurveBedding";
  const std::string number = "Number";
  const std::string name = "Name";
  const std::string lineX = "StiffnessX";
  const std::string lineY = "StiffnessY";
  const std::string lineZ = "StiffnessZ";
  const std::string rotationX = "StiffnessXX";
  const std::string failLineY = "StiffnessYFailure";
  const std::string failLineZ = "StiffnessZFailure";
  const std::string factorLine = "TangentialStiffnessXFactor";
};

/// The area part of a foundation.
struct SurfaceBeddingKeys {
  const std::string element = "SurfaceBedding";
  const std::string number = "Number";
  const std::string name = "Name";
  const std::string areaX = "StiffnessX";
  const std::string areaY = "StiffnessY";
  const std::string areaZ = "StiffnessZ";
  const std::string failAreaZ = "StiffnessZFailure";
  const std::string factorArea = "TangentialStiffnessXYFactor";
};

/// Element and attribute names of the exchange format, one group an element.
struct ExchangeKeys {
  const std::string firstVersion = "1.0";
  const BeddingKeys bedding = {};
  const CurveBeddingKeys curve = {};
  const SurfaceBeddingKeys surface = {};
};

/// Made when first asked for and never destroyed, since hosts read and write documents in
/// constructors and destructors of static objects too.
inline const ExchangeKeys& getExchangeKeys() {
  static const auto* const keys = new ExchangeKeys;
  return *keys;
}

}  // namespace Found::Umo
