#pragma once

#include <string>
#include <vector>

/// Text as an engineer sees it on a terminal.
namespace DisplayText {

/// A name in UTF-8, safe to show: control characters and characters that change the direction of
/// writing become escapes such as \n or \x1B, so that a name can neither break a table nor command
/// a terminal.
std::string fromName(const std::string& name);

/// The shortest text that reads back as the same double; numbers of everyday size have no exponent.
/// Other values are inf, -inf and nan.
std::string fromNumber(double value);

/// `text`, in UTF-8; when it takes more than `width` places, its start and an ellipsis.
std::string shorten(const std::string& text, std::size_t width);

/// How many places `text`, in UTF-8, takes on a terminal.
std::size_t measure(const std::string& text);

/// The items, in UTF-8, with `separator` between those that share a line of at most `width` places.
std::string wrap(const std::vector<std::string>& items, const std::string& separator,
                 std::size_t width);

}  // namespace DisplayText
