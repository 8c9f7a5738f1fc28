#pragma once

#include <iosfwd>
#include <string>

/// Prints the foundations of the document at `path` ("-" is standard input) as a table.
void show(const std::string& path, std::ostream& out);
