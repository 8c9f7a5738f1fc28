#pragma once

#include <pybind11/pybind11.h>

#include "manager_object.h"

/// The foundations of a manager as tables.
namespace Python {

/// A dict of numpy arrays, a column each, under the names of the fields and "current".
py::dict makeArrays(ManagerObject& manager);

/// A list of dicts, a foundation each, under the same names.
py::list makeDicts(ManagerObject& manager);

}  // namespace Python
