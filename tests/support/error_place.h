#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <ostream>

#include "kv/xml_error.h"

namespace TestSupport {

/// Where a text is malformed.
struct Place {
  std::size_t line;
  std::size_t column;
};

inline bool operator==(const Place& a, const Place& b) {
  return a.line == b.line && a.column == b.column;
}

inline std::ostream& operator<<(std::ostream& out, const Place& place) {
  return out << "line " << place.line << ", column " << place.column;
}

/// The place of the error that a call throws; the error must have a reason. None when the call
/// throws no error.
template <class Call>
std::optional<Place> findErrorPlace(const Call& call) {
  try {
    call();
  } catch (const KvXmlError& error) {
    EXPECT_NE(error.getReason(), "");
    return Place{error.getLine(), error.getColumn()};
  }
  return std::nullopt;
}

}  // namespace TestSupport
