#pragma once

#include <string>

#include "kv/export.h"

namespace Tools {

/// The version of a data set, as a text such as "1.0".
class KV_API VersionText {
 public:
  /// Keeps `text` as it is.
  explicit VersionText(std::string text);

  /// True when the texts are the same, byte for byte: "1.0" is not "1".
  bool isEqualTo(const std::string& other) const;

 private:
  std::string version;
};

}  // namespace Tools
