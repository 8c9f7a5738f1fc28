#include <limits>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "bindings.h"
#include "collected.h"
#include "errors.h"
#include "manager_object.h"
#include "numbers.h"
#include "text.h"

namespace Python {
namespace {

using Found::Foundation;
using List = std::vector<Foundation*>;
using Class = py::class_<ManagerObject>;

constexpr const char* classDoc =
    R"(The foundations of one model, in the order in which they were added.

A sequence: len(), indexing by int and slice, iteration, reversed() and `in`, which asks for the same
foundation, not for an equal one. Iteration raises RuntimeError when the list is changed in its midst,
as with a dict; iterate over `foundations`, a list of its own, to change it. Numbers and names are not
kept unique; where something is looked up, the first match wins.

A foundation is in one manager at most: adding one that a manager has already raises ValueError. One
that leaves its manager, in whatever way, lives on by itself with its last values. One object stands
for one foundation. Objects are made when they are asked for; those of a subclass of Foundation stay
with the manager, and so does what they keep beside the values.

Users tell which foundations are in use, see add_user(). While they are asked, and while the manager
is read into, whatever changes the list or the users raises RuntimeError, in every thread.

Copies and pickles hold copies of the foundations, with the current one and max_value, but neither
users nor removed foundations.

A manager may be used in several threads; each call is done as a whole.)";

/// Walks through the list from either end.
class Iterator {
 public:
  Iterator(py::object walked, bool backwards)
      : keeper(std::move(walked)),
        manager(toManager(keeper, "self")),
        edits(manager.getEdits()),
        isBackwards(backwards) {}

  py::object next() {
    if (isAtEnd) throw py::stop_iteration();
    py::object found = manager.give([this]() -> Foundation* {
      if (manager.getEdits() != edits)
        throwRuntimeError("the manager was changed during iteration");
      const List& list = manager.getList();
      if (index == list.size()) return nullptr;
      return isBackwards ? list[list.size() - 1 - index] : list[index];
    });
    isAtEnd = found.is_none();
    if (isAtEnd) throw py::stop_iteration();
    ++index;
    return found;
  }

  py::handle getKeeper() const { return keeper; }

