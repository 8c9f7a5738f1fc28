#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <type_traits>

#include "found/foundation.h"
#include "model/foundation_probe.h"
#include "support/allocation_faults.h"

namespace Found::Tests {
namespace {

using Failure = Foundation::Failure;

const std::array<int, 4> noFailures = {0, 0, 0, 0};

/// A foundation with nothing but vectors, none of them marked as changed.
class Bedding : public Foundation {
 public:
  Bedding(const Stiffness& area, const Stiffness& line, const Stiffness& rot) {
    store(areaSlot, area);
    store(lineSlot, line);
    store(rotSlot, rot);
    setChanged(false);
  }

 private:
  void store(const VectorSlot& slot, const Stiffness& v) {
    if (v.has_value()) slot.set(*this, KvVector3D((*v)[0], (*v)[1], (*v)[2]));
  }
};

/// A foundation with one vector.
class SingleVector : public Foundation {
 public:
  SingleVector(const VectorSlot& slot, double x, double y, double z) {
    slot.set(*this, KvVector3D(x, y, z));
    setChanged(false);
  }
};

bool areEqual(const Foundation& a, const Foundation& b) {
  const bool equal = a == b;
  EXPECT_EQ(b == a, equal) << "equality depends on the side";
  return equal;
}

TEST(FoundationEquality, HoldsForNewFoundations) {
  EXPECT_TRUE(areEqual(Foundation(), Foundation()));
}

TEST(FoundationEquality, HoldsForEqualValues) {
  Foundation a;
  Foundation b;
  fill(a);
  fill(b);

  EXPECT_TRUE(areEqual(a, b));
}

TEST(FoundationEquality, IgnoresNameAndNumber) {
  Foundation a;
  Foundation b;
  a.setName("Raft");
  a.setNumber(1);
  b.setName("Strip");
  b.setNumber(2);

  EXPECT_TRUE(areEqual(a, b));
}

TEST(FoundationEquality, IgnoresChangedAndGenerated) {
  Foundation a;
  Foundation b;
  b.setChanged(true);
  EXPECT_TRUE(areEqual(a, b));

  b.setGenerated(true);
  EXPECT_TRUE(areEqual(a, b));
}

TEST(FoundationEquality, LooksAtEveryComponentOfEveryVector) {
  for (const VectorSlot& slot : vectorSlots) {
    const SingleVector reference(slot, 1.0, 2.0, 3.0);
    EXPECT_TRUE(areEqual(reference, SingleVector(slot, 1.0, 2.0, 3.0))) << slot.name;
    EXPECT_FALSE(areEqual(reference, SingleVector(slot, 7.0, 2.0, 3.0))) << slot.name;
    EXPECT_FALSE(areEqual(reference, SingleVector(slot, 1.0, 7.0, 3.0))) << slot.name;
    EXPECT_FALSE(areEqual(reference, SingleVector(slot, 1.0, 2.0, 7.0))) << slot.name;
  }
}

TEST(FoundationEquality, ComparesOnlyVectorsOfTheSameKind) {
  EXPECT_FALSE(
      areEqual(SingleVector(areaSlot, 1.0, 2.0, 3.0), SingleVector(lineSlot, 1.0, 2.0, 3.0)));
  EXPECT_FALSE(
      areEqual(SingleVector(lineSlot, 1.0, 2.0, 3.0), SingleVector(rotSlot, 1.0, 2.0, 3.0)));
}

TEST(FoundationEquality, AVectorDiffersFromNone) {
  for (const VectorSlot& slot : vectorSlots)
    EXPECT_FALSE(areEqual(SingleVector(slot, 1.0, 0.0, 0.0), Foundation())) << slot.name;
}

TEST(FoundationEquality, AVectorShorterThanTheToleranceMatchesNone) {
  const double lengths[] = {0.0, -0.0, smallestSubnormal, 1e-12, 9.9999999999999987e-11};
  for (const VectorSlot& slot : vectorSlots) {
    for (const double length : lengths) {
      EXPECT_TRUE(areEqual(SingleVector(slot, length, 0.0, 0.0), Foundation())) << length;
      EXPECT_TRUE(areEqual(SingleVector(slot, 0.0, -length, 0.0), Foundation())) << length;
      EXPECT_TRUE(areEqual(SingleVector(slot, 0.0, 0.0, length), Foundation())) << length;
    }
  }
}

TEST(FoundationEquality, AVectorAsLongAsTheToleranceOrLongerDiffersFromNone) {
  for (const VectorSlot& slot : vectorSlots) {
    for (const double length : {1e-10, 1.0000000000000002e-10, 1.0, 1e308, infinity}) {
      EXPECT_FALSE(areEqual(SingleVector(slot, length, 0.0, 0.0), Foundation())) << length;
      EXPECT_FALSE(areEqual(SingleVector(slot, 0.0, -length, 0.0), Foundation())) << length;
      EXPECT_FALSE(areEqual(SingleVector(slot, 0.0, 0.0, length), Foundation())) << length;
    }
  }
}

TEST(FoundationEquality, ToNoneCountsTheLengthAndNotTheComponents) {
  for (const VectorSlot& slot : vectorSlots) {
    EXPECT_FALSE(areEqual(SingleVector(slot, 8e-11, 8e-11, 0.0), Foundation())) << slot.name;
    EXPECT_TRUE(areEqual(SingleVector(slot, 5e-11, 5e-11, 5e-11), Foundation())) << slot.name;
  }
}

TEST(FoundationEquality, TwoPresentVectorsAreComparedWithoutTolerance) {
  for (const VectorSlot& slot : vectorSlots) {
    EXPECT_FALSE(areEqual(SingleVector(slot, 1e-12, 0.0, 0.0), SingleVector(slot, 0.0, 0.0, 0.0)))
        << slot.name;
    EXPECT_FALSE(areEqual(SingleVector(slot, smallestSubnormal, 0.0, 0.0),
                          SingleVector(slot, 0.0, 0.0, 0.0)))
        << slot.name;
  }
}

TEST(FoundationEquality, NegativeZeroComponentsEqualZero) {
  for (const VectorSlot& slot : vectorSlots)
    EXPECT_TRUE(areEqual(SingleVector(slot, -0.0, 1.0, 0.0), SingleVector(slot, 0.0, 1.0, -0.0)))
        << slot.name;
}

TEST(FoundationEquality, AVectorThatIsNotANumberEqualsNothing) {
  for (const VectorSlot& slot : vectorSlots) {
    const SingleVector odd(slot, 1.0, notANumber, 3.0);
    EXPECT_FALSE(odd == odd) << slot.name;
    EXPECT_FALSE(areEqual(odd, SingleVector(slot, 1.0, 2.0, 3.0))) << slot.name;
    EXPECT_FALSE(areEqual(odd, Foundation())) << slot.name;
  }
}

TEST(FoundationEquality, InfiniteVectorsEqualThemselves) {
  for (const VectorSlot& slot : vectorSlots)
    EXPECT_TRUE(
        areEqual(SingleVector(slot, infinity, 0.0, 0.0), SingleVector(slot, infinity, 0.0, 0.0)))
        << slot.name;
}

TEST(FoundationEquality, FactorsAreComparedExactly) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation a;
    Foundation b;
    slot.set(a, 1.0);
    slot.set(b, 1.0000000000000002);
    EXPECT_FALSE(areEqual(a, b)) << slot.name;

