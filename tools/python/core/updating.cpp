#include "updating.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "cells.h"
#include "errors.h"
#include "foundations/fields.h"
#include "spreadsheets/sheet.h"
#include "stiffness.h"
#include "text.h"
#include "text/near_name.h"

namespace Python {
namespace {

using Fields::Field;
using Fields::Value;
using Found::Foundation;

struct Column {
  const Field* field;                        // null for "current"
  std::vector<std::optional<Value>> values;  // none where a row does not tell it
};

std::string quote(const std::string& text) { return py::cast<std::string>(py::repr(decode(text))); }

[[noreturn]] void refuseColumn(const std::string& name) {
  std::vector<std::string> names = {Spreadsheets::currentField};
  for (const Field& field : Fields::list()) names.emplace_back(field.name);
  const std::optional<std::string> near = findNearName(name, names);
  throwValueError("there is no column " + quote(name) +
                  (near ? ", perhaps " + quote(*near) + " is meant" : ""));
}

const Field* findField(const std::string& name) {
  const Field* const field = Fields::find(name);
  if (field == nullptr && name != Spreadsheets::currentField) refuseColumn(name);
  return field;
}

/// What the table holds, free of Python.
class Table {
 public:
  /// May run code of the user.
  Table(const py::dict& given, const std::string& by, py::handle untold) {
    for (const auto& [name, cells] : given)
      add(encode(name, "column"), cells.cast<py::tuple>(), untold);
    key = find(by);
    if (key == nullptr) throwValueError("the table has no column " + quote(by));
    const auto missing = std::find(key->values.begin(), key->values.end(), std::nullopt);
    if (missing != key->values.end())
      throwValueError("row " + std::to_string(missing - key->values.begin()) + " has no " + by);
  }

  std::size_t getSize() const { return columns.front().values.size(); }
  const std::vector<Column>& getColumns() const { return columns; }

  /// Of the column that tells which foundation a row is about.
  const Field& getKey() const { return *key->field; }
  const Value& getKey(std::size_t row) const { return *key->values[row]; }
  std::string describe(std::size_t row) const {
    const Value& value = getKey(row);
    const auto* const name = std::get_if<std::string>(&value);
    return std::string(key->field->name) + " " +
           (name != nullptr ? quote(*name) : std::to_string(std::get<int>(value)));
  }

  /// Null for what the table does not tell.
  const Column* find(const std::string& name) const {
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& column) {
      return name == (column.field != nullptr ? column.field->name : Spreadsheets::currentField);
    });
    return found != columns.end() ? &*found : nullptr;
  }

 private:
  void add(const std::string& name, const py::tuple& cells, py::handle untold) {
    const Field* const field = findField(name);
    const Fields::Type type = field != nullptr ? field->type : Fields::Type::flag;
    if (!columns.empty() && cells.size() != getSize())
      throwValueError("the columns are not of the same length: " + quote(name));
    Column column = {field, {}};
    column.values.reserve(cells.size());
    for (const py::handle cell : cells) {
      const Place place = {name.c_str(), column.values.size()};
      column.values.push_back(cell.is(untold) ? std::optional<Value>()
                                              : toValue(type, cell, place));
    }
    columns.push_back(std::move(column));
  }

  std::vector<Column> columns;
  const Column* key = nullptr;
};

struct Hash {
  std::size_t operator()(const Value& value) const {
    const auto* const name = std::get_if<std::string>(&value);
    return name != nullptr ? std::hash<std::string>()(*name)
                           : std::hash<int>()(std::get<int>(value));
  }
};

/// Which foundation each row is about; null for a new one. Runs no code of the user unless it
/// throws.
std::vector<Foundation*> match(const ManagerObject& manager, const Table& table, bool add) {
  struct Fitting {
    Foundation* foundation;
    std::size_t count;
    std::optional<std::size_t> row;
  };
  std::unordered_map<Value, Fitting, Hash> entries;
  for (Foundation* const foundation : manager.getList())
    ++entries.try_emplace(table.getKey().get(*foundation), Fitting{foundation, 0, {}})
          .first->second.count;

  std::vector<Foundation*> matches;
  matches.reserve(table.getSize());
  for (std::size_t row = 0; row < table.getSize(); ++row) {
    Fitting& entry = entries.try_emplace(table.getKey(row), Fitting{nullptr, 0, {}}).first->second;
    if (entry.count > 1)
      throwValueError("row " + std::to_string(row) + ": " + std::to_string(entry.count) +
                      " foundations have the " + table.describe(row));
    if (entry.row)
      throwValueError("rows " + std::to_string(*entry.row) + " and " + std::to_string(row) +
                      " are about the same foundation, " + table.describe(row));
    if (entry.foundation == nullptr && !add)
      throwValueError("row " + std::to_string(row) + ": there is no foundation of the " +
                      table.describe(row) + "; add=True adds it");
    entry.row = row;
    matches.push_back(entry.foundation);
  }
  return matches;
}