 private:
  py::object keeper;
  ManagerObject& manager;
  std::size_t edits;
  std::size_t index = 0;
  bool isBackwards;
  bool isAtEnd = false;
};

int traverseIterator(PyObject* self, visitproc visit, void* arg) {
#if PY_VERSION_HEX >= 0x03090000
  Py_VISIT(Py_TYPE(self));
#endif
  const Iterator* const iterator = findWithin<Iterator>(self);
  return iterator != nullptr ? visit(iterator->getKeeper().ptr(), arg) : 0;
}

/// It has nothing to clear: its manager lets go of what makes circles.
void collectIterator(PyHeapTypeObject* type) {
  refuseMaking(type);
  makeCollected(type, traverseIterator, nullptr);
}

int traverse(PyObject* self, visitproc visit, void* arg) {
#if PY_VERSION_HEX >= 0x03090000
  Py_VISIT(Py_TYPE(self));
#endif
  const ManagerObject* const object = findWithin<ManagerObject>(self);
  return object != nullptr ? object->traverse(visit, arg) : 0;
}

int clear(PyObject* self) {
  auto* const object = findWithin<ManagerObject>(self);
  if (object != nullptr) object->clear();
  return 0;
}

void collectGarbage(PyHeapTypeObject* type) {
  makeWhole(type);
  makeCollected(type, traverse, clear);
}

/// All foundations of an iterable, each of them one that can be added.
std::vector<py::object> collect(py::handle foundations) {
  std::vector<py::object> collected;
  for (const py::handle foundation : py::iter(foundations)) {
    toFoundation(foundation, "foundations");
    collected.push_back(py::reinterpret_borrow<py::object>(foundation));
  }
  return collected;
}

void requireFree(const std::vector<py::object>& foundations) {
  std::unordered_set<const FoundationObject*> seen;
  for (const py::object& foundation : foundations) {
    const FoundationObject& object = toFoundation(foundation, "foundations");
    if (object.getManager() != nullptr)
      throwValueError("a manager has one of these foundations; take it out there, or add a copy");
    if (!seen.insert(&object).second) throwValueError("a foundation is given twice; add a copy");
  }
}

/// All or none of them.
void addAll(ManagerObject& manager, const std::vector<py::object>& foundations) {
  requireFree(foundations);
  std::size_t added = 0;
  try {
    for (; added < foundations.size(); ++added) manager.add(foundations[added]);
  } catch (...) {
    while (added > 0) manager.remove(toFoundation(foundations[--added], "foundations"), false);
    throw;
  }
}

/// Not as a constructor: the object is whole before, and a second call adds more.
void bindInit(Class& bound) {
  bound.attr("__init__") = py::cpp_function(
      [](ManagerObject& self, py::handle foundations) { addAll(self, collect(foundations)); },
      py::name("FoundationManager"), py::is_method(bound), py::arg("foundations") = py::tuple(),
      "FoundationManager($module, self, foundations=())\n--\n\n");
}

py::object giveAt(ManagerObject& self, py::handle index) {
  const auto place = py::reinterpret_steal<py::object>(PyNumber_Index(index.ptr()));
  if (!place) throw py::error_already_set();
  const py::ssize_t given = PyLong_AsSsize_t(place.ptr());
  if (given == -1 && PyErr_Occurred() != nullptr) {
    PyErr_Clear();
    throw py::index_error("the manager has no such index");
  }
  return self.give([&]() -> Foundation* {
    const auto size = static_cast<py::ssize_t>(self.getList().size());
    const py::ssize_t wanted = given < 0 ? given + size : given;
    if (wanted < 0 || wanted >= size) throw py::index_error("the manager has no such index");
    return self.getList()[static_cast<std::size_t>(wanted)];
  });
}

py::list giveSlice(ManagerObject& self, py::handle slice) {
  py::ssize_t first = 0;
  py::ssize_t end = 0;
  py::ssize_t step = 1;
  if (PySlice_Unpack(slice.ptr(), &first, &end, &step) < 0) throw py::error_already_set();
  return self.giveAll([&]() -> List {
    py::ssize_t from = first;
    py::ssize_t to = end;
    const List& all = self.getList();
    const py::ssize_t count =
        PySlice_AdjustIndices(static_cast<py::ssize_t>(all.size()), &from, &to, step);
    List wanted;
    for (py::ssize_t i = 0; i < count; ++i)
      wanted.push_back(all[static_cast<std::size_t>(from + i * step)]);
    return wanted;
  });
}

bool contains(ManagerObject& self, py::handle value) {
  if (!py::isinstance<FoundationObject>(value)) return false;
  const FoundationObject& object = toFoundation(value, "foundation");
  return object.getManager() == &self && self.isListed(&object.get());
}

/// Bounds are those of a slice, also None.
std::size_t findIndex(ManagerObject& self, py::handle value, const py::object& start,
                      const py::object& stop) {
  const auto bounds =
      py::reinterpret_steal<py::object>(PySlice_New(start.ptr(), stop.ptr(), nullptr));
  if (!bounds) throw py::error_already_set();
  py::ssize_t from = 0;
  py::ssize_t to = 0;
  py::ssize_t step = 1;
  if (PySlice_Unpack(bounds.ptr(), &from, &to, &step) < 0) throw py::error_already_set();
  if (contains(self, value)) {
    const Foundation* const wanted = &toFoundation(value, "foundation").get();
    const List& list = self.getList();
    PySlice_AdjustIndices(static_cast<py::ssize_t>(list.size()), &from, &to, step);
    for (py::ssize_t i = from; i < to; ++i)
      if (list[static_cast<std::size_t>(i)] == wanted) return static_cast<std::size_t>(i);
  }
  throwValueError("the foundation is not in the manager");
}

void bindSequence(Class& bound, py::module_& module) {
  py::class_<Iterator>(module, "FoundationIterator", "Walks through a FoundationManager.",
                       py::is_final(), py::custom_type_setup(collectIterator))
      .def("__iter__", [](py::object self) { return self; })
      .def("__next__", [](Iterator& self) { return self.next(); });
  bound.def("__len__", [](ManagerObject& self) { return self.getList().size(); });
  bound.def("__getitem__", [](ManagerObject& self, py::handle index) -> py::object {
    if (PySlice_Check(index.ptr())) return giveSlice(self, index);
    if (!PyIndex_Check(index.ptr()))
      throwTypeError("index: an int or a slice is wanted, not " + nameType(index) +
                     "; find() looks for names and numbers");
    return giveAt(self, index);
  });
  bound.def("__contains__", &contains);
  bound.def("__iter__", [](py::object self) { return Iterator(std::move(self), false); });
  bound.def("__reversed__", [](py::object self) { return Iterator(std::move(self), true); });
  bound.def(
      "index", &findIndex, py::arg("foundation"), py::arg("start") = 0,
      py::arg("stop") = py::none(),
      "index($module, self, foundation, start=0, stop=None)\n--\n\n"
      "The index of this very foundation, within such a slice of the list. Raises ValueError\n"
      "when it is not there.");
  bound.def(
      "count", [](ManagerObject& self, py::handle value) { return contains(self, value) ? 1 : 0; },
      py::arg("foundation"),
      "count($module, self, foundation)\n--\n\n"
      "How often this very foundation is in the list: 1 or 0.");
  bound.def_property_readonly(
      "foundations",
      [](ManagerObject& self) {
        return self.giveAll([&]() -> const List& { return self.getList(); });
      },
      "A new list of the foundations, in their order.");
}

void bindCollection(Class& bound) {
  bound.def(
      "add",
      [](ManagerObject& self, py::object foundation) {
        toFoundation(foundation, "foundation");
        self.add(foundation);
        return foundation;
      },
      py::arg("foundation"),
      "add($module, self, foundation)\n--\n\n"
      "Append the foundation and return it; name, number and flags stay as they are.\n\n"
      "Raises ValueError when this or another manager has it already: take it out there first, or\n"
      "add a copy.");
  bound.def(
      "extend",
      [](ManagerObject& self, py::handle foundations) { addAll(self, collect(foundations)); },
      py::arg("foundations"),
      "extend($module, self, foundations)\n--\n\n"
      "Append all foundations of an iterable, or none of them when it raises, see add().");
  bound.def(
      "remove",
      [](ManagerObject& self, py::handle foundation, py::handle keepRemoved) {
        FoundationObject& object = toFoundation(foundation, "foundation");
        const bool putAside = toBool(keepRemoved, "keep_removed");
        self.remove(object, putAside);
      },
      py::arg("foundation"), py::kw_only(), py::arg("keep_removed") = false,
      "remove($module, self, foundation, *, keep_removed=False)\n--\n\n"
      "Take the foundation out; it lives on by itself. Users are not asked, numbers stay.\n\n"
      "With keep_removed it is put on the list `removed`, where redo() finds it. Raises "
      "ValueError\n"
      "when it is not in the list.");
  bound.def(
      "redo",
      [](ManagerObject& self, py::handle foundation) {
        self.redo(toFoundation(foundation, "foundation"));
      },
      py::arg("foundation"),
      "redo($module, self, foundation)\n--\n\n"
      "Take a foundation of `removed` back, at the end of the list.\n\n"
      "Raises ValueError when it is not among them.");
  bound.def_property_readonly(
      "removed",
      [](ManagerObject& self) {
        return self.giveAll([&]() -> const List& { return self.getPutAside(); });
      },
      "A new list of the foundations that wait for redo(), in order of removal.");
  bound.def(
      "forget_removed", [](ManagerObject& self) { self.forgetPutAside(); },
      "forget_removed($module, self)\n--\n\nEmpty the list `removed`; its foundations live on by "
      "themselves.");
  bound.def(
      "reset",
      [](ManagerObject& self) {
        Found::FoundationManager empty;
        self.exchange(empty);
      },
      "reset($module, self)\n--\n\n"
      "Take all foundations out; they live on by themselves. There is no current one then. Users,\n"
      "removed foundations and max_value stay.");
}

/// What is looked for: a name, a number, or the values of a foundation.
struct Wanted {
  explicit Wanted(py::handle key) {
    if (PyUnicode_Check(key.ptr()))
      name = encode(key, "name");
    else if (py::isinstance<FoundationObject>(key))
      equal = &toFoundation(key, "foundation").get();
    else if (PyIndex_Check(key.ptr()) && !isBool(key))
      number = toPossible(key);
    else
      throwTypeError("a name, a number or a Foundation is wanted, not " + nameType(key));
  }

