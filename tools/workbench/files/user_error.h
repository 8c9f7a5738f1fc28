#pragma once

#include <stdexcept>

/// An error that the user is told in one line: what, where, and what to do.
class UserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
