#pragma once

#include <string>

namespace SpreadsheetTest {

/// What messages tell of the names of fields where no front end has other words.
inline const std::string fieldNames =
    "there are number, name, generated, areaX, areaY, areaZ, areaFailureZ, areaFactor, lineX, "
    "lineY, "
    "lineZ, lineRotationX, lineFailureX, lineFailureY, lineFailureZ, lineFactor, current";

}  // namespace SpreadsheetTest
