#pragma once

#include <string_view>

#include "foundations/scaling.h"
#include "foundations/units.h"

namespace Scaling {

/// How stiffness comes to other units.
struct Conversion {
  Ratio force = {{1, 0}};
  Ratio length = {{1, 0}};
  Units from;  // which factors alone do not tell
  Units to;
};

/// Between units that are known by their names, such as kN,m:N,mm. Throws std::invalid_argument,
/// which tells what is wrong.
Conversion readConversion(std::string_view text);

}  // namespace Scaling
