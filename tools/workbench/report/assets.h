#pragma once

/// The fixed content of every report.
namespace Report {

extern const char* const styleSheet;

/// Sorts the table; the page is complete without it.
extern const char* const script;
/// Of `script`, in base 64: no other script runs in a report.
extern const char* const scriptSha256;

}  // namespace Report
