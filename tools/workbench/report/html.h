#pragma once

#include <iterator>
#include <string>
#include <utility>

#include <fmt/format.h>

/// Text in an HTML page.
namespace Report {

/// `text`, in UTF-8, as it stands between tags or in an attribute: it opens and closes neither.
std::string escape(const std::string& text);

/// A name from a document, which is seen whatever it consists of, escaped.
std::string escapeName(const std::string& name);

/// Adds formatted text to a page.
template <class... Values>
void append(std::string& page, fmt::format_string<Values...> format, Values&&... values) {
  fmt::format_to(std::back_inserter(page), format, std::forward<Values>(values)...);
}

}  // namespace Report