  Foundation* findIn(const Found::FoundationManager& manager) const {
    if (name) return manager.findFoundation(*name);
    if (equal != nullptr) return manager.findFoundation(*equal);
    return number ? manager.findFoundation(*number) : nullptr;
  }

  /// None for an int that no foundation can have as its number.
  static std::optional<int> toPossible(py::handle key) {
    const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(key.ptr()));
    if (!index) throw py::error_already_set();
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
    using Limits = std::numeric_limits<int>;
    if (overflow != 0 || number < Limits::min() || number > Limits::max()) return std::nullopt;
    return static_cast<int>(number);
  }

  std::optional<std::string> name;
  std::optional<int> number;
  Foundation* equal = nullptr;
};

void setCurrent(ManagerObject& self, py::handle value) {
  if (value.is_none()) return self.get().setCurrentFoundation(nullptr);
  Foundation* const foundation = &toFoundation(value, "current").get();
  if (!contains(self, value)) throwValueError("current: the foundation is not in the manager");
  self.get().setCurrentFoundation(foundation);
}

void bindLookUp(Class& bound) {
  bound.def(
      "find",
      [](ManagerObject& self, py::handle key) {
        const Wanted wanted(key);
        return self.give([&] { return wanted.findIn(self.get()); });
      },
      py::arg("key"),
      "find($module, self, key)\n--\n\n"
      "The first foundation of this name (str), this number (int), or with the values of this\n"
      "Foundation; None when there is none, also for an int that can be no number.");
  bound.def(
      "give",
      [](ManagerObject& self, py::handle key, py::handle findEqual) {
        const bool isEqualGood = toBool(findEqual, "find_equal");
        if (PyUnicode_Check(key.ptr())) {
          const std::string name = encode(key, "name");
          return self.giveChanged([&] { return self.giveFoundation(name); });
        }
        const Foundation& pattern = toFoundation(key, "key").get();
        return self.giveChanged([&] { return self.giveFoundation(pattern, isEqualGood); });
      },
      py::arg("key"), py::kw_only(), py::arg("find_equal") = true,
      "give($module, self, key, *, find_equal=True)\n--\n\n"
      "Find a foundation or add one, numbered one above the highest number.\n\n"
      "A str finds or makes the foundation of this name. A Foundation finds one of equal values,\n"
      "unless find_equal is False, or makes a copy, with a default name when it has none.");
  bound.def(
      "give_next_name",
      [](ManagerObject& self, py::handle start) {
        const int first = toInt(start, "start");
        return decode(self.get().giveNextFoundationName(first));
      },
      py::arg("start") = 0,
      "give_next_name($module, self, start=0)\n--\n\n"
      "A default name such as 'Found0004' that no foundation has, from start or the highest\n"
      "number on, whichever is greater.");
  bound.def_property(
      "current",
      [](ManagerObject& self) {
        return self.give([&] { return self.get().getCurrentFoundation(); });
      },
      &setCurrent,
      "The current foundation, or None. Raises ValueError for one that is not in the list.");
}

