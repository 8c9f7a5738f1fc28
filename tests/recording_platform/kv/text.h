#pragma once

#include <string>

namespace KvText {

/// "text" and the id.
std::string Load(unsigned id);

}  // namespace KvText
