#pragma once

#include <string>

namespace Results {

/// A path as a URI: a relative reference for a relative path, one with the scheme "file" for an
/// absolute one. Whatever is not allowed there is percent-encoded after RFC 3986.
std::string makeUri(const std::string& path);

}  // namespace Results
