#pragma once

#include <pybind11/pybind11.h>

#include <memory>

#include "found/foundation.h"

namespace Python {

namespace py = pybind11;

class ManagerObject;

/// What a Python object of class Foundation stands for: a foundation of its own, or one that a
/// manager has. It is never without one once Python has seen it: what leaves its manager becomes
/// the object's own.
///
/// A foundation that a manager has is one that its list holds or that it has put aside for redo.
/// As long as an object stands for one, it holds the manager.
class FoundationObject {
 public:
  /// Stands for nothing yet, see ManagerObject::give().
  FoundationObject() = default;
  /// Stands for a foundation of its own.
  explicit FoundationObject(std::unique_ptr<Found::Foundation> own);
  ~FoundationObject();
  FoundationObject(const FoundationObject&) = delete;
  FoundationObject& operator=(const FoundationObject&) = delete;

  /// Throws RuntimeError when it stands for nothing. The foundation lives as long as this object
  /// does, whatever happens to its manager.
  Found::Foundation& get() const;

  /// Null for one that is the object's own.
  ManagerObject* getManager() const { return manager; }
  /// The object of that manager, or None.
  py::object getKeeper() const;

 private:
  friend class ManagerObject;

  Found::Foundation* foundation = nullptr;
  std::unique_ptr<Found::Foundation> own;
  ManagerObject* manager = nullptr;
  py::object keeper;         // of the manager
  PyObject* self = nullptr;  // while a manager knows this object; not held
};

/// A new Python object of a foundation of its own.
py::object makeFoundation(std::unique_ptr<Found::Foundation> own);

}  // namespace Python
