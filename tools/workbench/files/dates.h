#pragma once

#include <string>

/// Dates as pages show them, in the time of this place: 2026-03-01 09:30.
namespace Dates {

/// When the file was last written; empty when it is not there. `path` is in the code page of the
/// process.
std::string ofFile(const std::string& path);

std::string now();

}  // namespace Dates
