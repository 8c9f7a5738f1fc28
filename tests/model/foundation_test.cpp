#include "found/foundation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <type_traits>

#include "model/foundation_probe.h"
#include "support/allocation_faults.h"

namespace Found::Tests {
namespace {

using Failure = Foundation::Failure;

const Failure everyFailure[] = {Foundation::Tension, Foundation::None, Foundation::Compression,
                                unknownFailure, otherUnknownFailure};

TEST(FoundationShape, IsAPlainRecordWithoutVirtualFunctions) {
  EXPECT_FALSE(std::is_polymorphic_v<Foundation>);
}

TEST(FoundationShape, FailureIsAnEnumerationOverInt) {
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Failure>, int>));
}

TEST(FoundationShape, FailureHasTheSignOfTheStiffnessThatIsLost) {
  EXPECT_EQ(static_cast<int>(Foundation::Tension), -1);
  EXPECT_EQ(static_cast<int>(Foundation::None), 0);
  EXPECT_EQ(static_cast<int>(Foundation::Compression), 1);
}

TEST(FoundationShape, FailureModesAreReadByNonConstMembers) {
  using Getter = Failure (Foundation::*)();
  using IndexedGetter = Failure (Foundation::*)(int);
  EXPECT_TRUE((std::is_same_v<decltype(&Foundation::getFailAreaZ), Getter>));
  EXPECT_TRUE((std::is_same_v<decltype(&Foundation::getFailLineX), Getter>));
  EXPECT_TRUE((std::is_same_v<decltype(&Foundation::getFailLineY), Getter>));
  EXPECT_TRUE((std::is_same_v<decltype(&Foundation::getFailLineZ), Getter>));
  EXPECT_TRUE((std::is_same_v<decltype(&Foundation::getFailureArea), IndexedGetter>));
  EXPECT_TRUE((std::is_same_v<decltype(&Foundation::getFailureLine), IndexedGetter>));
}

TEST(FoundationShape, NameIsReadWithoutACopy) {
  EXPECT_TRUE(
      (std::is_same_v<decltype(&Foundation::getName), const std::string& (Foundation::*)() const>));
}

TEST(FoundationDefaults, ANewFoundationHasNoNameNumberFlagsOrValues) {
  Foundation foundation;

  EXPECT_EQ(recordOf(foundation), Record("", -1, false, false, noValues));
}

TEST(FoundationCopyConstructor, TakesOverNameFlagsAndValues) {
  Foundation original;
  fill(original);

  Foundation copy(original);

  EXPECT_EQ(copy.getName(), "Raft");
  EXPECT_TRUE(copy.isGenerated());
  EXPECT_EQ(valuesOf(copy), filledValues);
}

TEST(FoundationCopyConstructor, LeavesTheCopyNotNumbered) {
  Foundation original;
  original.setNumber(12);

  const Foundation copy(original);

  EXPECT_EQ(copy.getNumber(), -1);
}

TEST(FoundationCopyConstructor, TakesOverEachFlagAsItIs) {
  for (const bool value : {false, true}) {
    for (const int flag : {0, 1, 2}) {
      Foundation original;
      areaSlot.set(original, KvVector3D(1.0, 2.0, 3.0));
      original.setFailPossible(flag == 0 ? value : !value);
      original.setGenerated(flag == 1 ? value : !value);
      original.setChanged(flag == 2 ? value : !value);

      const Foundation copy(original);

      EXPECT_EQ(copy.getFailPossible(), flag == 0 ? value : !value);
      EXPECT_EQ(copy.isGenerated(), flag == 1 ? value : !value);
      EXPECT_EQ(copy.getChanged(), flag == 2 ? value : !value);
    }
  }
}

TEST(FoundationCopyConstructor, AbsentVectorsStayAbsent) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation original;
    fill(original);
    slot.remove(original);

    const Foundation copy(original);

    EXPECT_EQ(slot.get(copy), absent) << slot.name;
  }
}

TEST(FoundationCopyConstructor, CopiesVectorsDeeply) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation original;
    slot.set(original, KvVector3D(1.0, 2.0, 3.0));
    const Foundation copy(original);

    slot.set(original, KvVector3D(7.0, 8.0, 9.0));

    EXPECT_EQ(slot.get(copy), vec(1.0, 2.0, 3.0)) << slot.name;
  }
}

TEST(FoundationCopyConstructor, LeavesTheOriginalAlone) {
  Foundation original;
  fill(original);

  const Foundation copy(original);

  EXPECT_EQ(recordOf(original), Record("Raft", 12, false, true, filledValues));
}

