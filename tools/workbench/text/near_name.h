#pragma once

#include <optional>
#include <string>
#include <vector>

/// The name that the user most likely means; at least two letters in three must be right.
std::optional<std::string> findNearName(const std::string& asked,
                                        const std::vector<std::string>& names);