void bindPruning(Class& bound) {
  using Manager = Found::FoundationManager;
  bound.def(
      "remove_all_generated",
      [](ManagerObject& self) { return self.prune([](Manager& m) { m.removeAllGenerated(); }); },
      "remove_all_generated($module, self)\n--\n\n"
      "Take out all generated foundations, used or not, and number the rest 1, 2, 3, ...\n\n"
      "Returns a list of what was taken out.");
  bound.def(
      "remove_all_not_used",
      [](ManagerObject& self) { return self.prune([](Manager& m) { m.removeAllNotUsed(); }); },
      "remove_all_not_used($module, self)\n--\n\n"
      "Take out all foundations that no user uses; numbers stay.\n\n"
      "Returns a list of what was taken out. When a user raises, nothing has changed.");
  bound.def(
      "remove_all_not_used_generated",
      [](ManagerObject& self) {
        return self.prune([](Manager& m) { m.removeAllNotUsedGenerated(); });
      },
      "remove_all_not_used_generated($module, self)\n--\n\n"
      "Take out the generated foundations that no user uses, and number the rest 1, 2, 3, ...\n\n"
      "Returns a list of what was taken out. When a user raises, nothing has changed.");
}

std::vector<py::object> listUsers(ManagerObject& self) {
  std::vector<py::object> users;
  for (const auto& user : self.getUsers()) users.push_back(user->getObject());
  return users;
}

/// Comparing may run code of Python, which may change the list of users; so it is looked at again.
void removeUser(ManagerObject& self, const py::object& user) {
  for (const py::object& known : listUsers(self)) {
    const int isEqual = PyObject_RichCompareBool(known.ptr(), user.ptr(), Py_EQ);
    if (isEqual < 0) throw py::error_already_set();
    if (isEqual == 0) continue;
    const auto& users = self.getUsers();
    for (std::size_t i = 0; i < users.size(); ++i)
      if (users[i]->getObject().is(known)) {
        self.removeUser(i);
        return;
      }
  }
  throwValueError("this is no user of the manager");
}

