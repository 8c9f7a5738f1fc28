#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "found/foundation.h"
#include "foundations/units.h"

/// Words and numbers of a report, in UTF-8 and not yet escaped.
namespace Report {

/// Stands for a value that is not there.
constexpr const char* absent = "\xE2\x80\x93";
/// What a value is that has no place on a logarithmic scale, and is not zero.
constexpr const char* notOnScale = "negative, infinite or no number";

/// A value in at most `most` significant digits; in everyday sizes it has no exponent.
std::string limitDigits(double value, int most);

/// A value in at most five significant digits, marked where these are not all.
std::string showRounded(double value);

/// "1-9, 12": numbers in ascending order, each once, as ranges. Of very many ranges only the first,
/// and how many more there are.
std::string showRanges(std::vector<int> numbers);

/// A name from a document on one line, made visible even when it consists of blanks.
std::string showName(const std::string& name);

/// The same where room is short.
std::string shortenName(const std::string& name);

/// `text` with at most a few marks over one letter; an ellipsis stands for the others.
std::string limitMarks(const std::string& text);

/// Units as they are shown in headings: visible, and cut where they are long.
Units showUnits(const Units& units);

/// "tension", "compression", "mode 7"; empty for none.
std::string nameFailure(Found::Foundation::Failure failure);

/// "2 findings".
std::string count(std::size_t number, const std::string& noun);

/// "rows 13 to 24", or "row 13" alone.
std::string showSpan(const std::string& noun, std::size_t first, std::size_t last);

/// The texts, with a comma between them when neither is empty.
std::string join(const std::string& first, const std::string& second);

/// "current, generated"
std::string listMarks(bool isCurrent, bool isGenerated);

}  // namespace Report
