#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <vector>

#include "found/foundation_user.h"

namespace Python {

namespace py = pybind11;

class ManagerObject;

/// A user of foundations that is written in Python: an object with `uses_foundation`, or a
/// callable.
class User final : public Found::FoundationUser {
 public:
  /// Throws TypeError for what is neither.
  User(ManagerObject& asking, py::object user);

  const py::object& getObject() const { return object; }

  /// What Python raises passes through as py::error_already_set.
  bool usesFoundation(const Found::Foundation* foundation) override;

 private:
  ManagerObject& manager;
  py::object object;
};

}  // namespace Python
