#include "given.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "errors.h"
#include "files/output_file.h"
#include "files/paths.h"
#include "files/user_error.h"
#include "text.h"
#include "threads.h"

namespace Python {
namespace {

std::string copyBytes(py::handle buffer) {
  const auto bytes = py::reinterpret_steal<py::bytes>(PyBytes_FromObject(buffer.ptr()));
  if (!bytes) throw py::error_already_set();
  return std::string(PyBytes_AS_STRING(bytes.ptr()),
                     static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr())));
}

std::string readFile(const py::object& file) {
  const py::object read = runCode([&] { return py::object(file.attr("read")()); });
  if (!PyObject_CheckBuffer(read.ptr()))
    throwTypeError("a binary file is wanted: read() returned " + nameType(read) + ", not bytes");
  return copyBytes(read);
}

/// As messages call a file: its name, unless that is none.
std::string nameFile(const py::object& file) {
  const py::object name = py::getattr(file, "name", py::none());
  return PyUnicode_Check(name.ptr()) ? encode(name, "name") : std::string();
}

py::object findPath(py::handle given) {
  auto path = py::reinterpret_steal<py::object>(PyOS_FSPath(given.ptr()));
  if (!path) throw py::error_already_set();
  return path;
}

std::string encodePath(const py::object& path) {
  PyObject* converted = nullptr;
  if (PyUnicode_FSConverter(path.ptr(), &converted) == 0) throw py::error_already_set();
  return copyBytes(py::reinterpret_steal<py::object>(converted));
}

[[noreturn]] void throwError(PyObject* type, const std::string& message) {
  PyErr_SetString(type, message.c_str());
  throw py::error_already_set();
}

/// A raw file that must not wait has written nothing then; other files say nothing and write all.
std::size_t countUntold(const py::object& file, std::size_t given) {
  if (py::isinstance(file, py::module_::import("io").attr("RawIOBase")))
    throwError(PyExc_BlockingIOError, "the file would have to wait to be written");
  return given;
}

/// From what write() returned for so many bytes.
std::size_t toCount(const py::object& file, const py::object& count, std::size_t given) {
  if (count.is_none()) return countUntold(file, given);
  if (!PyIndex_Check(count.ptr()))
    throwTypeError("write() returned " + nameType(count) + ", not a count of bytes");
  const py::ssize_t written = PyNumber_AsSsize_t(count.ptr(), nullptr);  // cuts what is too large
  if (PyErr_Occurred() != nullptr) throw py::error_already_set();
  if (written < 0 || static_cast<std::size_t>(written) > given)
    throwError(PyExc_OSError,
               "write() returned a count that is not between 0 and " + std::to_string(given));
  if (written == 0) throwError(PyExc_OSError, "the file takes no more: write() returned 0");
  return static_cast<std::size_t>(written);
}

/// A file without a buffer may write less than it is given.
void writeAll(const py::object& file, const py::bytes& all) {
  const auto size = static_cast<std::size_t>(PyBytes_GET_SIZE(all.ptr()));
  std::size_t written = 0;
  while (written < size) {
    const py::object rest =
        written == 0 ? py::object(all)
                     : py::object(py::memoryview(all)[py::slice(
                           static_cast<py::ssize_t>(written), static_cast<py::ssize_t>(size), 1)]);
    written += toCount(file, file.attr("write")(rest), size - written);
  }
}

void writeFile(const py::object& file, const py::bytes& bytes) {
  runCode([&] { writeAll(file, bytes); });
}

std::string readPath(const py::object& path) {
  return runCode([&] {
    const py::object file = py::module_::import("io").attr("open")(path, "rb");
    std::string bytes = readFile(file);
    file.attr("close")();
    return bytes;
  });
}

}  // namespace

Given readGiven(py::handle source) {
  if (!PyUnicode_Check(source.ptr()) && PyObject_CheckBuffer(source.ptr()))
    return {copyBytes(source), ""};
  if (py::hasattr(source, "read")) {
    const auto file = py::reinterpret_borrow<py::object>(source);
    const std::string name = nameFile(file);
    return {readFile(file), name};
  }
  const py::object path = findPath(source);
  const std::string shown = encodePath(path);
  return {readPath(path), shown};
}

void writeGiven(py::handle target, const std::string& bytes, bool replaces) {
  if (py::hasattr(target, "write"))
    return writeFile(py::reinterpret_borrow<py::object>(target), py::bytes(bytes));
  const std::string path = encodePath(findPath(target));
  const Unlocked unlocked;
  if (!replaces) requireNoFile(path);
  OutputFile file(path);
  file.create();
  file.write(bytes);
  file.commit();
}

void requireNoFile(const std::string& path) {
  std::error_code ignored;
  const auto status = std::filesystem::status(Paths::fromText(path), ignored);
  if (std::filesystem::exists(status) && !std::filesystem::is_directory(status))
    throw FileError(path, "is there already", EEXIST);
}

void bindGiven(py::module_& module) {
  module.def("write_object", &writeFile, py::arg("file"), py::arg("content"));
}

}  // namespace Python
