#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Numbers as text, alike under every process locale.
namespace NumberText {

/// The whole text as an int, white space around it and one leading '+' accepted; empty when it is
/// anything else or does not fit.
std::optional<int> parseInteger(std::string_view text);

/// The whole text as a double, likewise, "inf" and "nan" included; beyond the range an infinity or
/// a zero of its sign. Empty when it is no number.
std::optional<double> parseDouble(std::string_view text);

std::string print(int value);

/// The shortest text that reads back as the same double.
std::string print(double value);

/// As std::printf() prints it in the "C" locale. Throws std::invalid_argument when `format` does
/// not hold exactly one conversion, of a double, or when it leaves width or precision to an
/// argument or gives one of more than three digits.
std::string print(double value, const char* format);

}  // namespace NumberText
