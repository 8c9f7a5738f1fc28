#include "text.h"

#include "errors.h"

namespace Python {

py::str decode(std::string_view utf8) {
  PyObject* const made =
      PyUnicode_DecodeUTF8(utf8.data(), static_cast<Py_ssize_t>(utf8.size()), "surrogateescape");
  if (made == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(made);
}

std::string encode(py::handle text, const char* what) {
  if (!PyUnicode_Check(text.ptr()))
    throwTypeError(std::string(what) + ": a str is wanted, not " + nameType(text));
  PyObject* const made = PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape");
  if (made == nullptr) throw py::error_already_set();
  const auto bytes = py::reinterpret_steal<py::bytes>(made);
  return std::string(PyBytes_AS_STRING(bytes.ptr()),
                     static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr())));
}

bool isWide(std::string_view bytes) {
  using namespace std::string_view_literals;
  for (const std::string_view start :
       {"\xff\xfe"sv, "\xfe\xff"sv, "\0\0\xfe\xff"sv, "<\0"sv, "\0<"sv, "\0\0\0<"sv})
    if (bytes.substr(0, start.size()) == start) return true;
  return false;
}

}  // namespace Python
