#pragma once

#include "kv/export.h"

/// Three doubles, without a unit of their own.
class KV_API KvVector3D {
 public:
  /// (0, 0, 0).
  KvVector3D() = default;
  /// The vector of these components, unchecked.
  KvVector3D(double xValue, double yValue, double zValue) : x(xValue), y(yValue), z(zValue) {}

  /// Euclidean length, free of overflow and underflow on the way. NaN when a component is NaN,
  /// else infinite when one is infinite.
  double length() const;

  /// True when the length is below the tolerance.
  bool isNull() const { return getTolerance() > length(); }

#if defined(__GNUC__) || defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wfloat-equal"  // a host's; here it is meant so
#endif
  /// True when any component differs, compared exactly. A NaN differs from everything.
  bool operator!=(const KvVector3D& other) const {
    return x != other.x || y != other.y || z != other.z;
  }
#if defined(__GNUC__) || defined(__clang__)
#pragma GCC diagnostic pop
#endif

  /// The length below which a vector counts as null: 1e-10.
  static double getTolerance() { return 1e-10; }

  double x = 0.0;  ///< in x, or about it
  double y = 0.0;  ///< in y, or about it
  double z = 0.0;  ///< in z, or about it
};
