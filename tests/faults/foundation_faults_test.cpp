#include "faults/every_fault.h"
#include "faults/scenes.h"
#include "support/foundations.h"

namespace FaultTest {
namespace {

using Scene = FoundationScene;
using Run = std::function<void(Scene&)>;

const std::string empty = "-1 ";
constexpr auto tension = Foundation::Tension;
const KvVector3D v(1.0, 2.0, 3.0);

/// An operation on a foundation without values.
Operation onEmpty(const std::string& name, Meets meets, const Run& run, const States& failed,
                  const std::string& completed) {
  return makeOperation<Scene>(name, meets, nullptr, run, failed, completed);
}

/// An operation on a foundation that has everything.
Operation onFull(const std::string& name, Meets meets, const Run& run, const States& failed,
                 const std::string& completed) {
  return makeOperation<Scene>(
      name, meets, [](Scene& s) { fill(s.target); }, run, failed, completed);
}

std::string replaceIn(std::string text, const std::string& part, const std::string& replacement) {
  return text.replace(text.find(part), part.size(), replacement);
}

Operations constructions() {
  const std::string made = "-1 ; made -1 ";
  const std::string values = filled.substr(filled.find('['));
  return {
      onEmpty(
          "Construct", Meets::Nothing, [](Scene& s) { s.made.emplace(); }, {}, made),
      onEmpty(
          "Construct_FromVector", Meets::Memory, [](Scene& s) { s.made.emplace(v); }, {empty},
          made + " [area (1, 2, 3), line (1, 2, 3)]"),
      onEmpty(
          "Construct_FromBothPointers", Meets::Memory, [](Scene& s) { s.made.emplace(&v, &v); },
          {empty}, made + " [area (1, 2, 3), line (1, 2, 3), rotation (1, 2, 3)]"),
      onEmpty(
          "Construct_FromTranslationOnly", Meets::Memory,
          [](Scene& s) { s.made.emplace(&v, nullptr); }, {empty},
          made + " [area (1, 2, 3), line (1, 2, 3)]"),
      onEmpty(
          "Construct_FromRotationOnly", Meets::Memory,
          [](Scene& s) { s.made.emplace(nullptr, &v); }, {empty}, made + " [rotation (1, 2, 3)]"),
      onEmpty(
          "Construct_FromNullPointers", Meets::Nothing,
          [](Scene& s) { s.made.emplace(nullptr, nullptr); }, {}, made),
      onEmpty(
          "ConstructCopy_OfFull", Meets::Both, [](Scene& s) { s.made.emplace(s.full); }, {empty},
          made + longName + " " + values),
      onEmpty(
          "ConstructCopy_OfEmpty", Meets::Nothing, [](Scene& s) { s.made.emplace(s.target); }, {},
          made),
      makeOperation<Scene>(
          "Destroy", Meets::Nothing, [](Scene& s) { s.made.emplace(s.full); },
          [](Scene& s) { s.made.reset(); }, {}, empty),
  };
}

Operations setters() {
  return {
      onEmpty(
          "SetName_Long", Meets::Memory, [](Scene& s) { s.target.setName(longName); }, {empty},
          "-1 " + longName),
      onEmpty(
          "SetName_Short", Meets::Nothing, [](Scene& s) { s.target.setName("A"); }, {}, "-1 A"),
      onFull(
          "SetName_Longer", Meets::Memory,
          [](Scene& s) {
            static const std::string longer = longName + longName + longName;
            s.target.setName(longer);
          },
          {filled}, replaceIn(filled, longName, longName + longName + longName)),
      onFull(
          "SetName_ToItself", Meets::Nothing,
          [](Scene& s) { s.target.setName(s.target.getName()); }, {}, filled),
      onEmpty(
          "SetNumber", Meets::Nothing, [](Scene& s) { s.target.setNumber(3); }, {}, "3 "),
      onEmpty(
          "SetChanged", Meets::Nothing, [](Scene& s) { s.target.setChanged(true); }, {},
          "-1  changed"),
      onEmpty(
          "SetGenerated", Meets::Nothing, [](Scene& s) { s.target.setGenerated(true); }, {},
          "-1  [generated]"),
      onEmpty(
          "SetFailPossible", Meets::Nothing, [](Scene& s) { s.target.setFailPossible(true); }, {},
          "-1  [can fail] changed"),
      onEmpty(
          "SetFactorArea", Meets::Nothing, [](Scene& s) { s.target.setFactorArea(0.5); }, {},
          "-1  [factor area 0.5] changed"),
      onEmpty(
          "SetFactorLine", Meets::Nothing, [](Scene& s) { s.target.setFactorLine(0.5); }, {},
          "-1  [factor line 0.5] changed"),
      onFull(
          "SetFactorArea_ToTheSame", Meets::Nothing, [](Scene& s) { s.target.setFactorArea(0.5); },
          {}, filled),
      onEmpty(
          "SetFailAreaZ", Meets::Nothing, [](Scene& s) { s.target.setFailAreaZ(tension); }, {},
          "-1  [fails area z -1] changed"),
      onEmpty(
          "SetFailLineX", Meets::Nothing, [](Scene& s) { s.target.setFailLineX(tension); }, {},
          "-1  [fails line x -1] changed"),
      onEmpty(
          "SetFailLineY", Meets::Nothing, [](Scene& s) { s.target.setFailLineY(tension); }, {},
          "-1  [fails line y -1] changed"),
      onEmpty(
          "SetFailLineZ", Meets::Nothing, [](Scene& s) { s.target.setFailLineZ(tension); }, {},
          "-1  [fails line z -1] changed"),
      onEmpty(
          "SetFailureArea", Meets::Nothing, [](Scene& s) { s.target.setFailureArea(2, tension); },
          {}, "-1  [fails area z -1] changed"),
      onEmpty(
          "SetFailureArea_ThatCannotFail", Meets::Nothing,
          [](Scene& s) { s.target.setFailureArea(1, tension); }, {}, empty),
      onEmpty(
          "SetFailureLine", Meets::Nothing,
          [](Scene& s) {
            for (const int dir : {0, 1, 2}) s.target.setFailureLine(dir, tension);
          },
          {}, "-1  [fails line x -1, fails line y -1, fails line z -1] changed"),
      onEmpty(
          "SetFailureLine_ThatCannotFail", Meets::Nothing,
          [](Scene& s) { s.target.setFailureLine(3, tension); }, {}, empty),
      onFull(
          "ClearAreaValues", Meets::Nothing, [](Scene& s) { s.target.clearAreaValues(); }, {},
          "12 " + longName +
              " [line (4, 5, 6), rotation (7, 8, 9), fails line x 1, fails line y -1, "
              "fails line z 7, factor line 0.25, can fail, generated]"),
      onFull(
          "ClearLineValues", Meets::Nothing, [](Scene& s) { s.target.clearLineValues(); }, {},
          "12 " + longName +
              " [area (1, 2, 3), fails area z -1, factor area 0.5, can fail, generated]"),
  };
}

/// The setters of the three vectors, which are all alike.
Operations vectorSetters() {
  using Setter = void (Foundation::*)(const KvVector3D*);
  const struct {
    std::string name;
    Setter set;
    std::string key;
    std::string before;  // in a full foundation
  } slots[] = {
      {"SetDispArea", &Foundation::setDispArea, "area", "area (1, 2, 3), "},
      {"SetDispLine", &Foundation::setDispLine, "line", "line (4, 5, 6), "},
      {"SetRotLine", &Foundation::setRotLine, "rotation", "rotation (7, 8, 9), "},
  };
  static const KvVector3D w(0.0, 0.0, -1.0);
  Operations rows;
  for (const auto& slot : slots) {
    const std::string replaced = replaceIn(filled, slot.before, slot.key + " (0, 0, -1), ");
    const auto setTo = [set = slot.set](const KvVector3D* vector) {
      return [set, vector](Scene& s) { (s.target.*set)(vector); };
    };
    // The vector is there before it is compared with the one to store.
    rows.push_back(onEmpty(slot.name + "_WhereThereIsNone", Meets::Both, setTo(&w),
                           {empty, afterCalls("-1  [" + slot.key + " (0, 0, 0)] changed")},
                           "-1  [" + slot.key + " (0, 0, -1)] changed"));
    rows.push_back(
        onFull(slot.name + "_ToAnother", Meets::Calls, setTo(&w), {filled}, replaced + " changed"));
    rows.push_back(onEmpty(slot.name + "_ToNullWhereThereIsNone", Meets::Nothing, setTo(nullptr),
                           {}, "-1  changed"));
    rows.push_back(onFull(slot.name + "_ToNull", Meets::Nothing, setTo(nullptr), {},
                          replaceIn(filled, slot.before, "") + " changed"));
  }
  rows.push_back(onFull(
      "SetDispArea_ToTheSame", Meets::Calls, [](Scene& s) { s.target.setDispArea(&v); }, {filled},
      filled));
  return rows;
}

/// Everything that only looks.
Operations queries() {
  const auto same = [](bool isSame) { return isSame ? 1.0 : 0.0; };
  return {
      onFull(
          "Equal_ToTheSameValues", Meets::Calls,
          [same](Scene& s) { s.result = same(s.target == s.full); }, {filled},
          filled + "; gives 1"),
      onEmpty(
          "Equal_ToOtherValues", Meets::Calls,
          [same](Scene& s) { s.result = same(s.target == s.full); }, {empty}, empty + "; gives 0"),
      onEmpty(
          "Equal_WithoutValues", Meets::Nothing,
          [same](Scene& s) { s.result = same(s.target == s.target); }, {}, empty + "; gives 1"),
      onFull(
          "HasAreaValues", Meets::Calls,
          [same](Scene& s) { s.result = same(s.target.hasAreaValues()); }, {filled},
          filled + "; gives 1"),
      onFull(
          "HasLineValues", Meets::Calls,
          [same](Scene& s) { s.result = same(s.target.hasLineValues()); }, {filled},
          filled + "; gives 1"),
      onFull(
          "HasValues", Meets::Calls, [same](Scene& s) { s.result = same(s.target.hasValues()); },
          {filled}, filled + "; gives 1"),
      onEmpty(
          "HasValues_WhereThereAreNone", Meets::Nothing,
          [same](Scene& s) { s.result = same(s.target.hasValues()); }, {}, empty + "; gives 0"),
      onFull(
          "Releases", Meets::Nothing, [same](Scene& s) { s.result = same(s.target.releases()); },
          {}, filled + "; gives 1"),
      onFull(
          "ModifyValue", Meets::Nothing,
          [](Scene& s) { s.result = Foundation::modifyValue(tension, -8.0); }, {},
          filled + "; gives -1e-05"),
      onFull(
          "Getters", Meets::Nothing,
          [](Scene& s) {
            Foundation& f = s.target;
            KvVector3D area, line, rot;
            f.getDispArea(area);
            f.getDispLine(line);
            f.getRotLine(rot);
            const int whole = f.getNumber() + f.getFailAreaZ() + f.getFailLineX() +
                              f.getFailLineY() + f.getFailLineZ() + f.getFailureArea(2) +
                              f.getFailureLine(2);
            s.result = area.x + line.x + rot.x + f.getDispAreaZ() + f.getValueArea(2) +
                       f.getValueLine(3) + f.getFactorArea() + f.getFactorLine() + whole;
          },
          {}, filled + "; gives 49.75"),
  };
}

/// Operations that store several vectors may leave the earlier ones stored, each as a whole.
Operations valueOperations() {
  const std::string values = filled.substr(filled.find('['));
  const std::string area = "area (1, 2, 3)";
  const std::string areaLine = area + ", line (4, 5, 6)";
  const std::string vectors = areaLine + ", rotation (7, 8, 9)";
  // Vectors come first and the rest follows them, without a fault between.
  const States copying = {empty,
                          afterCalls("-1  [area (0, 0, 0)] changed"),
                          "-1  [" + area + "] changed",
                          afterCalls("-1  [" + area + ", line (0, 0, 0)] changed"),
                          "-1  [" + areaLine + "] changed",
                          afterCalls("-1  [" + areaLine + ", rotation (0, 0, 0)] changed")};
  const States adding = {empty,
                         afterCalls("-1  [area (0, 0, 0)] changed"),
                         "-1  [" + area + "] changed",
                         afterCalls("-1  [" + area + ", line (0, 0, 0)] changed"),
                         "-1  [" + areaLine + "] changed",
                         afterCalls("-1  [" + areaLine + ", rotation (0, 0, 0)] changed")};
  const auto withVectors = [](const std::string& text) {
    return replaceIn(filled, "area (1, 2, 3), line (4, 5, 6), rotation (7, 8, 9), ", text);
  };
  return {
      onEmpty(
          "Copy_OfFull", Meets::Both, [](Scene& s) { s.target.copy(s.full); }, copying,
          "-1  " + values),
      onFull(
          "Copy_OfTheSame", Meets::Calls, [](Scene& s) { s.target.copy(s.full); }, {filled},
          filled),
      onFull(
          "Copy_OfItself", Meets::Calls, [](Scene& s) { s.target.copy(s.target); }, {filled},
          filled),
      onFull(
          "Copy_OfEmpty", Meets::Nothing, [](Scene& s) { s.target.copy(Foundation()); }, {},
          "12 " + longName + " [area (1, 2, 3), line (4, 5, 6), rotation (7, 8, 9)]"),
      onEmpty(
          "Assign_Full", Meets::Both, [](Scene& s) { s.target = s.full; }, copying,
          "-1  " + values),
      onFull(
          "Assign_Itself", Meets::Nothing,
          [](Scene& s) {
            const Foundation& itself = s.target;
            s.target = itself;
          },
          {}, filled),
      onEmpty(
          "AddValues_ToNone", Meets::Both, [](Scene& s) { s.target.addValues(s.full); }, adding,
          "-1  [" + vectors + "] changed"),
      onFull(
          "AddValues", Meets::Calls, [](Scene& s) { s.target.addValues(s.full); },
          {filled, withVectors("area (2, 4, 6), line (4, 5, 6), rotation (7, 8, 9), ") + " changed",
           withVectors("area (2, 4, 6), line (8, 10, 12), rotation (7, 8, 9), ") + " changed"},
          withVectors("area (2, 4, 6), line (8, 10, 12), rotation (14, 16, 18), ") + " changed"),
      makeOperation<Scene>(
          "AddValues_ThatCancelOut", Meets::Calls,
          [](Scene& s) {
            fill(s.target);
            s.target.scaleValues(-1.0);
            s.target.setChanged(false);
          },
          [](Scene& s) { s.target.addValues(s.full); },
          {withVectors("area (-1, -2, -3), line (-4, -5, -6), rotation (-7, -8, -9), "),
           withVectors("line (-4, -5, -6), rotation (-7, -8, -9), ") + " changed",
           withVectors("rotation (-7, -8, -9), ") + " changed"},
          withVectors("") + " changed"),
      onFull(
          "ScaleValues", Meets::Nothing, [](Scene& s) { s.target.scaleValues(2.0); }, {},
          withVectors("area (2, 4, 6), line (8, 10, 12), rotation (14, 16, 18), ") + " changed"),
  };
}

/// Between the full foundation and one with an area translation of (3, 4, 5) only.
Operations interpolations() {
  static const auto end = [](Scene& s) -> Foundation& {
    s.made.emplace();
    TestSupport::setDispArea(*s.made, 3.0, 4.0, 5.0);
    s.made->setName("End");
    s.made->setChanged(false);
    return *s.made;
  };
  const auto prepare = [](Scene& s) { end(s); };
  const auto prepareFull = [](Scene& s) {
    fill(s.target);
    end(s);
  };
  const std::string made = "; made -1 End [area (3, 4, 5)]";
  const std::string rest = filled.substr(filled.find(", fails"));
  const std::string area = "area (1, 2, 3)";
  const std::string areaLine = area + ", line (4, 5, 6)";
  const std::string vectors = areaLine + ", rotation (7, 8, 9)";
  const auto bare = [&](const std::string& values) {
    return "-1  [" + values + "] changed" + made;
  };
  const auto with = [&](const std::string& name, const std::string& values) {
    return name + " [" + values + rest;
  };
  const auto states = [&](const States& late) {
    States all = {empty + made,   afterCalls(bare("area (0, 0, 0)")),
                  bare(area),     afterCalls(bare(area + ", line (0, 0, 0)")),
                  bare(areaLine), afterCalls(bare(areaLine + ", rotation (0, 0, 0)"))};
    all.insert(all.end(), late.begin(), late.end());
    return all;
  };
  // Here the start overwrites the end before that is looked at.
  const std::string toItself =
      "12 " + longName + " [area (3, 4, 5), line (4, 5, 6), rotation (7, 8, 9)]" + made;
  const std::string half = "area (2, 3, 4), line (2, 2.5, 3), rotation (3.5, 4, 4.5)";
  return {
      makeOperation<Scene>(
          "Interpolate_AtTheStart", Meets::Both, prepare,
          [](Scene& s) { s.target.interpolate(s.full, *s.made, 0.0); },
          states({with("-1 ", vectors) + made, afterCalls(with("-1 " + longName, vectors) + made)}),
          with("-1 " + longName, vectors) + made),
      makeOperation<Scene>(
          "Interpolate_AtTheEnd", Meets::Both, prepare,
          [](Scene& s) { s.target.interpolate(s.full, *s.made, 1.0); },
          states({afterCalls(with("-1 End", vectors) + made),
                  afterCalls(with("-1 End", "area (3, 4, 5), line (4, 5, 6), rotation (7, 8, 9)") +
                             " changed" + made),
                  afterCalls(with("-1 End", "area (3, 4, 5), rotation (7, 8, 9)") + " changed" +
                             made)}),
          with("-1 End", "area (3, 4, 5)") + " changed" + made),
      makeOperation<Scene>(
          "Interpolate_Between", Meets::Both, prepare,
          [](Scene& s) { s.target.interpolate(s.full, *s.made, 0.5); },
          states({afterCalls(with("-1 ", vectors) + made),
                  afterCalls(with("-1 ", "area (2, 3, 4), line (4, 5, 6), rotation (7, 8, 9)") +
                             " changed" + made),
                  afterCalls(with("-1 ", "area (2, 3, 4), line (2, 2.5, 3), rotation (7, 8, 9)") +
                             " changed" + made)}),
          with("-1 ", half) + " changed" + made),
      makeOperation<Scene>(
          "Interpolate_FromItself", Meets::Calls, prepareFull,
          [](Scene& s) { s.target.interpolate(s.target, *s.made, 0.5); },
          {filled + made, with("12 ", vectors) + made,
           with("12 ", "area (2, 3, 4), line (4, 5, 6), rotation (7, 8, 9)") + " changed" + made,
           with("12 ", "area (2, 3, 4), line (2, 2.5, 3), rotation (7, 8, 9)") + " changed" + made},
          with("12 ", half) + " changed" + made),
      makeOperation<Scene>(
          "Interpolate_ToItself", Meets::Calls, prepareFull,
          [](Scene& s) { s.target.interpolate(*s.made, s.target, 1.0); }, {filled + made, toItself},
          toItself),
      makeOperation<Scene>(
          "Interpolate_BetweenNothing", Meets::Calls, nullptr,
          [](Scene& s) { s.target.interpolate(Foundation(), Foundation(), 0.5); },
          {empty, empty + " changed"}, empty + " changed"),
  };
}

INSTANTIATE_TEST_SUITE_P(Construction, EveryFault, testing::ValuesIn(constructions()), getName);
INSTANTIATE_TEST_SUITE_P(Setter, EveryFault, testing::ValuesIn(setters()), getName);
INSTANTIATE_TEST_SUITE_P(VectorSetter, EveryFault, testing::ValuesIn(vectorSetters()), getName);
INSTANTIATE_TEST_SUITE_P(Query, EveryFault, testing::ValuesIn(queries()), getName);
INSTANTIATE_TEST_SUITE_P(Interpolation, EveryFault, testing::ValuesIn(interpolations()), getName);
INSTANTIATE_TEST_SUITE_P(ValueOperation, EveryFault, testing::ValuesIn(valueOperations()), getName);

}  // namespace
}  // namespace FaultTest
