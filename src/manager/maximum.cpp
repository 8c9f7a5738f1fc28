#include "found/foundation_manager.h"

namespace Found {

double FoundationManager::getMaxFoundationValue() const { return maxFoundationValue; }

void FoundationManager::setMaxFoundationValue(double value) { maxFoundationValue = value; }

void FoundationManager::updateFoundationMaximum() {
  maxFoundationValue = 0.0;
  // A NaN is greater than no number, so it never becomes the maximum.
  const auto raise = [this](bool isPresent, const KvVector3D& v) {
    if (!isPresent) return;
    const double length = v.length();
    if (length > maxFoundationValue) maxFoundationValue = length;
  };
  KvVector3D v;
  for (const Foundation* foundation : foundations) {
    if (foundation == nullptr) continue;
    raise(foundation->getDispArea(v), v);
    raise(foundation->getDispLine(v), v);
    raise(foundation->getRotLine(v), v);
  }
}

}  // namespace Found
