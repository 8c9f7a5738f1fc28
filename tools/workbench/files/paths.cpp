#include "files/paths.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace Paths {

#ifdef _WIN32

std::filesystem::path fromText(const std::string& text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');  // never more characters than bytes
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), size)));
  return wide;
}

std::string toText(const std::filesystem::path& path) {
  const std::wstring wide = path.wstring();
  const int length = static_cast<int>(wide.size());
  const auto convert = [&wide, length](char* text, int size) {
    return WideCharToMultiByte(CP_ACP, 0, wide.data(), length, text, size, nullptr, nullptr);
  };
  std::string text(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(text.data(), static_cast<int>(text.size()));
  return text;
}

#else

std::filesystem::path fromText(const std::string& text) { return text; }

std::string toText(const std::filesystem::path& path) { return path.string(); }

#endif

}  // namespace Paths