TEST(FoundationCopyConstructor, TheCopyOutlivesTheOriginal) {
  auto original = std::make_unique<Foundation>();
  fill(*original);
  Foundation copy(*original);

  original.reset();

  EXPECT_EQ(recordOf(copy), Record("Raft", -1, false, true, filledValues));
}

TEST(FoundationVectorConstructor, OneVectorDefinesAreaAndLineTranslation) {
  Foundation foundation(KvVector3D(1.0, 2.0, 3.0));

  EXPECT_EQ(recordOf(foundation), Record("", -1, false, false,
                                         Values(vec(1.0, 2.0, 3.0), vec(1.0, 2.0, 3.0), absent,
                                                false, {0, 0, 0, 0}, 0.0, 0.0)));
}

TEST(FoundationVectorConstructor, AreaAndLineTranslationAreSeparateVectors) {
  Foundation foundation(KvVector3D(1.0, 2.0, 3.0));

  foundation.setDispArea(nullptr);

  EXPECT_EQ(lineOf(foundation), vec(1.0, 2.0, 3.0));
}

TEST(FoundationVectorConstructor, ChangingOneOfTheVectorsLeavesTheOther) {
  Foundation foundation(KvVector3D(1.0, 2.0, 3.0));

  lineSlot.set(foundation, KvVector3D(7.0, 8.0, 9.0));

  EXPECT_EQ(areaOf(foundation), vec(1.0, 2.0, 3.0));
}

TEST(FoundationVectorConstructor, KeepsNothingOfItsArgument) {
  KvVector3D v(1.0, 2.0, 3.0);
  const Foundation foundation(v);

  v = KvVector3D(7.0, 8.0, 9.0);

  EXPECT_EQ(areaOf(foundation), vec(1.0, 2.0, 3.0));
  EXPECT_EQ(lineOf(foundation), vec(1.0, 2.0, 3.0));
}

TEST(FoundationVectorConstructor, AZeroVectorIsPresent) {
  const Foundation foundation{KvVector3D()};

  EXPECT_EQ(areaOf(foundation), vec(0.0, 0.0, 0.0));
  EXPECT_EQ(lineOf(foundation), vec(0.0, 0.0, 0.0));
}

TEST(FoundationTwoVectorConstructor, TranslationGoesToAreaAndLineAndRotationToLine) {
  const KvVector3D disp(1.0, 2.0, 3.0);
  const KvVector3D rot(4.0, 5.0, 6.0);

  Foundation foundation(&disp, &rot);

  EXPECT_EQ(recordOf(foundation),
            Record("", -1, false, false,
                   Values(vec(1.0, 2.0, 3.0), vec(1.0, 2.0, 3.0), vec(4.0, 5.0, 6.0), false,
                          {0, 0, 0, 0}, 0.0, 0.0)));
}

TEST(FoundationTwoVectorConstructor, WithoutRotationTheLineRotationIsAbsent) {
  const KvVector3D disp(1.0, 2.0, 3.0);

  Foundation foundation(&disp, nullptr);

  EXPECT_EQ(recordOf(foundation), Record("", -1, false, false,
                                         Values(vec(1.0, 2.0, 3.0), vec(1.0, 2.0, 3.0), absent,
                                                false, {0, 0, 0, 0}, 0.0, 0.0)));
}

TEST(FoundationTwoVectorConstructor, WithoutTranslationAreaAndLineTranslationAreAbsent) {
  const KvVector3D rot(4.0, 5.0, 6.0);

  Foundation foundation(nullptr, &rot);

  EXPECT_EQ(recordOf(foundation),
            Record("", -1, false, false,
                   Values(absent, absent, vec(4.0, 5.0, 6.0), false, {0, 0, 0, 0}, 0.0, 0.0)));
}

TEST(FoundationTwoVectorConstructor, WithoutBothAllVectorsAreAbsent) {
  Foundation foundation(nullptr, nullptr);

  EXPECT_EQ(recordOf(foundation), Record("", -1, false, false, noValues));
}

TEST(FoundationTwoVectorConstructor, AreaAndLineTranslationAreSeparateVectors) {
  const KvVector3D disp(1.0, 2.0, 3.0);
  Foundation foundation(&disp, nullptr);

  areaSlot.set(foundation, KvVector3D(7.0, 8.0, 9.0));

  EXPECT_EQ(lineOf(foundation), vec(1.0, 2.0, 3.0));
}

