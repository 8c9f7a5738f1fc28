#pragma once

#include <string>

/// Element and attribute names of the legacy model document.
namespace Found::LegacyKeys {

inline const std::string root = "SMOD";
inline const std::string foundations = "FOUNDATIONS";
inline const std::string current = "CURRENT";
inline const std::string foundation = "FOUND";

inline const std::string number = "NUMBER";
inline const std::string areaX = "FXAREA";
inline const std::string areaY = "FYAREA";
inline const std::string areaZ = "FZAREA";
inline const std::string lineX = "FXLINE";
inline const std::string lineY = "FYLINE";
inline const std::string lineZ = "FZLINE";
inline const std::string rotationX = "FXX";
inline const std::string failAreaZ = "FAILZAREA";
inline const std::string failLineX = "FAILXLINE";
inline const std::string failLineY = "FAILYLINE";
inline const std::string failLineZ = "FAILZLINE";
inline const std::string factorArea = "FACAREA";
inline const std::string factorLine = "FACLINE";
inline const std::string isGenerated = "IsGenerated";
inline const std::string name = "NAME";

}  // namespace Found::LegacyKeys
