#include "foundations/copying.h"

namespace Copying {

void overwrite(Found::Foundation& foundation, const Found::Foundation& other) {
  if (&foundation == &other) return;
  // A copy keeps vectors that the other one lacks, and does not see the sign of a zero.
  foundation.clearAreaValues();
  foundation.clearLineValues();
  foundation.setFactorArea(1.0);
  foundation.setFactorLine(1.0);
  foundation.copy(other);
  foundation.setName(other.getName());
  foundation.setNumber(other.getNumber());
  foundation.setChanged(other.getChanged());
}

std::unique_ptr<Found::Foundation> duplicate(const Found::Foundation& other) {
  auto made = std::make_unique<Found::Foundation>();
  overwrite(*made, other);
  return made;
}

}  // namespace Copying