TEST(FoundationTwoVectorConstructor, KeepsNothingOfItsArguments) {
  KvVector3D disp(1.0, 2.0, 3.0);
  KvVector3D rot(4.0, 5.0, 6.0);
  const Foundation foundation(&disp, &rot);

  disp = KvVector3D();
  rot = KvVector3D();

  EXPECT_EQ(areaOf(foundation), vec(1.0, 2.0, 3.0));
  EXPECT_EQ(lineOf(foundation), vec(1.0, 2.0, 3.0));
  EXPECT_EQ(rotOf(foundation), vec(4.0, 5.0, 6.0));
}

TEST(FoundationDestructor, ReleasesVectorsAndName) {
  const long before = countLiveBlocks();

  {
    Foundation foundation;
    fill(foundation);
    foundation.setName("A name that is too long to be stored inside the string itself");
    EXPECT_EQ(countLiveBlocks(), before + 4);
  }

  EXPECT_EQ(countLiveBlocks(), before);
}

TEST(FoundationName, IsStoredAsItIs) {
  Foundation foundation;

  foundation.setName(" Strip\tfooting \xFC ");

  EXPECT_EQ(foundation.getName(), " Strip\tfooting \xFC ");
}

TEST(FoundationName, MayHoldZeroBytes) {
  Foundation foundation;
  const std::string name("a\0b", 3);

  foundation.setName(name);

  EXPECT_EQ(foundation.getName(), name);
}

TEST(FoundationName, CanBeEmptiedAgain) {
  Foundation foundation;
  foundation.setName("Raft");

  foundation.setName("");

  EXPECT_EQ(foundation.getName(), "");
}

TEST(FoundationName, AssigningItsOwnNameKeepsIt) {
  Foundation foundation;
  foundation.setName("A name that is too long to be stored inside the string itself");

  foundation.setName(foundation.getName());

  EXPECT_EQ(foundation.getName(), "A name that is too long to be stored inside the string itself");
}

TEST(FoundationName, SettingDoesNotMarkAsChanged) {
  Foundation foundation;

  foundation.setName("Raft");

  EXPECT_FALSE(foundation.getChanged());
}

TEST(FoundationName, SettingDoesNotClearChanged) {
  Foundation foundation;
  foundation.setChanged(true);

  foundation.setName("Raft");

  EXPECT_TRUE(foundation.getChanged());
}

TEST(FoundationNumber, AnyIntIsStored) {
  for (const int number : {smallestInt, -1, 0, 1, 12345, largestInt}) {
    Foundation foundation;
    foundation.setNumber(number);
    EXPECT_EQ(foundation.getNumber(), number);
  }
}

TEST(FoundationNumber, SettingDoesNotMarkAsChanged) {
  Foundation foundation;

  foundation.setNumber(12);

  EXPECT_FALSE(foundation.getChanged());
}

TEST(FoundationNumber, SettingDoesNotClearChanged) {
  Foundation foundation;
  foundation.setChanged(true);

  foundation.setNumber(12);

  EXPECT_TRUE(foundation.getChanged());
}

TEST(FoundationChanged, IsStoredUnconditionally) {
  Foundation foundation;
  for (const bool value : {true, true, false, false, true}) {
    foundation.setChanged(value);
    EXPECT_EQ(foundation.getChanged(), value);
  }
}

TEST(FoundationChanged, SettingItTouchesNothingElse) {
  Foundation foundation;
  fill(foundation);

  foundation.setChanged(true);

  EXPECT_EQ(recordOf(foundation), Record("Raft", 12, true, true, filledValues));
}

TEST(FoundationChanged, ReadingLeavesItAlone) {
  for (const bool value : {false, true}) {
    Foundation foundation;
    fill(foundation);
    foundation.setChanged(value);

    recordOf(foundation);
    foundation.getDispAreaZ();
    foundation.getFailureArea(2);
    foundation.getFailureLine(0);

    EXPECT_EQ(foundation.getChanged(), value);
  }
}

TEST(FoundationGenerated, IsStored) {
  Foundation foundation;
  for (const bool value : {true, true, false, false}) {
    foundation.setGenerated(value);
    EXPECT_EQ(foundation.isGenerated(), value);
  }
}

TEST(FoundationGenerated, SettingDoesNotMarkAsChanged) {
  Foundation foundation;

  foundation.setGenerated(true);
  foundation.setGenerated(false);

  EXPECT_FALSE(foundation.getChanged());
}

TEST(FoundationGenerated, SettingDoesNotClearChanged) {
  Foundation foundation;
  foundation.setChanged(true);

  foundation.setGenerated(true);

  EXPECT_TRUE(foundation.getChanged());
}

