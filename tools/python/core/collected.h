#pragma once

#include <pybind11/pybind11.h>

namespace Python {

/// Sets up a class whose objects the garbage collector looks into. `clear` may be null: for objects
/// that make no circles by themselves.
void makeCollected(PyHeapTypeObject* type, traverseproc traverse, inquiry clear);

}  // namespace Python
