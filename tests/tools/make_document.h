#pragma once

#include <string>

/// A legacy model that holds these elements, from its third line on.
inline std::string makeDocument(const std::string& elements) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n" + elements + "\n</SMOD>\n";
}
