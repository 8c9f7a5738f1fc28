#pragma once

#include <string>

/// Element and attribute names of the Kvml listing.
namespace Found::KvmlKeys {

inline const std::string beddings = "Beddings";
inline const std::string area = "BeddingArea";
inline const std::string beam = "BeddingBeam";

inline const std::string number = "Number";
inline const std::string name = "Name";
inline const std::string stiffnessX = "ksx";
inline const std::string stiffnessY = "ksy";
inline const std::string stiffnessZ = "ksz";
inline const std::string rotationX = "ksxx";
inline const std::string failure = "Failure";
inline const std::string factor = "Tangential";

}  // namespace Found::KvmlKeys
