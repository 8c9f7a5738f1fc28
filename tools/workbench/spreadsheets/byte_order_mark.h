#pragma once

#include <cstddef>
#include <string_view>

namespace Spreadsheets {

/// Of UTF-8. Some programs write it before the text.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Of the bytes before the first that is a character.
constexpr std::size_t measureMark(std::string_view bytes) {
  return bytes.substr(0, byteOrderMark.size()) == byteOrderMark ? byteOrderMark.size() : 0;
}

}  // namespace Spreadsheets
