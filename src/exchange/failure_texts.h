#pragma once

#include <optional>
#include <string>

#include "found/foundation.h"

namespace Found::Umo {

/// The mode that `text` names, byte for byte; none for any other text.
std::optional<Foundation::Failure> failureFromText(const std::string& text);

/// The text of `failure`; empty for a value that is no mode.
std::string failureToText(Foundation::Failure failure);

}  // namespace Found::Umo
