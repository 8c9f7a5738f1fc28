#include <algorithm>
#include <initializer_list>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "bindings.h"
#include "errors.h"
#include "text.h"

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

using Names = std::initializer_list<std::string_view>;

/// Throws TypeError in words of Python, which those of pybind11 are not. The first parameter may
/// come without its name.
void requireParameters(std::string_view type, std::string_view first, Names parameters,
                       const py::tuple& arguments, const py::dict& keywords) {
  if (arguments.size() > 1)
    throwTypeError(
        fmt::format("{}() takes 1 positional argument but {} were given", type, arguments.size()));
  for (const auto& entry : keywords) {
    const std::string name = encode(entry.first, "keyword");
    if (std::find(parameters.begin(), parameters.end(), name) == parameters.end())
      throwTypeError(fmt::format("{}() got an unexpected keyword argument '{}'", type, name));
    if (arguments.size() == 1 && name == first)
      throwTypeError(fmt::format("{}() got multiple values for argument '{}'", type, name));
  }
}

/// A class of the user may have parameters of its own.
void requireParameters(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
  const auto of = py::reinterpret_borrow<py::tuple>(arguments);
  const auto named = keywords != nullptr ? py::reinterpret_borrow<py::dict>(keywords) : py::dict();
  const py::handle made(reinterpret_cast<PyObject*>(type));
  if (made.is(py::type::of<FoundationObject>()))
    requireParameters(
        "Foundation", "name",
        {"name", "number", "area", "line", "rotation", "fail_area_z", "fail_line_x", "fail_line_y",
         "fail_line_z", "fail_possible", "factor_area", "factor_line", "generated"},
        of, named);
  else if (made.is(py::type::of<ManagerObject>()))
    requireParameters("FoundationManager", "foundations", {"foundations"}, of, named);
}

/// Memory for an object, which pybind11 takes for granted. Throws std::bad_alloc.
PyObject* allocate(PyTypeObject* type, Py_ssize_t items) {
  PyObject* const made = PyType_GenericAlloc(type, items);
  if (made != nullptr) return made;
  PyErr_Clear();
  throw std::bad_alloc();
}

/// What pybind11 does, for a class in Python as well, which has its own way to get memory.
py::object makeInstance(PyTypeObject* type) {
  auto made = py::reinterpret_steal<py::object>(allocate(type, 0));
  auto* const instance = reinterpret_cast<py::detail::instance*>(made.ptr());
  instance->allocate_layout();
  return made;
}

PyObject* make(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
  try {
    if (PyTuple_GET_SIZE(arguments) > 1 || keywords != nullptr)
      requireParameters(type, arguments, keywords);
    py::object self = makeInstance(type);
    makePart(self);
    return self.release().ptr();
  } catch (py::error_already_set& error) {
    error.restore();
  } catch (const std::bad_alloc&) {
    PyErr_NoMemory();
  }
  return nullptr;
}

/// What pybind11 does, which ends the program where the class is none of C++.
PyObject* makeBound(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
  try {
    if (py::detail::all_type_info(type).empty()) return refuse(type, arguments, keywords);
    return makeInstance(type).release().ptr();
  } catch (const std::bad_alloc&) {
    return PyErr_NoMemory();
  }
}

/// Python lets objects change to another class of the same layout, which would take one object of
/// C++ for another. So each class has a size of its own.
void keepApart(PyHeapTypeObject* type) {
  static Py_ssize_t classes = 0;
  type->ht_type.tp_basicsize += ++classes * static_cast<Py_ssize_t>(sizeof(void*));
}

}  // namespace

void refuseMaking(PyHeapTypeObject* type) {
  keepApart(type);
  type->ht_type.tp_new = refuse;
  type->ht_type.tp_alloc = allocate;
}

void makeWhole(PyHeapTypeObject* type) {
  keepApart(type);
  type->ht_type.tp_new = make;
  type->ht_type.tp_alloc = allocate;
}

void guardBase() {
  PyObject* const base = py::detail::get_internals().instance_base;
  reinterpret_cast<PyTypeObject*>(base)->tp_new = makeBound;
}

}  // namespace Python
