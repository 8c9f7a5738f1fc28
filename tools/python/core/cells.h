#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>
#include <string>

#include "foundations/fields.h"

/// Cells of tables that users hand over.
namespace Python {

namespace py = pybind11;

/// Where a cell stands.
struct Place {
  const char* column;
  std::size_t row;  // from 0, as Python counts

  /// As messages call it: areaZ in row 3.
  std::string getText() const;
};

/// What the cell of a column of this type holds, a failure mode as its word. May run code of the
/// user. Nothing, for which pandas has several values, is a stiffness only; a NaN is nothing, too,
/// since tables of floats have no other value for it. As a factor it stays a NaN, which a table may
/// only bring back. Throws ValueError, TypeError or OverflowError
/// for what is no value of the column.
Fields::Value toValue(Fields::Type type, py::handle cell, const Place& place);

/// Throws ValueError.
[[noreturn]] void refuseMissing(const Place& place);

}  // namespace Python
