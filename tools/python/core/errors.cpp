#include "errors.h"

#include <cerrno>
#include <exception>
#include <utility>

#include "files/user_error.h"
#include "kv/xml_error.h"
#include "text.h"

namespace Python {
namespace {

// Never released: it is used for as long as there is an interpreter.
PyObject* documentError = nullptr;

void setDocumentError(const std::string& reason, const py::object& filename, const py::object& line,
                      const py::object& column) {
  const py::object made = py::handle(documentError)(decode(reason), filename, line, column);
  PyErr_SetObject(documentError, made.ptr());
}

/// None for what is not known.
py::object toNumber(std::size_t number) {
  return number > 0 ? py::object(py::int_(number)) : py::object(py::none());
}

/// Python chooses the class by the number, such as FileNotFoundError.
void setFileError(const FileError& error) {
  if (error.getNumber() == ENOMEM) {
    PyErr_SetString(PyExc_MemoryError, error.what());
    return;
  }
  const py::object path =
      error.getPath().empty() ? py::object(py::none()) : decode(error.getPath());
  const py::object made =
      py::handle(PyExc_OSError)(error.getNumber(), decode(error.getSentence()), path);
  PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(made.ptr())), made.ptr());
}

void translate(std::exception_ptr thrown) {
  try {
    if (thrown) std::rethrow_exception(std::move(thrown));
  } catch (const KvXmlError& error) {
    setDocumentError(error.getReason(), py::none(), py::int_(error.getLine()),
                     py::int_(error.getColumn()));
  } catch (const FileError& error) {
    setFileError(error);
  } catch (const DocumentError& error) {
    const KvXmlPosition place = error.getPosition();
    const std::string& path = error.getPath();  // empty for bytes that are given to a manager
    setDocumentError(error.getSentence(), path.empty() ? py::none() : py::object(decode(path)),
                     toNumber(place.line), toNumber(place.column));
  } catch (const UserError& error) {
    setDocumentError(error.what(), py::none(), py::none(), py::none());
  }
}

}  // namespace

void throwRuntimeError(const std::string& message) {
  PyErr_SetString(PyExc_RuntimeError, message.c_str());
  throw py::error_already_set();
}

void throwValueError(const std::string& message) {
  PyErr_SetString(PyExc_ValueError, message.c_str());
  throw py::error_already_set();
}

void throwTypeError(const std::string& message) {
  PyErr_SetString(PyExc_TypeError, message.c_str());
  throw py::error_already_set();
}

void throwOverflowError(const std::string& message) {
  PyErr_SetString(PyExc_OverflowError, message.c_str());
  throw py::error_already_set();
}

std::string nameType(py::handle value) { return Py_TYPE(value.ptr())->tp_name; }

void bindErrors(py::module_& /*module*/) {
  py::object error = py::module_::import("kvfound._errors").attr("DocumentError");
  documentError = error.release().ptr();
  py::register_local_exception_translator(&translate);
}

}  // namespace Python
