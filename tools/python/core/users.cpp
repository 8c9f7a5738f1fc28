#include "users.h"

#include <utility>

#include "errors.h"
#include "manager_object.h"
#include "numbers.h"
#include "threads.h"

namespace Python {
namespace {

constexpr const char* question = "uses_foundation";

bool canBeAsked(py::handle user) {
  return py::hasattr(user, question) || PyCallable_Check(user.ptr()) != 0;
}

/// A user that forgets to answer would let everything go.
bool toAnswer(const py::object& answer) {
  if (!isBool(answer) && !PyLong_Check(answer.ptr()))
    throwTypeError("a user must return bool, not " + nameType(answer));
  const int truth = PyObject_IsTrue(answer.ptr());
  if (truth < 0) throw py::error_already_set();
  return truth != 0;
}

}  // namespace

User::User(ManagerObject& asking, py::object user) : manager(asking), object(std::move(user)) {
  if (!canBeAsked(object))
    throwTypeError("a user is a callable or has uses_foundation(foundation), unlike " +
                   nameType(object));
}

bool User::usesFoundation(const Found::Foundation* foundation) {
  // A user need not run code of Python, which would look for signals.
  if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  const py::object asked = manager.giveAsked(foundation);
  const py::object answer = runCode([&]() -> py::object {
    return py::hasattr(object, question) ? object.attr(question)(asked) : object(asked);
  });
  return toAnswer(answer);
}

}  // namespace Python