/// The row of the foundation that is to be the current one.
std::optional<std::size_t> findCurrent(const Table& table) {
  const Column* const column = table.find(Spreadsheets::currentField);
  if (column == nullptr) return {};
  const auto begin = column->values.begin(), end = column->values.end();
  const std::optional<Value> chosen(true);
  const auto first = std::find(begin, end, chosen);
  if (first == end) return {};
  const auto second = std::find(first + 1, end, chosen);
  if (second != end)
    throwValueError("rows " + std::to_string(first - begin) + " and " +
                    std::to_string(second - begin) + " are both current");
  return static_cast<std::size_t>(first - begin);
}

/// The columns of a stiffness vector; null for components that the table does not tell.
struct StiffnessColumns {
  const Stiffness* kind;
  std::array<const Column*, 3> columns;

  bool areThere() const {
    return std::any_of(columns.begin(), columns.end(), [](auto* column) { return column; });
  }

  /// Null for what the row does not tell.
  const Value* getCell(std::size_t component, std::size_t row) const {
    const Column* const column = columns[component];
    return column != nullptr && column->values[row] ? &*column->values[row] : nullptr;
  }
};

/// Bit for bit, but that a NaN is like any other.
bool areSame(double a, double b) {
  return a == b ? std::signbit(a) == std::signbit(b) : std::isnan(a) && std::isnan(b);
}

bool areSame(const KvVector3D& a, const KvVector3D& b) {
  return areSame(a.x, b.x) && areSame(a.y, b.y) && areSame(a.z, b.z);
}

bool areSame(const Value& a, const Value& b) {
  const auto* const first = std::get_if<double>(&a);
  const auto* const second = std::get_if<double>(&b);
  return first != nullptr && second != nullptr ? areSame(*first, *second) : a == b;
}

/// Whether the foundation has another vector now. The vector goes when the table has nothing for
/// it, and what the table does not tell is 0.
bool setStiffness(Foundation& foundation, const StiffnessColumns& given, std::size_t row) {
  KvVector3D before;
  const bool isThere = (foundation.*given.kind->get)(before);
  KvVector3D after = before;
  bool goes = true;
  bool isTold = false;
  for (std::size_t i = 0; i < components.size(); ++i) {
    double& component = after.*components[i];
    const Value* const cell = given.getCell(i, row);
    const double* const number = cell != nullptr ? std::get_if<double>(cell) : nullptr;
    isTold = isTold || cell != nullptr;
    // A NaN of the foundation reads as nothing in tables of floats, and comes back as that.
    if (number != nullptr)
      component = *number;
    else if (cell != nullptr && !std::isnan(component))
      component = 0.0;
    goes = goes && number == nullptr && component == 0.0;
  }
  if (!isTold) return false;
  if (goes ? !isThere : isThere && areSame(before, after)) return false;
  (foundation.*given.kind->set)(goes ? nullptr : &after);
  return true;
}

/// Writes rows of a table to foundations.
class Writer {
 public:
  explicit Writer(const Table& table) {
    for (const Column& column : table.getColumns())
      if (column.field != nullptr && column.field->type != Fields::Type::stiffness)
        others.push_back(&column);
    for (const Stiffness& kind : stiffnesses) {
      StiffnessColumns columns = {&kind, {}};
      for (std::size_t i = 0; i < components.size(); ++i)
        if (kind.columns[i] != nullptr) columns.columns[i] = table.find(kind.columns[i]);
      if (columns.areThere()) vectors.push_back(columns);
    }
  }

  /// Whether the foundation has another value now. What stays is not set, which would mark it as
  /// changed.
  bool write(Foundation& foundation, std::size_t row) const {
    bool changed = false;
    for (const Column* const column : others) {
      const std::optional<Value>& value = column->values[row];
      if (!value || areSame(column->field->get(foundation), *value)) continue;
      column->field->set(foundation, *value);
      changed = true;
    }
    for (const StiffnessColumns& columns : vectors)
      changed = setStiffness(foundation, columns, row) || changed;
    return changed;
  }

 private:
  std::vector<const Column*> others;
  std::vector<StiffnessColumns> vectors;
};

/// Numbers for new foundations of a table without them.
class Numbers {
 public:
  explicit Numbers(const std::vector<Foundation*>& list) {
    for (const Foundation* const foundation : list)
      highest = std::max(highest, foundation->getNumber());
  }
  int next() { return highest < std::numeric_limits<int>::max() ? ++highest : highest; }

 private:
  int highest = 0;
};

void setCurrent(ManagerObject& manager, const Table& table,
                const std::vector<Foundation*>& foundations) {
  const Column* const column = table.find(Spreadsheets::currentField);
  if (column == nullptr) return;
  if (const std::optional<std::size_t> row = findCurrent(table))
    return manager.get().setCurrentFoundation(foundations[*row]);
  const Foundation* const before = manager.get().getCurrentFoundation();
  const auto found = std::find(foundations.begin(), foundations.end(), before);
  if (found != foundations.end() &&
      column->values[static_cast<std::size_t>(found - foundations.begin())])
    manager.get().setCurrentFoundation(nullptr);
}