TEST(FoundationFailPossible, SwitchingItMarksAsChanged) {
  Foundation foundation;
  for (const bool value : {true, false}) {
    foundation.setChanged(false);
    foundation.setFailPossible(value);
    EXPECT_EQ(foundation.getFailPossible(), value);
    EXPECT_TRUE(foundation.getChanged());
  }
}

TEST(FoundationFailPossible, StoringTheSameValueLeavesChangedAlone) {
  for (const bool value : {false, true}) {
    Foundation foundation;
    foundation.setFailPossible(value);
    foundation.setChanged(false);

    foundation.setFailPossible(value);

    EXPECT_FALSE(foundation.getChanged());
    EXPECT_EQ(foundation.getFailPossible(), value);
  }
}

TEST(FoundationFailPossible, StoringTheSameValueDoesNotClearChanged) {
  Foundation foundation;
  foundation.setChanged(true);

  foundation.setFailPossible(false);

  EXPECT_TRUE(foundation.getChanged());
}

TEST(FoundationFactor, EveryValueIsStoredWithoutLimits) {
  for (const FactorSlot& slot : factorSlots) {
    for (const double value : {-1.5, 0.5, 1e300, -1e300, 5e-324, infinity, -infinity}) {
      Foundation foundation;
      slot.set(foundation, value);
      EXPECT_EQ(slot.get(foundation), value) << slot.name;
      EXPECT_TRUE(foundation.getChanged()) << slot.name << " " << value;
    }
  }
}

TEST(FoundationFactor, CanBeSetBackToZero) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation foundation;
    slot.set(foundation, 0.5);
    foundation.setChanged(false);

    slot.set(foundation, 0.0);

    EXPECT_EQ(slot.get(foundation), 0.0) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationFactor, ZeroOnANewFoundationChangesNothing) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation foundation;

    slot.set(foundation, 0.0);

    EXPECT_EQ(recordOf(foundation), Record("", -1, false, false, noValues)) << slot.name;
  }
}

TEST(FoundationFactor, StoringTheSameValueLeavesChangedAlone) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation foundation;
    slot.set(foundation, 0.5);
    foundation.setChanged(false);

    slot.set(foundation, 0.5);

    EXPECT_FALSE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationFactor, StoringTheSameValueDoesNotClearChanged) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation foundation;
    slot.set(foundation, 0.5);

    slot.set(foundation, 0.5);

    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationFactor, IsComparedExactly) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation foundation;
    slot.set(foundation, 1.0);
    foundation.setChanged(false);

    slot.set(foundation, 1.0000000000000002);

    EXPECT_EQ(slot.get(foundation), 1.0000000000000002) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationFactor, NegativeZeroEqualsZeroAndIsNotStored) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation foundation;

    slot.set(foundation, -0.0);

    EXPECT_FALSE(std::signbit(slot.get(foundation))) << slot.name;
    EXPECT_FALSE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationFactor, NotANumberIsStoredAndMarksAsChangedEveryTime) {
  for (const FactorSlot& slot : factorSlots) {
    Foundation foundation;
    for (int time = 0; time < 2; ++time) {
      foundation.setChanged(false);
      slot.set(foundation, notANumber);
      EXPECT_TRUE(std::isnan(slot.get(foundation))) << slot.name;
      EXPECT_TRUE(foundation.getChanged()) << slot.name;
    }
  }
}

TEST(FoundationFactor, AreaAndLineAreSeparate) {
  Foundation foundation;

  foundation.setFactorArea(0.5);
  EXPECT_EQ(foundation.getFactorLine(), 0.0);

  foundation.setFactorLine(0.25);
  EXPECT_EQ(foundation.getFactorArea(), 0.5);
  EXPECT_EQ(foundation.getFactorLine(), 0.25);
}

TEST(FoundationStoredFailure, EveryModeIsReadBackWhateverFailPossibleSays) {
  for (const bool possible : {false, true}) {
    for (const FailureSlot& slot : failureSlots) {
      for (const Failure failure : everyFailure) {
        Foundation foundation;
        foundation.setFailPossible(possible);
        slot.set(foundation, failure);
        EXPECT_EQ(slot.get(foundation), failure) << slot.name;
      }
    }
  }
}

