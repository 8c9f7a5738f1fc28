#include "output.h"

#include <iostream>

OutputFile Commands::openOutput(const std::string& path) {
  // Opened by that name, a file that standard output is appended to would be replaced.
  if (path == "-" || path == "/dev/stdout") return OutputFile(std::cout, "standard output");
  return OutputFile(path);
}
