#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "found/foundation.h"
#include "foundations/units.h"

/// What a report shows of a foundation, part by part.
namespace Report {

/// A foundation without either has none.
enum class Part { area, line, none };

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

/// The directions of a part, and the bars of a foundation in the same order.
std::vector<Direction> listDirections(Part part, const Units& units);
std::vector<Bar> listBars(Part part, Found::Foundation& foundation);

bool hasPart(Part part, Found::Foundation& foundation);
std::size_t countWith(const std::vector<Found::Foundation*>& foundations, Part part);
/// The tangential factor of a part that is there.
double getFactor(Part part, const Found::Foundation& foundation);
/// The name of a part in the middle of a sentence.
const char* getName(Part part);

/// True for a value that has a place on a logarithmic scale.
bool isDrawable(const Bar& bar);
/// True for a value other than zero without such a place: negative, infinite or not a number.
bool isBeyond(const Bar& bar);
bool isBeyond(double value);

}  // namespace Report
