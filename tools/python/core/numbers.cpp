#include "numbers.h"

#include <array>
#include <limits>
#include <string>

#include "errors.h"

namespace Python {
namespace {

using Failure = Found::Foundation::Failure;

// Never released: they are used for as long as there is an interpreter.
std::array<PyObject*, 3> failures = {};
constexpr int firstFailure = -1;

bool isNumpyBool(py::handle value) {
  const std::string_view name = Py_TYPE(value.ptr())->tp_name;
  return name == "numpy.bool_" || name == "numpy.bool";
}

bool isText(py::handle value) {
  return PyUnicode_Check(value.ptr()) || PyBytes_Check(value.ptr()) ||
         PyByteArray_Check(value.ptr());
}

/// What can be walked through and yet is no list of components: a text, or what has no order.
bool isNoVector(py::handle value) {
  return isText(value) || PyAnySet_Check(value.ptr()) || PyDict_Check(value.ptr());
}

bool hasNumber(py::handle value) {
  const PyNumberMethods* const methods = Py_TYPE(value.ptr())->tp_as_number;
  return methods != nullptr && (methods->nb_float != nullptr || methods->nb_index != nullptr);
}

[[noreturn]] void refuse(const char* what, const std::string& wanted, py::handle given) {
  throwTypeError(std::string(what) + ": " + wanted + " is wanted, not " + nameType(given));
}

}  // namespace

bool isBool(py::handle value) { return PyBool_Check(value.ptr()) || isNumpyBool(value); }

int toInt(py::handle value, const char* what) {
  if (isBool(value) || !PyIndex_Check(value.ptr())) refuse(what, "an int", value);
  const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
  if (!index) throw py::error_already_set();
  int overflow = 0;
  const long long number = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
  if (overflow != 0 || number < std::numeric_limits<int>::min() ||
      number > std::numeric_limits<int>::max())
    throwOverflowError(std::string(what) + ": the int is not between -2147483648 and 2147483647");
  return static_cast<int>(number);
}

double toDouble(py::handle value, const char* what) {
  // numpy makes numbers of arrays of texts, which Python does not.
  if (isBool(value) || isText(value) || !hasNumber(value)) refuse(what, "a number", value);
  const double number = PyFloat_AsDouble(value.ptr());
  if (number != -1.0 || PyErr_Occurred() == nullptr) return number;
  if (!PyLong_Check(value.ptr()) || !PyErr_ExceptionMatches(PyExc_OverflowError))
    throw py::error_already_set();
  PyErr_Clear();
  throwOverflowError(std::string(what) + ": the int is beyond the range of a float");
}

bool toBool(py::handle value, const char* what) {
  if (PyBool_Check(value.ptr())) return value.is(py::handle(Py_True));
  if (isNumpyBool(value)) {
    const int truth = PyObject_IsTrue(value.ptr());
    if (truth < 0) throw py::error_already_set();
    return truth != 0;
  }
  if (!PyIndex_Check(value.ptr())) refuse(what, "a bool", value);
  const int number = toInt(value, what);
  if (number != 0 && number != 1) throwValueError(std::string(what) + ": a bool is wanted");
  return number == 1;
}

std::optional<KvVector3D> toVector(py::handle value, const char* what) {
  if (value.is_none()) return std::nullopt;
  if (isNoVector(value)) refuse(what, "a sequence of 3 numbers, or None,", value);
  const auto items = py::reinterpret_steal<py::object>(PyObject_GetIter(value.ptr()));
  if (!items) {
    if (!PyErr_ExceptionMatches(PyExc_TypeError)) throw py::error_already_set();
    PyErr_Clear();
    refuse(what, "a sequence of 3 numbers, or None,", value);
  }
  std::array<double, 3> numbers = {};
  std::size_t count = 0;
  while (const auto item = py::reinterpret_steal<py::object>(PyIter_Next(items.ptr()))) {
    if (count == numbers.size())
      throwValueError(std::string(what) + ": 3 numbers are wanted (x, y, z), not more");
    numbers[count++] = toDouble(item, what);
  }
  if (PyErr_Occurred() != nullptr) throw py::error_already_set();
  if (count < numbers.size())
    throwValueError(std::string(what) + ": 3 numbers are wanted (x, y, z), not " +
                    std::to_string(count));
  return KvVector3D(numbers[0], numbers[1], numbers[2]);
}

Failure toFailure(py::handle value, const char* what) {
  return static_cast<Failure>(toInt(value, what));
}

py::tuple fromVector(const KvVector3D& vector) {
  return py::make_tuple(vector.x, vector.y, vector.z);
}

py::object fromFailure(Failure failure) {
  const long long place = static_cast<long long>(failure) - firstFailure;
  if (place < 0 || place >= static_cast<long long>(failures.size()))
    return py::int_(static_cast<int>(failure));
  return py::reinterpret_borrow<py::object>(failures[static_cast<std::size_t>(place)]);
}

void bindNumbers(py::module_& /*module*/) {
  const py::object type = py::module_::import("kvfound._failure").attr("Failure");
  for (std::size_t i = 0; i < failures.size(); ++i)
    failures[i] = type(static_cast<int>(i) + firstFailure).release().ptr();
}

}  // namespace Python