    slot.set(b, 1.0);
    EXPECT_TRUE(areEqual(a, b)) << slot.name;
  }
}

TEST(FoundationEquality, TinyFactorsDifferFromZero) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation a;
    slot.set(a, smallestSubnormal);
    EXPECT_FALSE(areEqual(a, Foundation())) << slot.name;
  }
}

TEST(FoundationEquality, FactorsZeroAndNegativeZeroAreEqual) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation a;
    slot.set(a, 1.0);
    slot.set(a, -0.0);
    ASSERT_TRUE(std::signbit(slot.get(a))) << slot.name;

    EXPECT_TRUE(areEqual(a, Foundation())) << slot.name;
  }
}

TEST(FoundationEquality, FactorsThatAreNotANumberAreNeverEqual) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation a;
    slot.set(a, notANumber);
    Foundation b;
    slot.set(b, notANumber);

    EXPECT_FALSE(areEqual(a, b)) << slot.name;
    EXPECT_FALSE(areEqual(a, Foundation())) << slot.name;
    EXPECT_FALSE(a == a) << slot.name;
  }
}

TEST(FoundationEquality, AreaAndLineFactorAreNotInterchangeable) {
  Foundation a;
  a.setFactorArea(0.5);
  Foundation b;
  b.setFactorLine(0.5);

  EXPECT_FALSE(areEqual(a, b));
}

TEST(FoundationEquality, LooksAtFailPossible) {
  Foundation a;
  a.setFailPossible(true);

  EXPECT_FALSE(areEqual(a, Foundation()));
}

TEST(FoundationEquality, LooksAtEveryStoredFailureModeWhateverFailPossibleSays) {
  for (const bool possible : {false, true}) {
    for (const FailureSlot& slot : failureSlots) {
      Foundation a;
      Foundation b;
      a.setFailPossible(possible);
      b.setFailPossible(possible);
      slot.set(a, Foundation::Tension);
      EXPECT_FALSE(areEqual(a, b)) << slot.name;

      slot.set(b, Foundation::Compression);
      EXPECT_FALSE(areEqual(a, b)) << slot.name;

      slot.set(b, Foundation::Tension);
      EXPECT_TRUE(areEqual(a, b)) << slot.name;
    }
  }
}

TEST(FoundationEquality, FailureModesWithoutANameAreComparedByTheirNumber) {
  for (const FailureSlot& slot : failureSlots) {
    Foundation a;
    Foundation b;
    slot.set(a, unknownFailure);
    slot.set(b, otherUnknownFailure);
    EXPECT_FALSE(areEqual(a, b)) << slot.name;

    slot.set(b, unknownFailure);
    EXPECT_TRUE(areEqual(a, b)) << slot.name;
  }
}

TEST(FoundationCopy, TakesOverValuesAndFlags) {
  Foundation source;
  fill(source);
  Foundation target;

  target.copy(source);

  EXPECT_EQ(recordOf(target), Record("", -1, false, true, filledValues));
}

TEST(FoundationCopy, KeepsNameAndNumber) {
  Foundation source;
  fill(source);
  Foundation target;
  target.setName("Strip");
  target.setNumber(3);

  target.copy(source);

  EXPECT_EQ(target.getName(), "Strip");
  EXPECT_EQ(target.getNumber(), 3);
}

TEST(FoundationCopy, KeepsAVectorThatTheSourceLacks) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation source;
    fill(source);
    slot.remove(source);
    SingleVector target(slot, -1.0, -2.0, -3.0);

    target.copy(source);

    EXPECT_EQ(slot.get(target), vec(-1.0, -2.0, -3.0)) << slot.name;
  }
}

TEST(FoundationCopy, ReplacesFailuresFactorsAndFlagsAlsoByDefaults) {
  Foundation target;
  fill(target);

  target.copy(Foundation());

  EXPECT_EQ(recordOf(target), Record("Raft", 12, false, false,
                                     Values(vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0),
                                            vec(7.0, 8.0, 9.0), false, noFailures, 0.0, 0.0)));
}

TEST(FoundationCopy, AZeroVectorReplacesAnother) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector target(slot, 1.0, 2.0, 3.0);

    target.copy(SingleVector(slot, 0.0, 0.0, 0.0));

    EXPECT_EQ(slot.get(target), vec(0.0, 0.0, 0.0)) << slot.name;
  }
}

TEST(FoundationCopy, ChangedEndsAsThatOfTheSource) {
  for (const bool changed : {false, true}) {
    for (const bool before : {false, true}) {
      Foundation source;
      fill(source);
      source.setChanged(changed);
      Foundation target;
      target.setChanged(before);

      target.copy(source);

      EXPECT_EQ(target.getChanged(), changed) << "was " << before;
    }
  }
}

TEST(FoundationCopy, NegativeZeroFactorsAreTakenOver) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation source;
    slot.set(source, 1.0);
    slot.set(source, -0.0);
    Foundation target;

    target.copy(source);

    EXPECT_TRUE(std::signbit(slot.get(target))) << slot.name;
  }
}

