#include <optional>
#include <string>

#include "bindings.h"
#include "errors.h"
#include "foundation_object.h"
#include "numbers.h"
#include "text.h"

namespace Python {
namespace {

using Found::Foundation;
using Failure = Foundation::Failure;
using Class = py::class_<FoundationObject>;

constexpr const char* classDoc =
    R"(Foundation(name='', *, number=-1, area=None, line=None, rotation=None, fail_area_z=0, fail_line_x=0, fail_line_y=0, fail_line_z=0, fail_possible=False, factor_area=0.0, factor_line=0.0, generated=False)
--

One elastic support of a structural model: stiffness for areas, for lines, or for both.

Stiffness stays in the units of the model and is never converted:

    area       (x, y, z), force / length^3                    kN/m^3
    line       (x, y, z), force / length^2                    kN/m^2
    rotation   of a line, (about x, y, z), moment / length / radian   kNm/m/rad

Each is a tuple of three floats, or None where the foundation has none; wherever values are
computed, None counts as (0, 0, 0). Set them from any three numbers, a numpy array for instance.
NaN and infinities are stored as they are.

Two foundations are equal when their values are: vectors, factors, fail_possible and failure modes.
Name, number, changed and generated do not count. So they have no hash; take number or name as a
key, and `is` to ask whether they are the same. Copies and pickles are foundations of their own, with
name and number.

A foundation is always valid. One that its manager removes, prunes or replaces lives on by itself
with its last values.

Raises TypeError for values of another type (a float or bool as number, a str as factor),
ValueError for other than three components, and OverflowError for ints that are too large.)";

std::optional<KvVector3D> find(const FoundationObject& object,
                               bool (Foundation::*get)(KvVector3D&) const) {
  KvVector3D vector;
  if (!(object.get().*get)(vector)) return std::nullopt;
  return vector;
}

void store(Foundation& foundation, void (Foundation::*set)(const KvVector3D*),
           const std::optional<KvVector3D>& vector) {
  (foundation.*set)(vector ? &*vector : nullptr);
}

py::object toTuple(const std::optional<KvVector3D>& vector) {
  return vector ? py::object(fromVector(*vector)) : py::none();
}

// One function for each kind of property: it converts first, which may run code of Python.

void bindVector(Class& bound, const char* name, bool (Foundation::*get)(KvVector3D&) const,
                void (Foundation::*set)(const KvVector3D*), const char* doc) {
  bound.def_property(
      name, [get](const FoundationObject& self) { return toTuple(find(self, get)); },
      [set, name](const FoundationObject& self, py::handle value) {
        const std::optional<KvVector3D> vector = toVector(value, name);
        store(self.get(), set, vector);
      },
      doc);
}

void bindFailure(Class& bound, const char* name, Failure (Foundation::*get)(),
                 void (Foundation::*set)(Failure), const char* doc) {
  bound.def_property(
      name, [get](const FoundationObject& self) { return fromFailure((self.get().*get)()); },
      [set, name](const FoundationObject& self, py::handle value) {
        const Failure failure = toFailure(value, name);
        (self.get().*set)(failure);
      },
      doc);
}

void bindFlag(Class& bound, const char* name, bool (Foundation::*get)() const,
              void (Foundation::*set)(bool), const char* doc) {
  bound.def_property(
      name, [get](const FoundationObject& self) { return (self.get().*get)(); },
      [set, name](const FoundationObject& self, py::handle value) {
        const bool flag = toBool(value, name);
        (self.get().*set)(flag);
      },
      doc);
}

void bindFactor(Class& bound, const char* name, double (Foundation::*get)() const,
                void (Foundation::*set)(double), const char* doc) {
  bound.def_property(
      name, [get](const FoundationObject& self) { return (self.get().*get)(); },
      [set, name](const FoundationObject& self, py::handle value) {
        const double factor = toDouble(value, name);
        (self.get().*set)(factor);
      },
      doc);
}

void bindIdentity(Class& bound) {
  bound.def_property(
      "name", [](const FoundationObject& self) { return decode(self.get().getName()); },
      [](const FoundationObject& self, py::handle value) {
        const std::string name = encode(value, "name");
        self.get().setName(name);
      },
      "str; '' without a name. Raises UnicodeEncodeError for a lone surrogate.");
  bound.def_property(
      "number", [](const FoundationObject& self) { return self.get().getNumber(); },
      [](const FoundationObject& self, py::handle value) {
        const int number = toInt(value, "number");
        self.get().setNumber(number);
      },
      "int of 32 bits; -1 while it is not numbered. Neither checked nor kept unique.");
  bound.def_property_readonly(
      "manager",
      [](const FoundationObject& self) {
        ManagerObject* const manager = self.getManager();
        return manager != nullptr && manager->isListed(&self.get()) ? self.getKeeper() : py::none();
      },
      "The FoundationManager whose list has it, or None.");
}

void bindProperties(Class& bound) {
  bindVector(bound, "area", &Foundation::getDispArea, &Foundation::setDispArea,
             "Stiffness of an area (x, y, z) in force / length^3, or None, which removes it.");
  bindVector(bound, "line", &Foundation::getDispLine, &Foundation::setDispLine,
             "Stiffness of a line (x, y, z) in force / length^2, or None, which removes it.");
  bindVector(bound, "rotation", &Foundation::getRotLine, &Foundation::setRotLine,
             "Rotational stiffness of a line (about x, y, z) in moment / length / radian, or None, "
             "which removes it.");
  bindFailure(bound, "fail_area_z", &Foundation::getFailAreaZ, &Foundation::setFailAreaZ,
              "The stored failure mode of the area in z: a Failure, or another int.");
  bindFailure(bound, "fail_line_x", &Foundation::getFailLineX, &Foundation::setFailLineX,
              "The stored failure mode of the line in x: a Failure, or another int.");
  bindFailure(bound, "fail_line_y", &Foundation::getFailLineY, &Foundation::setFailLineY,
              "The stored failure mode of the line in y: a Failure, or another int.");
  bindFailure(bound, "fail_line_z", &Foundation::getFailLineZ, &Foundation::setFailLineZ,
              "The stored failure mode of the line in z: a Failure, or another int.");
  bindFlag(bound, "fail_possible", &Foundation::getFailPossible, &Foundation::setFailPossible,
           "Whether the stored failure modes act.");
  bindFlag(bound, "generated", &Foundation::isGenerated, &Foundation::setGenerated,
           "Whether the system made it, not the user; pruning selects by it.");
  bindFlag(bound, "changed", &Foundation::getChanged, &Foundation::setChanged,
           "Whether a value was changed since this was last set to False.");
  bindFactor(bound, "factor_area", &Foundation::getFactorArea, &Foundation::setFactorArea,
             "The tangential factor of the area in x and y, without a unit.");
  bindFactor(bound, "factor_line", &Foundation::getFactorLine, &Foundation::setFactorLine,
             "The tangential factor of the line in x, without a unit.");
}

std::unique_ptr<Foundation> makeOf(py::handle name, py::handle number, py::handle area,
                                   py::handle line, py::handle rotation, py::handle failAreaZ,
                                   py::handle failLineX, py::handle failLineY, py::handle failLineZ,
                                   py::handle failPossible, py::handle factorArea,
                                   py::handle factorLine, py::handle generated) {
  auto made = std::make_unique<Foundation>();
  made->setName(encode(name, "name"));
  made->setNumber(toInt(number, "number"));
  // Storing null marks as changed, which a new foundation is not.
  if (const auto vector = toVector(area, "area")) made->setDispArea(&*vector);
  if (const auto vector = toVector(line, "line")) made->setDispLine(&*vector);
  if (const auto vector = toVector(rotation, "rotation")) made->setRotLine(&*vector);
  made->setFailAreaZ(toFailure(failAreaZ, "fail_area_z"));
  made->setFailLineX(toFailure(failLineX, "fail_line_x"));
  made->setFailLineY(toFailure(failLineY, "fail_line_y"));
  made->setFailLineZ(toFailure(failLineZ, "fail_line_z"));
  made->setFailPossible(toBool(failPossible, "fail_possible"));
  made->setFactorArea(toDouble(factorArea, "factor_area"));
  made->setFactorLine(toDouble(factorLine, "factor_line"));
  made->setGenerated(toBool(generated, "generated"));
  made->setChanged(false);
  return made;
}

void bindConstructor(Class& bound) {
  bound.def(py::init([](py::handle name, py::handle number, py::handle area, py::handle line,
                        py::handle rotation, py::handle failAreaZ, py::handle failLineX,
                        py::handle failLineY, py::handle failLineZ, py::handle failPossible,
                        py::handle factorArea, py::handle factorLine, py::handle generated) {
              return std::make_unique<FoundationObject>(
                  makeOf(name, number, area, line, rotation, failAreaZ, failLineX, failLineY,
                         failLineZ, failPossible, factorArea, factorLine, generated));
            }),
            py::arg("name") = "", py::kw_only(), py::arg("number") = -1,
            py::arg("area") = py::none(), py::arg("line") = py::none(),
            py::arg("rotation") = py::none(), py::arg("fail_area_z") = 0,
            py::arg("fail_line_x") = 0, py::arg("fail_line_y") = 0, py::arg("fail_line_z") = 0,
            py::arg("fail_possible") = false, py::arg("factor_area") = 0.0,
            py::arg("factor_line") = 0.0, py::arg("generated") = false);
}

int traverse(PyObject* self, visitproc visit, void* arg) {
#if PY_VERSION_HEX >= 0x03090000
  Py_VISIT(Py_TYPE(self));
#endif
  const FoundationObject* const object = findWithin<FoundationObject>(self);
  if (object != nullptr && object->getManager() != nullptr) {
    const py::object keeper = object->getKeeper();
    return visit(keeper.ptr(), arg);
  }
  return 0;
}

/// It has nothing to clear: every circle that it is part of leads through its manager, which clears
/// its users.
void collectGarbage(PyHeapTypeObject* type) {
  type->ht_type.tp_flags |= Py_TPFLAGS_HAVE_GC;
  type->ht_type.tp_traverse = traverse;
}

}  // namespace

FoundationObject& toFoundation(py::handle value, const char* what) {
  FoundationObject* const object =
      py::isinstance<FoundationObject>(value) ? findWithin<FoundationObject>(value.ptr()) : nullptr;
  if (object == nullptr)
    throwTypeError(std::string(what) + ": a Foundation is wanted, not " + nameType(value));
  return *object;
}

void bindFoundation(py::module_& module) {
  Class bound(module, "Foundation", classDoc, py::custom_type_setup(collectGarbage));
  nameAfterPackage(bound);
  bindConstructor(bound);
  bindIdentity(bound);
  bindProperties(bound);
}

}  // namespace Python
