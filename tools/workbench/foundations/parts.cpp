#include "foundations/parts.h"

namespace Parts {

using Found::Foundation;

namespace {

bool tellsLineFailure(Foundation& foundation) {
  return foundation.getFailLineX() != Foundation::None ||
         foundation.getFailLineY() != Foundation::None ||
         foundation.getFailLineZ() != Foundation::None;
}

}  // namespace

bool hasArea(Foundation& foundation) {
  if (foundation.getFailAreaZ() != Foundation::None || foundation.getFactorArea() != 0.0)
    return true;
  KvVector3D area;
  if (!foundation.getDispArea(area)) return false;
  return area != KvVector3D() || !hasLine(foundation);
}

bool tellsArea(Foundation& foundation) {
  KvVector3D ignored;
  return foundation.getDispArea(ignored) || foundation.getFailAreaZ() != Foundation::None ||
         foundation.getFactorArea() != 0.0;
}

bool tellsLine(Foundation& foundation) {
  KvVector3D rotation;
  const bool rotates = foundation.getRotLine(rotation) && rotation != KvVector3D();
  KvVector3D ignored;
  return rotates || foundation.getDispLine(ignored) || tellsLineFailure(foundation) ||
         foundation.getFactorLine() != 0.0;
}

bool hasLine(Foundation& foundation) {
  KvVector3D ignored;
  return foundation.getDispLine(ignored) || foundation.getRotLine(ignored) ||
         tellsLineFailure(foundation) || foundation.getFactorLine() != 0.0;
}

}  // namespace Parts