TEST(FoundationCopy, VectorsAreDeepCopies) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector source(slot, 1.0, 2.0, 3.0);
    Foundation target;
    target.copy(source);

    slot.set(source, KvVector3D(7.0, 8.0, 9.0));

    EXPECT_EQ(slot.get(target), vec(1.0, 2.0, 3.0)) << slot.name;
  }
}

TEST(FoundationCopy, OfItselfKeepsEverything) {
  Foundation foundation;
  fill(foundation);

  foundation.copy(foundation);

  EXPECT_EQ(recordOf(foundation), Record("Raft", 12, false, true, filledValues));
}

TEST(FoundationAssignment, ReplacesValuesAndFlagsAndKeepsNameAndNumber) {
  Foundation source;
  fill(source);
  Foundation target;
  target.setName("Strip");
  target.setNumber(3);

  target = source;

  EXPECT_EQ(recordOf(target), Record("Strip", 3, false, true, filledValues));
}

TEST(FoundationAssignment, KeepsAVectorThatTheSourceLacks) {
  SingleVector target(rotSlot, 7.0, 8.0, 9.0);
  const SingleVector source(areaSlot, 1.0, 2.0, 3.0);
  Foundation& assigned = target;

  assigned = source;

  EXPECT_EQ(areaOf(target), vec(1.0, 2.0, 3.0));
  EXPECT_EQ(rotOf(target), vec(7.0, 8.0, 9.0));
}

TEST(FoundationAssignment, ReturnsTheTarget) {
  Foundation target;

  EXPECT_EQ(&(target = Foundation()), &target);
}

TEST(FoundationAssignment, ToItselfDoesNothing) {
  Foundation foundation;
  fill(foundation);
  // A NaN differs from itself, so that storing it again would mark the foundation as changed.
  foundation.setDispArea(nullptr);
  areaSlot.set(foundation, KvVector3D(notANumber, 2.0, 3.0));
  foundation.setChanged(false);
  const Foundation& same = foundation;

  EXPECT_EQ(&(foundation = same), &foundation);

  EXPECT_FALSE(foundation.getChanged());
  EXPECT_EQ(foundation.getName(), "Raft");
  EXPECT_EQ(lineOf(foundation), vec(4.0, 5.0, 6.0));
}

TEST(FoundationAddValues, AddsEachVectorComponentByComponent) {
  Bedding target(vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), vec(7.0, 8.0, 9.0));
  const Bedding other(vec(10.0, 20.0, 30.0), vec(40.0, 50.0, 60.0), vec(70.0, 80.0, 90.0));

  target.addValues(other);

  EXPECT_EQ(areaOf(target), vec(11.0, 22.0, 33.0));
  EXPECT_EQ(lineOf(target), vec(44.0, 55.0, 66.0));
  EXPECT_EQ(rotOf(target), vec(77.0, 88.0, 99.0));
}

TEST(FoundationAddValues, AnAbsentVectorCountsAsZeroOnEitherSide) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation target;
    target.addValues(SingleVector(slot, 1.0, 2.0, 3.0));
    EXPECT_EQ(slot.get(target), vec(1.0, 2.0, 3.0)) << slot.name;

    target.addValues(Foundation());
    EXPECT_EQ(slot.get(target), vec(1.0, 2.0, 3.0)) << slot.name;

    for (const VectorSlot& rest : vectorSlots) {
      if (&rest == &slot) continue;
      EXPECT_EQ(rest.get(target), absent) << slot.name << " " << rest.name;
    }
  }
}

TEST(FoundationAddValues, ASumOfLengthZeroBecomesAbsentAndMarksAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector target(slot, -1.0, 0.0, 0.0);

    target.addValues(SingleVector(slot, 1.0, 0.0, 0.0));

    EXPECT_EQ(slot.get(target), absent) << slot.name;
    EXPECT_TRUE(target.getChanged()) << slot.name;
  }
}

TEST(FoundationAddValues, APresentZeroVectorBecomesAbsent) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector target(slot, 0.0, -0.0, 0.0);

    target.addValues(Foundation());

    EXPECT_EQ(slot.get(target), absent) << slot.name;
  }
}

TEST(FoundationAddValues, TheSmallestSumAboveZeroStays) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation target;

    target.addValues(SingleVector(slot, 0.0, smallestSubnormal, 0.0));

    EXPECT_EQ(slot.get(target), vec(0.0, smallestSubnormal, 0.0)) << slot.name;
  }
}

TEST(FoundationAddValues, ASumThatIsNotANumberBecomesAbsent) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector target(slot, infinity, 2.0, 3.0);

    target.addValues(SingleVector(slot, -infinity, 2.0, 3.0));

    EXPECT_EQ(slot.get(target), absent) << slot.name;
  }
}

TEST(FoundationAddValues, AnInfiniteSumStays) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector target(slot, 1.7e308, 0.0, 0.0);

    target.addValues(SingleVector(slot, 1.7e308, 1.0, 0.0));

    EXPECT_EQ(slot.get(target), vec(infinity, 1.0, 0.0)) << slot.name;
  }
}

TEST(FoundationAddValues, MarksAsChangedEvenWithoutVectors) {
  Foundation target;

  target.addValues(Foundation());

  EXPECT_EQ(recordOf(target), Record("", -1, true, false, noValues));
}

TEST(FoundationAddValues, MarksAsChangedWhenTheSumIsTheOldVector) {
  Bedding target(vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), vec(7.0, 8.0, 9.0));

  target.addValues(Foundation());

  EXPECT_TRUE(target.getChanged());
}

TEST(FoundationAddValues, LeavesNameNumberFlagsFailuresAndFactorsAlone) {
  Foundation target;
  fill(target);
  Foundation other;
  other.setName("Strip");
  other.setNumber(3);
  other.setFactorArea(4.0);
  other.setFactorLine(8.0);
  for (const FailureSlot& slot : failureSlots) slot.set(other, Foundation::Compression);

  target.addValues(other);

  EXPECT_EQ(recordOf(target), Record("Raft", 12, true, true, filledValues));
}

