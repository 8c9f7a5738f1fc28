#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

/// Every target states its properties with this; what does not hold ends the program.
namespace Fuzz {

inline void require(bool holds, const char* property, const std::string& details = {}) {
  if (holds) return;
  std::fprintf(stderr, "This does not hold: %s\n%s\n", property, details.c_str());
  std::abort();
}

}  // namespace Fuzz
