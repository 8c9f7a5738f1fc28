#include <string>
#include <utility>
#include <vector>

#include "bindings.h"
#include "errors.h"
#include "manager_object.h"
#include "numbers.h"
#include "text.h"

namespace Python {
namespace {

using Found::Foundation;
using Class = py::class_<ManagerObject>;

constexpr const char* classDoc = R"(FoundationManager(foundations=())
--

The foundations of one model, in the order in which they were added.

A sequence: len(), indexing by int, iteration, `in` (which asks for the same foundation, not for an
equal one). Numbers and names are not kept unique; where something is looked up, the first match wins.

A foundation is in one manager at most. One that leaves its manager, in whatever way, lives on by
itself with its last values.)";

py::object giveAt(ManagerObject& self, py::ssize_t index) {
  return self.give([&]() -> Foundation* {
    const auto size = static_cast<py::ssize_t>(self.getList().size());
    const py::ssize_t place = index < 0 ? index + size : index;
    if (place < 0 || place >= size) throw py::index_error("the manager has no such index");
    return self.getList()[static_cast<std::size_t>(place)];
  });
}

int traverse(PyObject* self, visitproc visit, void* arg) {
#if PY_VERSION_HEX >= 0x03090000
  Py_VISIT(Py_TYPE(self));
#endif
  const ManagerObject* const object = findWithin<ManagerObject>(self);
  return object != nullptr ? object->traverse(visit, arg) : 0;
}

int clear(PyObject* self) {
  ManagerObject* const object = findWithin<ManagerObject>(self);
  if (object != nullptr) object->removeUsers();  // dropped when the list of them is whole again
  return 0;
}

void collectGarbage(PyHeapTypeObject* type) {
  type->ht_type.tp_flags |= Py_TPFLAGS_HAVE_GC;
  type->ht_type.tp_traverse = traverse;
  type->ht_type.tp_clear = clear;
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
  nameAfterPackage(bound);
  bound.def(py::init<>());
  bound.def("__len__", [](const ManagerObject& self) { return self.getList().size(); });
  bound.def("__getitem__", [](ManagerObject& self, py::handle index) {
    const int place = toInt(index, "index");
    return giveAt(self, place);
  });
  bound.def_property_readonly(
      "foundations",
      [](ManagerObject& self) {
        return self.giveAll([&]() -> const std::vector<Foundation*>& { return self.getList(); });
      },
      "A new list of the foundations, in their order.");
  bound.def(
      "add",
      [](ManagerObject& self, py::object foundation) {
        toFoundation(foundation, "foundation");
        self.add(foundation);
        return foundation;
      },
      py::arg("foundation"), "add($self, foundation)\n--\n\nAppend the foundation and return it.");
  bound.def(
      "remove",
      [](ManagerObject& self, py::handle foundation, py::handle keepRemoved) {
        FoundationObject& object = toFoundation(foundation, "foundation");
        const bool putAside = toBool(keepRemoved, "keep_removed");
        self.remove(object, putAside);
      },
      py::arg("foundation"), py::kw_only(), py::arg("keep_removed") = false,
      "remove($self, foundation, *, keep_removed=False)\n--\n\nTake the foundation out.");
}

}  // namespace Python