TEST(FoundationAddValues, LeavesTheOtherFoundationAlone) {
  Foundation target;
  fill(target);
  Foundation other;
  fill(other);

  target.addValues(other);

  EXPECT_EQ(recordOf(other), Record("Raft", 12, false, true, filledValues));
}

TEST(FoundationAddValues, OfItselfDoublesEachVector) {
  Bedding target(vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), absent);

  target.addValues(target);

  EXPECT_EQ(areaOf(target), vec(2.0, 4.0, 6.0));
  EXPECT_EQ(lineOf(target), vec(8.0, 10.0, 12.0));
  EXPECT_EQ(rotOf(target), absent);
}

TEST(FoundationScaleValues, MultipliesEveryComponentOfEachVector) {
  Bedding foundation(vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), vec(7.0, 8.0, 9.0));

  foundation.scaleValues(-2.0);

  EXPECT_EQ(areaOf(foundation), vec(-2.0, -4.0, -6.0));
  EXPECT_EQ(lineOf(foundation), vec(-8.0, -10.0, -12.0));
  EXPECT_EQ(rotOf(foundation), vec(-14.0, -16.0, -18.0));
}

TEST(FoundationScaleValues, ScalesTheTwoVectorsOfOneArgumentOnceEach) {
  Foundation foundation(KvVector3D(1.0, 2.0, 3.0));

  foundation.scaleValues(10.0);

  EXPECT_EQ(areaOf(foundation), vec(10.0, 20.0, 30.0));
  EXPECT_EQ(lineOf(foundation), vec(10.0, 20.0, 30.0));
}

TEST(FoundationScaleValues, OnePresentVectorIsEnoughToMarkAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector foundation(slot, 1.0, 2.0, 3.0);

    foundation.scaleValues(2.0);

    EXPECT_EQ(slot.get(foundation), vec(2.0, 4.0, 6.0)) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationScaleValues, AbsentVectorsStayAbsent) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector foundation(slot, 1.0, 2.0, 3.0);

    foundation.scaleValues(2.0);

    for (const VectorSlot& rest : vectorSlots) {
      if (&rest == &slot) continue;
      EXPECT_EQ(rest.get(foundation), absent) << slot.name << " " << rest.name;
    }
  }
}

TEST(FoundationScaleValues, WithoutVectorsNothingHappens) {
  Foundation foundation;

  foundation.scaleValues(2.0);

  EXPECT_EQ(recordOf(foundation), Record("", -1, false, false, noValues));
}

TEST(FoundationScaleValues, ByOneMarksAsChangedToo) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector foundation(slot, 1.0, 2.0, 3.0);

    foundation.scaleValues(1.0);

    EXPECT_EQ(slot.get(foundation), vec(1.0, 2.0, 3.0)) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationScaleValues, ByZeroKeepsZeroVectorsPresent) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector foundation(slot, 1.0, 2.0, 3.0);

    foundation.scaleValues(0.0);

    EXPECT_EQ(slot.get(foundation), vec(0.0, 0.0, 0.0)) << slot.name;
    EXPECT_FALSE(foundation.hasValues()) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationScaleValues, AZeroVectorMarksAsChangedToo) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector foundation(slot, 0.0, 0.0, 0.0);

    foundation.scaleValues(2.0);

    EXPECT_EQ(slot.get(foundation), vec(0.0, 0.0, 0.0)) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationScaleValues, ByNotANumberKeepsTheVectorPresent) {
  for (const VectorSlot& slot : vectorSlots) {
    SingleVector foundation(slot, 1.0, 2.0, 3.0);

    foundation.scaleValues(notANumber);

    KvVector3D out;
    EXPECT_TRUE((foundation.*slot.getter)(out)) << slot.name;
    EXPECT_TRUE(std::isnan(out.x) && std::isnan(out.y) && std::isnan(out.z)) << slot.name;
  }
}

TEST(FoundationScaleValues, LeavesNameNumberFlagsFailuresAndFactorsAlone) {
  Foundation foundation;
  fill(foundation);

  foundation.scaleValues(1.0);

  EXPECT_EQ(recordOf(foundation), Record("Raft", 12, true, true, filledValues));
}

class FoundationInterpolate : public ::testing::Test {
 protected:
  FoundationInterpolate() {
    a.setName("A");
    a.setNumber(1);
    b.setName("B");
    b.setNumber(2);
    result.setName("Result");
    result.setNumber(3);
  }

  Bedding a{vec(1.0, 2.0, 3.0), vec(10.0, 20.0, 30.0), vec(100.0, 200.0, 300.0)};
  Bedding b{vec(3.0, 6.0, 9.0), vec(30.0, 60.0, 90.0), vec(300.0, 600.0, 900.0)};
  Foundation result;
};

TEST_F(FoundationInterpolate, HalfwayIsTheMeanOfEachComponent) {
  result.interpolate(a, b, 0.5);

  EXPECT_EQ(areaOf(result), vec(2.0, 4.0, 6.0));
  EXPECT_EQ(lineOf(result), vec(20.0, 40.0, 60.0));
  EXPECT_EQ(rotOf(result), vec(200.0, 400.0, 600.0));
}

TEST_F(FoundationInterpolate, AtZeroTheVectorsAreThoseOfTheFirst) {
  result.interpolate(a, b, 0.0);

  EXPECT_EQ(areaOf(result), vec(1.0, 2.0, 3.0));
  EXPECT_EQ(lineOf(result), vec(10.0, 20.0, 30.0));
  EXPECT_EQ(rotOf(result), vec(100.0, 200.0, 300.0));
}

TEST_F(FoundationInterpolate, AtOneTheVectorsAreThoseOfTheSecond) {
  result.interpolate(a, b, 1.0);

  EXPECT_EQ(areaOf(result), vec(3.0, 6.0, 9.0));
  EXPECT_EQ(lineOf(result), vec(30.0, 60.0, 90.0));
  EXPECT_EQ(rotOf(result), vec(300.0, 600.0, 900.0));
}

