#include <memory>

#include "bindings.h"
#include "errors.h"

namespace Python {
namespace {

PyObject* refuse(PyTypeObject* type, PyObject* /*arguments*/, PyObject* /*keywords*/) {
  PyErr_Format(PyExc_TypeError, "cannot create '%s' instances", type->tp_name);
  return nullptr;
}

void* makePart(const std::type_info& type) {
  if (type == typeid(FoundationObject))
    return new FoundationObject(std::make_unique<Found::Foundation>());
  return new ManagerObject;
}

void makePart(py::handle self) {
  auto* const instance = reinterpret_cast<py::detail::instance*>(self.ptr());
  py::detail::values_and_holders parts(instance);
  // The garbage collector would see one of them only.
  if (parts.size() != 1) throwTypeError("a class cannot derive from several classes of kvfound");
  for (auto& part : parts) {
    part.value_ptr() = makePart(*part.type->cpptype);
    part.type->init_instance(instance, nullptr);
  }
}

PyObject* make(PyTypeObject* type, PyObject* /*arguments*/, PyObject* /*keywords*/) {
  try {
    auto self = py::reinterpret_steal<py::object>(py::detail::make_new_instance(type));
    makePart(self);
    return self.release().ptr();
  } catch (py::error_already_set& error) {
    error.restore();
  } catch (const std::bad_alloc&) {
    PyErr_NoMemory();
  }
  return nullptr;
}

}  // namespace

void refuseMaking(PyHeapTypeObject* type) { type->ht_type.tp_new = refuse; }

void makeWhole(PyHeapTypeObject* type) { type->ht_type.tp_new = make; }

}  // namespace Python
