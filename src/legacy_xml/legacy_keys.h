#pragma once

#include <string>

namespace Found {

/// Element and attribute names of the legacy model document.
struct LegacyKeys {
  const std::string root = "SMOD";
  const std::string foundations = "FOUNDATIONS";
  const std::string current = "CURRENT";
  const std::string foundation = "FOUND";

  const std::string number = "NUMBER";
  const std::string areaX = "FXAREA";
  const std::string areaY = "FYAREA";
  const std::string areaZ = "FZAREA";
  const std::string lineX = "FXLINE";
  const std::string lineY = "FYLINE";
  const std::string lineZ = "FZLINE";
  const std::string rotationX = "FXX";
  const std::string failAreaZ = "FAILZAREA";
  const std::string failLineX = "FAILXLINE";
  const std::string failLineY = "FAILYLINE";
  const std::string failLineZ = "FAILZLINE";
  const std::string factorArea = "FACAREA";
  const std::string factorLine = "FACLINE";
  const std::string isGenerated = "IsGenerated";
  const std::string name = "NAME";
};

/// Made when first asked for and never destroyed, since hosts read and write documents in
/// constructors and destructors of static objects too.
inline const LegacyKeys& getLegacyKeys() {
  static const auto* const keys = new LegacyKeys;
  return *keys;
}

}  // namespace Found