TEST_F(FoundationInterpolate, OutsideZeroAndOneItExtrapolates) {
  result.interpolate(a, b, 2.0);
  EXPECT_EQ(areaOf(result), vec(5.0, 10.0, 15.0));
  EXPECT_EQ(lineOf(result), vec(50.0, 100.0, 150.0));
  EXPECT_EQ(rotOf(result), vec(500.0, 1000.0, 1500.0));

  result.interpolate(a, b, -1.0);
  EXPECT_EQ(areaOf(result), vec(-1.0, -2.0, -3.0));
  EXPECT_EQ(lineOf(result), vec(-10.0, -20.0, -30.0));
  EXPECT_EQ(rotOf(result), vec(-100.0, -200.0, -300.0));
}

TEST_F(FoundationInterpolate, RoundsAsDifferenceTimesTPlusFirst) {
  for (const VectorSlot& slot : vectorSlots) {
    // The difference rounds to -9999999999999996, so that the result is not exactly the second.
    const SingleVector from(slot, 1e16, 0.0, 0.0);
    const SingleVector to(slot, 3.0, 0.0, 0.0);

    result.interpolate(from, to, 1.0);

    EXPECT_EQ(slot.get(result), vec(4.0, 0.0, 0.0)) << slot.name;
  }
}

TEST_F(FoundationInterpolate, RoundsEveryOperationToADouble) {
  for (const VectorSlot& slot : vectorSlots) {
    const SingleVector from(slot, 0.1, 0.1, 0.1);
    const SingleVector to(slot, 1.0, 3.0, 4.0);

    result.interpolate(from, to, 0.4);
    EXPECT_EQ(slot.get(result)->at(0), 0.46000000000000008) << slot.name;

    result.interpolate(from, to, 0.2);
    EXPECT_EQ(slot.get(result)->at(1), 0.67999999999999994) << slot.name;

    result.interpolate(from, to, 0.7);
    EXPECT_EQ(slot.get(result)->at(2), 2.8300000000000001) << slot.name;
  }
}

TEST_F(FoundationInterpolate, AnAbsentVectorCountsAsZeroOnEitherSide) {
  for (const VectorSlot& slot : vectorSlots) {
    result.interpolate(SingleVector(slot, 4.0, 8.0, 12.0), Foundation(), 0.25);
    EXPECT_EQ(slot.get(result), vec(3.0, 6.0, 9.0)) << slot.name;

    result.interpolate(Foundation(), SingleVector(slot, 4.0, 8.0, 12.0), 0.25);
    EXPECT_EQ(slot.get(result), vec(1.0, 2.0, 3.0)) << slot.name;
  }
}

TEST_F(FoundationInterpolate, AVectorThatBothLackBecomesAbsent) {
  fill(result);

  result.interpolate(Foundation(), Foundation(), 0.5);

  EXPECT_EQ(recordOf(result), Record("", 12, true, false, noValues));
}

TEST_F(FoundationInterpolate, AResultOfLengthZeroBecomesAbsent) {
  for (const VectorSlot& slot : vectorSlots) {
    slot.set(result, KvVector3D(7.0, 8.0, 9.0));
    result.interpolate(SingleVector(slot, -1.0, 1.0, 0.0), SingleVector(slot, 1.0, -1.0, 0.0), 0.5);
    EXPECT_EQ(slot.get(result), absent) << slot.name;
  }
}

TEST_F(FoundationInterpolate, APresentZeroVectorBecomesAbsentEvenAtZero) {
  for (const VectorSlot& slot : vectorSlots) {
    result.interpolate(SingleVector(slot, 0.0, 0.0, 0.0), SingleVector(slot, 1.0, 2.0, 3.0), 0.0);
    EXPECT_EQ(slot.get(result), absent) << slot.name;
  }
}

TEST_F(FoundationInterpolate, TheSmallestResultAboveZeroStays) {
  for (const VectorSlot& slot : vectorSlots) {
    result.interpolate(SingleVector(slot, smallestSubnormal, 0.0, 0.0), Foundation(), 0.0);
    EXPECT_EQ(slot.get(result), vec(smallestSubnormal, 0.0, 0.0)) << slot.name;
  }
}

TEST_F(FoundationInterpolate, TheNameIsThatOfTheFirstAtZeroOnly) {
  result.interpolate(a, b, 0.0);
  EXPECT_EQ(result.getName(), "A");

  result.interpolate(a, b, -0.0);
  EXPECT_EQ(result.getName(), "A");

  result.interpolate(a, b, smallestSubnormal);
  EXPECT_EQ(result.getName(), "");

  result.setName("Result");
  result.interpolate(a, b, -smallestSubnormal);
  EXPECT_EQ(result.getName(), "");
}

TEST_F(FoundationInterpolate, TheNameIsThatOfTheSecondAtOneOnly) {
  result.interpolate(a, b, 1.0);
  EXPECT_EQ(result.getName(), "B");

  result.interpolate(a, b, 0.99999999999999989);
  EXPECT_EQ(result.getName(), "");

  result.setName("Result");
  result.interpolate(a, b, 1.0000000000000002);
  EXPECT_EQ(result.getName(), "");
}

TEST_F(FoundationInterpolate, TheNameIsEmptyInBetweenAndOutside) {
  for (const double t : {0.5, 2.0, -1.0, infinity, -infinity}) {
    result.setName("Result");
    result.interpolate(a, b, t);
    EXPECT_EQ(result.getName(), "") << t;
  }
}

TEST_F(FoundationInterpolate, AtNotANumberNameAndVectorsAreEmpty) {
  result.interpolate(a, b, notANumber);

  EXPECT_EQ(result.getName(), "");
  EXPECT_EQ(areaOf(result), absent);
  EXPECT_EQ(lineOf(result), absent);
  EXPECT_EQ(rotOf(result), absent);
}

TEST_F(FoundationInterpolate, TheNumberStays) {
  for (const double t : {0.0, 0.5, 1.0, 2.0}) {
    result.interpolate(a, b, t);
    EXPECT_EQ(result.getNumber(), 3) << t;
  }
}

