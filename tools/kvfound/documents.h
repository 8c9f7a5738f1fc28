#pragma once

#include <stdexcept>
#include <string>

#include "found/foundation_manager.h"

/// An error that the user is told in one line.
class UserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

namespace Documents {

/// Reads the document at `path`, or for "-" from standard input, into `manager`. Throws UserError,
/// which names the file and, where it is malformed, line and column.
void read(const std::string& path, Found::FoundationManager& manager);

}  // namespace Documents
