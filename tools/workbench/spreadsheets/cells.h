#pragma once

#include <string>
#include <string_view>

#include "foundations/fields.h"
#include "spreadsheets/sheet.h"

namespace Spreadsheets {

/// The value of a field from the text of a cell. Numbers have `decimal` before their decimals.
/// Throws std::invalid_argument, which tells what the field takes.
Fields::Value readCell(const Fields::Field& field, std::string_view text, char decimal);

/// True for "true", "yes", and what spreadsheets make of them; false for their opposites and for an
/// empty cell. Throws std::invalid_argument.
bool readFlag(std::string_view text);

/// The word of a failure mode, "none" for an empty text. Throws std::invalid_argument.
std::string readFailure(std::string_view text);

/// A name that documents can hold. Throws std::invalid_argument.
std::string readName(std::string_view text);

/// The name of a unit; a blank one is none. Throws std::invalid_argument.
std::string readUnit(std::string_view text);

/// The text of a cell, without the apostrophe that keeps it from being a formula. Throws
/// std::invalid_argument.
std::string readText(std::string_view cell);

/// Appends the value as readCell() reads it from a table of this dialect, which is complete.
void writeCell(std::string& text, const Fields::Field& field, const Fields::Value& value,
               const Dialect& dialect);

/// Appends a text as readText() reads it: where it would start like a formula, an apostrophe stands
/// before it.
void writeText(std::string& cell, std::string_view text);

/// Without blanks and tabs at its ends.
std::string_view trim(std::string_view text);

/// True for digits in groups of three that have `mark` between them, such as 1.500.
bool isGrouped(std::string_view number, char mark);

}  // namespace Spreadsheets