TEST_F(FoundationInterpolate, FlagsFailuresAndFactorsAreThoseOfTheFirst) {
  fill(a);
  b.setFactorArea(4.0);
  b.setFactorLine(8.0);
  for (const FailureSlot& slot : failureSlots) slot.set(b, Foundation::Compression);
  for (const double t : {0.0, 0.5, 1.0, 2.0}) {
    Foundation made;
    made.interpolate(a, b, t);
    EXPECT_TRUE(made.isGenerated()) << t;
    EXPECT_TRUE(made.getFailPossible()) << t;
    EXPECT_EQ(made.getFailLineX(), Foundation::Tension) << t;
    EXPECT_EQ(made.getFailLineY(), Foundation::Compression) << t;
    EXPECT_EQ(made.getFailLineZ(), unknownFailure) << t;
    EXPECT_EQ(made.getFailAreaZ(), otherUnknownFailure) << t;
    EXPECT_EQ(made.getFactorArea(), 0.5) << t;
    EXPECT_EQ(made.getFactorLine(), 0.25) << t;
  }
}

TEST_F(FoundationInterpolate, ChangedIsThatOfTheFirstWhenItsVectorsAllStay) {
  for (const bool changed : {false, true}) {
    a.setChanged(changed);
    result.setChanged(!changed);

    result.interpolate(a, b, 0.0);

    EXPECT_EQ(result.getChanged(), changed);
  }
}

TEST_F(FoundationInterpolate, AVectorOtherThanThatOfTheFirstMarksAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    const Foundation same(a);
    Foundation different(a);
    slot.set(different, KvVector3D(7.0, 8.0, 9.0));

    result.interpolate(a, same, 0.5);
    EXPECT_FALSE(result.getChanged()) << slot.name;

    result.interpolate(a, different, 0.5);
    EXPECT_TRUE(result.getChanged()) << slot.name;
  }
}

TEST_F(FoundationInterpolate, AnAbsentResultMarksAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    slot.remove(a);
    slot.remove(b);
    a.setChanged(false);

    result.interpolate(a, b, 0.0);

    EXPECT_TRUE(result.getChanged()) << slot.name;
    slot.set(a, KvVector3D(1.0, 2.0, 3.0));
  }
}

TEST_F(FoundationInterpolate, EmptyingAVectorOfTheTargetMarksAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation lacking(a);
    slot.remove(lacking);
    lacking.setChanged(false);
    Foundation target(a);

    target.interpolate(lacking, b, 0.0);

    EXPECT_EQ(slot.get(target), absent) << slot.name;
    EXPECT_TRUE(target.getChanged()) << slot.name;
  }
}

TEST_F(FoundationInterpolate, LeavesTheTwoOthersAlone) {
  const Record recordOfA = recordOf(a);
  const Record recordOfB = recordOf(b);

  result.interpolate(a, b, 0.5);

  EXPECT_EQ(recordOf(a), recordOfA);
  EXPECT_EQ(recordOf(b), recordOfB);
}

TEST_F(FoundationInterpolate, IntoTheFirstGivesTheSameVectors) {
  fill(a);

  a.interpolate(a, Bedding(vec(3.0, 4.0, 5.0), vec(6.0, 7.0, 8.0), absent), 0.5);

  EXPECT_EQ(recordOf(a), Record("", 12, true, true,
                                Values(vec(2.0, 3.0, 4.0), vec(5.0, 6.0, 7.0), vec(3.5, 4.0, 4.5),
                                       true, {-1, 1, 7, -2}, 0.5, 0.25)));
}

TEST_F(FoundationInterpolate, IntoTheFirstAtZeroChangesNothing) {
  fill(a);

  a.interpolate(a, b, 0.0);

  EXPECT_EQ(recordOf(a), Record("Raft", 12, false, true, filledValues));
}

TEST_F(FoundationInterpolate, IntoTheFirstAtOneTakesTheNameOfTheSecond) {
  a.interpolate(a, b, 1.0);

  EXPECT_EQ(a.getName(), "B");
  EXPECT_EQ(a.getNumber(), 1);
  EXPECT_EQ(areaOf(a), vec(3.0, 6.0, 9.0));
}

TEST_F(FoundationInterpolate, IntoTheSecondReflectsTheVectorsOfTheFirst) {
  for (const double t : {0.0, 0.5, 1.0, 2.0}) {
    Foundation second(b);

    second.interpolate(a, second, t);

    EXPECT_EQ(areaOf(second), vec(1.0, 2.0, 3.0)) << t;
    EXPECT_EQ(lineOf(second), vec(10.0, 20.0, 30.0)) << t;
    EXPECT_EQ(rotOf(second), vec(100.0, 200.0, 300.0)) << t;
  }
}

TEST_F(FoundationInterpolate, IntoTheSecondItsOwnVectorCountsWhereTheFirstHasNone) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation first(a);
    slot.remove(first);
    SingleVector second(slot, 4.0, 8.0, 12.0);

    second.interpolate(first, second, 0.25);

    EXPECT_EQ(slot.get(second), vec(1.0, 2.0, 3.0)) << slot.name;
  }
}

TEST_F(FoundationInterpolate, IntoTheSecondFollowsTheSameRulesForTheName) {
  b.interpolate(a, b, 1.0);
  EXPECT_EQ(b.getName(), "B");
  EXPECT_EQ(b.getNumber(), 2);

  b.interpolate(a, b, 0.0);
  EXPECT_EQ(b.getName(), "A");

  b.interpolate(a, b, 0.5);
  EXPECT_EQ(b.getName(), "");
}

TEST_F(FoundationInterpolate, IntoTheSecondTakesFailuresAndFactorsOfTheFirst) {
  fill(a);

  b.interpolate(a, b, 1.0);

  EXPECT_EQ(valuesOf(b), filledValues);
}

TEST_F(FoundationInterpolate, BetweenItselfAndItselfKeepsTheVectorsAndDropsTheName) {
  fill(a);

  a.interpolate(a, a, 0.5);

  EXPECT_EQ(recordOf(a), Record("", 12, false, true, filledValues));
}

