#pragma once

#include <pybind11/pybind11.h>

#include <optional>

#include "found/foundation.h"
#include "kv/vector3d.h"

/// Values from Python, taken for what they are: nothing is cut or guessed. A conversion may run
/// code of the user, which may change anything; so convert all arguments first, then look at
/// foundations and managers. `what` names the value in messages.
namespace Python {

namespace py = pybind11;

/// From an int, or what Python takes for one (`__index__`). Throws TypeError for anything else,
/// floats and bools included, and OverflowError for what does not fit.
int toInt(py::handle value, const char* what);

/// From a number, NaN and infinities included. Throws TypeError for a bool and what is no number,
/// OverflowError for an int beyond the range.
double toDouble(py::handle value, const char* what);

/// What masked arrays of numpy have in the place of a number; it makes a NaN of itself.
bool isMasked(py::handle value);

/// A bool, of numpy too.
bool isBool(py::handle value);

/// From a bool, of numpy too, or the ints 0 and 1. Throws TypeError or ValueError.
bool toBool(py::handle value, const char* what);

/// From three numbers in their order, or None. Throws TypeError, ValueError or OverflowError.
std::optional<KvVector3D> toVector(py::handle value, const char* what);

/// From a Failure or any other int.
Found::Foundation::Failure toFailure(py::handle value, const char* what);

/// The tuple of three floats.
py::tuple fromVector(const KvVector3D& vector);

/// The member of Failure, or an int that is none of them.
py::object fromFailure(Found::Foundation::Failure failure);

/// Fetches kvfound.Failure.
void bindNumbers(py::module_& module);

}  // namespace Python
