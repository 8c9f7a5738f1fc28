#pragma once

#include <pybind11/pybind11.h>

#include <string>

/// What Python sees of the library and the workbench, one concern a file.
namespace Python {

namespace py = pybind11;

/// Python's own exceptions, thrown from C++ with their message.
[[noreturn]] void throwRuntimeError(const std::string& message);
[[noreturn]] void throwValueError(const std::string& message);
[[noreturn]] void throwTypeError(const std::string& message);
[[noreturn]] void throwOverflowError(const std::string& message);

/// The name of the type of `value`, for messages.
std::string nameType(py::handle value);

/// Lets what the library and the workbench throw arrive as exceptions of kvfound._errors.
void bindErrors(py::module_& module);

}  // namespace Python
