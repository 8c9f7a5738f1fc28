#pragma once

#include <cstddef>
#include <string_view>

namespace XmlUnclosed {

constexpr std::size_t none = std::string_view::npos;

/// Where the innermost thing begins that is still open at the end of `text`, which has no other
/// fault: a tag, a value between quotes, a comment, section or instruction, or an element; npos
/// when there is none. The search begins at `from`, which is not within any of them.
std::size_t find(std::string_view text, std::size_t from);

}  // namespace XmlUnclosed
