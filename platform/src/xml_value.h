#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "code_pages.h"

/// Values of attributes as they stand in a document, between their quotes, and what they mean.
/// Documents keep them as they were written; what they mean is worked out when somebody asks.
namespace XmlValue {

/// True when `written` means itself, as nearly all values do.
bool isPlain(std::string_view written);

/// What `written` means: references are resolved and every line end or tab is a blank. A character
/// beyond ASCII becomes the byte of `page` that stands for it, and UTF-8 where there is no such
/// byte or no page.
std::string resolve(std::string_view written, const CodePages::CodePage* page);

/// What `written` means as a number, see NumberText; empty when it is none.
std::optional<int> readInteger(std::string_view written);
std::optional<double> readDouble(std::string_view written);

/// True when `meant` is written as it is between double quotes, as nearly all texts are.
bool isWrittenAsItIs(std::string_view meant);

/// How to write `meant` between double quotes. What XML cannot hold becomes '?'.
std::string write(std::string_view meant);

/// Where the first '&' stands that starts no reference to one of XML's five entities or to a
/// character that XML allows; npos when there is none.
std::size_t findBadReference(std::string_view written);

}  // namespace XmlValue
