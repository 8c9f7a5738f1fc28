#include "collected.h"

namespace Python {
namespace {

namespace py = pybind11;

/// What an object lets go of may run code of the user, and that the collector, which must not find
/// an object that nobody holds; pybind11 leaves this to the class.
void deallocate(PyObject* self) {
  PyObject_GC_UnTrack(self);
  const PyObject* const base = py::detail::get_internals().instance_base;
  reinterpret_cast<const PyTypeObject*>(base)->tp_dealloc(self);
}

}  // namespace

void makeCollected(PyHeapTypeObject* type, traverseproc traverse, inquiry clear) {
  type->ht_type.tp_flags |= Py_TPFLAGS_HAVE_GC;
  type->ht_type.tp_traverse = traverse;
  type->ht_type.tp_clear = clear;
  type->ht_type.tp_dealloc = deallocate;
}

}  // namespace Python
