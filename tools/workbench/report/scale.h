#pragma once

#include <cstddef>
#include <limits>
#include <map>
#include <vector>

#include "found/foundation.h"
#include "report/bars.h"

/// How values get their places in a picture.
namespace Report {

/// A logarithmic scale over whole decades, wide enough for all values that it includes. It has a
/// start and an end once it includes one.
class Scale {
 public:
  void include(double value);

  bool isEmpty() const { return least > greatest; }
  double getLeast() const { return least; }
  double getGreatest() const { return greatest; }

  /// Exponents of ten. The least value is some way off the start.
  int getStart() const;
  int getEnd() const;
  /// The number of decades between two lines, so that there are few lines.
  int getStep() const;

  /// From 0 at the start to 1 at the end.
  double place(double value) const;
  /// The place of a power of ten.
  double placePower(double exponent) const;

 private:
  double least = std::numeric_limits<double>::infinity();
  double greatest = 0.0;
};

/// What foundations have in one direction of a part.
struct Summary {
  Scale range;  // of the values that have a place on a scale
  std::size_t zeros = 0;
  std::size_t beyond = 0;   // the scale
  std::size_t lacking = 0;  // the value, though they have the part
  std::map<Found::Foundation::Failure, std::size_t> failures;  // by mode, without `None`

  void include(const Bar& bar);
};

/// Summarises the foundations that have the part, direction by direction.
std::vector<Summary> summarize(const std::vector<Found::Foundation*>& foundations, Part part);

/// The scales of a part: one for all translations, one for rotation.
struct Scales {
  Scale translation;
  Scale rotation;

  const Scale& get(const Direction& direction) const {
    return direction.isRotation ? rotation : translation;
  }
};

/// The scales that include all values of `summaries`, which are those of `directions`.
Scales makeScales(const std::vector<Direction>& directions, const std::vector<Summary>& summaries);

}  // namespace Report
