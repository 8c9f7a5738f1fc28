#pragma once

#include <pybind11/pybind11.h>

#include "foundation_object.h"
#include "manager_object.h"

/// What the files of the bindings share: each of them binds one part, called by module.cpp.
namespace Python {

namespace py = pybind11;

/// Throws TypeError, which calls the value `what`, for what is none, or not made yet.
FoundationObject& toFoundation(py::handle value, const char* what);
ManagerObject& toManager(py::handle value, const char* what);

/// The object of a pybind class within an instance, or null where it is not made yet. It runs no
/// code of Python, so that the garbage collector may ask.
template <class Object>
Object* findWithin(PyObject* self) {
  auto* const instance = reinterpret_cast<py::detail::instance*>(self);
  // The collector sees an instance before pybind11 has laid it out.
  if (!instance->simple_layout && instance->nonsimple.status == nullptr) return nullptr;
  const auto* const type = py::detail::get_type_info(typeid(Object));
  auto place = instance->get_value_and_holder(type, false);
  if (place.inst == nullptr || !place.holder_constructed()) return nullptr;
  return static_cast<Object*>(place.value_ptr());
}

/// Sets up a class whose objects only C++ makes: Python's own way to make one would leave it
/// without an object of C++, for which pybind11 then takes whatever memory holds.
void refuseMaking(PyHeapTypeObject* type);

/// Sets up a class whose objects are whole before `__init__` is called, and without it: a
/// foundation or a manager.
void makeWhole(PyHeapTypeObject* type);

/// Lets the base of all classes refuse to be made itself, as pickles of the first protocols would.
void guardBase();

/// What users see is named after the package, not after its core; `name` lives on.
inline void nameAfterPackage(py::object& bound, const char* name) {
  bound.attr("__module__") = "kvfound";
  reinterpret_cast<PyTypeObject*>(bound.ptr())->tp_name = name;  // which messages tell
}

void bindFoundation(py::module_& module);
void bindManager(py::module_& module);
void bindModel(py::module_& module);
void bindTables(py::module_& module);
/// What reads and writes a manager in the forms of the library.
void bindForms(py::class_<ManagerObject>& bound);

}  // namespace Python
