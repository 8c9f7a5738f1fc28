#include <filesystem>
#include <fstream>

#include "faults/documents.h"
#include "faults/every_fault.h"
#include "faults/scenes.h"
#include "found/bedding_writer.h"
#include "found/kvml_writer.h"
#include "recording_legacy.h"
#include "recording_newer.h"
#include "support/foundations.h"
#include "support/temporary_files.h"

namespace FaultTest {
namespace {

/// A manager with two foundations, and documents that do what only these libraries can do.
struct Scene {
  Scene() {
    for (const int number : {1, 2}) {
      Foundation& added = TestSupport::addFoundation(manager, number, "A");
      TestSupport::setDispArea(added, 1.0, 0.0, 0.0);
      added.setChanged(false);
    }
  }

  ~Scene() {
    if (!path.empty()) std::filesystem::remove(path);
  }

  std::string describe() const {
    return TestSupport::describe(manager) + "; " + FaultTest::describe(container) +
           (tree != nullptr ? FaultTest::describe(*tree) : "");
  }

  FoundationManager manager;
  Tools::VersionText version{"2.0"};
  KvXmlN::Data container{"Box"};
  std::unique_ptr<KvXmlTree> tree;
  std::string path;
};

void readByTheShortPath(Scene& s) {
  const Recording::ShortPathAnswer answer([&s](const std::string& /*longPath*/) { return s.path; });
  EXPECT_TRUE(s.manager.readXml("no such folder/file"));
}

void updateWithoutAnElement(Scene& s) {
  const Recording::OpenRefusal refusal("FOUNDATIONS");
  s.tree->setCurrent(s.tree->findRoot("SMOD", true));
  s.manager.updateXml(s.tree.get());
}

void writeWithoutTheFirst(Scene& s) {
  const Recording::ChildRefusal refusal(1);
  Found::Umo::BeddingWriter(s.manager, s.version).write(s.container);
}

void listWithoutTheFirst(Scene& s) {
  const Recording::ChildRefusal refusal(2);
  const std::vector<Foundation*>& all = s.manager.getFoundations();
  Found::KvmlWriter().write(s.container, {all.begin(), all.end()}, {});
}

Operations operations() {
  const std::string foundations = "1 A, 2 A; ";
  const auto states = [&](const States& containers) {
    States all;
    for (const State& container : containers) all.emplace_back(foundations + container.text);
    return all;
  };
  const States written = states(growLines(
      "Box|", {{" SurfaceBedding", " Number=2", " Name=A", " StiffnessX=1", " StiffnessY=0",
                " StiffnessZ=0", " StiffnessZFailure=none", " TangentialStiffnessXYFactor=0"}}));
  const States listed =
      states(growLines("Box|", {{" Beddings"},
                                {"  BeddingArea", " Number=2", " Name=A", " ksx=1", " ksy=0",
                                 " ksz=0", " Failure=text 7469", " Tangential=0"}}));
  return {
      makeOperation<Scene>(
          "ReadXml_ByTheShortPath", Meets::Calls,
          [](Scene& s) {
            s.path = testing::TempDir() + "kvfound_short_path.xml";
            TestSupport::store(s.path, makeFileText({"SMOD", " FOUNDATIONS", "  FOUND NAME=B"}));
          },
          readByTheShortPath, {foundations + "Box|", "; Box|", "1 B; Box|"}, "1 B; Box|"),
      makeOperation<Scene>(
          "UpdateXml_WithoutAnElement", Meets::Calls, [](Scene& s) { s.tree = makeTree({"SMOD"}); },
          updateWithoutAnElement, {foundations + "Box|SMOD|"}, foundations + "Box|SMOD|"),
      makeOperation<Scene>("WriteBeddings_WithoutTheFirst", Meets::Calls, nullptr,
                           writeWithoutTheFirst, written, written.back().text),
      makeOperation<Scene>("WriteKvml_WithoutTheFirst", Meets::Calls, nullptr, listWithoutTheFirst,
                           listed, listed.back().text),
  };
}

INSTANTIATE_TEST_SUITE_P(Recorded, EveryFault, testing::ValuesIn(operations()), getName);

}  // namespace
}  // namespace FaultTest
