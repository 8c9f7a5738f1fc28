#pragma once

#include <memory>
#include <string>

#include "found/export.h"
#include "kv/vector3d.h"

// X11 has a macro of this name. What it means comes back at the end of this file.
#pragma push_macro("None")
#undef None

namespace Found {

/// One elastic support of a structural model: stiffness for areas, for lines, or for both.
///
/// Holds a name, a number, up to three stiffness vectors, a failure mode for each direction that
/// can fail, a tangential factor each for area and line, and three flags.
///
/// Stiffness stays in the host's units and is never converted:
///
///     area, translation in x, y, z    force / length^3            (e.g. kN/m^3)
///     line, translation in x, y, z    force / length^2            (e.g. kN/m^2)
///     line, rotation about x          moment / length / radian    (e.g. kNm/m/rad)
///
/// A vector may be absent; wherever values are computed, an absent vector counts as (0, 0, 0).
/// Equality and assignment look at the values and leave name and number alone.
///
/// No value is refused. Setters ignore an out-of-range direction; getters return 0.0 or `None` for
/// it. Infinities and not-a-numbers are stored as they are. The only exception is
/// std::bad_alloc, from operations that store a vector or a name: the foundation stays valid, and
/// the vector or name concerned keeps its old value. An operation that stores several (the value
/// operations) may then have stored the earlier ones.
///
/// Not synchronised: one thread at a time.
class FOUND_API Foundation {
 public:
  /// The sign of stiffness that is lost in a direction, see modifyValue(). Any other int may be
  /// stored too (a document may hold one); it suppresses nothing but counts as different from
  /// `None`.
  enum Failure : int {
    Tension = -1,    ///< negative stiffness shrinks to a residual value
    None = 0,        ///< the direction never fails; `Failure{}` where a macro hides the name
    Compression = 1  ///< positive stiffness shrinks to a residual value
  };

  /// Not numbered (-1), no name, no vectors, no failures, factors 0.0, all flags false.
  Foundation();

  /// Takes over name, values and flags of `other`, but not its number: the new foundation is -1,
  /// not numbered, until a manager numbers it. Vectors are copied, not shared.
  Foundation(const Foundation& other);

  /// Area and line translation each get their own copy of `v`; everything else as by default.
  explicit Foundation(const KvVector3D& v);

  /// Area and line translation each get their own copy of `*disp`, line rotation a copy of `*rot`.
  /// Where a pointer is null, the vectors concerned are absent. Nothing is kept of the arguments.
  Foundation(const KvVector3D* disp, const KvVector3D* rot);

  ~Foundation();

  /// Replaces the bedding values like copy(). Name and number deliberately stay: an assignment
  /// changes what a bedding does, not which one it is.
  Foundation& operator=(const Foundation& other);

  /// @name Identity
  /// Set without marking the foundation as changed.
  /// @{
  const std::string& getName() const;     ///< empty without a name
  void setName(const std::string& text);  ///< any text, unchecked
  /// -1 while not numbered. Neither checked nor kept unique.
  int getNumber() const;
  void setNumber(int value);  ///< any number, unchecked
  /// @}

  /// @name Flags
  /// @{

  /// Set by every setter that really changes a value. Cleared by setChanged(false), and by taking
  /// over the values of a foundation that is not marked.
  bool getChanged() const;
  void setChanged(bool value);  ///< unconditionally
  /// Made by the system, not by the user; pruning selects by it. Setting does not mark as changed.
  bool isGenerated() const;
  void setGenerated(bool value);  ///< unconditionally
  /// Whether the stored failure modes act. While it is false, getFailureArea() and
  /// getFailureLine() return `None` for every direction.
  bool getFailPossible() const;
  void setFailPossible(bool value);  ///< marks as changed when it differs
  /// @}

  /// @name Tangential factors
  /// No unit and no limits. Storing the value already present (compared exactly) changes nothing.
  /// @{
  double getFactorArea() const;      ///< of the area in x and y
  void setFactorArea(double value);  ///< marks as changed when it differs
  double getFactorLine() const;      ///< of the line in x
  void setFactorLine(double value);  ///< marks as changed when it differs
  /// @}

  /// @name Stored failure modes
  /// Read and written whatever getFailPossible() says. An area fails in z or not at all.
  /// @{
  Failure getFailAreaZ();            ///< of the area in z
  Failure getFailLineX();            ///< of the line in x
  Failure getFailLineY();            ///< of the line in y
  Failure getFailLineZ();            ///< of the line in z
  void setFailAreaZ(Failure value);  ///< marks as changed when it differs
  void setFailLineX(Failure value);  ///< marks as changed when it differs
  void setFailLineY(Failure value);  ///< marks as changed when it differs
  void setFailLineZ(Failure value);  ///< marks as changed when it differs
  /// @}

  /// @name Failure modes by direction
  /// `dir` 0, 1, 2 are x, y, z. Reading is filtered by getFailPossible(), writing is not, on
  /// purpose: a mode set while failing is off is kept and shows when failing is switched on.
  /// @{

  /// The stored mode for `dir` 2 while failing is possible, otherwise `None`.
  Failure getFailureArea(int dir);
  /// The stored mode while failing is possible; `None` otherwise and for any other `dir`.
  Failure getFailureLine(int dir);
  /// Acts for `dir` 2 only; any other is ignored.
  void setFailureArea(int dir, Failure value);
  /// Acts for `dir` 0, 1, 2; any other is ignored.
  void setFailureLine(int dir, Failure value);
  /// @}

