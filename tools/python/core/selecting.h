#pragma once

#include <pybind11/pybind11.h>

#include "foundations/selection.h"

namespace Python {

namespace py = pybind11;

/// From a text such as "3,5-9", a pattern of names, and a part, "area" or "line"; each may be None.
/// Throws TypeError or ValueError.
Selection toSelection(const py::object& numbers, const py::object& name, bool generated,
                      const py::object& part);

}  // namespace Python
