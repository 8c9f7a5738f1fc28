#pragma once

#include <string>
#include <vector>

#include "found/foundation.h"

/// What a report shows of a foundation, part by part.
namespace Report {

enum class Part { area, line };

/// The stiffness in one direction.
struct Bar {
  bool isPresent;
  double value;
  Found::Foundation::Failure failure;
};

struct Direction {
  const char* name;
  std::string unit;  // empty where none is claimed
  bool isRotation;
};

/// Labels of the units of a document; nothing is converted.
struct Units {
  std::string force;
  std::string length;
};

/// The directions of a part, and the bars of a foundation in the same order.
std::vector<Direction> listDirections(Part part, const Units& units);
std::vector<Bar> listBars(Part part, Found::Foundation& foundation);

bool hasPart(Part part, Found::Foundation& foundation);
/// In the middle of a sentence.
const char* getName(Part part);

/// True for a value that has a place on a logarithmic scale.
bool isDrawable(const Bar& bar);
/// True for one that is there but has none, though it is not zero: negative, infinite, no number.
bool isBeyond(const Bar& bar);

}  // namespace Report
