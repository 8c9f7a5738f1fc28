#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>
#include <string>
#include <vector>

#include "manager_object.h"

/// Tables that come back to a manager.
namespace Python {

struct Update {
  std::size_t changed = 0;  // foundations that have another value
  std::size_t added = 0;
};

/// Gives the foundations what a table has for them, or does nothing at all and throws. `columns` is
/// a dict of tuples of the same length under the names of the fields and "current"; `by`, "number"
/// or "name", is the column that tells which foundation a row is about. A cell that is the object
/// `untold` leaves its value alone. With `add`, rows about none become new ones at the end; they
/// need no number, which is then one above the highest. Of "number" and "name", those that are
/// `unique` must not become those of another foundation.
Update update(ManagerObject& manager, const py::dict& columns, const std::string& by, bool add,
              const std::vector<std::string>& unique, py::handle untold);

}  // namespace Python
