#pragma once

/// What stands in tables beside names and values.
namespace Spreadsheets {

constexpr const char* remarkStart = "#";
constexpr const char* unitsStart = "#units";

}  // namespace Spreadsheets
