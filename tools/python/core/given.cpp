#include "given.h"

#include "errors.h"
#include "files/output_file.h"
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

void writeFile(const py::object& file, const std::string& bytes) {
  const py::bytes all(bytes);
  // A file without a buffer may write less than it is given.
  std::size_t written = 0;
  do {
    const py::object rest =
        written == 0 ? py::object(all) : py::object(py::bytes(bytes.substr(written)));
    const py::object count = runCode([&] { return py::object(file.attr("write")(rest)); });
    if (!PyLong_Check(count.ptr())) return;
    const auto more = count.cast<std::size_t>();
    if (more == 0) break;
    written += more;
  } while (written < bytes.size());
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
  const py::object file = py::module_::import("io").attr("open")(path, "rb");
  std::string bytes = readFile(file);
  file.attr("close")();
  return {std::move(bytes), shown};
}

void writeGiven(py::handle target, const std::string& bytes) {
  if (py::hasattr(target, "write"))
    return writeFile(py::reinterpret_borrow<py::object>(target), bytes);
  const std::string path = encodePath(findPath(target));
  const Unlocked unlocked;
  OutputFile file(path);
  file.create();
  file.write(bytes);
  file.commit();
}

}  // namespace Python
