#include "columns.h"

#include <pybind11/numpy.h>

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "foundations/copying.h"
#include "foundations/failures.h"
#include "foundations/fields.h"
#include "spreadsheets/sheet.h"
#include "stiffness.h"
#include "text.h"

namespace Python {
namespace {

using Found::Foundation;
using Failure = Foundation::Failure;

constexpr double absent = std::numeric_limits<double>::quiet_NaN();

/// A column that is filled without Python.
template <class Item>
struct Column {
  explicit Column(std::size_t size)
      : array(static_cast<py::ssize_t>(size)), items(array.mutable_data()) {}

  py::array_t<Item> array;
  Item* items;
};

/// The columns of numbers and flags.
struct Numbers {
  explicit Numbers(std::size_t size)
      : number(size), generated(size), current(size), areaFactor(size), lineFactor(size) {
    for (const Stiffness& kind : stiffnesses)
      for (const char* const name : kind.columns)
        if (name != nullptr) stiffness.emplace_back(size);
  }

  void fill(std::size_t row, const Foundation& foundation) {
    number.items[row] = foundation.getNumber();
    generated.items[row] = foundation.isGenerated();
    areaFactor.items[row] = foundation.getFactorArea();
    lineFactor.items[row] = foundation.getFactorLine();
    auto column = stiffness.begin();
    for (const Stiffness& kind : stiffnesses) {
      KvVector3D vector;
      const bool isThere = (foundation.*kind.get)(vector);
      for (std::size_t i = 0; i < components.size(); ++i)
        if (kind.columns[i] != nullptr)
          (column++)->items[row] = isThere ? vector.*components[i] : absent;
    }
  }

  void addTo(py::dict& columns) const {
    columns["number"] = number.array;
    columns["generated"] = generated.array;
    columns["areaFactor"] = areaFactor.array;
    columns["lineFactor"] = lineFactor.array;
    columns[Spreadsheets::currentField] = current.array;
    auto column = stiffness.begin();
    for (const Stiffness& kind : stiffnesses)
      for (const char* const name : kind.columns)
        if (name != nullptr) columns[name] = (column++)->array;
  }

  Column<std::int64_t> number;
  Column<bool> generated;
  Column<bool> current;
  Column<double> areaFactor;
  Column<double> lineFactor;
  std::vector<Column<double>> stiffness;
};

/// A failure mode of all foundations.
struct Modes {
  const char* column;
  Failure (Foundation::*get)();
  std::vector<Failure> modes = {};
};

/// What of the foundations becomes objects when the list is no longer looked at: making an object
/// may run code of the user.
class Texts {
 public:
  explicit Texts(std::size_t size) {
    ends.reserve(size);
    for (Modes& column : columns) column.modes.reserve(size);
  }

  void append(Foundation& foundation) {
    names += foundation.getName();
    ends.push_back(names.size());
    for (Modes& column : columns) column.modes.push_back((foundation.*column.get)());
  }

  void addTo(py::dict& table) const {
    table["name"] = makeNames();
    for (const Modes& column : columns) table[column.column] = makeWords(column.modes);
  }

 private:
  /// An object for each item, in an array that numpy has made and not yet filled.
  template <class Item, class Make>
  static py::array makeObjects(const std::vector<Item>& items, const Make& make) {
    const std::vector<py::ssize_t> shape = {static_cast<py::ssize_t>(items.size())};
    py::array array(py::dtype("O"), shape);
    auto* place = static_cast<PyObject**>(array.mutable_data());
    for (const Item& item : items) {
      PyObject* const before = *place;
      *place++ = make(item).release().ptr();
      Py_XDECREF(before);
    }
    return array;
  }

  py::array makeNames() const {
    std::size_t begin = 0;
    return makeObjects(ends, [&](std::size_t end) {
      const std::string_view name(names.data() + begin, end - begin);
      begin = end;
      return decode(name);
    });
  }

  /// Foundations of the same mode share the object of its word.
  static py::array makeWords(const std::vector<Failure>& modes) {
    std::map<Failure, py::object> words;
    const py::object* word = nullptr;
    Failure last = Foundation::None;
    return makeObjects(modes, [&](Failure mode) {
      if (word == nullptr || mode != last) {
        py::object& known = words[mode];
        if (!known) known = decode(Failures::getWord(mode));
        word = &known;
        last = mode;
      }
      return *word;
    });
  }

  std::string names;  // one behind the other
  std::vector<std::size_t> ends;
  Modes columns[4] = {{"areaFailureZ", &Foundation::getFailAreaZ},
                      {"lineFailureX", &Foundation::getFailLineX},
                      {"lineFailureY", &Foundation::getFailLineY},
                      {"lineFailureZ", &Foundation::getFailLineZ}};
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
  const auto getSize = [&] { return manager.getList().size(); };
  std::size_t size = getSize();
  auto numbers = std::make_unique<Numbers>(size);
  while (getSize() != size) {  // making the arrays has run code of the user
    size = getSize();
    numbers = std::make_unique<Numbers>(size);
  }

  // Foundations lie anywhere in memory, so each is looked at once.
  Texts texts(size);
  const Foundation* const current = manager.get().getCurrentFoundation();
  for (std::size_t row = 0; row < size; ++row) {
    Foundation* const foundation = manager.getList()[row];
    numbers->fill(row, *foundation);
    numbers->current.items[row] = foundation == current;
    texts.append(*foundation);
  }

  py::dict columns;
  numbers->addTo(columns);
  texts.addTo(columns);
  return sort(columns);
}

py::list makeDicts(ManagerObject& manager) {
  std::vector<std::unique_ptr<Foundation>> copies;
  copies.reserve(manager.getList().size());
  std::size_t current = manager.getList().size();
  for (const Foundation* const foundation : manager.getList()) {
    if (foundation == manager.get().getCurrentFoundation()) current = copies.size();
    copies.push_back(Copying::duplicate(*foundation));
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
