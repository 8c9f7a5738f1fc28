#include "results/uri.h"

#include <filesystem>
#include <string_view>

#include <fmt/format.h>

#include "files/paths.h"

namespace Results {
namespace {

/// The "unreserved" characters and the separator of paths. Others are allowed as well, but not a
/// colon in the first part of a relative path.
bool isPlain(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return isLetter || (c >= '0' && c <= '9') ||
         std::string_view("-._~/").find(c) != std::string::npos;
}

}  // namespace

std::string makeUri(const std::string& path) {
  const std::filesystem::path whole = Paths::fromText(path);
  const std::string text = whole.generic_u8string();
  std::string uri;
  // A drive stands behind the empty name of the host as if it were a folder.
  if (whole.is_absolute()) uri = text.front() == '/' ? "file://" : "file:///";
  const std::size_t drive = whole.has_root_name() && text.front() != '/' ? 2 : 0;
  uri += text.substr(0, drive);
  for (const char c : text.substr(drive))
    if (isPlain(c))
      uri += c;
    else
      uri += fmt::format("%{:02X}", static_cast<unsigned char>(c));
  return uri;
}

}  // namespace Results