TEST(FoundationClear, AreaValuesGoWithoutTouchingAnythingElse) {
  for (const bool changed : {false, true}) {
    Foundation foundation;
    fill(foundation);
    foundation.setChanged(changed);

    foundation.clearAreaValues();

    EXPECT_EQ(recordOf(foundation), Record("Raft", 12, changed, true,
                                           Values(absent, vec(4.0, 5.0, 6.0), vec(7.0, 8.0, 9.0),
                                                  true, {-1, 1, 7, 0}, 0.0, 0.25)));
  }
}

TEST(FoundationClear, LineValuesGoWithoutTouchingAnythingElse) {
  for (const bool changed : {false, true}) {
    Foundation foundation;
    fill(foundation);
    foundation.setChanged(changed);

    foundation.clearLineValues();

    EXPECT_EQ(recordOf(foundation),
              Record("Raft", 12, changed, true,
                     Values(vec(1.0, 2.0, 3.0), absent, absent, true, {0, 0, 0, -2}, 0.5, 0.0)));
  }
}

TEST(FoundationClear, ANewFoundationStaysAsItIs) {
  Foundation foundation;

  foundation.clearAreaValues();
  foundation.clearLineValues();

  EXPECT_EQ(recordOf(foundation), Record("", -1, false, false, noValues));
}

TEST(FoundationClear, ReleasesTheVectors) {
  Foundation foundation;
  const long before = countLiveBlocks();
  fill(foundation);
  EXPECT_EQ(countLiveBlocks(), before + 3);

  foundation.clearAreaValues();
  EXPECT_EQ(countLiveBlocks(), before + 2);

  foundation.clearLineValues();
  EXPECT_EQ(countLiveBlocks(), before);
}

TEST(FoundationHasValues, ANewFoundationHasNone) {
  const Foundation foundation;

  EXPECT_FALSE(foundation.hasValues());
  EXPECT_FALSE(foundation.hasAreaValues());
  EXPECT_FALSE(foundation.hasLineValues());
}

TEST(FoundationHasValues, TellsAreaAndLineApart) {
  const struct {
    const VectorSlot& slot;
    bool area;
    bool line;
  } rows[] = {{areaSlot, true, false}, {lineSlot, false, true}, {rotSlot, false, true}};
  for (const auto& row : rows) {
    const SingleVector foundation(row.slot, 0.0, 0.0, -1.0);
    EXPECT_EQ(foundation.hasAreaValues(), row.area) << row.slot.name;
    EXPECT_EQ(foundation.hasLineValues(), row.line) << row.slot.name;
    EXPECT_TRUE(foundation.hasValues()) << row.slot.name;
  }
}

TEST(FoundationHasValues, EachComponentCounts) {
  for (const VectorSlot& slot : vectorSlots) {
    EXPECT_TRUE(SingleVector(slot, 1.0, 0.0, 0.0).hasValues()) << slot.name;
    EXPECT_TRUE(SingleVector(slot, 0.0, 1.0, 0.0).hasValues()) << slot.name;
    EXPECT_TRUE(SingleVector(slot, 0.0, 0.0, 1.0).hasValues()) << slot.name;
  }
}

TEST(FoundationHasValues, ThePresentZeroVectorIsNoValue) {
  for (const VectorSlot& slot : vectorSlots) {
    const SingleVector foundation(slot, 0.0, -0.0, 0.0);
    EXPECT_FALSE(foundation.hasValues()) << slot.name;
    EXPECT_FALSE(foundation.hasAreaValues()) << slot.name;
    EXPECT_FALSE(foundation.hasLineValues()) << slot.name;
  }
}

TEST(FoundationHasValues, TheThresholdIsZeroAndNotTheTolerance) {
  for (const double length : {smallestSubnormal, 1e-200, 1e-12}) {
    EXPECT_TRUE(SingleVector(areaSlot, length, 0.0, 0.0).hasAreaValues()) << length;
    EXPECT_TRUE(SingleVector(lineSlot, length, 0.0, 0.0).hasLineValues()) << length;
    EXPECT_TRUE(SingleVector(rotSlot, length, 0.0, 0.0).hasLineValues()) << length;
    for (const VectorSlot& slot : vectorSlots)
      EXPECT_TRUE(SingleVector(slot, length, 0.0, 0.0).hasValues()) << slot.name << length;
  }
}

TEST(FoundationHasValues, AVectorThatIsNotANumberIsNoValue) {
  for (const VectorSlot& slot : vectorSlots) {
    const SingleVector foundation(slot, notANumber, 1.0, 1.0);
    EXPECT_FALSE(foundation.hasValues()) << slot.name;
    EXPECT_FALSE(foundation.hasAreaValues()) << slot.name;
    EXPECT_FALSE(foundation.hasLineValues()) << slot.name;
  }
}

TEST(FoundationHasValues, AZeroLineTranslationDoesNotHideTheRotation) {
  const Bedding foundation(vec(0.0, 0.0, 0.0), vec(0.0, 0.0, 0.0), vec(0.0, 1.0, 0.0));

  EXPECT_FALSE(foundation.hasAreaValues());
  EXPECT_TRUE(foundation.hasLineValues());
  EXPECT_TRUE(foundation.hasValues());
}

TEST(FoundationHasValues, FactorsAndFailuresAreNoValues) {
  Foundation foundation;
  fill(foundation);
  for (const VectorSlot& slot : vectorSlots) slot.remove(foundation);

  EXPECT_FALSE(foundation.hasValues());
  EXPECT_FALSE(foundation.hasAreaValues());
  EXPECT_FALSE(foundation.hasLineValues());
}

TEST(FoundationValueArea, ReadsOneComponentPerDirection) {
  Foundation foundation;
  fill(foundation);
  const struct {
    int dir;
    double expected;
  } rows[] = {{smallestInt, 0.0}, {-1, 0.0}, {0, 1.0}, {1, 2.0},
              {2, 3.0},           {3, 0.0},  {4, 0.0}, {largestInt, 0.0}};
  for (const auto& row : rows)
    EXPECT_EQ(foundation.getValueArea(row.dir), row.expected) << "dir " << row.dir;
}

TEST(FoundationValueArea, IsZeroWithoutAreaTranslation) {
  const Bedding foundation(absent, vec(4.0, 5.0, 6.0), vec(7.0, 8.0, 9.0));

  for (const int dir : {-1, 0, 1, 2, 3})
    EXPECT_EQ(foundation.getValueArea(dir), 0.0) << "dir " << dir;
}

