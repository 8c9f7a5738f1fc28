#pragma once

#include <pybind11/pybind11.h>

#include <string>

/// What users give to read from and to write to: a path, bytes, or a binary file object.
namespace Python {

namespace py = pybind11;

struct Given {
  std::string bytes;
  std::string shownPath;  // as messages call it; empty for bytes
};

/// Reads all of a path (str or os.PathLike), a binary file object, or what has the bytes itself.
/// Throws what Python raises, such as FileNotFoundError.
Given readGiven(py::handle source);

/// Writes all to a path (str, bytes or os.PathLike), as a whole or not at all, or to a binary file
/// object, which may take a part at a time. Throws OSError when it takes nothing more or tells a
/// count that cannot be, BlockingIOError when it is a raw one that would have to wait. Unless it
/// `replaces`, throws FileExistsError for a path where something is.
void writeGiven(py::handle target, const std::string& bytes, bool replaces);

/// Throws FileError where something is there but a folder, which nothing is written to anyway.
void requireNoFile(const std::string& path);

void bindGiven(py::module_& module);

}  // namespace Python