/// A table cannot store a NaN as a factor, but one that came from a foundation comes back.
void requireFactors(const Table& table, const std::vector<Foundation*>& foundations) {
  for (const Column& column : table.getColumns()) {
    if (column.field == nullptr || column.field->type != Fields::Type::factor) continue;
    for (std::size_t row = 0; row < foundations.size(); ++row) {
      const std::optional<Value>& value = column.values[row];
      if (!value || !std::isnan(std::get<double>(*value))) continue;
      Foundation* const known = foundations[row];
      if (known == nullptr || !areSame(column.field->get(*known), *value))
        refuseMissing({column.field->name, row});
    }
  }
}

/// What foundations will have as number or name, as far as that is kept unique.
class Uniqueness {
 public:
  Uniqueness(const Table& table, const char* name)
      : field(*Fields::find(name)), column(table.find(name)) {}

  /// Throws ValueError where a row brings what another foundation has then. As `foundations` come
  /// those that are new as well, with what they have from their rows.
  void require(const ManagerObject& manager, const std::vector<Foundation*>& known,
               const std::vector<Foundation*>& foundations) const {
    const std::vector<std::size_t> rows = listChanges(known, foundations);
    if (rows.empty()) return;
    const Holders holders = listHolders(manager, known, foundations);
    for (const std::size_t row : rows) {
      const Value value = getValue(*foundations[row], row);
      const auto [begin, end] = holders.equal_range(value);
      for (auto holder = begin; holder != end; ++holder)
        if (holder->second != foundations[row]) fail(row, value, *holder->second);
    }
  }

 private:
  using Holders = std::unordered_multimap<Value, const Foundation*, Hash>;

  Value getValue(Foundation& foundation, std::size_t row) const {
    const bool isTold = column != nullptr && column->values[row];
    return isTold ? *column->values[row] : field.get(foundation);
  }

  /// The rows that bring another value. Several without a name may get one later.
  std::vector<std::size_t> listChanges(const std::vector<Foundation*>& known,
                                       const std::vector<Foundation*>& foundations) const {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < known.size(); ++row) {
      const Value value = getValue(*foundations[row], row);
      const bool isChange = known[row] == nullptr || field.get(*known[row]) != value;
      if (isChange && value != Value(std::string())) rows.push_back(row);
    }
    return rows;
  }

  Holders listHolders(const ManagerObject& manager, const std::vector<Foundation*>& known,
                      const std::vector<Foundation*>& foundations) const {
    std::unordered_map<Foundation*, std::size_t> rows;
    for (std::size_t row = 0; row < known.size(); ++row) rows.emplace(foundations[row], row);
    Holders holders;
    for (Foundation* const listed : manager.getList())
      if (rows.count(listed) == 0) holders.emplace(field.get(*listed), listed);
    for (const auto& [foundation, row] : rows)
      holders.emplace(getValue(*foundation, row), foundation);
    return holders;
  }

  [[noreturn]] void fail(std::size_t row, const Value& value, const Foundation& holder) const {
    const auto* const name = std::get_if<std::string>(&value);
    const std::string what = name != nullptr ? "the name " + quote(*name)
                                             : "number " + std::to_string(std::get<int>(value));
    throwValueError("row " + std::to_string(row) + ": " + what + " is taken by " +
                    Fields::describe(holder));
  }

  const Field& field;
  const Column* column;  // null where the table does not tell it
};

std::vector<std::unique_ptr<Foundation>> makeNew(ManagerObject& manager, const Table& table,
                                                 const Writer& writer,
                                                 std::vector<Foundation*>& foundations) {
  std::vector<std::unique_ptr<Foundation>> made;
  Numbers numbers(manager.getList());
  const Column* const given = table.find("number");
  for (std::size_t row = 0; row < foundations.size(); ++row) {
    if (foundations[row] != nullptr) continue;
    made.push_back(std::make_unique<Foundation>());
    if (given == nullptr || !given->values[row]) made.back()->setNumber(numbers.next());
    writer.write(*made.back(), row);
    foundations[row] = made.back().get();
  }
  return made;
}

}  // namespace

Update update(ManagerObject& manager, const py::dict& columns, const std::string& by, bool add,
              const std::vector<std::string>& unique, py::handle untold) {
  const Table table(columns, by, untold);
  std::vector<Foundation*> foundations = match(manager, table, add);
  findCurrent(table);  // throws before anything is changed
  requireFactors(table, foundations);
  const std::vector<Foundation*> known = foundations;
  const Writer writer(table);
  std::vector<std::unique_ptr<Foundation>> made = makeNew(manager, table, writer, foundations);
  for (const std::string& field : unique)
    Uniqueness(table, field.c_str()).require(manager, known, foundations);
  if (!made.empty()) manager.requireUnused();

  Update result;
  for (std::size_t row = 0; row < known.size(); ++row)
    if (known[row] != nullptr && writer.write(*known[row], row)) ++result.changed;
  result.added = made.size();
  for (std::unique_ptr<Foundation>& foundation : made) manager.add(std::move(foundation));
  setCurrent(manager, table, foundations);
  return result;
}

}  // namespace Python
