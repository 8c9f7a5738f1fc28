#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Numbers as text, alike under every process locale.
namespace NumberText {

/// Reads the whole text as an int. White space around it and one leading '+' are accepted. Empty
/// when the text is no integer or does not fit.
std::optional<int> parseInteger(std::string_view text);

/// Reads the whole text as a double in the same way; "inf" and "nan" are numbers, too. Beyond the
/// range the result is an infinity or a zero of the same sign. Empty when the text is no number.
std::optional<double> parseDouble(std::string_view text);

std::string print(int value);

/// The shortest text that reads back as the same double.
std::string print(double value);

/// As std::printf() prints it in the "C" locale. Throws std::invalid_argument when `format` does
/// not hold exactly one conversion, of a double, or when it leaves width or precision to an
/// argument or gives one of more than three digits.
std::string print(double value, const char* format);

}  // namespace NumberText
