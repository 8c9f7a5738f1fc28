#pragma once

#include <cstddef>
#include <string>

/// Documents of n foundations each, as the library writes those of "mix.h": without the attributes
/// that it leaves out.
namespace Texts {

enum class Names {
  unique,
  none,     ///< neither names nor numbers, which are left to the reader; legacy documents only
  clashing  ///< every tenth is that of the foundation before
};

std::string makeLegacy(std::size_t n, Names names);

/// In version "1.0" "Bedding" elements, otherwise curve and surface beddings.
std::string makeExchange(std::size_t n, bool isFirstVersion, Names names);

/// The path of a file with this text, which is removed when the program ends.
std::string makeFile(const std::string& text);

}  // namespace Texts
