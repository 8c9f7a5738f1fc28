#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Spreadsheets {

/// The names of the fields in their order, and "current" behind them.
const std::vector<std::string_view>& listNames();

/// True for one of these names.
bool isName(std::string_view name);

/// There is no column "areaz"; did you mean areaZ?
std::string describeUnknown(const char* kind, std::string_view name);

/// What the library calls a foundation of this number that has no name.
std::string makeDefaultName(int number);

}  // namespace Spreadsheets