void bindUsers(Class& bound) {
  bound.def(
      "add_user",
      [](ManagerObject& self, py::object user) {
        self.addUser(std::make_unique<User>(self, user));
        return user;
      },
      py::arg("user"),
      "add_user($module, self, user)\n--\n\n"
      "Register a user and return it, so that this decorates functions too.\n\n"
      "A user is an object with uses_foundation(foundation), or a callable of a foundation; it\n"
      "returns whether it refers to that: a bool, of numpy as well, or an int, such as a count. "
      "Any\n"
      "other answer, also the None of a forgotten return, raises TypeError where it is asked. The\n"
      "manager holds it. Registered twice, it is asked twice and must be removed twice. What it\n"
      "raises arrives at the caller, and the manager is as before.");
  bound.def("remove_user", &removeUser, py::arg("user"),
            "remove_user($module, self, user)\n--\n\n"
            "Take out the first registration of a user that is or equals this one.\n\n"
            "Raises ValueError when there is none.");
  bound.def_property_readonly(
      "users",
      [](ManagerObject& self) {
        const std::vector<py::object> users = listUsers(self);
        py::list listed;
        for (const py::object& user : users) listed.append(user);
        return listed;
      },
      "A new list of the users, in order of registration.");
  bound.def(
      "is_used",
      [](ManagerObject& self, py::handle foundation) {
        toFoundation(foundation, "foundation");
        return self.isUsed(foundation);
      },
      py::arg("foundation"),
      "is_used($module, self, foundation)\n--\n\n"
      "Whether a user uses the foundation, which need not be in the list. The first one that\n"
      "does is the last one asked.");
  bound.def_property_readonly(
      "number_of_used", [](ManagerObject& self) { return self.countUsed(); },
      "How many foundations of the list are used; asks the users.");
}

void bindMaximum(Class& bound) {
  bound.def_property(
      "max_value", [](ManagerObject& self) { return self.get().getMaxFoundationValue(); },
      [](ManagerObject& self, py::handle value) {
        const double maximum = toDouble(value, "max_value");
        self.get().setMaxFoundationValue(maximum);
      },
      "float; what was last set or computed, 0.0 at first. Not kept up to date.");
  bound.def(
      "update_max_value",
      [](ManagerObject& self) {
        self.get().updateFoundationMaximum();
        return self.get().getMaxFoundationValue();
      },
      "update_max_value($module, self)\n--\n\n"
      "Store in max_value the greatest length of any vector in the list, and return it.\n\n"
      "It mixes area, line and rotation, without factors. NaN does not count.");
}

py::object callPickling(const char* function, const py::object& self) {
  return py::module_::import("kvfound._pickling").attr(function)(self);
}

void bindAsObject(Class& bound) {
  bound.def("__repr__", [](const py::object& self) {
    const std::size_t count = toManager(self, "self").getList().size();
    return "<" + py::type::of(self).attr("__name__").cast<std::string>() + " of " +
           std::to_string(count) + (count == 1 ? " foundation>" : " foundations>");
  });
  bound.def("__reduce__",
            [](const py::object& self) { return callPickling("reduce_manager", self); });
  bound.def("__copy__", [](const py::object& self) { return callPickling("copy_manager", self); });
  // Of this name pybind11 would make a constructor, which does nothing to an object that is made.
  bound.attr("__setstate__") = py::cpp_function(
      [](const py::object& self, const py::object& state) {
        py::module_::import("kvfound._pickling").attr("set_manager_state")(self, state);
      },
      py::name("set_state"), py::is_method(bound));
}

}  // namespace

ManagerObject& toManager(py::handle value, const char* what) {
  ManagerObject* const object =
      py::isinstance<ManagerObject>(value) ? findWithin<ManagerObject>(value.ptr()) : nullptr;
  if (object == nullptr)
    throwTypeError(std::string(what) + ": a FoundationManager is wanted, not " + nameType(value));
  return *object;
}

void bindManager(py::module_& module) {
  Class bound(module, "FoundationManager", classDoc, py::custom_type_setup(collectGarbage));
  nameAfterPackage(bound, "kvfound.FoundationManager");
  bindInit(bound);
  bindSequence(bound, module);
  bindCollection(bound);
  bindLookUp(bound);
  bindPruning(bound);
  bindUsers(bound);
  bindMaximum(bound);
  bindAsObject(bound);
  bindForms(bound);
}

}  // namespace Python
