#pragma once

#include <string>

/// Text in pictures, where room is short: the table of a report has all of it.
namespace ReportText {

/// Exact, or where that is long rounded and marked so.
std::string showValue(double value);

/// `name`, in UTF-8, or where it is wider than so many small letters its start and an ellipsis.
std::string shortenName(const std::string& name, double widest);

}  // namespace ReportText
