#pragma once

#include <cstddef>
#include <string_view>

namespace XmlUnclosed {

constexpr std::size_t none = std::string_view::npos;

/// The start of the innermost tag, quoted value, comment, section, instruction or element that is
/// still open at the end of `text`; npos when everything is closed. `text` has no other fault. The
/// search begins at `from`, which lies outside of all of these.
std::size_t find(std::string_view text, std::size_t from);

}  // namespace XmlUnclosed
