#pragma once

#include <string>
#include <string_view>

namespace Spreadsheets {

/// True for the name of a field, and for "current".
bool isName(std::string_view name);

/// There is no column "areaz"; did you mean areaZ?
std::string describeUnknown(const char* kind, std::string_view name);

/// What the library calls a foundation of this number that has no name.
std::string makeDefaultName(int number);

}  // namespace Spreadsheets
