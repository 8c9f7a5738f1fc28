#include <pybind11/pybind11.h>

#include "bindings.h"
#include "errors.h"
#include "given.h"
#include "numbers.h"

PYBIND11_MODULE(_core, module) {
  pybind11::options options;
  options.disable_function_signatures();
  module.doc() = "The compiled core of kvfound.";
  module.attr("__version__") = KVFOUND_VERSION;
  Python::guardBase();
  Python::bindErrors(module);
  Python::bindNumbers(module);
  Python::bindFoundation(module);
  Python::bindManager(module);
  Python::bindGiven(module);
  Python::bindModel(module);
  Python::bindTables(module);
}
