#pragma once

#include <iosfwd>
#include <optional>
#include <string>

/// Prints the foundations of a document as a table on `out`; path, version and notes as for
/// Documents::read().
void show(const std::string& path, const std::optional<std::string>& version, std::ostream& out,
          std::ostream& notes);
