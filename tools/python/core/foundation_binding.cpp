#include <cmath>
#include <optional>
#include <string>

#include "bindings.h"
#include "collected.h"
#include "errors.h"
#include "foundation_object.h"
#include "foundations/copying.h"
#include "numbers.h"
#include "text.h"

namespace Python {
namespace {

using Found::Foundation;
using Failure = Foundation::Failure;
using Class = py::class_<FoundationObject>;

constexpr const char* classDoc =
    R"(One elastic support of a structural model: stiffness for areas, for lines, or for both.

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
  made->setFactorArea(1.0);  // so that the sign of a zero is stored
  made->setFactorArea(toDouble(factorArea, "factor_area"));
  made->setFactorLine(1.0);
  made->setFactorLine(toDouble(factorLine, "factor_line"));
  made->setGenerated(toBool(generated, "generated"));
  made->setChanged(false);
  return made;
}

/// Not as a constructor: the object is whole before, and a second call sets everything anew.
void bindInit(Class& bound) {
  bound.attr("__init__") = py::cpp_function(
      [](const FoundationObject& self, py::handle name, py::handle number, py::handle area,
         py::handle line, py::handle rotation, py::handle failAreaZ, py::handle failLineX,
         py::handle failLineY, py::handle failLineZ, py::handle failPossible, py::handle factorArea,
         py::handle factorLine, py::handle generated) {
        const auto made =
            makeOf(name, number, area, line, rotation, failAreaZ, failLineX, failLineY, failLineZ,
                   failPossible, factorArea, factorLine, generated);
        Copying::overwrite(self.get(), *made);
      },
      py::name("Foundation"), py::is_method(bound), py::arg("name") = "", py::kw_only(),
      py::arg("number") = -1, py::arg("area") = py::none(), py::arg("line") = py::none(),
      py::arg("rotation") = py::none(), py::arg("fail_area_z") = 0, py::arg("fail_line_x") = 0,
      py::arg("fail_line_y") = 0, py::arg("fail_line_z") = 0, py::arg("fail_possible") = false,
      py::arg("factor_area") = 0.0, py::arg("factor_line") = 0.0, py::arg("generated") = false,
      "Foundation($module, self, name='', *, number=-1, area=None, line=None, rotation=None, "
      "fail_area_z=0, fail_line_x=0, fail_line_y=0, fail_line_z=0, fail_possible=False, "
      "factor_area=0.0, factor_line=0.0, generated=False)\n--\n\n");
}

void bindStoredModes(Class& bound) {
  bound.def(
      "failure_area",
      [](const FoundationObject& self, py::handle direction) {
        const int dir = toInt(direction, "direction");
        return fromFailure(self.get().getFailureArea(dir));
      },
      py::arg("direction"),
      "failure_area($module, self, direction)\n--\n\n"
      "The failure mode of the area that acts in a direction (0, 1, 2 for x, y, z).\n\n"
      "Failure.NONE unless fail_possible, and for any other direction than 2.");
  bound.def(
      "failure_line",
      [](const FoundationObject& self, py::handle direction) {
        const int dir = toInt(direction, "direction");
        return fromFailure(self.get().getFailureLine(dir));
      },
      py::arg("direction"),
      "failure_line($module, self, direction)\n--\n\n"
      "The failure mode of the line that acts in a direction (0, 1, 2 for x, y, z).\n\n"
      "Failure.NONE unless fail_possible, and for any other direction.");
  bound.def(
      "set_failure_area",
      [](const FoundationObject& self, py::handle direction, py::handle value) {
        const int dir = toInt(direction, "direction");
        const Failure failure = toFailure(value, "failure");
        self.get().setFailureArea(dir, failure);
      },
      py::arg("direction"), py::arg("failure"),
      "set_failure_area($module, self, direction, failure)\n--\n\n"
      "Store a failure mode of the area, whatever fail_possible is.\n\n"
      "Acts for direction 2 (z) only; any other is ignored.");
  bound.def(
      "set_failure_line",
      [](const FoundationObject& self, py::handle direction, py::handle value) {
        const int dir = toInt(direction, "direction");
        const Failure failure = toFailure(value, "failure");
        self.get().setFailureLine(dir, failure);
      },
      py::arg("direction"), py::arg("failure"),
      "set_failure_line($module, self, direction, failure)\n--\n\n"
      "Store a failure mode of the line, whatever fail_possible is.\n\n"
      "Acts for the directions 0, 1, 2 (x, y, z); any other is ignored.");
}

void bindQuestions(Class& bound) {
  bound.def(
      "value_area",
      [](const FoundationObject& self, py::handle direction) {
        const int dir = toInt(direction, "direction");
        return self.get().getValueArea(dir);
      },
      py::arg("direction"),
      "value_area($module, self, direction)\n--\n\n"
      "Stiffness of the area in a direction (0, 1, 2 for x, y, z), force / length^3.\n\n"
      "0.0 for any other direction and without area.");
  bound.def(
      "value_line",
      [](const FoundationObject& self, py::handle direction) {
        const int dir = toInt(direction, "direction");
        return self.get().getValueLine(dir);
      },
      py::arg("direction"),
      "value_line($module, self, direction)\n--\n\n"
      "Stiffness of the line: 0, 1, 2 for x, y, z in force / length^2, 3 for the rotation about x\n"
      "in moment / length / radian.\n\n"
      "0.0 for any other direction and without line or rotation.");
  bound.def_property_readonly(
      "has_values", [](const FoundationObject& self) { return self.get().hasValues(); },
      "Whether a vector is longer than 0.");
  bound.def_property_readonly(
      "has_area_values", [](const FoundationObject& self) { return self.get().hasAreaValues(); },
      "Whether area is longer than 0.");
  bound.def_property_readonly(
      "has_line_values", [](const FoundationObject& self) { return self.get().hasLineValues(); },
      "Whether line or rotation is longer than 0.");
  bound.def_property_readonly(
      "releases", [](const FoundationObject& self) { return self.get().releases(); },
      "Whether a stored failure mode is other than NONE, whatever fail_possible is.");
}

void bindOperations(Class& bound) {
  bound.def(
      "assign",
      [](const FoundationObject& self, py::handle other) {
        self.get().copy(toFoundation(other, "other").get());
      },
      py::arg("other"),
      "assign($module, self, other)\n--\n\n"
      "Take over vectors, flags, failure modes and factors; name and number stay.\n\n"
      "A vector that other lacks stays as it is.");
  bound.def(
      "add_values",
      [](const FoundationObject& self, py::handle other) {
        self.get().addValues(toFoundation(other, "other").get());
      },
      py::arg("other"),
      "add_values($module, self, other)\n--\n\n"
      "Add the vectors of other, as for two beddings side by side.\n\n"
      "A sum whose length is 0 or not a number becomes None. The rest stays.");
  bound.def(
      "scale_values",
      [](const FoundationObject& self, py::handle value) {
        const double factor = toDouble(value, "factor");
        self.get().scaleValues(factor);
      },
      py::arg("factor"),
      "scale_values($module, self, factor)\n--\n\nMultiply the vectors by a factor.");
  bound.def(
      "interpolate",
      [](const FoundationObject& self, py::handle a, py::handle b, py::handle t) {
        const FoundationObject& first = toFoundation(a, "a");
        const FoundationObject& second = toFoundation(b, "b");
        const double place = toDouble(t, "t");
        self.get().interpolate(first.get(), second.get(), place);
      },
      py::arg("a"), py::arg("b"), py::arg("t"),
      "interpolate($module, self, a, b, t)\n--\n\n"
      "Become the linear interpolation between a (t = 0) and b (t = 1); other t extrapolate.\n\n"
      "Flags, failure modes and factors become those of a. The name becomes that of a or b at\n"
      "exactly 0 or 1, else ''; the number stays. A vector whose length is 0 or not a number\n"
      "becomes None.");
  bound.def(
      "clear_area_values", [](const FoundationObject& self) { self.get().clearAreaValues(); },
      "clear_area_values($module, self)\n--\n\n"
      "Remove area and reset its factor and failure mode. Does not mark as changed.");
  bound.def(
      "clear_line_values", [](const FoundationObject& self) { self.get().clearLineValues(); },
      "clear_line_values($module, self)\n--\n\n"
      "Remove line and rotation and reset their factor and failure modes. Does not mark as "
      "changed.");
}

/// The arguments of the constructor that differ from its defaults, in its order but the number
/// first.
py::dict listArguments(Foundation& foundation) {
  py::dict arguments;
  const auto put = [&](const char* name, const py::object& value) { arguments[name] = value; };
  const auto putVector = [&](const char* name, bool (Foundation::*get)(KvVector3D&) const) {
    KvVector3D vector;
    if ((foundation.*get)(vector)) put(name, fromVector(vector));
  };
  const auto putFailure = [&](const char* name, Failure failure) {
    if (failure != Foundation::None) put(name, fromFailure(failure));
  };
  // A factor of -0.0 counts as well: its sign would be lost.
  const auto putFactor = [&](const char* name, double factor) {
    if (factor != 0.0 || std::signbit(factor)) put(name, py::float_(factor));
  };
  if (foundation.getNumber() != -1) put("number", py::int_(foundation.getNumber()));
  if (!foundation.getName().empty()) put("name", decode(foundation.getName()));
  putVector("area", &Foundation::getDispArea);
  putVector("line", &Foundation::getDispLine);
  putVector("rotation", &Foundation::getRotLine);
  putFailure("fail_area_z", foundation.getFailAreaZ());
  putFailure("fail_line_x", foundation.getFailLineX());
  putFailure("fail_line_y", foundation.getFailLineY());
  putFailure("fail_line_z", foundation.getFailLineZ());
  if (foundation.getFailPossible()) put("fail_possible", py::bool_(true));
  putFactor("factor_area", foundation.getFactorArea());
  putFactor("factor_line", foundation.getFactorLine());
  if (foundation.isGenerated()) put("generated", py::bool_(true));
  return arguments;
}

/// As Python reads it again: "nan" and "inf" alone are no literals.
std::string describeFloat(double value) {
  const auto text = py::repr(py::float_(value)).cast<std::string>();
  return std::isfinite(value) ? text : "float('" + text + "')";
}

std::string describe(py::handle value) {
  if (PyFloat_Check(value.ptr())) return describeFloat(PyFloat_AS_DOUBLE(value.ptr()));
  if (PyTuple_Check(value.ptr())) {
    std::string text;
    for (const py::handle item : py::reinterpret_borrow<py::tuple>(value))
      text += (text.empty() ? "(" : ", ") + describe(item);
    return text + ")";
  }
  if (PyLong_CheckExact(value.ptr()) || PyBool_Check(value.ptr()) || PyUnicode_Check(value.ptr()))
    return encode(py::repr(value), "repr");
  return "Failure." + value.attr("name").cast<std::string>();
}

py::str represent(py::handle self) {
  std::string text;
  for (const auto& argument : listArguments(toFoundation(self, "self").get()))
    text += (text.empty() ? "" : ", ") + argument.first.cast<std::string>() + "=" +
            describe(argument.second);
  const std::string name = encode(py::type::of(self).attr("__name__"), "name");
  return decode(name + "(" + text + ")");
}

/// What a subclass keeps beside the values, or None.
py::object findAttributes(py::handle self) { return py::getattr(self, "__dict__", py::none()); }

py::tuple reduce(py::handle self) {
  Foundation& foundation = toFoundation(self, "self").get();
  const bool changed = foundation.getChanged();
  const py::dict arguments = listArguments(foundation);
  const py::object restore = py::module_::import("kvfound._pickling").attr("restore_foundation");
  return py::make_tuple(restore, py::make_tuple(py::type::of(self), arguments, changed),
                        findAttributes(self));
}

void bindAsValue(Class& bound) {
  bound.def(
      "__eq__",
      [](const FoundationObject& self, py::handle other) -> py::object {
        if (!py::isinstance<FoundationObject>(other))
          return py::reinterpret_borrow<py::object>(Py_NotImplemented);
        return py::bool_(self.get() == toFoundation(other, "other").get());
      },
      "__eq__($module, self, other, /)\n--\n\nWhether the values are equal; name and number do not "
      "count.");
  bound.attr("__hash__") = py::none();
  bound.def("__repr__", [](const py::object& self) { return represent(self); });
  bound.def("__reduce__", [](const py::object& self) { return reduce(self); });
}

void bindModifyValue(py::module_& module) {
  module.def(
      "modify_value",
      [](py::handle failure, py::handle value) {
        const Failure mode = toFailure(failure, "failure");
        const double stiffness = toDouble(value, "value");
        return Foundation::modifyValue(mode, stiffness);
      },
      py::arg("failure"), py::arg("value"),
      "modify_value(failure, value)\n--\n\nA value as it acts in a direction of this mode.");
  module.def(
      "modify_values",
      [](py::handle failure, const py::buffer& values) {
        const Failure mode = toFailure(failure, "failure");
        const py::buffer_info info = values.request(true);
        if (info.format != "d" || !PyBuffer_IsContiguous(info.view(), 'A'))
          throwTypeError("values: a contiguous array of floats is wanted");
        auto* const first = static_cast<double*>(info.ptr);
        for (py::ssize_t i = 0; i < info.size; ++i)
          first[i] = Foundation::modifyValue(mode, first[i]);
      },
      py::arg("failure"), py::arg("values"),
      "modify_values(failure, values)\n--\n\nThe same in place, for an array of floats.");
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

/// It has nothing to clear: every circle that it is part of leads through its manager, which lets
/// go of what makes circles.
void collectGarbage(PyHeapTypeObject* type) {
  makeWhole(type);
  makeCollected(type, traverse, nullptr);
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
  nameAfterPackage(bound, "kvfound.Foundation");
  bindInit(bound);
  bindIdentity(bound);
  bindProperties(bound);
  bindStoredModes(bound);
  bindQuestions(bound);
  bindOperations(bound);
  bindAsValue(bound);
  bindModifyValue(module);
}

}  // namespace Python
