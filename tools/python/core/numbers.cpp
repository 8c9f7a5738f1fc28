#include "numbers.h"

#include <array>
#include <limits>
#include <string>
#include <string_view>

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
  if (isMasked(value)) return false;
  const PyNumberMethods* const methods = Py_TYPE(value.ptr())->tp_as_number;
  return methods != nullptr && (methods->nb_float != nullptr || methods->nb_index != nullptr);
}

[[noreturn]] void refuse(const char* what, const std::string& wanted, py::handle given) {
  throwTypeError(std::string(what) + ": " + wanted + " is wanted, not " + nameType(given));
}

/// Null without such an attribute.
py::object findAttribute(py::handle value, const char* name) {
  auto found = py::reinterpret_steal<py::object>(PyObject_GetAttrString(value.ptr(), name));
  if (found) return found;
  if (!PyErr_ExceptionMatches(PyExc_AttributeError)) throw py::error_already_set();
  PyErr_Clear();
  return found;
}

/// What numpy calls a kind of values, '\0' for what is none of numpy's.
char findKind(const py::object& dtype) {
  if (!dtype) return '\0';
  const py::object kind = findAttribute(dtype, "kind");
  if (!kind || !PyUnicode_Check(kind.ptr()) || PyUnicode_GET_LENGTH(kind.ptr()) != 1) return '\0';
  return static_cast<char>(PyUnicode_READ_CHAR(kind.ptr(), 0));
}

double convert(py::handle value, const char* what) {
  const double number = PyFloat_AsDouble(value.ptr());
  if (number != -1.0 || PyErr_Occurred() == nullptr) return number;
  if (!PyLong_Check(value.ptr()) || !PyErr_ExceptionMatches(PyExc_OverflowError))
    throw py::error_already_set();
  PyErr_Clear();
  throwOverflowError(std::string(what) + ": the int is beyond the range of a float");
}

bool isNumber(py::handle value) { return !isBool(value) && !isText(value) && hasNumber(value); }

/// The one object of an array of objects, itself no array.
py::object getOnly(py::handle array, const char* what) {
  auto item = py::reinterpret_steal<py::object>(PyObject_CallMethod(array.ptr(), "item", nullptr));
  if (!item && !PyErr_ExceptionMatches(PyExc_ValueError)) throw py::error_already_set();
  PyErr_Clear();
  if (!item) refuse(what, "a number", array);
  if (!isNumber(item) || findAttribute(item, "dtype")) refuse(what, "a number", item);
  return item;
}

}  // namespace

bool isMasked(py::handle value) {
  return std::string_view(Py_TYPE(value.ptr())->tp_name) == "MaskedConstant";
}

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
  if (PyFloat_CheckExact(value.ptr())) return PyFloat_AS_DOUBLE(value.ptr());
  if (!isNumber(value)) refuse(what, "a number", value);
  if (PyLong_CheckExact(value.ptr())) return convert(value, what);
  // numpy makes numbers of times, of texts and of half a complex number, which Python does not.
  const py::object dtype = findAttribute(value, "dtype");
  const char kind = findKind(dtype);
  if (kind == 'O') return convert(getOnly(value, what), what);
  if (kind != '\0' && std::string_view("iuf").find(kind) == std::string_view::npos)
    throwTypeError(std::string(what) + ": a number is wanted, not numpy's " +
                   py::cast<std::string>(py::str(dtype)));
  return convert(value, what);
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
