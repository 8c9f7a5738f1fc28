#pragma once

#include <string>

#include "recording.h"

namespace Tools {

/// A version, compared on the record.
class VersionText {
 public:
  explicit VersionText(std::string text);

  bool isEqualTo(const std::string& other) const;

 private:
  std::string version;
  Recording::Counted counted{"VersionText"};
};

}  // namespace Tools