TEST(FoundationStoredFailure, EachSetterStoresOneMode) {
  const struct {
    const FailureSlot& slot;
    std::array<int, 4> expected;
  } rows[] = {{failureSlots[0], {1, 0, 0, 0}},
              {failureSlots[1], {0, 1, 0, 0}},
              {failureSlots[2], {0, 0, 1, 0}},
              {failureSlots[3], {0, 0, 0, 1}}};
  for (const auto& row : rows) {
    Foundation foundation;
    row.slot.set(foundation, Foundation::Compression);
    EXPECT_EQ(
        recordOf(foundation),
        Record("", -1, true, false, Values(absent, absent, absent, false, row.expected, 0.0, 0.0)))
        << row.slot.name;
  }
}

TEST(FoundationStoredFailure, EachGetterReadsOneMode) {
  Foundation foundation;
  fill(foundation);

  EXPECT_EQ(foundation.getFailLineX(), Foundation::Tension);
  EXPECT_EQ(foundation.getFailLineY(), Foundation::Compression);
  EXPECT_EQ(foundation.getFailLineZ(), unknownFailure);
  EXPECT_EQ(foundation.getFailAreaZ(), otherUnknownFailure);
}

TEST(FoundationStoredFailure, ChangingAModeMarksAsChanged) {
  for (const FailureSlot& slot : failureSlots) {
    Foundation foundation;
    for (const Failure failure : {Foundation::Tension, Foundation::Compression, unknownFailure,
                                  otherUnknownFailure, Foundation::None}) {
      foundation.setChanged(false);
      slot.set(foundation, failure);
      EXPECT_TRUE(foundation.getChanged()) << slot.name << " " << failure;
    }
  }
}

TEST(FoundationStoredFailure, StoringTheSameModeLeavesChangedAlone) {
  for (const FailureSlot& slot : failureSlots) {
    for (const Failure failure : everyFailure) {
      Foundation foundation;
      slot.set(foundation, failure);
      foundation.setChanged(false);

      slot.set(foundation, failure);

      EXPECT_FALSE(foundation.getChanged()) << slot.name << " " << failure;
    }
  }
}

