#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "code_pages.h"

/// Values of attributes: as they are written in a document, between their quotes, and what they
/// mean. Documents keep what is written; the meaning is resolved when somebody asks for it.
namespace XmlValue {

/// True when `written` means itself, as nearly all values do.
bool isPlain(std::string_view written);

/// What `written` means: references are resolved, and every line end or tab becomes a blank. A
/// referenced character beyond ASCII becomes its byte in `page`, or UTF-8 when `page` is null or
/// lacks the character.
std::string resolve(std::string_view written, const CodePages::CodePage* page);

/// What `written` means as a number, see NumberText; empty when it is none.
std::optional<int> readInteger(std::string_view written);
std::optional<double> readDouble(std::string_view written);

/// True when `meant` is written as it is between double quotes, as nearly all texts are.
bool isWrittenAsItIs(std::string_view meant);

/// How to write `meant` between double quotes. What XML cannot hold becomes '?'.
std::string write(std::string_view meant);

/// The place of the first '&' that does not start a valid reference; npos when all do. Valid are
/// references to the five entities of XML and to characters that XML allows.
std::size_t findBadReference(std::string_view written);

}  // namespace XmlValue
