#pragma once

#include <string>
#include <vector>

namespace Found {
class Foundation;
}

/// What a host would do without the library, to compare it with. Results are returned so that
/// nothing is left out by the compiler, and so that the benchmarks can check them.
namespace Yardsticks {

/// Bare pugixml: parses the file at `path`, converts all attributes of all elements below its root
/// by name, in the order in which the library asks for them, and keeps nothing. The sum of all
/// numbers.
double readWithPugixml(const std::string& path, const std::vector<const char*>& attributes);

/// The same job with the tree of libxml2.
double readWithLibxml2(const std::string& path, const std::vector<const char*>& attributes);

/// Bare pugixml: builds the legacy document of `foundations` and saves it at `path`.
void writeWithPugixml(const std::string& path, const std::vector<Found::Foundation*>& foundations);

/// The same job with the tree of libxml2.
void writeWithLibxml2(const std::string& path, const std::vector<Found::Foundation*>& foundations);

/// Bare pugixml: builds and saves the exchange document of `foundations`.
void writeExchangeWithPugixml(const std::string& path,
                              const std::vector<Found::Foundation*>& foundations,
                              bool isFirstVersion);

extern const std::vector<const char*> legacyAttributes;
extern const std::vector<const char*> exchangeAttributes;
extern const std::vector<const char*> firstExchangeAttributes;

}  // namespace Yardsticks
