#include "kv/vector3d.h"

#include <cmath>

namespace {

constexpr double tolerance = 1e-10;

double measure(const KvVector3D& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

}  // namespace

KvVector3D::KvVector3D(double xValue, double yValue, double zValue)
    : x(xValue), y(yValue), z(zValue) {}

double KvVector3D::length() const {
  Recording::call("KvVector3D length");
  return measure(*this);
}

bool KvVector3D::isNull() const {
  Recording::call("KvVector3D isNull");
  return tolerance > measure(*this);
}

bool KvVector3D::operator!=(const KvVector3D& other) const {
  Recording::call("KvVector3D !=");
  return x != other.x || y != other.y || z != other.z;
}

double KvVector3D::getTolerance() {
  Recording::call("KvVector3D getTolerance");
  return tolerance;
}
