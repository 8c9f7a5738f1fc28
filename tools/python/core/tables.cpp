#include <pybind11/stl.h>

#include <string>
#include <vector>

#include "bindings.h"
#include "columns.h"
#include "numbers.h"
#include "text.h"
#include "updating.h"

namespace Python {

void bindTables(py::module_& module) {
  module.def(
      "make_arrays", [](py::handle manager) { return makeArrays(toManager(manager, "manager")); },
      py::arg("manager"),
      "make_arrays(manager)\n--\n\nThe foundations as a dict of numpy arrays, a column each.");
  module.def(
      "make_dicts", [](py::handle manager) { return makeDicts(toManager(manager, "manager")); },
      py::arg("manager"),
      "make_dicts(manager)\n--\n\nThe foundations as a list of dicts, a foundation each.");
  module.def(
      "update",
      [](py::handle manager, const py::dict& columns, py::handle by, py::handle add,
         const std::vector<std::string>& unique, py::handle untold) {
        ManagerObject& object = toManager(manager, "manager");
        const std::string key = encode(by, "by");
        const bool adds = toBool(add, "add");
        const Update done = update(object, columns, key, adds, unique, untold);
        return py::make_tuple(done.changed, done.added);
      },
      py::arg("manager"), py::arg("columns"), py::arg("by"), py::arg("add"), py::arg("unique"),
      py::arg("untold"),
      "update(manager, columns, by, add, unique, untold)\n--\n\n"
      "Give the foundations the values of a dict of tuples; how many changed and were added.");
}

}  // namespace Python
