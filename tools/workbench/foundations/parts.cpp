#include "foundations/parts.h"

namespace Parts {

using Found::Foundation;

bool hasArea(Foundation& foundation) {
  if (foundation.getFailAreaZ() != Foundation::None || foundation.getFactorArea() != 0.0)
    return true;
  KvVector3D area;
  if (!foundation.getDispArea(area)) return false;
  return area != KvVector3D() || !hasLine(foundation);
}

bool hasLine(Foundation& foundation) {
  KvVector3D ignored;
  return foundation.getDispLine(ignored) || foundation.getRotLine(ignored) ||
         foundation.getFailLineX() != Foundation::None ||
         foundation.getFailLineY() != Foundation::None ||
         foundation.getFailLineZ() != Foundation::None || foundation.getFactorLine() != 0.0;
}

}  // namespace Parts
