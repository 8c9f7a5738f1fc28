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

/// Whether the rest is wanted of what starts like this.
using Wanted = bool (*)(std::string_view start);

/// How much `Wanted` is shown, at most.
constexpr std::size_t lengthOfStart = 1 << 16;

/// Reads the file at `path`, standard input when that is "-", to its end, or only its start when
/// the rest is not wanted. Throws UserError, also when memory runs out.
Content read(
    const std::string& path, Wanted isWanted = [](std::string_view) { return true; });

}  // namespace Files