TEST(FoundationStoredFailure, StoringTheSameModeDoesNotClearChanged) {
  for (const FailureSlot& slot : failureSlots) {
    Foundation foundation;
    foundation.setChanged(true);

    slot.set(foundation, Foundation::None);

    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationFailureArea, OnlyZReportsTheStoredMode) {
  Foundation foundation;
  fill(foundation);
  const struct {
    int dir;
    Failure expected;
  } rows[] = {{smallestInt, Foundation::None}, {-1, Foundation::None},        {0, Foundation::None},
              {1, Foundation::None},           {2, otherUnknownFailure},      {3, Foundation::None},
              {4, Foundation::None},           {largestInt, Foundation::None}};
  for (const auto& row : rows)
    EXPECT_EQ(foundation.getFailureArea(row.dir), row.expected) << "dir " << row.dir;
}

TEST(FoundationFailureArea, EveryStoredModeIsReportedForZ) {
  for (const Failure failure : everyFailure) {
    Foundation foundation;
    foundation.setFailPossible(true);
    foundation.setFailAreaZ(failure);
    EXPECT_EQ(foundation.getFailureArea(2), failure);
  }
}

TEST(FoundationFailureArea, IsNoneWhileFailingIsNotPossible) {
  Foundation foundation;
  foundation.setFailAreaZ(Foundation::Compression);

  EXPECT_EQ(foundation.getFailureArea(2), Foundation::None);
  EXPECT_EQ(foundation.getFailAreaZ(), Foundation::Compression);
}

TEST(FoundationFailureArea, SettingZStoresTheModeAndMarksAsChanged) {
  for (const bool possible : {false, true}) {
    Foundation foundation;
    foundation.setFailPossible(possible);
    foundation.setChanged(false);

    foundation.setFailureArea(2, Foundation::Tension);

    EXPECT_EQ(recordOf(foundation),
              Record("", -1, true, false,
                     Values(absent, absent, absent, possible, {0, 0, 0, -1}, 0.0, 0.0)));
  }
}

TEST(FoundationFailureArea, SettingZToTheSameModeLeavesChangedAlone) {
  Foundation foundation;
  foundation.setFailAreaZ(Foundation::Tension);
  foundation.setChanged(false);

  foundation.setFailureArea(2, Foundation::Tension);

  EXPECT_FALSE(foundation.getChanged());
}

TEST(FoundationFailureArea, SettingAnyOtherDirectionChangesNothing) {
  for (const int dir : {smallestInt, -1, 0, 1, 3, 4, largestInt}) {
    Foundation foundation;
    fill(foundation);

    foundation.setFailureArea(dir, Foundation::Tension);

    EXPECT_EQ(recordOf(foundation), Record("Raft", 12, false, true, filledValues)) << "dir " << dir;
  }
}

TEST(FoundationFailureArea, AModeSetWhileFailingIsOffShowsWhenItIsSwitchedOn) {
  Foundation foundation;
  foundation.setFailureArea(2, Foundation::Tension);

  foundation.setFailPossible(true);

  EXPECT_EQ(foundation.getFailureArea(2), Foundation::Tension);
}

TEST(FoundationFailureLine, ReportsOneStoredModePerDirection) {
  Foundation foundation;
  fill(foundation);
  const struct {
    int dir;
    Failure expected;
  } rows[] = {
      {smallestInt, Foundation::None}, {-1, Foundation::None},        {0, Foundation::Tension},
      {1, Foundation::Compression},    {2, unknownFailure},           {3, Foundation::None},
      {4, Foundation::None},           {largestInt, Foundation::None}};
  for (const auto& row : rows)
    EXPECT_EQ(foundation.getFailureLine(row.dir), row.expected) << "dir " << row.dir;
}

TEST(FoundationFailureLine, IsNoneWhileFailingIsNotPossible) {
  Foundation foundation;
  fill(foundation);
  foundation.setFailPossible(false);

  for (const int dir : {-1, 0, 1, 2, 3})
    EXPECT_EQ(foundation.getFailureLine(dir), Foundation::None) << "dir " << dir;
}

TEST(FoundationFailureLine, SettingStoresOneModePerDirectionAndMarksAsChanged) {
  const struct {
    int dir;
    std::array<int, 4> expected;
  } rows[] = {{0, {-1, 0, 0, 0}}, {1, {0, -1, 0, 0}}, {2, {0, 0, -1, 0}}};
  for (const bool possible : {false, true}) {
    for (const auto& row : rows) {
      Foundation foundation;
      foundation.setFailPossible(possible);
      foundation.setChanged(false);

      foundation.setFailureLine(row.dir, Foundation::Tension);

      EXPECT_EQ(recordOf(foundation),
                Record("", -1, true, false,
                       Values(absent, absent, absent, possible, row.expected, 0.0, 0.0)))
          << "dir " << row.dir;
    }
  }
}

TEST(FoundationFailureLine, SettingTheSameModeLeavesChangedAlone) {
  for (const int dir : {0, 1, 2}) {
    Foundation foundation;
    foundation.setFailureLine(dir, Foundation::Tension);
    foundation.setChanged(false);

    foundation.setFailureLine(dir, Foundation::Tension);

    EXPECT_FALSE(foundation.getChanged()) << "dir " << dir;
  }
}

TEST(FoundationFailureLine, SettingAnyOtherDirectionChangesNothing) {
  for (const int dir : {smallestInt, -1, 3, 4, largestInt}) {
    Foundation foundation;
    fill(foundation);

    foundation.setFailureLine(dir, Foundation::None);

    EXPECT_EQ(recordOf(foundation), Record("Raft", 12, false, true, filledValues)) << "dir " << dir;
  }
}

TEST(FoundationFailureLine, AModeSetWhileFailingIsOffShowsWhenItIsSwitchedOn) {
  for (const int dir : {0, 1, 2}) {
    Foundation foundation;
    foundation.setFailureLine(dir, Foundation::Compression);
    EXPECT_EQ(foundation.getFailureLine(dir), Foundation::None) << "dir " << dir;

    foundation.setFailPossible(true);

    EXPECT_EQ(foundation.getFailureLine(dir), Foundation::Compression) << "dir " << dir;
  }
}

TEST(FoundationVector, IsReadBackComponentByComponent) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    const KvVector3D v(1.0, -2.0, 3.5);
    (foundation.*slot.setter)(&v);
    KvVector3D out(7.0, 8.0, 9.0);

    EXPECT_TRUE((foundation.*slot.getter)(out)) << slot.name;
    EXPECT_EQ(out.x, 1.0) << slot.name;
    EXPECT_EQ(out.y, -2.0) << slot.name;
    EXPECT_EQ(out.z, 3.5) << slot.name;
  }
}

TEST(FoundationVector, ReadingAnAbsentOneGivesZeros) {
  for (const VectorSlot& slot : vectorSlots) {
    const Foundation foundation;
    KvVector3D out(7.0, 8.0, 9.0);

    EXPECT_FALSE((foundation.*slot.getter)(out)) << slot.name;
    EXPECT_EQ(out.x, 0.0) << slot.name;
    EXPECT_EQ(out.y, 0.0) << slot.name;
    EXPECT_EQ(out.z, 0.0) << slot.name;
  }
}

