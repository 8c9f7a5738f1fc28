#pragma once

#include <iterator>
#include <string>
#include <utility>

#include <fmt/format.h>

/// Text in an HTML page.
namespace Report {

/// `text`, in UTF-8, so that it can stand between tags or in an attribute.
std::string escape(const std::string& text);

/// The same for a name from a document, which showName() makes visible.
std::string escapeName(const std::string& name);

/// A power of ten. Few fonts have all digits as superscripts.
std::string writePower(int exponent);

/// What showRounded() makes of a value, with exponents as in writePower().
std::string writeRounded(double value);

/// Adds formatted text to a page.
template <class... Values>
void append(std::string& page, fmt::format_string<Values...> format, Values&&... values) {
  fmt::format_to(std::back_inserter(page), format, std::forward<Values>(values)...);
}

}  // namespace Report
