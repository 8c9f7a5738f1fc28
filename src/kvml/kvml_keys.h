#pragma once

#include <string>

namespace Found {

/// Element and attribute names of the Kvml listing.
struct KvmlKeys {
  const std::string beddings = "Beddings";
  const std::string area = "BeddingArea";
  const std::string beam = "BeddingBeam";

  const std::string number = "Number";
  const std::string name = "Name";
  const std::string stiffnessX = "ksx";
  const std::string stiffnessY = "ksy";
  const std::string stiffnessZ = "ksz";
  const std::string rotationX = "ksxx";
  const std::string failure = "Failure";
  const std::string factor = "Tangential";
};

/// Made when first asked for and never destroyed, since hosts write listings in constructors and
/// destructors of static objects too.
inline const KvmlKeys& getKvmlKeys() {
  static const auto* const keys = new KvmlKeys;
  return *keys;
}

}  // namespace Found
