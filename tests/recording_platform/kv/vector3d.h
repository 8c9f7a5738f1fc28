#pragma once

#include "recording.h"

/// Three doubles, compared and measured on the record.
class KvVector3D {
 public:
  KvVector3D() = default;
  KvVector3D(double xValue, double yValue, double zValue);

  double length() const;
  bool isNull() const;
  bool operator!=(const KvVector3D& other) const;
  static double getTolerance();

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

 private:
  Recording::Counted counted{"KvVector3D"};
};
