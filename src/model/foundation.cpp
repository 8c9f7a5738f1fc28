#include "found/foundation.h"

namespace Found {

Foundation::Foundation() = default;

Foundation::Foundation(const Foundation& other) : name(other.name) { copy(other); }

Foundation::Foundation(const KvVector3D& v) : Foundation(&v, nullptr) {}

Foundation::Foundation(const KvVector3D* disp, const KvVector3D* rot)
    : dispArea(disp != nullptr ? std::make_unique<KvVector3D>(*disp) : nullptr),
      dispLine(disp != nullptr ? std::make_unique<KvVector3D>(*disp) : nullptr),
      rotLine(rot != nullptr ? std::make_unique<KvVector3D>(*rot) : nullptr) {}

Foundation::~Foundation() = default;

const std::string& Foundation::getName() const { return name; }

void Foundation::setName(const std::string& text) { name = text; }

int Foundation::getNumber() const { return number; }

void Foundation::setNumber(int value) { number = value; }

bool Foundation::getChanged() const { return changed; }

void Foundation::setChanged(bool value) { changed = value; }

bool Foundation::isGenerated() const { return generated; }

void Foundation::setGenerated(bool value) { generated = value; }

bool Foundation::getFailPossible() const { return failPossible; }

void Foundation::setFailPossible(bool value) { setValue(failPossible, value); }

double Foundation::getFactorArea() const { return factorArea; }

void Foundation::setFactorArea(double value) { setValue(factorArea, value); }

double Foundation::getFactorLine() const { return factorLine; }

void Foundation::setFactorLine(double value) { setValue(factorLine, value); }

Foundation::Failure Foundation::getFailAreaZ() { return failAreaZ; }

Foundation::Failure Foundation::getFailLineX() { return failLineX; }

Foundation::Failure Foundation::getFailLineY() { return failLineY; }

Foundation::Failure Foundation::getFailLineZ() { return failLineZ; }

void Foundation::setFailAreaZ(Failure value) { setValue(failAreaZ, value); }

void Foundation::setFailLineX(Failure value) { setValue(failLineX, value); }

void Foundation::setFailLineY(Failure value) { setValue(failLineY, value); }

void Foundation::setFailLineZ(Failure value) { setValue(failLineZ, value); }

Foundation::Failure Foundation::getFailureArea(int dir) {
  return failPossible && dir == 2 ? failAreaZ : None;
}

Foundation::Failure Foundation::getFailureLine(int dir) {
  if (!failPossible) return None;
  switch (dir) {
    case 0:
      return failLineX;
    case 1:
      return failLineY;
    case 2:
      return failLineZ;
    default:
      return None;
  }
}

void Foundation::setFailureArea(int dir, Failure value) {
  if (dir == 2) setFailAreaZ(value);
}

void Foundation::setFailureLine(int dir, Failure value) {
  switch (dir) {
    case 0:
      return setFailLineX(value);
    case 1:
      return setFailLineY(value);
    case 2:
      return setFailLineZ(value);
    default:
      return;
  }
}

bool Foundation::getDispArea(KvVector3D& out) const { return getVector(out, dispArea); }

bool Foundation::getDispLine(KvVector3D& out) const { return getVector(out, dispLine); }

bool Foundation::getRotLine(KvVector3D& out) const { return getVector(out, rotLine); }

double Foundation::getDispAreaZ() const { return dispArea != nullptr ? dispArea->z : 0.0; }

void Foundation::setDispArea(const KvVector3D* v) { setVector(dispArea, v); }

void Foundation::setDispLine(const KvVector3D* v) { setVector(dispLine, v); }

void Foundation::setRotLine(const KvVector3D* v) { setVector(rotLine, v); }

bool Foundation::getVector(KvVector3D& out, const Slot& slot) const {
  out = slot != nullptr ? *slot : KvVector3D();
  return slot != nullptr;
}

void Foundation::setVector(Slot& slot, const KvVector3D* v) {
  if (v == nullptr) {
    slot.reset();
    changed = true;  // even when the slot was empty: clearing always marks
    return;
  }
  if (slot == nullptr) {
    slot = std::make_unique<KvVector3D>();
    changed = true;
  }
  if (*slot != *v) changed = true;
  *slot = *v;
}

}  // namespace Found