  /// @name Stiffness vectors
  /// @{

  /// Copies the area translation to `out` and returns true; when the vector is absent, `out`
  /// becomes (0, 0, 0) and the result is false.
  bool getDispArea(KvVector3D& out) const;
  bool getDispLine(KvVector3D& out) const;  ///< the same for the line translation
  bool getRotLine(KvVector3D& out) const;   ///< the same for the line rotation
  /// z of the area translation, 0.0 when it is absent.
  double getDispAreaZ() const;
  /// Stores a copy of `*v` as area translation; null removes the vector. A zero vector stays
  /// present. Removing marks as changed in any case, also when there was nothing to remove: a host
  /// that clears a bedding wants it saved. Storing marks it when the vector was absent or
  /// different.
  void setDispArea(const KvVector3D* v);
  void setDispLine(const KvVector3D* v);  ///< the same for the line translation
  void setRotLine(const KvVector3D* v);   ///< the same for the line rotation
  /// @}

  /// True when vectors, factors, getFailPossible() and stored failure modes agree. Neither name and
  /// number nor `changed` and `generated` count, so a manager can recognise a bedding it already
  /// has. Vectors are equal when no component differs, or when one is absent and the other shorter
  /// than KvVector3D::getTolerance(). Factors are compared exactly; a NaN never compares equal.
  bool operator==(const Foundation& other) const;

  /// Takes over vectors, flags, failure modes and factors of `other`; name and number stay. Where
  /// `other` lacks a vector, the one present here is kept, on purpose: for an exact duplicate
  /// start from a new foundation, as the copy constructor does.
  void copy(const Foundation& other);

  /// Adds the three vectors of `other`, component by component; a sum whose length is 0 or not a
  /// number becomes absent.
  /// Always marks as changed. Flags, failure modes and factors stay.
  void addValues(const Foundation& other);

  /// Multiplies the vectors present by `factor` and marks as changed when there is one. Scaling by
  /// 0 leaves zero vectors in place.
  void scaleValues(double factor);

  /// Makes this the linear interpolation between `a` (`t` = 0) and `b` (`t` = 1); other `t`
  /// extrapolate. It is computed as `a` + `t` * (`b` - `a`), so at 1 it is `b` as exactly as the
  /// difference can be told. `generated`, `failPossible`, failure modes and factors become those of
  /// `a`; an interpolated vector whose length is 0 or not a number becomes absent. `changed`
  /// becomes that of `a` too, and is then set where storing a vector marks, see setDispArea():
  /// always when one becomes absent, even if `a` has none and is not marked. The name becomes that
  /// of `a` when `t` is exactly 0, that of `b` when exactly 1, else empty; the number stays. This
  /// object may be `a`. It may also be `b`, but then the vectors of `a` overwrite it first and the
  /// result is computed from these.
  void interpolate(const Foundation& a, const Foundation& b, double t);

  /// Removes the area translation and resets the area's factor and failure mode. Does not mark as
  /// changed: a host that clears one part goes on to set it.
  void clearAreaValues();
  /// The same for line translation, line rotation, the line's factor and its failure modes.
  void clearLineValues();

  /// True when a vector is present and longer than exactly 0.0.
  bool hasValues() const;
  bool hasAreaValues() const;  ///< the same for the area translation alone
  bool hasLineValues() const;  ///< the same for line translation and line rotation

  /// Area stiffness in direction `dir`: 0, 1, 2 are x, y, z. 0.0 for any other `dir` and for an
  /// absent vector.
  double getValueArea(int dir) const;
  /// Line stiffness in direction `dir`: 0, 1, 2 are translation in x, y, z; 3 is rotation about x.
  /// 0.0 for any other `dir` and for an absent vector. Rotation about y and z has no index.
  double getValueLine(int dir) const;

  /// True when any stored failure mode differs from `None`, whatever getFailPossible() says.
  bool releases() const;

  /// `value` as it acts in a direction with mode `failure`: 1e-5 when it is positive and fails in
  /// compression, -1e-5 when it is negative and fails in tension, otherwise `value`. Never 0, so
  /// that the host's equations stay solvable.
  static double modifyValue(Failure failure, double value);

 private:
  using Slot = std::unique_ptr<KvVector3D>;

  static KvVector3D interpolate(const KvVector3D* a, const KvVector3D* b, double t);

  bool getVector(KvVector3D& out, const Slot& slot) const;
  void setVector(Slot& slot, const KvVector3D* v);
  void setComputedVector(Slot& slot, const KvVector3D& v);

  /// Compared exactly: storing the same value again must not mark the model as changed.
  template <class Value>
  void setValue(Value& stored, Value value) {
    if (stored == value) return;
    stored = value;
    changed = true;
  }

  std::string name;
  int number = -1;
  bool changed = false;
  bool generated = false;
  bool failPossible = false;
  Slot dispArea;
  Slot dispLine;
  Slot rotLine;
  Failure failLineX = None;
  Failure failLineY = None;
  Failure failLineZ = None;
  Failure failAreaZ = None;
  double factorLine = 0.0;
  double factorArea = 0.0;
};

}  // namespace Found

#pragma pop_macro("None")
