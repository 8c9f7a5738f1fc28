#include "output.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>

#include "files/paths.h"
#include "files/user_error.h"
#include "report/frame.h"

namespace {

/// Nothing of what is no file, such as a pipe, which may never tell.
std::string readThere(const OutputFile& output) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(Paths::fromText(output.getTarget()), ignored)) return {};
  std::ifstream file(output.getTarget(), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

OutputFile Commands::openOutput(const std::string& path) {
  // Opened by that name, a file that standard output is appended to would be replaced.
  if (path == "-" || path == "/dev/stdout") return OutputFile(std::cout, "standard output");
  // A link to what was opened for reading only.
  if (path == "/dev/stdin")
    throw UserError(path + ": cannot be written; - is standard input and output");
  return OutputFile(path);
}

void Commands::requireAbsent(const OutputFile& output) {
  if (!readThere(output).empty())
    throw UserError(output.getShownPath() + ": is there already; name another file");
}

void Commands::requireReplaceable(const OutputFile& output) {
  const std::string there = readThere(output);
  if (!there.empty() && !Report::isPage(there))
    throw UserError(output.getShownPath() +
                    ": this is no page that kvfound made, and was not replaced; name another file");
}
