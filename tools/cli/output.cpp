#include "output.h"

#include <iostream>
#include <string>

#include "files/user_error.h"

OutputFile Commands::openOutput(const std::string& path) {
  // Opened by that name, a file that standard output is appended to would be replaced.
  if (path == "-" || path == "/dev/stdout") return OutputFile(std::cout, "standard output");
  // A link to what was opened for reading only.
  if (path == "/dev/stdin")
    throw UserError(path + ": cannot be written; - is standard input and output");
  return OutputFile(path);
}

void Commands::requireAbsent(const OutputFile& output) {
  if (!output.readOld().empty())
    throw UserError(output.getShownPath() + ": is there already; name another file");
}
