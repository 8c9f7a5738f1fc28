#include "found/foundation.h"

namespace Found {
namespace {

// Not 0: the host's equations must stay solvable.
constexpr double residualStiffness = 1e-5;

bool hasLength(const KvVector3D* v) { return v != nullptr && v->length() > 0.0; }

/// An absent vector matches one that the vector library calls null.
bool areEqual(const KvVector3D* a, const KvVector3D* b) {
  if (a != nullptr && b != nullptr) return !(*a != *b);
  const KvVector3D* const present = a != nullptr ? a : b;
  return present == nullptr || KvVector3D::getTolerance() > present->length();
}

KvVector3D valueOf(const KvVector3D* v) { return v != nullptr ? *v : KvVector3D(); }

double getComponent(const KvVector3D* v, int dir) {
  if (v == nullptr) return 0.0;
  switch (dir) {
    case 0:
      return v->x;
    case 1:
      return v->y;
    case 2:
      return v->z;
    default:
      return 0.0;
  }
}

}  // namespace

bool Foundation::operator==(const Foundation& other) const {
  return areEqual(dispArea.get(), other.dispArea.get()) &&
         areEqual(dispLine.get(), other.dispLine.get()) &&
         areEqual(rotLine.get(), other.rotLine.get()) && factorArea == other.factorArea &&
         factorLine == other.factorLine && failPossible == other.failPossible &&
         failLineX == other.failLineX && failLineY == other.failLineY &&
         failLineZ == other.failLineZ && failAreaZ == other.failAreaZ;
}

void Foundation::copy(const Foundation& other) {
  // A vector that `other` lacks is kept, on purpose: copying never empties a slot.
  if (other.dispArea != nullptr) setVector(dispArea, other.dispArea.get());
  if (other.dispLine != nullptr) setVector(dispLine, other.dispLine.get());
  if (other.rotLine != nullptr) setVector(rotLine, other.rotLine.get());
  changed = other.changed;
  generated = other.generated;
  failPossible = other.failPossible;
  failLineX = other.failLineX;
  failLineY = other.failLineY;
  failLineZ = other.failLineZ;
  failAreaZ = other.failAreaZ;
  factorArea = other.factorArea;
  factorLine = other.factorLine;
}

Foundation& Foundation::operator=(const Foundation& other) {
  if (this != &other) copy(other);
  return *this;
}

void Foundation::setComputedVector(Slot& slot, const KvVector3D& v) {
  setVector(slot, hasLength(&v) ? &v : nullptr);
}

void Foundation::addValues(const Foundation& other) {
  const auto add = [this](Slot& slot, const Slot& otherSlot) {
    const KvVector3D a = valueOf(otherSlot.get());
    const KvVector3D b = valueOf(slot.get());
    setComputedVector(slot, KvVector3D(a.x + b.x, a.y + b.y, a.z + b.z));
  };
  add(dispArea, other.dispArea);
  add(dispLine, other.dispLine);
  add(rotLine, other.rotLine);
  changed = true;
}

void Foundation::scaleValues(double factor) {
  for (const Slot* slot : {&dispArea, &dispLine, &rotLine}) {
    if (*slot == nullptr) continue;
    KvVector3D& v = **slot;
    v = KvVector3D(v.x * factor, v.y * factor, v.z * factor);
    changed = true;
  }
}

KvVector3D Foundation::interpolate(const KvVector3D* a, const KvVector3D* b, double t) {
  const KvVector3D from = valueOf(a);
  const KvVector3D to = valueOf(b);
  return KvVector3D((to.x - from.x) * t + from.x, (to.y - from.y) * t + from.y,
                    (to.z - from.z) * t + from.z);
}

void Foundation::interpolate(const Foundation& a, const Foundation& b, double t) {
  // Before `b` is read, also when this object is `b`: the documented result rests on that order.
  if (this != &a) copy(a);

  if (t == 0.0)
    name = a.name;
  else if (t == 1.0)
    name = b.name;
  else
    name.clear();

  setComputedVector(dispArea, interpolate(a.dispArea.get(), b.dispArea.get(), t));
  setComputedVector(dispLine, interpolate(a.dispLine.get(), b.dispLine.get(), t));
  setComputedVector(rotLine, interpolate(a.rotLine.get(), b.rotLine.get(), t));
}

void Foundation::clearAreaValues() {
  dispArea.reset();
  factorArea = 0.0;
  failAreaZ = None;
}

void Foundation::clearLineValues() {
  dispLine.reset();
  rotLine.reset();
  failLineX = None;
  failLineY = None;
  failLineZ = None;
  factorLine = 0.0;
}

bool Foundation::hasValues() const { return hasAreaValues() || hasLineValues(); }

bool Foundation::hasAreaValues() const { return hasLength(dispArea.get()); }

bool Foundation::hasLineValues() const {
  return hasLength(dispLine.get()) || hasLength(rotLine.get());
}

double Foundation::getValueArea(int dir) const { return getComponent(dispArea.get(), dir); }

double Foundation::getValueLine(int dir) const {
  return dir == 3 ? getComponent(rotLine.get(), 0) : getComponent(dispLine.get(), dir);
}

bool Foundation::releases() const {
  return failLineX != None || failLineY != None || failLineZ != None || failAreaZ != None;
}

double Foundation::modifyValue(Failure failure, double value) {
  if (failure == Compression && value > 0.0) return residualStiffness;
  if (failure == Tension && value < 0.0) return -residualStiffness;
  return value;
}

}  // namespace Found
