#pragma once

#include <filesystem>
#include <string>

/// Paths are text in the code page of the process, as the command line brings them and files are
/// opened by them. Some standard libraries for Windows take the text of a path for UTF-8 instead.
namespace Paths {

std::filesystem::path fromText(const std::string& text);
std::string toText(const std::filesystem::path& path);

}  // namespace Paths
