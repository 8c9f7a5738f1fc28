#pragma once

#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>

#include "found/foundation_manager.h"

/// An error that the user is told in one line.
class UserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

namespace Documents {

/// Reads the document at `path`, or for "-" from standard input, into `manager`. Its content tells
/// its form: a legacy model document or an exchange document, which is read as `version`, or
/// without one as "1.0" when it holds a "Bedding" element and as the current version when not. What
/// an exchange document holds but cannot be read is told on `notes`, a line each. Throws UserError,
/// which names the file and, where it is malformed, line and column.
void read(const std::string& path, const std::optional<std::string>& version,
          Found::FoundationManager& manager, std::ostream& notes);

}  // namespace Documents
