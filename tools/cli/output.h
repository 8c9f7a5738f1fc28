#pragma once

#include <string>

#include "files/output_file.h"

/// Where the commands write documents and pages.
namespace Commands {

/// The file at `path`; standard output when that is "-" or the name that the system has for it.
/// Throws UserError.
OutputFile openOutput(const std::string& path);

/// Throws UserError where a file is there that is not empty.
void requireAbsent(const OutputFile& output);

}  // namespace Commands
