#pragma once

#include <bitset>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "foundations/fields.h"
#include "foundations/units.h"

/// Foundations as spreadsheets and scripts exchange them: tables of comma separated values, and
/// JSON. Both have the fields under their names, and "current" besides.
namespace Spreadsheets {

constexpr const char* currentField = "current";

/// How a table is written. What is left open, its text tells.
struct Dialect {
  std::optional<char> separator;  // of cells: , ; or a tab
  std::optional<char> decimal;    // before decimals: . or ,
};

/// Which fields something tells, in the order of Fields::list().
class FieldSet {
 public:
  static FieldSet all() { return FieldSet(Bits().set()); }
  FieldSet() = default;

  void add(const Fields::Field& field) { bits.set(getPlace(field)); }
  bool has(const Fields::Field& field) const { return bits.test(getPlace(field)); }

 private:
  using Bits = std::bitset<32>;
  explicit FieldSet(Bits set) : bits(set) {}
  static std::size_t getPlace(const Fields::Field& field) {
    static const Fields::Field* const first = Fields::list().data();
    return static_cast<std::size_t>(&field - first);
  }

  Bits bits;
};

/// Where a foundation stands.
struct Origin {
  std::size_t line = 0;    // from 1
  std::size_t column = 1;  // in bytes, from 1
  std::size_t begin = 0;   // of the row of a table, or the object of data
  std::size_t end = 0;     // of a row, behind the end of its last line
  FieldSet told;
  FieldSet blank;  // of these, what has no value
};

/// A column of a table.
struct Column {
  const Fields::Field* field;  // null for the one that tells which foundation is current
};

/// What a document tells beside its foundations.
struct Sheet {
  std::vector<Origin> origins;  // of the foundations, in their order
  Units units;
  Dialect dialect;             // of a table
  std::size_t unitsBegin = 0;  // of the row of a table that names them, or that it would stand at
  std::size_t unitsEnd = 0;
  std::vector<Column> columns;  // of a table
};

}  // namespace Spreadsheets
