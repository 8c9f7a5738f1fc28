#include "errors.h"

#include <exception>

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

/// A place and what is wrong there: "model.xml:3:7: sentence", where the place may lack.
struct Told {
  explicit Told(const std::string& text) : reason(text) {
    const std::size_t end = text.find(": ");
    if (end == std::string::npos) return;
    std::string place = text.substr(0, end);
    second = cutNumber(place);
    first = cutNumber(place);
    if (second.is_none()) return;
    if (first.is_none()) std::swap(first, second);
    filename = decode(place);
    reason = text.substr(end + 2);
  }

  py::object filename = py::none();
  py::object first = py::none();   // the line
  py::object second = py::none();  // the column
  std::string reason;

 private:
  /// Takes a number behind a colon from the end of `place`; None when there is none.
  static py::object cutNumber(std::string& place) {
    const std::size_t colon = place.rfind(':');
    if (colon == std::string::npos || colon == 0) return py::none();
    const std::string digits = place.substr(colon + 1);
    if (digits.empty() || digits.size() > 18 ||
        digits.find_first_not_of("0123456789") != std::string::npos)
      return py::none();
    place.resize(colon);
    return py::int_(std::stoll(digits));
  }
};

void translate(std::exception_ptr thrown) {
  try {
    if (thrown) std::rethrow_exception(thrown);
  } catch (const KvXmlError& error) {
    setDocumentError(error.getReason(), py::none(), py::int_(error.getLine()),
                     py::int_(error.getColumn()));
  } catch (const UserError& error) {
    const Told told(error.what());
    setDocumentError(told.reason, told.filename, told.first, told.second);
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
