#include <set>

#include "faults/documents.h"
#include "faults/every_fault.h"
#include "faults/scenes.h"
#include "found/kvml_writer.h"
#include "kv/text.h"
#include "support/foundations.h"

namespace FaultTest {
namespace {

using Found::KvmlWriter;

/// Foundations that must stay as they are, and an element to write to.
struct Scene {
  Scene() : parent(std::make_unique<Container>(Lines{"Box"})) {
    for (Foundation* foundation : {&first, &second}) {
      TestSupport::setDispArea(*foundation, 1.5, 2.5, 3.5);
      TestSupport::setDispLine(*foundation, 4.5, 5.5, 6.5);
      TestSupport::setRotLine(*foundation, 7.5, 0.0, 0.0);
      foundation->setFailAreaZ(Foundation::Tension);
      foundation->setFailLineY(Foundation::Compression);
      foundation->setFailLineZ(Foundation::Compression);
      foundation->setFactorArea(0.25);
      foundation->setFactorLine(0.75);
    }
    first.setNumber(1);
    first.setName("A");
    second.setNumber(2);
    second.setName(spaceless);
    before = describeFoundations();
  }

  void write(const std::set<Foundation*>& areas, const std::set<Foundation*>& beams) {
    KvmlWriter().write(parent->get(), areas, beams);
  }

  std::string describeFoundations() {
    return FaultTest::describe(first) + FaultTest::describe(second) + FaultTest::describe(bare);
  }

  std::string describe() {
    const std::string now = describeFoundations();
    return FaultTest::describe(parent->get()) + (now != before ? now : "");
  }

  std::unique_ptr<Container> parent;
  Foundation first;
  Foundation second;
  Foundation bare;
  std::string before;
};

Operation write(const std::string& name, Meets meets, const std::function<void(Scene&)>& run,
                const std::vector<std::vector<std::string>>& lines) {
  const States states = growLines("Box|", lines);
  return makeOperation<Scene>(name, meets, nullptr, run, states, states.back().text);
}

Operations writings() {
  const std::string failsInZ = " Failure=" + KvText::Load(7472);
  const std::string failsInBoth = " Failure=" + KvText::Load(7477);
  const auto area = [&](const std::string& number, const std::string& name) {
    return std::vector<std::string>{"  BeddingArea", number,     name,     " ksx=1.5",
                                    " ksy=2.5",      " ksz=3.5", failsInZ, " Tangential=0.25"};
  };
  const auto beam = [&](const std::string& number, const std::string& name) {
    return std::vector<std::string>{"  BeddingBeam", number,      name,
                                    " ksx=4.5",      " ksy=5.5",  " ksz=6.5",
                                    " ksxx=7.5",     failsInBoth, " Tangential=0.75"};
  };
  return {
      write("Write", Meets::Both,
            [](Scene& s) {
              s.write({&s.second, &s.bare, &s.first, nullptr}, {&s.bare, &s.second});
            },
            {{" Beddings"},
             area(" Number=1", " Name=A"),
             area(" Number=2", " Name=" + spaceless),
             beam(" Number=2", " Name=" + spaceless)}),
      write("Write_WithoutValues", Meets::Both, [](Scene& s) { s.write({&s.bare}, {&s.bare}); },
            {{" Beddings"}}),
      write("Write_OfNothing", Meets::Memory, [](Scene& s) { s.write({}, {}); }, {}),
  };
}

INSTANTIATE_TEST_SUITE_P(Kvml, EveryFault, testing::ValuesIn(writings()), getName);

}  // namespace
}  // namespace FaultTest
