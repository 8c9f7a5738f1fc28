#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "found/foundation.h"

/// What documents hold of a foundation, field by field. All outputs share the names of the fields,
/// and these never change: scripts rely on them.
namespace Fields {

/// Nothing: the foundation lacks the vector.
using Value = std::variant<std::monostate, bool, int, double, std::string>;

/// What a field holds. A stiffness may be nothing, too.
enum class Type { integer, text, flag, stiffness, failure, factor };

struct Field {
  const char* name;
  Type type;
  Value (*get)(Found::Foundation& foundation);
  /// The value must be one that get() may give. Where the last component of a vector that is not 0
  /// becomes nothing, the foundation loses the vector.
  void (*set)(Found::Foundation& foundation, const Value& value);
};

/// All fields, in the order in which they are shown. Texts are as the foundation has them, failure
/// modes are "none", "tension", "compression", or a number where a document held another one.
const std::vector<Field>& list();

/// The field of this name; null when there is none.
const Field* find(std::string_view name);

/// The value that `text`, in UTF-8, gives the field; throws std::invalid_argument, which tells what
/// the field takes instead. Nothing is the empty text.
Value parse(const Field& field, const std::string& text);

/// True when the two mean the same. An absent stiffness equals a stiffness of zero, since some
/// forms write one and some the other.
bool areAlike(const Value& a, const Value& b);

/// A field in which two foundations differ.
struct Difference {
  const Field& field;
  Value first;
  Value second;
};

/// The fields in which the two differ.
std::vector<Difference> compare(Found::Foundation& first, Found::Foundation& second);

/// As an engineer reads it, in UTF-8: "-" for nothing, yes or no, the shortest text of a number.
std::string show(const Value& value);

/// How messages call a foundation: number 3 "Raft on stiff clay".
std::string describe(const Found::Foundation& foundation);

}  // namespace Fields
