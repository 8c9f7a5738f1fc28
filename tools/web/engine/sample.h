#pragma once

#include <string_view>

namespace Engine {

/// A document to try the page with.
extern const std::string_view sample;

}  // namespace Engine
