#pragma once

#include <string_view>

namespace Spreadsheets {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr const char* remarkStart = "#";
constexpr const char* unitsStart = "#units";

}  // namespace Spreadsheets
