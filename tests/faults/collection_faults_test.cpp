#include "faults/manager_operation.h"
#include "support/foundations.h"

namespace FaultTest {
namespace {

using Scene = ManagerScene;
using Run = std::function<void(Scene&)>;

/// What only looks: calls may fail, and then nothing is known.
Operation look(const std::string& name, Meets meets, const Run& run, const std::string& result) {
  return on(name, meets, run, {everything}, everything + "; gives " + result);
}

/// A foundation as a number: its own, or -2 for none.
double tell(const Foundation* foundation) {
  return foundation != nullptr ? foundation->getNumber() : -2.0;
}

Operations lifeTimes() {
  const std::string rest = "; current not listed; removed 7 Old; maximum 1.5; users uv";
  return {
      on(
          "Construct", Meets::Nothing, [](Scene& s) { s.copied.emplace(); }, {},
          everything + "; copied "),
      on(
          "ConstructCopy", Meets::Memory, [](Scene& s) { s.copied.emplace(s.manager); },
          {everything}, everything + "; copied " + everything),
      on(
          "Assign", Meets::Memory, [](Scene& s) { s.other = s.manager; }, {everything},
          everything + "; the other " + everything),
      on(
          "Assign_Itself", Meets::Nothing,
          [](Scene& s) {
            const FoundationManager& itself = s.manager;
            s.manager = itself;
          },
          {}, everything),
      on(
          "Assign_Empty", Meets::Nothing, [](Scene& s) { s.other = FoundationManager(); }, {},
          everything + "; the other "),
      makeOperation<Scene>(
          "Destroy", Meets::Nothing,
          [](Scene& s) {
            s.copied.emplace();
            s.copied->add(s.spare);
          },
          [](Scene& s) { s.copied.reset(); }, {}, everything + "; deleted 5"),
      on(
          "Reset", Meets::Nothing, [](Scene& s) { s.manager.reset(); }, {},
          rest + "; deleted 0 1 2"),
      makeOperation<Scene>(
          "Reset_Empty", Meets::Nothing, [](Scene& s) { s.copied.emplace(); },
          [](Scene& s) { s.copied->reset(); }, {}, everything + "; copied "),
  };
}

Operations additions() {
  return {
      on(
          "Add", Meets::Memory, [](Scene& s) { s.manager.add(s.spare); }, {everything},
          listText + ", 4 Spare" + restText),
      makeOperation<Scene>(
          "Add_TheFirst", Meets::Memory, [](Scene& s) { s.copied.emplace(); },
          [](Scene& s) {
            s.copied->add(s.spare);
            s.result = tell(s.copied->getFoundations().front());
            s.copied->remove(s.spare, false, false);
          },
          {everything + "; copied "}, everything + "; copied ; gives 4"),
      on(
          "Add_Null", Meets::Memory,
          [](Scene& s) { s.manager.add(static_cast<Foundation*>(nullptr)); }, {everything},
          listText + ", null" + restText),
      on(
          "AddOwned", Meets::Memory,
          [](Scene& s) { s.manager.add(std::make_unique<Foundation>()); }, {everything},
          listText + ", -1 " + restText),
      on(
          "AddOwned_WithValues", Meets::Both,
          [](Scene& s) { s.manager.add(std::make_unique<Foundation>(*s.beam)); }, {everything},
          listText + ", -1 " + longName + " [line (0, 0, 2)]" + restText),
      on(
          "AddOwned_Null", Meets::Memory,
          [](Scene& s) { s.manager.add(std::unique_ptr<Foundation>()); }, {everything},
          listText + ", null" + restText),
  };
}

Operations lookUps() {
  return {
      look(
          "FindByValues", Meets::Calls,
          [](Scene& s) { s.result = tell(s.manager.findFoundation(*s.beam)); }, "9"),
      look(
          "FindByValues_WhereThereAreNone", Meets::Calls,
          [](Scene& s) { s.result = tell(s.manager.findFoundation(Foundation())); }, "-1"),
      look(
          "FindByName", Meets::Nothing,
          [](Scene& s) { s.result = tell(s.manager.findFoundation(longName)); }, "9"),
      look(
          "FindByName_WhereThereIsNone", Meets::Nothing,
          [](Scene& s) { s.result = tell(s.manager.findFoundation(std::string())); }, "-1"),
      look(
          "FindByNumber", Meets::Nothing,
          [](Scene& s) { s.result = tell(s.manager.findFoundation(5)); }, "5"),
      look(
          "GetCurrent", Meets::Nothing,
          [](Scene& s) { s.result = tell(s.manager.getCurrentFoundation()); }, "9"),
      look(
          "GetFoundations", Meets::Nothing,
          [](Scene& s) { s.result = static_cast<double>(s.manager.getFoundations().size()); }, "4"),
      look(
          "GetRemoved", Meets::Nothing,
          [](Scene& s) { s.result = tell(s.manager.getRemovedFoundations().front()); }, "7"),
      on(
          "SetCurrent", Meets::Nothing, [](Scene& s) { s.manager.setCurrentFoundation(s.slab); },
          {}, listText + "; current 5; removed 7 Old; maximum 1.5; users uv"),
  };
}

Operations removals() {
  const std::string withoutBeam = slabText + ", null, " + plainText;
  const std::string notCurrent = "; removed 7 Old; maximum 1.5; users uv";
  const std::string alsoRemoved = "; removed 7 Old, 9 " + longName + " [line (0, 0, 2)]";
  const auto remove = [](bool deleting, bool keeping) {
    return [=](Scene& s) { s.manager.remove(s.beam, deleting, keeping); };
  };
  const std::string kept = withoutBeam + alsoRemoved + "; maximum 1.5; users uv";
  return {
      on("Remove", Meets::Nothing, remove(false, false), {}, withoutBeam + notCurrent),
      on("Remove_Deleting", Meets::Nothing, remove(true, false), {},
         withoutBeam + notCurrent + "; deleted 1"),
      on("Remove_Keeping", Meets::Memory, remove(false, true), {everything}, kept),
      on("Remove_KeepingWinsOverDeleting", Meets::Memory, remove(true, true), {everything}, kept),
      on(
          "Remove_KeepingWhatIsNotListed", Meets::Memory,
          [](Scene& s) { s.manager.remove(s.spare, false, true); }, {everything},
          listText + "; current 9; removed 7 Old, 4 Spare; maximum 1.5; users uv"),
      on(
          "Remove_DeletingWhatIsNotListed", Meets::Nothing,
          [](Scene& s) { s.manager.remove(s.spare, true, false); }, {}, everything + "; deleted 5"),
      on(
          "Remove_KeepingNull", Meets::Memory,
          [](Scene& s) { s.manager.remove(nullptr, false, true); }, {everything},
          slabText + ", " + beamText + ", " + plainText +
              "; current 9; removed 7 Old, null; maximum 1.5; users uv"),
      on(
          "Redo", Meets::Memory, [](Scene& s) { s.manager.redo(s.old); }, {everything},
          listText + ", 7 Old; current 9; maximum 1.5; users uv"),
      on(
          "Redo_WhatIsNotRemoved", Meets::Nothing, [](Scene& s) { s.manager.redo(s.slab); }, {},
          everything),
      on(
          "Redo_Null", Meets::Nothing, [](Scene& s) { s.manager.redo(nullptr); }, {}, everything),
  };
}

Operations maxima() {
  const auto with = [](const std::string& maximum) {
    return listText + "; current 9; removed 7 Old" + maximum + "; users uv";
  };
  return {
      look(
          "GetMaximum", Meets::Nothing,
          [](Scene& s) { s.result = s.manager.getMaxFoundationValue(); }, "1.5"),
      on(
          "SetMaximum", Meets::Nothing, [](Scene& s) { s.manager.setMaxFoundationValue(-8.0); }, {},
          with("; maximum -8")),
      on(
          "UpdateMaximum", Meets::Calls, [](Scene& s) { s.manager.updateFoundationMaximum(); },
          {with(""), with("; maximum 5")}, with("; maximum 5")),
  };
}

INSTANTIATE_TEST_SUITE_P(LifeTime, EveryFault, testing::ValuesIn(lifeTimes()), getName);
INSTANTIATE_TEST_SUITE_P(Addition, EveryFault, testing::ValuesIn(additions()), getName);
INSTANTIATE_TEST_SUITE_P(LookUp, EveryFault, testing::ValuesIn(lookUps()), getName);
INSTANTIATE_TEST_SUITE_P(Removal, EveryFault, testing::ValuesIn(removals()), getName);
INSTANTIATE_TEST_SUITE_P(Maximum, EveryFault, testing::ValuesIn(maxima()), getName);

}  // namespace
}  // namespace FaultTest
