#pragma once

#include <string>
#include <vector>

#include "found/foundation_manager.h"

/// Foundations made from values, as texts and compared.
namespace TestSupport {

/// Appends a foundation without values.
Found::Foundation& addFoundation(Found::FoundationManager& manager, int number,
                                 const std::string& name);

void setDispArea(Found::Foundation& foundation, double x, double y, double z);
void setDispLine(Found::Foundation& foundation, double x, double y, double z);
void setRotLine(Found::Foundation& foundation, double x, double y, double z);

/// The live list as "1 A, 2 B"; a null entry is "null".
std::string describe(const Found::FoundationManager& manager);

/// All that a foundation holds but number, name and the flag that it changed. What is at its
/// default is left out: "area (1, 2, 3), fails line x -1, factor area 0.5, generated".
std::string describeValues(Found::Foundation& foundation);

using Differences = std::vector<std::string>;

/// What to do with a vector that only one of two foundations has: compare its components with zeros
/// or not at all.
enum class AbsentVector { CountsAsZeros, HasNoComponents };

/// What differs, field by field, as "A: number" or "A: dispArea x"; doubles differ by their bits.
Differences compare(Found::Foundation& a, Found::Foundation& b, AbsentVector absent);

}  // namespace TestSupport
