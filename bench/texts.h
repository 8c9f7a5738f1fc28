#pragma once

#include <cstddef>
#include <string>

/// Documents of n foundations each, always the same for the same n. Every attribute is there and
/// values are plausible, so that sizes and conversions are those of real models.
namespace Texts {

enum class Names {
  unique,
  none,     ///< left to the reader, where the form allows
  clashing  ///< every tenth is that of the foundation before
};

std::string makeLegacy(std::size_t n, Names names);

/// In version "1.0" "Bedding" elements, otherwise as many curve and surface beddings.
std::string makeExchange(std::size_t n, bool isFirstVersion, Names names);

/// The path of a file with this text, which is removed when the program ends.
std::string makeFile(const std::string& text);

}  // namespace Texts
