#include <functional>
#include <utility>

#include "properties/generators.h"

namespace PropertyTest {
namespace {

const Vector Record::*const vectors[] = {&Record::dispArea, &Record::dispLine, &Record::rotLine};

KvVector3D valueOf(const Vector& v) { return v.value_or(KvVector3D()); }

/// For each component of the three vectors, those of both records; absent ones are zeros.
using Pairs = std::vector<std::pair<double, double>>;

Pairs pairComponents(const Record& first, const Record& second) {
  Pairs pairs;
  for (const auto vector : vectors) {
    const KvVector3D a = valueOf(first.*vector);
    const KvVector3D b = valueOf(second.*vector);
    pairs.insert(pairs.end(), {{a.x, b.x}, {a.y, b.y}, {a.z, b.z}});
  }
  return pairs;
}

bool haveSameStiffness(const Record& a, const Record& b) {
  for (const auto& [x, y] : pairComponents(a, b))
    if (x != y) return false;
  return true;
}

bool isAnythingNotANumber(const Record& record) {
  if (std::isnan(record.factorArea) || std::isnan(record.factorLine)) return true;
  for (const auto& [value, same] : pairComponents(record, record))
    if (std::isnan(value)) return true;
  return false;
}

/// Without the vectors, the name and the flag that it changed.
std::string describeRest(Record record) {
  for (Vector Record::*vector : {&Record::dispArea, &Record::dispLine, &Record::rotLine})
    (record.*vector).reset();
  record.name.clear();
  return describeUnmarked(record);
}

/// What a record becomes when it takes over the values of another one.
Record takeOver(Record target, const Record& source) {
  const Record old = target;
  target = source;
  target.name = old.name;
  target.number = old.number;
  for (Vector Record::*vector : {&Record::dispArea, &Record::dispLine, &Record::rotLine})
    if (!(target.*vector)) target.*vector = old.*vector;
  return target;
}

// Copying

RC_GTEST_PROP(CopyProperty, TakesOverAllButNameNumberAndAbsentVectors, ()) {
  const Record target = *anyRecord();
  const Record source = *anyRecord();
  const auto copied = make(target);
  const auto original = make(source);

  copied->copy(*original);

  RC_ASSERT(describe(*copied) == describe(takeOver(target, source)));
  RC_ASSERT(describe(*original) == describe(source));
}

RC_GTEST_PROP(AssignmentProperty, TakesOverAllButNameNumberAndAbsentVectors, ()) {
  const Record target = *anyRecord();
  const Record source = *anyRecord();
  const auto assigned = make(target);
  const auto original = make(source);

  *assigned = *original;

  RC_ASSERT(describe(*assigned) == describe(takeOver(target, source)));
  RC_ASSERT(describe(*original) == describe(source));
}

RC_GTEST_PROP(AssignmentProperty, ToItselfChangesNothing, ()) {
  const Record record = *anyRecord();
  const auto foundation = make(record);
  const Foundation& same = *foundation;

  *foundation = same;

  RC_ASSERT(describe(*foundation) == describe(record));
}

RC_GTEST_PROP(CopyConstructorProperty, TakesOverAllButTheNumber, ()) {
  const Record source = *anyRecord();
  const auto original = make(source);

  Foundation copied(*original);

  Record expected = source;
  expected.number = -1;
  RC_ASSERT(describe(copied) == describe(expected));
  RC_ASSERT(describe(*original) == describe(source));
}

// Equality

RC_GTEST_PROP(EqualityProperty, HoldsForACopyUnlessAnythingIsNotANumber, ()) {
  const Record record = *anyRecord();
  const auto foundation = make(record);

  RC_ASSERT((*foundation == Foundation(*foundation)) == !isAnythingNotANumber(record));
}

RC_GTEST_PROP(EqualityProperty, DoesNotDependOnTheOrder, ()) {
  const auto a = make(*anyRecord());
  const auto b = std::make_unique<Foundation>(*a);
  b->setDispArea(addressOf(*anyVector(anyDouble())));

  RC_ASSERT((*a == *b) == (*b == *a));
}

RC_GTEST_PROP(EqualityProperty, TakesNoNoticeOfNameNumberAndMarks, ()) {
  const Record record = *anyRecord(anyNumber(), finiteDouble());
  Record other = record;
  other.name = *anyName();
  other.number = *anyNumber();
  other.changed = *rc::gen::arbitrary<bool>();
  other.generated = *rc::gen::arbitrary<bool>();

  RC_ASSERT(*make(record) == *make(other));
}

double differFrom(double value) { return value == 1.0 ? 2.0 : 1.0; }

Vector differFrom(const Vector& v) {
  return v ? KvVector3D(v->x, differFrom(v->y), v->z) : KvVector3D(0.0, 1.0, 0.0);
}

Foundation::Failure differFrom(Foundation::Failure failure) {
  return failure == Foundation::None ? Foundation::Tension : Foundation::None;
}

const std::function<void(Record&)> differences[] = {
    [](Record& r) { r.dispArea = differFrom(r.dispArea); },
    [](Record& r) { r.dispLine = differFrom(r.dispLine); },
    [](Record& r) { r.rotLine = differFrom(r.rotLine); },
    [](Record& r) { r.factorArea = differFrom(r.factorArea); },
    [](Record& r) { r.factorLine = differFrom(r.factorLine); },
    [](Record& r) { r.failPossible = !r.failPossible; },
    [](Record& r) { r.failLineX = differFrom(r.failLineX); },
    [](Record& r) { r.failLineY = differFrom(r.failLineY); },
    [](Record& r) { r.failLineZ = differFrom(r.failLineZ); },
    [](Record& r) { r.failAreaZ = differFrom(r.failAreaZ); },
};

RC_GTEST_PROP(EqualityProperty, EndsWithADifferenceInAnyOneValue, ()) {
  const Record record = *anyRecord();
  for (const auto& makeDifferent : differences) {
    Record other = record;
    makeDifferent(other);

    RC_ASSERT(!(*make(record) == *make(other)));
    RC_ASSERT(!(*make(other) == *make(record)));
  }
}

// Arithmetic

RC_GTEST_PROP(AddValuesProperty, AddsEachComponentAndMarksAsChanged, ()) {
  const Record first = *anyRecord();
  const Record second = *anyRecord();
  const auto sum = make(first);

  sum->addValues(*make(second));

  Record expected = first;
  expected.changed = true;
  for (Vector Record::*vector : {&Record::dispArea, &Record::dispLine, &Record::rotLine}) {
    const KvVector3D a = valueOf(first.*vector);
    const KvVector3D b = valueOf(second.*vector);
    expected.*vector = KvVector3D(b.x + a.x, b.y + a.y, b.z + a.z);
    if (!hasLength(expected.*vector)) (expected.*vector).reset();
  }
  RC_ASSERT(describe(*sum) == describe(expected));
}

RC_GTEST_PROP(AddValuesProperty, GivesTheSameStiffnessInEitherOrder, ()) {
  const auto a = make(*anyRecord());
  const auto b = make(*anyRecord());
  Foundation ab(*a);
  Foundation ba(*b);

  ab.addValues(*b);
  ba.addValues(*a);

  RC_ASSERT(haveSameStiffness(recordOf(ab), recordOf(ba)));
}

RC_GTEST_PROP(AddValuesProperty, OfTheOppositeLeavesNoVector, ()) {
  const auto foundation = make(*anyRecord(anyNumber(), finiteDouble()));
  Foundation opposite(*foundation);
  opposite.scaleValues(-1.0);

  foundation->addValues(opposite);

  const Record record = recordOf(*foundation);
  for (const auto vector : vectors) RC_ASSERT(!(record.*vector));
}

RC_GTEST_PROP(ScaleValuesProperty, MultipliesEachComponentAndKeepsWhatIsPresent, ()) {
  const Record record = *anyRecord();
  const double factor = *anyDouble();
  const auto scaled = make(record);

  scaled->scaleValues(factor);

  Record expected = record;
  for (Vector Record::*vector : {&Record::dispArea, &Record::dispLine, &Record::rotLine}) {
    Vector& v = expected.*vector;
    if (!v) continue;
    v = KvVector3D(v->x * factor, v->y * factor, v->z * factor);
    expected.changed = true;
  }
  // The sign of what is not a number is the processor's.
  RC_PRE(!isAnythingNotANumber(expected));
  RC_ASSERT(describe(*scaled) == describe(expected));
}

RC_GTEST_PROP(ScaleValuesProperty, ByTwoIsAddingItselfUnlessVectorsHaveNoLength, ()) {
  const Record record = *anyRecord();
  for (const auto vector : vectors) RC_PRE(!(record.*vector) || hasLength(record.*vector));
  RC_PRE(record.dispArea || record.dispLine || record.rotLine);
  const auto scaled = make(record);
  const auto added = make(record);

  scaled->scaleValues(2.0);
  added->addValues(*make(record));

  RC_ASSERT(describe(*scaled) == describe(*added));
}

RC_GTEST_PROP(ScaleValuesProperty, ByZeroLeavesNoValuesButPresentVectors, ()) {
  const Record record = *anyRecord(anyNumber(), finiteDouble());
  const auto scaled = make(record);

  scaled->scaleValues(0.0);

  const Record after = recordOf(*scaled);
  RC_ASSERT(!scaled->hasValues());
  for (const auto vector : vectors)
    RC_ASSERT((after.*vector).has_value() == (record.*vector).has_value());
}

// Interpolation

/// A foundation, different from both, between them.
Record interpolate(const Record& a, const Record& b, double t) {
  const auto result = make(*anyRecord());
  result->interpolate(*make(a), *make(b), t);
  return recordOf(*result);
}

bool areDifferencesFinite(const Record& a, const Record& b) {
  for (const auto& [x, y] : pairComponents(a, b))
    if (!std::isfinite(y - x)) return false;
  return true;
}

bool hasNoVectorOfLengthZero(const Record& record) {
  for (const auto vector : vectors)
    if ((record.*vector).has_value() && !hasLength(record.*vector)) return false;
  return true;
}

RC_GTEST_PROP(InterpolationProperty, AtZeroIsTheFirstWhereDifferencesAreFinite, ()) {
  const Record a = *anyRecord();
  const Record b = *anyRecord();
  RC_PRE(areDifferencesFinite(a, b));

  const Record result = interpolate(a, b, 0.0);

  RC_ASSERT(result.name == a.name);
  RC_ASSERT(haveSameStiffness(result, a));
  RC_ASSERT(hasNoVectorOfLengthZero(result));
}

RC_GTEST_PROP(InterpolationProperty, AtOneIsTheSecondWhereDifferencesAreExact, ()) {
  const Record a = *anyRecord(anyNumber(), roundDouble());
  const Record b = *anyRecord(anyNumber(), roundDouble());

  const Record result = interpolate(a, b, 1.0);

  RC_ASSERT(result.name == b.name);
  RC_ASSERT(haveSameStiffness(result, b));
  RC_ASSERT(hasNoVectorOfLengthZero(result));
}

// (b - a) + a is not always b: from 1e17 to 1.0 it is 0.0. A vector may then be absent that has a
// length in the second.
RC_GTEST_PROP(InterpolationProperty, AtOneIsTheSecondButForRounding, ()) {
  const Record a = *anyRecord();
  const Record b = *anyRecord();
  RC_PRE(areDifferencesFinite(a, b));

  const Record result = interpolate(a, b, 1.0);

  RC_ASSERT(result.name == b.name);
  const Pairs ends = pairComponents(a, b);
  const Pairs results = pairComponents(result, result);
  for (std::size_t i = 0; i < ends.size(); ++i) {
    const auto [from, to] = ends[i];
    const double error = std::fabs(results[i].first - to);
    RC_ASSERT(error <= Limits::epsilon() * 2.0 * (std::fabs(from) + std::fabs(to)));
  }
}

RC_GTEST_PROP(InterpolationProperty, BetweenAFoundationAndItselfHasItsStiffness, ()) {
  const Record a = *anyRecord(anyNumber(), finiteDouble());
  const double t = *finiteDouble();

  RC_ASSERT(haveSameStiffness(interpolate(a, a, t), a));
}

RC_GTEST_PROP(InterpolationProperty, FollowsTheLineThroughBothWhereItIsExact, ()) {
  const Record a = *anyRecord(anyNumber(), roundDouble());
  const Record b = *anyRecord(anyNumber(), roundDouble());
  const double t = *rc::gen::inRange(-64, 65) / 16.0;

  const Record result = interpolate(a, b, t);

  const Pairs ends = pairComponents(a, b);
  const Pairs results = pairComponents(result, result);
  for (std::size_t i = 0; i < ends.size(); ++i)
    RC_ASSERT(results[i].first == ends[i].first * (1.0 - t) + ends[i].second * t);
}

RC_GTEST_PROP(InterpolationProperty, HasNoNameBetweenTheEndsAndBeyond, ()) {
  const double t = *anyDouble();
  RC_PRE(t != 0.0 && t != 1.0);

  RC_ASSERT(interpolate(*anyRecord(), *anyRecord(), t).name.empty());
}

RC_GTEST_PROP(InterpolationProperty, TakesAllButStiffnessAndNameOfTheFirstAndKeepsTheNumber, ()) {
  const Record a = *anyRecord();
  const Record b = *anyRecord();
  const Record before = *anyRecord();
  const double t = *anyDouble();
  const auto result = make(before);

  result->interpolate(*make(a), *make(b), t);

  Record expected = a;
  expected.number = before.number;
  RC_ASSERT(describeRest(recordOf(*result)) == describeRest(expected));
}

}  // namespace
}  // namespace PropertyTest
