#pragma once

#include <string>

namespace Engine {

/// A document to try the page with.
extern const std::string sample;

}  // namespace Engine
