#pragma once

#include <cstddef>

/// Where in its file something stood that was parsed: counted from 1, columns in bytes. Both are 0
/// for what was not parsed but made.
struct KvXmlPosition {
  std::size_t line = 0;    ///< ended by line feeds
  std::size_t column = 0;  ///< in bytes
};
