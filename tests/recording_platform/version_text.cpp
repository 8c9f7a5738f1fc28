#include "kv/version_text.h"

#include <utility>

namespace Tools {

VersionText::VersionText(std::string text) : version(std::move(text)) {}

bool VersionText::isEqualTo(const std::string& other) const {
  Recording::call("isEqualTo " + version + " " + other);
  return version == other;
}

}  // namespace Tools
