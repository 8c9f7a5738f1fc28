#pragma once

#include <string>

#include "tools/run_program.h"

/// A legacy model that holds these elements, from its third line on.
inline std::string makeDocument(const std::string& elements) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n" + elements + "\n</SMOD>\n";
}

/// The path of a file with a legacy model of these foundations.
inline std::string makeModelFile(const std::string& foundations) {
  return makeFile("model.xml", makeDocument("<FOUNDATIONS>" + foundations + "</FOUNDATIONS>"));
}
