#include "columns.h"

#include <pybind11/numpy.h>

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "foundations/failures.h"
#include "foundations/fields.h"
#include "spreadsheets/sheet.h"
#include "stiffness.h"
#include "text.h"

namespace Python {
namespace {

using Found::Foundation;
using List = std::vector<Foundation*>;
using Failure = Foundation::Failure;

constexpr double absent = std::numeric_limits<double>::quiet_NaN();

/// A column that is filled without Python.
template <class Item>
class Column {
 public:
  explicit Column(std::size_t size) : array(static_cast<py::ssize_t>(size)) {}

  template <class Get>
  void fill(const List& list, const Get& get) {
    Item* item = array.mutable_data();
    for (Foundation* const foundation : list) *item++ = get(*foundation);
  }

  py::array_t<Item> array;
};

/// What of the foundations becomes objects, when the list is no longer looked at: making an object
/// may run code of the user.
struct Texts {
  explicit Texts(const List& list) {
    names.reserve(list.size());
    for (const Foundation* const foundation : list) names.push_back(foundation->getName());
  }

  std::vector<std::string> names;
};

struct Modes {
  const char* column;
  Failure (Foundation::*get)();
  std::vector<Failure> modes = {};

  void fill(const List& list) {
    modes.reserve(list.size());
    for (Foundation* const foundation : list) modes.push_back((foundation->*get)());
  }
};

/// An object for each item, in an array that numpy has made and not yet filled.
template <class Items, class Make>
py::array makeObjects(const Items& items, const Make& make) {
  py::array array(py::dtype("O"), std::vector<py::ssize_t>{static_cast<py::ssize_t>(items.size())});
  auto* place = static_cast<PyObject**>(array.mutable_data());
  for (const auto& item : items) {
    PyObject* const before = *place;
    *place++ = make(item).release().ptr();
    Py_XDECREF(before);
  }
  return array;
}

py::array makeNames(const Texts& texts) {
  return makeObjects(texts.names, [](const std::string& name) { return decode(name); });
}

/// Foundations of the same mode share the object of its word.
py::array makeWords(const std::vector<Failure>& modes) {
  std::map<Failure, py::object> words;
  return makeObjects(modes, [&](Failure mode) {
    py::object& word = words[mode];
    if (!word) word = decode(Failures::getWord(mode));
    return word;
  });
}

/// All columns but those of objects, not filled yet.
class Arrays {
 public:
  explicit Arrays(std::size_t size) : number(size), generated(size), current(size) {
    for (std::size_t i = 0; i < 7; ++i) stiffness.emplace_back(size);
    for (std::size_t i = 0; i < 2; ++i) factors.emplace_back(size);
  }

  void fill(const Found::FoundationManager& manager) {
    const List& list = manager.getFoundations();
    number.fill(list, [](const Foundation& f) { return f.getNumber(); });
    generated.fill(list, [](const Foundation& f) { return f.isGenerated(); });
    factors[0].fill(list, [](const Foundation& f) { return f.getFactorArea(); });
    factors[1].fill(list, [](const Foundation& f) { return f.getFactorLine(); });
    const Foundation* const chosen = manager.getCurrentFoundation();
    current.fill(list, [chosen](const Foundation& f) { return &f == chosen; });
    fillStiffness(list);
  }

  void addTo(py::dict& columns) const {
    columns["number"] = number.array;
    columns["generated"] = generated.array;
    columns["areaFactor"] = factors[0].array;
    columns["lineFactor"] = factors[1].array;
    columns[Spreadsheets::currentField] = current.array;
    auto column = stiffness.begin();
    for (const Stiffness& kind : stiffnesses)
      for (const char* const name : kind.columns)
        if (name != nullptr) columns[name] = (column++)->array;
  }

 private:
  void fillStiffness(const List& list) {
    auto column = stiffness.begin();
    for (const Stiffness& kind : stiffnesses)
      for (std::size_t i = 0; i < kind.columns.size(); ++i)
        if (kind.columns[i] != nullptr)
          (column++)->fill(list, [&kind, i](const Foundation& f) {
            KvVector3D vector;
            return (f.*kind.get)(vector) ? vector.*components[i] : absent;
          });
  }

  Column<std::int64_t> number;
  Column<bool> generated;
  Column<bool> current;
  std::vector<Column<double>> stiffness;
  std::vector<Column<double>> factors;
};

/// The columns in the order of the fields.
py::dict sort(const py::dict& columns) {
  py::dict sorted;
  for (const Fields::Field& field : Fields::list()) sorted[field.name] = columns[field.name];
  sorted[Spreadsheets::currentField] = columns[Spreadsheets::currentField];
  return sorted;
}

struct ToObject {
  py::object operator()(std::monostate) const { return py::none(); }
  py::object operator()(bool flag) const { return py::bool_(flag); }
  py::object operator()(int number) const { return py::int_(number); }
  py::object operator()(double number) const { return py::float_(number); }
  py::object operator()(const std::string& text) const { return decode(text); }
};

}  // namespace

py::dict makeArrays(ManagerObject& manager) {
  for (;;) {
    const std::size_t size = manager.getList().size();
    Arrays arrays(size);
    if (manager.getList().size() != size) continue;  // code of the user ran
    arrays.fill(manager.get());
    const Texts texts(manager.getList());
    Modes modes[] = {{"areaFailureZ", &Foundation::getFailAreaZ},
                     {"lineFailureX", &Foundation::getFailLineX},
                     {"lineFailureY", &Foundation::getFailLineY},
                     {"lineFailureZ", &Foundation::getFailLineZ}};
    for (Modes& column : modes) column.fill(manager.getList());

    py::dict columns;
    arrays.addTo(columns);
    columns["name"] = makeNames(texts);
    for (const Modes& column : modes) columns[column.column] = makeWords(column.modes);
    return sort(columns);
  }
}

py::list makeDicts(ManagerObject& manager) {
  std::vector<std::unique_ptr<Foundation>> copies;
  copies.reserve(manager.getList().size());
  std::size_t current = manager.getList().size();
  for (const Foundation* const foundation : manager.getList()) {
    if (foundation == manager.get().getCurrentFoundation()) current = copies.size();
    copies.push_back(duplicate(*foundation));
  }

  std::vector<py::str> names;
  for (const Fields::Field& field : Fields::list()) names.emplace_back(field.name);
  const py::str currentName(Spreadsheets::currentField);
  py::list rows;
  for (std::size_t i = 0; i < copies.size(); ++i) {
    py::dict row;
    std::size_t column = 0;
    for (const Fields::Field& field : Fields::list())
      row[names[column++]] = std::visit(ToObject(), field.get(*copies[i]));
    row[currentName] = py::bool_(i == current);
    rows.append(std::move(row));
  }
  return rows;
}

}  // namespace Python
