#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <string>

#include "properties/record.h"

/// Arbitrary inputs, with a bias towards those at which something changes.
namespace PropertyTest {

using Limits = std::numeric_limits<double>;
constexpr int smallestInt = std::numeric_limits<int>::min();
constexpr int largestInt = std::numeric_limits<int>::max();

/// Doubles with few digits, whose sums and differences are exact.
rc::Gen<double> roundDouble();

/// Every double there is, the special ones more often.
rc::Gen<double> anyDouble();

rc::Gen<double> finiteDouble();

rc::Gen<Vector> anyVector(const rc::Gen<double>& component);

rc::Gen<int> anyNumber();

/// Numbers that the exchange format takes.
rc::Gen<int> positiveNumber();

rc::Gen<std::string> anyName();

rc::Gen<Record> anyRecord(const rc::Gen<int>& number = anyNumber(),
                          const rc::Gen<double>& value = anyDouble());

rc::Gen<Records> anyRecords(const rc::Gen<int>& number = anyNumber(),
                            const rc::Gen<double>& value = anyDouble());

/// Records that all have a name, and neither a name nor a number twice.
rc::Gen<Records> distinctRecords(const rc::Gen<int>& number);

}  // namespace PropertyTest