TEST(FoundationVector, WhatIsReadIsACopy) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));
    KvVector3D out;
    (foundation.*slot.getter)(out);

    out.x = 7.0;

    EXPECT_EQ(slot.get(foundation), vec(1.0, 2.0, 3.0)) << slot.name;
  }
}

TEST(FoundationVector, WhatIsStoredIsACopy) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    KvVector3D v(1.0, 2.0, 3.0);
    slot.set(foundation, v);

    v.y = 7.0;

    EXPECT_EQ(slot.get(foundation), vec(1.0, 2.0, 3.0)) << slot.name;
  }
}

TEST(FoundationVector, EachSetterStoresOneVectorAndTouchesNothingElse) {
  const KvVector3D v(7.0, 8.0, 9.0);
  const Stiffness stored = vec(7.0, 8.0, 9.0);
  const std::array<int, 4> noFailures = {0, 0, 0, 0};
  const struct {
    const VectorSlot& slot;
    Values expected;
  } rows[] = {{areaSlot, {stored, absent, absent, false, noFailures, 0.0, 0.0}},
              {lineSlot, {absent, stored, absent, false, noFailures, 0.0, 0.0}},
              {rotSlot, {absent, absent, stored, false, noFailures, 0.0, 0.0}}};
  for (const auto& row : rows) {
    Foundation foundation;
    row.slot.set(foundation, v);
    EXPECT_EQ(recordOf(foundation), Record("", -1, true, false, row.expected)) << row.slot.name;
  }
}

TEST(FoundationVector, EachRemovalTakesOneVectorAndTouchesNothingElse) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    fill(foundation);

    slot.remove(foundation);

    for (const VectorSlot& other : vectorSlots)
      EXPECT_EQ(other.get(foundation) == absent, &other == &slot) << slot.name << other.name;
    EXPECT_EQ(foundation.getFactorArea(), 0.5);
    EXPECT_EQ(foundation.getFailAreaZ(), otherUnknownFailure);
  }
}

TEST(FoundationVector, StoringIntoAnEmptySlotMarksAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;

    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));

    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationVector, StoringAZeroVectorKeepsItPresentAndMarksAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;

    slot.set(foundation, KvVector3D());

    EXPECT_EQ(slot.get(foundation), vec(0.0, 0.0, 0.0)) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationVector, AZeroVectorReplacesAnotherAndStaysPresent) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));

    slot.set(foundation, KvVector3D());

    EXPECT_EQ(slot.get(foundation), vec(0.0, 0.0, 0.0)) << slot.name;
  }
}

TEST(FoundationVector, StoringAnEqualOneLeavesChangedAlone) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
    foundation.setChanged(false);

    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));

    EXPECT_FALSE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationVector, StoringAnEqualOneDoesNotClearChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));

    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));

    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationVector, ADifferenceInAnyComponentMarksAsChanged) {
  const struct {
    KvVector3D v;
    Stiffness expected;
  } rows[] = {{KvVector3D(7.0, 2.0, 3.0), vec(7.0, 2.0, 3.0)},
              {KvVector3D(1.0, 7.0, 3.0), vec(1.0, 7.0, 3.0)},
              {KvVector3D(1.0, 2.0, 7.0), vec(1.0, 2.0, 7.0)},
              {KvVector3D(1.0, 2.0, 3.0000000000000004), vec(1.0, 2.0, 3.0000000000000004)}};
  for (const VectorSlot& slot : vectorSlots) {
    for (const auto& row : rows) {
      Foundation foundation;
      slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));
      foundation.setChanged(false);

      slot.set(foundation, row.v);

      EXPECT_TRUE(foundation.getChanged()) << slot.name;
      EXPECT_EQ(slot.get(foundation), row.expected) << slot.name;
    }
  }
}

TEST(FoundationVector, NegativeZeroIsStoredOverZeroWithoutMarkingAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    slot.set(foundation, KvVector3D());
    foundation.setChanged(false);

    slot.set(foundation, KvVector3D(-0.0, -0.0, -0.0));

    KvVector3D out;
    (foundation.*slot.getter)(out);
    EXPECT_TRUE(std::signbit(out.x) && std::signbit(out.y) && std::signbit(out.z)) << slot.name;
    EXPECT_FALSE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationVector, NotANumberIsStoredAndMarksAsChangedEveryTime) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    for (int time = 0; time < 2; ++time) {
      foundation.setChanged(false);
      slot.set(foundation, KvVector3D(1.0, notANumber, 3.0));
      EXPECT_TRUE(foundation.getChanged()) << slot.name;
    }
    KvVector3D out;
    EXPECT_TRUE((foundation.*slot.getter)(out)) << slot.name;
    EXPECT_TRUE(std::isnan(out.y)) << slot.name;
  }
}