TEST(FoundationValueLine, ReadsOneComponentPerDirectionAndTheRotationAboutXBehindThem) {
  Foundation foundation;
  fill(foundation);
  const struct {
    int dir;
    double expected;
  } rows[] = {{smallestInt, 0.0}, {-1, 0.0}, {0, 4.0}, {1, 5.0}, {2, 6.0},
              {3, 7.0},           {4, 0.0},  {5, 0.0}, {6, 0.0}, {largestInt, 0.0}};
  for (const auto& row : rows)
    EXPECT_EQ(foundation.getValueLine(row.dir), row.expected) << "dir " << row.dir;
}

TEST(FoundationValueLine, TranslationIsZeroWhenItIsAbsent) {
  const Bedding foundation(vec(1.0, 2.0, 3.0), absent, vec(7.0, 8.0, 9.0));

  for (const int dir : {0, 1, 2}) EXPECT_EQ(foundation.getValueLine(dir), 0.0) << "dir " << dir;
  EXPECT_EQ(foundation.getValueLine(3), 7.0);
}

TEST(FoundationValueLine, RotationIsZeroWhenItIsAbsent) {
  const Bedding foundation(vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), absent);

  EXPECT_EQ(foundation.getValueLine(3), 0.0);
  EXPECT_EQ(foundation.getValueLine(0), 4.0);
}

TEST(FoundationReleases, IsFalseWithoutFailures) {
  Foundation foundation;
  EXPECT_FALSE(foundation.releases());

  foundation.setFailPossible(true);
  EXPECT_FALSE(foundation.releases());
}

TEST(FoundationReleases, AnyStoredModeOtherThanNoneIsEnoughWhateverFailPossibleSays) {
  for (const bool possible : {false, true}) {
    for (const FailureSlot& slot : failureSlots) {
      for (const Failure failure :
           {Foundation::Tension, Foundation::Compression, unknownFailure, otherUnknownFailure}) {
        Foundation foundation;
        foundation.setFailPossible(possible);
        slot.set(foundation, failure);
        EXPECT_TRUE(foundation.releases()) << slot.name << " " << failure;
      }
    }
  }
}

TEST(FoundationModifyValue, PositiveStiffnessNearlyVanishesInCompression) {
  for (const double value : {smallestSubnormal, 1e-7, 1e-5, 5.0, 1e308, infinity})
    EXPECT_EQ(Foundation::modifyValue(Foundation::Compression, value), 1e-5) << value;
}

TEST(FoundationModifyValue, OtherStiffnessStaysInCompression) {
  for (const double value : {-smallestSubnormal, -1e-5, -5.0, -1e308, -infinity})
    EXPECT_EQ(Foundation::modifyValue(Foundation::Compression, value), value);
}

TEST(FoundationModifyValue, NegativeStiffnessNearlyVanishesInTension) {
  for (const double value : {-smallestSubnormal, -1e-7, -1e-5, -5.0, -1e308, -infinity})
    EXPECT_EQ(Foundation::modifyValue(Foundation::Tension, value), -1e-5) << value;
}

TEST(FoundationModifyValue, OtherStiffnessStaysInTension) {
  for (const double value : {smallestSubnormal, 1e-5, 5.0, 1e308, infinity})
    EXPECT_EQ(Foundation::modifyValue(Foundation::Tension, value), value);
}

TEST(FoundationModifyValue, ZeroOfEitherSignStaysInEveryMode) {
  for (const Failure failure : {Foundation::Tension, Foundation::None, Foundation::Compression,
                                unknownFailure, otherUnknownFailure}) {
    const double zero = Foundation::modifyValue(failure, 0.0);
    EXPECT_EQ(zero, 0.0) << failure;
    EXPECT_FALSE(std::signbit(zero)) << failure;
    const double negativeZero = Foundation::modifyValue(failure, -0.0);
    EXPECT_EQ(negativeZero, 0.0) << failure;
    EXPECT_TRUE(std::signbit(negativeZero)) << failure;
  }
}

TEST(FoundationModifyValue, NotANumberStaysInEveryMode) {
  for (const Failure failure : {Foundation::Tension, Foundation::None, Foundation::Compression,
                                unknownFailure, otherUnknownFailure})
    EXPECT_TRUE(std::isnan(Foundation::modifyValue(failure, notANumber))) << failure;
}

TEST(FoundationModifyValue, EveryValueStaysWithoutFailureAndInModesWithoutAName) {
  for (const Failure failure : {Foundation::None, unknownFailure, otherUnknownFailure})
    for (const double value : {-infinity, -5.0, -1e-5, 1e-5, 5.0, infinity})
      EXPECT_EQ(Foundation::modifyValue(failure, value), value) << failure;
}

TEST(FoundationValuesOutOfMemory, EveryVectorIsEitherTheOldOrTheNewOne) {
  const Bedding other(vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), vec(7.0, 8.0, 9.0));
  const struct {
    const char* name;
    void (*operation)(Foundation&, const Foundation&);
  } rows[] = {
      {"copy", [](Foundation& f, const Foundation& o) { f.copy(o); }},
      {"assignment", [](Foundation& f, const Foundation& o) { f = o; }},
      {"addValues", [](Foundation& f, const Foundation& o) { f.addValues(o); }},
      {"interpolate", [](Foundation& f, const Foundation& o) { f.interpolate(o, o, 0.5); }}};
  const Stiffness stored[] = {vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), vec(7.0, 8.0, 9.0)};
  for (const auto& row : rows) {
    for (int failing = 0; failing < 3; ++failing) {
      Foundation target;

      EXPECT_TRUE(runsOutOfMemory(failing + 1, [&] { row.operation(target, other); })) << row.name;

      for (int i = 0; i < 3; ++i)
        EXPECT_EQ(vectorSlots[i].get(target), i < failing ? stored[i] : absent)
            << row.name << " " << vectorSlots[i].name;
    }
    Foundation target;
    EXPECT_FALSE(runsOutOfMemory(4, [&] { row.operation(target, other); })) << row.name;
  }
}

}  // namespace
}  // namespace Found::Tests
