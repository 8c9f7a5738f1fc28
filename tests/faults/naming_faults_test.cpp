#include <limits>

#include "faults/manager_operation.h"

namespace FaultTest {
namespace {

using Scene = ManagerScene;

void give(Scene& s, const Foundation& foundation, bool findEqual) {
  s.result = s.manager.giveFoundation(foundation, findEqual)->getNumber();
}

Operations findOrCreate() {
  const auto created = [](const std::string& foundation) {
    return listText + ", " + foundation + restText + "; gives 10";
  };
  return {
      on(
          "GiveByValues_ThatAreThere", Meets::Calls, [](Scene& s) { give(s, *s.beam, true); },
          {everything}, everything + "; gives 9"),
      on(
          "GiveByValues_ThatAreNotLookedFor", Meets::Both,
          [](Scene& s) { give(s, *s.beam, false); }, {everything},
          created("10 " + longName + " [line (0, 0, 2)]")),
      on(
          "GiveByValues_ThatAreNew", Meets::Both,
          [](Scene& s) {
            const KvVector3D v(1.0, 2.0, 3.0);
            give(s, Foundation(v), true);
          },
          {everything}, created("10 Found0010 [area (1, 2, 3), line (1, 2, 3)]")),
      on(
          "GiveByValues_WithoutAny", Meets::Memory, [](Scene& s) { give(s, Foundation(), false); },
          {everything}, created("10 Found0010")),
      makeOperation<Scene>(
          "GiveByValues_TheFirstOfAll", Meets::Memory, [](Scene& s) { s.copied.emplace(); },
          [](Scene& s) {
            Foundation* const given = s.copied->giveFoundation(Foundation(), true);
            s.result = given->getNumber();
            s.copied->remove(given, true, false);
          },
          {everything + "; copied "}, everything + "; copied ; gives 1"),
      on(
          "GiveByName_ThatIsThere", Meets::Nothing,
          [](Scene& s) { s.result = s.manager.giveFoundation(longName)->getNumber(); }, {},
          everything + "; gives 9"),
      on(
          "GiveByName_ThatIsNew", Meets::Memory,
          [](Scene& s) {
            static const std::string name = longName + " and new";
            s.result = s.manager.giveFoundation(name)->getNumber();
          },
          {everything}, created("10 " + longName + " and new")),
      on(
          "GiveByName_ThatIsShort", Meets::Memory,
          [](Scene& s) { s.result = s.manager.giveFoundation("A")->getNumber(); }, {everything},
          created("10 A")),
  };
}

Operations nextNames() {
  const auto nameOf = [](int start) {
    return [start](Scene& s) { s.text = s.manager.giveNextFoundationName(start); };
  };
  const auto longestOf = [](Scene& s) {
    s.text = FoundationManager().giveNextFoundationName(std::numeric_limits<int>::min());
  };
  // Some standard libraries keep texts of this length within the string.
  const bool isInside = std::string().capacity() >= std::string("Found-2147483648").size();
  return {
      on("NextName", Meets::Nothing, nameOf(3), {}, everything + "; gives Found0009"),
      on("NextName_ThatIsLong", isInside ? Meets::Nothing : Meets::Memory, longestOf, {everything},
         everything + "; gives Found-2147483648"),
      makeOperation<Scene>(
          "NextName_BehindOneThatIsTaken", Meets::Nothing,
          [](Scene& s) { s.slab->setName("Found0009"); }, nameOf(3), {},
          "5 Found0009 [area (3, 4, 0), generated], " + beamText + ", null, " + plainText +
              restText + "; gives Found0010"),
  };
}

INSTANTIATE_TEST_SUITE_P(FindOrCreate, EveryFault, testing::ValuesIn(findOrCreate()), getName);
INSTANTIATE_TEST_SUITE_P(NextName, EveryFault, testing::ValuesIn(nextNames()), getName);

}  // namespace
}  // namespace FaultTest
