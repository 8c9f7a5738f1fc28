#include "cells.h"

#include <cmath>
#include <limits>
#include <string_view>

#include "errors.h"
#include "foundations/failures.h"
#include "numbers.h"
#include "text.h"

namespace Python {
namespace {

using Fields::Type;
using Fields::Value;

bool isFloat(py::handle cell) {
  const PyNumberMethods* const methods = Py_TYPE(cell.ptr())->tp_as_number;
  return PyFloat_Check(cell.ptr()) ||
         (methods != nullptr && methods->nb_float != nullptr && methods->nb_index == nullptr);
}

/// None, and what pandas and numpy have in its place.
bool isNothing(py::handle cell) {
  if (cell.is_none() || isMasked(cell)) return true;
  const std::string_view type = Py_TYPE(cell.ptr())->tp_name;
  return type == "NAType" || type == "NaTType" || type == "pandas._libs.missing.NAType" ||
         type == "pandas._libs.tslibs.nattype.NaTType";
}

/// What pandas has for nothing in columns of other values.
bool isPlainNan(py::handle cell) {
  return PyFloat_Check(cell.ptr()) && std::isnan(PyFloat_AS_DOUBLE(cell.ptr()));
}

/// Floats are fine as long as they are whole: pandas makes them of a column with gaps.
int toWhole(py::handle cell, const Place& place) {
  const std::string text = place.getText();
  if (PyUnicode_Check(cell.ptr()) || isBool(cell) || !isFloat(cell))
    return toInt(cell, text.c_str());
  const double number = toDouble(cell, text.c_str());
  if (std::isnan(number)) refuseMissing(place);
  if (std::trunc(number) != number)
    throwValueError(text + ": a whole number is wanted, not " +
                    py::cast<std::string>(py::repr(py::float_(number))));
  if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
    throwOverflowError(text + ": the number is not between -2147483648 and 2147483647");
  return static_cast<int>(number);
}

int toNumber(py::handle cell, const Place& place) {
  if (PyLong_CheckExact(cell.ptr())) {
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(cell.ptr(), &overflow);
    if (overflow == 0 && number >= std::numeric_limits<int>::min() &&
        number <= std::numeric_limits<int>::max())
      return static_cast<int>(number);
  }
  return toWhole(cell, place);
}

double toFloat(py::handle cell, const Place& place) {
  if (PyFloat_CheckExact(cell.ptr())) return PyFloat_AS_DOUBLE(cell.ptr());
  return toDouble(cell, place.getText().c_str());
}

std::string toMode(py::handle cell, const Place& place) {
  if (!PyUnicode_Check(cell.ptr()))
    return Failures::getWord(static_cast<Found::Foundation::Failure>(toNumber(cell, place)));
  std::string word = encode(cell, place.getText().c_str());
  if (!Failures::read(word))
    throwValueError(place.getText() + ": tension, compression or none is wanted, not " +
                    py::cast<std::string>(py::repr(cell)));
  return word;
}

}  // namespace

std::string Place::getText() const {
  return std::string(column) + " in row " + std::to_string(row);
}

void refuseMissing(const Place& place) {
  throwValueError(place.getText() + ": the value is missing");
}

Value toValue(Type type, py::handle cell, const Place& place) {
  if (isNothing(cell) || isPlainNan(cell)) {
    if (type == Type::stiffness) return {};
    if (type == Type::factor && isPlainNan(cell)) return std::numeric_limits<double>::quiet_NaN();
    refuseMissing(place);
  }
  switch (type) {
    case Type::integer:
      return toNumber(cell, place);
    case Type::text:
      return encode(cell, place.getText().c_str());
    case Type::flag:
      return toBool(cell, place.getText().c_str());
    case Type::failure:
      return toMode(cell, place);
    case Type::stiffness:
    case Type::factor:
      break;
  }
  const double number = toFloat(cell, place);
  if (std::isnan(number) && type == Type::stiffness) return {};
  return number;
}

}  // namespace Python
