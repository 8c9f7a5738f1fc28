#include "faults/every_fault.h"
#include "faults/scenes.h"

namespace FaultTest {
namespace {

using Scene = ManagerScene;
using Run = std::function<void(Scene&)>;

Operation on(const std::string& name, Meets meets, const Run& run, const std::string& completed) {
  return makeOperation<Scene>(name, meets, nullptr, run, {everything}, completed);
}

/// Users answer by calls of the host, which meet every fault too.
Operations users() {
  const auto with = [](const std::string& asked) {
    return listText + "; current 9; removed 7 Old; maximum 1.5" + asked;
  };
  return {
      on(
          "AddUser", Meets::Memory, [](Scene& s) { s.manager.addUser(&s.v); }, with("; users uvv")),
      on(
          "AddUser_Null", Meets::Memory, [](Scene& s) { s.manager.addUser(nullptr); }, everything),
      on(
          "RemoveUser", Meets::Nothing, [](Scene& s) { s.manager.removeUser(&s.u); },
          with("; users v")),
      on(
          "RemoveUser_WhoIsNotThere", Meets::Nothing,
          [](Scene& s) { s.manager.removeUser(nullptr); }, everything),
      on(
          "CheckUsed", Meets::Both,
          [](Scene& s) { s.result = s.manager.checkUsed(s.beam) ? 1.0 : 0.0; },
          everything + "; gives 1"),
      on(
          "CheckUsed_OfWhatIsNot", Meets::Both,
          [](Scene& s) { s.result = s.manager.checkUsed(s.slab) ? 1.0 : 0.0; },
          everything + "; gives 0"),
      on(
          "GetNumberOfUsed", Meets::Both,
          [](Scene& s) { s.result = static_cast<double>(s.manager.getNumberOfUsedFoundations()); },
          everything + "; gives 1"),
  };
}

/// A failed pruning leaves list, current foundation and numbers as they were.
Operations prunings() {
  const std::string first = "1 " + longName + " [line (0, 0, 2)], null; current 1";
  const std::string rest = "; removed 7 Old; maximum 1.5; users uv";
  const std::string restOfV = "; removed 7 Old; maximum 1.5; users v";
  const auto withoutUse = [](Scene& s) { s.u.used = nullptr; };
  return {
      on(
          "RemoveAllGenerated", Meets::Memory, [](Scene& s) { s.manager.removeAllGenerated(); },
          first + rest),
      on(
          "RemoveAllNotUsed", Meets::Both, [](Scene& s) { s.manager.removeAllNotUsed(); },
          beamText + ", null; current 9" + rest),
      makeOperation<Scene>(
          "RemoveAllNotUsed_TheCurrentToo", Meets::Both, withoutUse,
          [](Scene& s) { s.manager.removeAllNotUsed(); }, {everything}, "null" + rest),
      on(
          "RemoveAllNotUsedGenerated", Meets::Both,
          [](Scene& s) { s.manager.removeAllNotUsedGenerated(); }, first + rest),
      makeOperation<Scene>(
          "RemoveAllGenerated_TheCurrentToo", Meets::Memory,
          [](Scene& s) { s.beam->setGenerated(true); },
          [](Scene& s) { s.manager.removeAllGenerated(); },
          {slabText + ", 9 " + longName + " [line (0, 0, 2), generated], null, " + plainText +
           restText},
          "null" + rest),
      makeOperation<Scene>(
          "RemoveAllGenerated_WhereThereAreNone", Meets::Nothing,
          [](Scene& s) {
            s.slab->setGenerated(false);
            s.plain->setGenerated(false);
          },
          [](Scene& s) { s.manager.removeAllGenerated(); }, {},
          "1 Slab [area (3, 4, 0)], 2 " + longName + " [line (0, 0, 2)], null, 3 ; current 2" +
              rest),
      makeOperation<Scene>(
          "RemoveAllNotUsedGenerated_WhereAllAreUsed", Meets::Both,
          [](Scene& s) {
            s.manager.removeUser(&s.u);
            s.slab->setGenerated(false);
            s.v.used = s.plain;
          },
          [](Scene& s) { s.manager.removeAllNotUsedGenerated(); },
          {"5 Slab [area (3, 4, 0)], " + beamText + ", null, " + plainText + "; current 9" +
           restOfV},
          "1 Slab [area (3, 4, 0)], 2 " + longName +
              " [line (0, 0, 2)], null, 3  [generated]; current 2" + restOfV),
      makeOperation<Scene>(
          "RemoveAllNotUsed_WhereNobodyIsAsked", Meets::Memory,
          [](Scene& s) {
            s.manager.removeUser(&s.u);
            s.manager.removeUser(&s.v);
          },
          [](Scene& s) { s.manager.removeAllNotUsed(); },
          {listText + "; current 9; removed 7 Old; maximum 1.5"},
          "null; removed 7 Old; maximum 1.5"),
  };
}

INSTANTIATE_TEST_SUITE_P(User, EveryFault, testing::ValuesIn(users()), getName);
INSTANTIATE_TEST_SUITE_P(Pruning, EveryFault, testing::ValuesIn(prunings()), getName);

}  // namespace
}  // namespace FaultTest
