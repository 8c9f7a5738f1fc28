#pragma once

#include <string>
#include <string_view>

/// What files hold.
namespace Files {

/// All that a file, a pipe or standard input holds.
struct Content {
  std::string shownPath;  // as messages call the file
  std::string path;       // of a file that can be written again; empty for a pipe or standard input
  std::string bytes;
};

/// Whether to read on after this start of a file.
using Wanted = bool (*)(std::string_view start);

/// The greatest length of the start that `Wanted` is given.
constexpr std::size_t lengthOfStart = 1 << 16;

/// Reads the file at `path`, or standard input when `path` is "-": to its end, or only its start
/// when `isWanted` returns false for that. Throws UserError, also when memory runs out.
Content read(
    const std::string& path, Wanted isWanted = [](std::string_view) { return true; });

}  // namespace Files
