#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <string_view>

/// Names: str in Python, UTF-8 in foundations.
namespace Python {

namespace py = pybind11;

/// Bytes that are no UTF-8 become the surrogates that encode() turns back ("surrogateescape").
py::str decode(std::string_view utf8);

/// Throws TypeError, which calls the value `what`, for what is no str, and UnicodeEncodeError for
/// a surrogate that decode() does not make.
std::string encode(py::handle text, const char* what);

/// Whether a document starts as one in UTF-16 or UTF-32 does.
bool isWide(std::string_view bytes);
constexpr const char* wideIsRefused = "this is in UTF-16 or UTF-32; save it in UTF-8";

}  // namespace Python