TEST(FoundationVector, InfinitiesAreStored) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;

    slot.set(foundation, KvVector3D(infinity, -infinity, 0.0));

    EXPECT_EQ(slot.get(foundation), vec(infinity, -infinity, 0.0)) << slot.name;
  }
}

TEST(FoundationVector, RemovingMakesItAbsentAndMarksAsChanged) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));
    foundation.setChanged(false);

    slot.remove(foundation);

    EXPECT_EQ(slot.get(foundation), absent) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationVector, RemovingAnAbsentOneMarksAsChangedToo) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;

    slot.remove(foundation);

    EXPECT_EQ(slot.get(foundation), absent) << slot.name;
    EXPECT_TRUE(foundation.getChanged()) << slot.name;
  }
}

TEST(FoundationVector, RemovingReleasesIt) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    const long before = countLiveBlocks();
    slot.set(foundation, KvVector3D(1.0, 2.0, 3.0));
    EXPECT_EQ(countLiveBlocks(), before + 1) << slot.name;

    slot.remove(foundation);

    EXPECT_EQ(countLiveBlocks(), before) << slot.name;
  }
}

TEST(FoundationDispAreaZ, IsTheZComponentOfTheAreaTranslation) {
  Foundation foundation;
  fill(foundation);

  EXPECT_EQ(foundation.getDispAreaZ(), 3.0);
}

TEST(FoundationDispAreaZ, IsZeroWithoutAreaTranslation) {
  Foundation foundation;
  lineSlot.set(foundation, KvVector3D(4.0, 5.0, 6.0));
  rotSlot.set(foundation, KvVector3D(7.0, 8.0, 9.0));

  EXPECT_EQ(foundation.getDispAreaZ(), 0.0);
}

TEST(FoundationOutOfMemory, StoringIntoAnEmptySlotLeavesItEmptyAndUnmarked) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    const KvVector3D v(1.0, 2.0, 3.0);

    EXPECT_TRUE(runsOutOfMemory(1, [&] { slot.set(foundation, v); })) << slot.name;

    EXPECT_EQ(recordOf(foundation), Record("", -1, false, false, noValues)) << slot.name;
  }
}

TEST(FoundationOutOfMemory, ReplacingAPresentVectorStillSucceeds) {
  for (const VectorSlot& slot : vectorSlots) {
    Foundation foundation;
    fill(foundation);
    const KvVector3D v(-1.0, -2.0, -3.0);

    EXPECT_FALSE(runsOutOfMemory(1, [&] { slot.set(foundation, v); })) << slot.name;

    EXPECT_EQ(slot.get(foundation), vec(-1.0, -2.0, -3.0)) << slot.name;
  }
}

TEST(FoundationOutOfMemory, SettingANameKeepsTheOldOne) {
  Foundation foundation;
  foundation.setName("Raft");
  const std::string longName("A name that is too long to be stored inside the string itself");

  EXPECT_TRUE(runsOutOfMemory(1, [&] { foundation.setName(longName); }));

  EXPECT_EQ(foundation.getName(), "Raft");
}

TEST(FoundationOutOfMemory, ConstructionReleasesWhatItHadAllocated) {
  Foundation original;
  fill(original);
  original.setName("A name that is too long to be stored inside the string itself");
  const KvVector3D v(1.0, 2.0, 3.0);
  const long before = countLiveBlocks();

  int failures = 0;
  while (runsOutOfMemory(failures + 1, [&] { const Foundation copy(original); })) {
    ++failures;
    EXPECT_EQ(countLiveBlocks(), before) << "copy, allocation " << failures;
  }
  EXPECT_EQ(failures, 4);

  failures = 0;
  while (runsOutOfMemory(failures + 1, [&] { const Foundation made(v); })) {
    ++failures;
    EXPECT_EQ(countLiveBlocks(), before) << "one vector, allocation " << failures;
  }
  EXPECT_EQ(failures, 2);

  failures = 0;
  while (runsOutOfMemory(failures + 1, [&] { const Foundation made(&v, &v); })) {
    ++failures;
    EXPECT_EQ(countLiveBlocks(), before) << "two vectors, allocation " << failures;
  }
  EXPECT_EQ(failures, 3);
}

}  // namespace
}  // namespace Found::Tests
