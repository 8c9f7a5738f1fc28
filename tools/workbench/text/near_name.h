#pragma once

#include <optional>
#include <string>
#include <vector>

/// Of the names, the one that was most likely meant, when at least two letters in three are right.
std::optional<std::string> findNearName(const std::string& asked,
                                        const std::vector<std::string>& names);
