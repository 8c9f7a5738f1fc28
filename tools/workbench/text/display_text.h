#pragma once

#include <string>
#include <vector>

/// Text as an engineer sees it on a terminal.
namespace DisplayText {

/// A name in UTF-8, as people may see it: control characters show as escapes such as \n or \x1B,
/// and so do those that change the direction of writing, so that a name can neither break a table
/// nor command a terminal.
std::string fromName(const std::string& name);

/// The shortest text that reads back as the same double, without an exponent as long as the number
/// is of a size that people read. Beyond numbers: inf, -inf, nan.
std::string fromNumber(double value);

/// `text`, in UTF-8, or where it takes more than `width` places its start and an ellipsis.
std::string shorten(const std::string& text, std::size_t width);

/// How many places `text`, in UTF-8, takes on a terminal.
std::size_t measure(const std::string& text);

/// The items, in UTF-8, with `separator` between those that share a line of at most `width` places.
std::string wrap(const std::vector<std::string>& items, const std::string& separator,
                 std::size_t width);

}  // namespace DisplayText
