#pragma once

#include <string>

#include "text/display_text.h"

/// What stands on a sheet of A4, in millimetres.
namespace Report::Paper {

// Within the margins.
constexpr double narrow = 186;
constexpr double broad = 273;

/// The width of a text in a table.
inline double measure(const std::string& text) {
  constexpr double ofLetter = 1.75;
  return ofLetter * static_cast<double>(DisplayText::measure(text));
}

}  // namespace Report::Paper
