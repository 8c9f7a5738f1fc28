#pragma once

#include <string>

#include "foundations/fields.h"
#include "foundations/units.h"
#include "models/source.h"

namespace Engine {

/// How people call a field: the heading of its column, below that of a group.
struct Heading {
  const char* group;  // "", "Area" or "Line"
  const char* label;
};

Heading getHeading(const Fields::Field& field);

/// Such as "Area z"; for sentences.
std::string nameField(const Fields::Field& field);

/// Empty where none is known.
std::string nameUnit(const Fields::Field& field, const Units& units);

/// Throws UserError where there is no field of this name.
const Fields::Field& getField(const std::string& key);

/// The text that a user edits: that of a value as Fields::parse() takes it.
std::string spell(const Fields::Value& value);

}  // namespace Engine
