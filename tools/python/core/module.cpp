#include <pybind11/pybind11.h>

#include "bindings.h"
#include "errors.h"
#include "given.h"
#include "numbers.h"

namespace Python {
namespace {

/// Objects of C++ know the classes of one interpreter.
bool isMainInterpreter() { return PyInterpreterState_Get() == PyInterpreterState_Main(); }

void fill(py::module_& module) {
  py::options options;
  options.disable_function_signatures();
  module.doc() = "The compiled core of kvfound.";
  module.attr("__version__") = KVFOUND_VERSION;
  guardBase();
  bindErrors(module);
  bindNumbers(module);
  bindFoundation(module);
  bindManager(module);
  bindGiven(module);
  bindModel(module);
  bindTables(module);
  // Python gives another interpreter the module that was made for the first one, and pybind11
  // cannot raise there.
  module.def("is_main_interpreter", &isMainInterpreter);
}

}  // namespace
}  // namespace Python

/// As PYBIND11_MODULE does, but that nothing is made for an interpreter that is refused.
PYBIND11_PLUGIN_IMPL(_core) {
  PYBIND11_CHECK_PYTHON_VERSION
  if (!Python::isMainInterpreter()) {
    PyErr_SetString(PyExc_ImportError, "kvfound works in the main interpreter only");
    return nullptr;
  }
  try {
    PYBIND11_ENSURE_INTERNALS_READY
    static pybind11::module_::module_def definition;
    auto module = pybind11::module_::create_extension_module("_core", nullptr, &definition);
    Python::fill(module);
    return module.ptr();
  }
  PYBIND11_CATCH_INIT_EXCEPTIONS
}
