#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "found/foundation.h"

namespace Found::Umo {

/// The mode that `text` names, byte for byte; none for any other text.
std::optional<Foundation::Failure> failureFromText(std::string_view text);

/// The text of `failure`; empty for a value that is no mode.
std::string failureToText(Foundation::Failure failure);

}  // namespace Found::Umo
