#include "faults/documents.h"
#include "faults/every_fault.h"
#include "faults/scenes.h"
#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/read_messenger.h"
#include "support/foundations.h"

namespace FaultTest {
namespace {

using Found::Umo::BeddingReader;
using Found::Umo::BeddingWriter;

/// A host that counts the messages, and may do something at each.
class HostMessenger : public Found::Umo::ReadMessenger {
 public:
  void onReadFinished(std::size_t) override { hear(); }
  void onUnknownElement(const std::string&) override { hear(); }
  void onMissingName(int) override { hear(); }
  void onMissingBeddingName() override { hear(); }
  void onEmptyName(int, const std::string&) override { hear(); }
  void onEmptyBeddingName(const std::string&) override { hear(); }
  void onMissingNumber(const std::string&) override { hear(); }
  void onInvalidNumber(const std::string&, int) override { hear(); }
  void onNameChanged(const std::string&, const std::string&) override { hear(); }

  int heard = 0;
  std::function<void()> act;

 private:
  void hear() {
    callHost("message");
    if (act) act();
    ++heard;
  }
};

/// A manager that holds "9 A", and a container to read.
struct ReadingScene {
  ReadingScene() { TestSupport::addFoundation(manager, 9, "A"); }

  void read() {
    BeddingReader reader(manager, version);
    reader.setMessenger(hasMessenger ? &messenger : nullptr);
    reader.read(container->get());
  }

  std::string describe() {
    std::string state;
    for (Foundation* foundation : manager.getFoundations())
      state += (state.empty() ? "" : ", ") + FaultTest::describe(*foundation);
    state += "; " + std::to_string(messenger.heard) + " messages";
    const std::string now = FaultTest::describe(container->get());
    if (before.empty()) before = now;
    return now == before ? state : state + "; and the container is " + now;
  }

  FoundationManager manager;
  Tools::VersionText version{"1.0"};
  std::unique_ptr<Container> container;
  std::string before;
  HostMessenger messenger;
  bool hasMessenger = true;
};

Operation read(const std::string& name, const std::string& version, const Lines& lines,
               const States& failed, const std::string& completed) {
  return makeOperation<ReadingScene>(
      name, Meets::Both,
      [=](ReadingScene& s) {
        s.version = Tools::VersionText(version);
        s.container = std::make_unique<Container>(lines);
      },
      [](ReadingScene& s) { s.read(); }, failed, completed);
}

const Lines bedding = {
    "Box",
    " Bedding Name=" + spaceless +
        " SurfaceStiffnessX=1 SurfaceStiffnessZFailure=tension "
        "TangentialSurfaceStiffnessXYFactor=2 CurveStiffnessX=3 CurveStiffnessXX=4 "
        "CurveStiffnessYFailure=compression CurveStiffnessZFailure=none "
        "TangentialCurveStiffnessX=5",
    " Bedding Name=A"};

const Lines numbered = {"Box",
                        " CurveBedding Number=7 Name=" + spaceless +
                            " StiffnessX=1 StiffnessXX=2 StiffnessYFailure=tension "
                            "StiffnessZFailure=tension TangentialStiffnessXFactor=3",
                        " SurfaceBedding Number=8 Name=A StiffnessX=1 StiffnessZFailure=tension "
                        "TangentialStiffnessXYFactor=2"};

const Lines refused = {"Box",
                       " Bedding",
                       " Bedding Name=",
                       " An_element_for_which_a_string_needs_memory",
                       " CurveBedding",
                       " SurfaceBedding Number=x",
                       " SurfaceBedding Number=0",
                       " CurveBedding Number=9",
                       " CurveBedding Number=1",
                       " SurfaceBedding Number=1 Name="};

/// "9 A" and so many messages.
States countMessages(int last) {
  States states;
  for (int n = 0; n <= last; ++n) states.emplace_back("9 A; " + std::to_string(n) + " messages");
  return states;
}

/// Enough elements for the reader to make tables of names and numbers.
constexpr int many = 24;

std::string describeMany(int count, int firstNumber = 9) {
  std::string text = std::to_string(firstNumber) + " A";
  for (int n = 1; n <= count; ++n) {
    const std::string suffix = n > 1 ? "_" + std::to_string(n - 1) : "";
    text += ", " + std::to_string(100 + n) + " " + spaceless + suffix + " [area (0, 0, 0)] changed";
  }
  return text;
}

Lines listMany() {
  Lines lines = {"Box"};
  for (int n = 1; n <= many; ++n)
    lines.push_back(" SurfaceBedding Number=" + std::to_string(100 + n) + " Name=" + spaceless);
  return lines;
}

Operations readings() {
  const std::string firstBedding =
      "9 A, 1 " + spaceless +
      " [area (1, 0, 0), line (3, 0, 0), rotation (4, 0, 0), fails area z -1, fails line y 1, "
      "factor area 2, factor line 5] changed";
  const std::string secondBedding =
      firstBedding + ", 2 A_1 [area (0, 0, 0), line (0, 0, 0), rotation (0, 0, 0)] changed";
  const std::string curve = "9 A, 7 " + spaceless +
                            " [line (1, 0, 0), rotation (2, 0, 0), fails line y -1, fails line z "
                            "-1, factor line 3] changed";
  const std::string surface =
      curve + ", 8 A_1 [area (1, 0, 0), fails area z -1, factor area 2] changed";
  const States readBeddings = {"9 A; 0 messages", firstBedding + "; 0 messages",
                               firstBedding + "; 1 messages", secondBedding + "; 1 messages"};
  const States readNumbered = {"9 A; 0 messages", curve + "; 0 messages", curve + "; 1 messages",
                               surface + "; 1 messages"};
  // Each element but the first is renamed, which is told before it is added.
  const auto takeMany = [](int step) {
    States states = {describeMany(0) + "; 0 messages"};
    for (int n = 1; n <= many; ++n)
      for (const int heard : {n - 1, n})
        states.emplace_back(describeMany(n, 9 + step * heard) + "; " + std::to_string(heard) +
                            " messages");
    return states;
  };
  const auto takeManyInSilence = [] {
    States states;
    for (int n = 0; n <= many; ++n) states.emplace_back(describeMany(n) + "; 0 messages");
    return states;
  };
  return {
      read("Read_Beddings", "1.0", bedding, readBeddings, secondBedding + "; 2 messages"),
      read("Read_CurveAndSurface", "2.0", numbered, readNumbered, surface + "; 2 messages"),
      read("Read_CurveAndSurfaceInVersion10", "1.0", numbered, readNumbered,
           surface + "; 2 messages"),
      read("Read_OfNothing", "2.0", {"Box"}, countMessages(0), "9 A; 1 messages"),
      read("Read_OfWhatIsRefused", "1.0", refused, countMessages(9), "9 A; 10 messages"),
      read("Read_OfOldBeddingsInTheNewVersion", "2.0", bedding, countMessages(2),
           "9 A; 3 messages"),
      read("Read_OfMany", "2.0", listMany(), takeMany(0),
           describeMany(many) + "; " + std::to_string(many) + " messages"),
      makeOperation<ReadingScene>(
          "Read_OfManyInSilence", Meets::Both,
          [](ReadingScene& s) {
            s.container = std::make_unique<Container>(listMany());
            s.hasMessenger = false;
          },
          [](ReadingScene& s) { s.read(); }, takeManyInSilence(),
          describeMany(many) + "; 0 messages"),
      makeOperation<ReadingScene>(
          "Read_OfManyWhileTheHostRenumbers", Meets::Both,
          [](ReadingScene& s) {
            s.version = Tools::VersionText("2.0");
            s.container = std::make_unique<Container>(listMany());
            s.messenger.act = [&manager = s.manager] {
              Foundation& first = *manager.getFoundations().front();
              first.setNumber(first.getNumber() + 1000);
            };
          },
          [](ReadingScene& s) { s.read(); }, takeMany(1000),
          describeMany(many, 9 + 1000 * many) + "; " + std::to_string(many) + " messages"),
  };
}

/// A manager that must stay as it is, and a container to write to.
struct WritingScene {
  WritingScene() : container(std::make_unique<Container>(Lines{"Box", " Other Name=x"})) {
    Foundation& full = TestSupport::addFoundation(manager, 12, spaceless);
    TestSupport::setDispArea(full, 1.0, 2.0, 3.0);
    TestSupport::setDispLine(full, 4.0, 5.0, 6.0);
    TestSupport::setRotLine(full, 7.0, 0.0, 0.0);
    full.setFailAreaZ(Foundation::Tension);
    full.setFailLineY(Foundation::Compression);
    full.setFailLineZ(static_cast<Foundation::Failure>(7));
    full.setFactorArea(0.5);
    full.setFactorLine(0.25);
    full.setChanged(false);
    manager.add(static_cast<Foundation*>(nullptr));
    TestSupport::addFoundation(manager, 13, "B");
  }

  void write() { BeddingWriter(manager, version).write(container->get()); }

  std::string describe() {
    std::string state = FaultTest::describe(container->get());
    const std::string now = describeManager();
    if (before.empty()) before = now;
    return now == before ? state : state + "; and the manager holds " + now;
  }

  std::string describeManager() const {
    std::string text;
    for (Foundation* foundation : manager.getFoundations())
      text += (foundation != nullptr ? FaultTest::describe(*foundation) : "null") + ", ";
    return text;
  }

  FoundationManager manager;
  Tools::VersionText version{"1.0"};
  std::unique_ptr<Container> container;
  std::string before;
};

Operation write(const std::string& name, const std::string& version,
                const std::vector<std::vector<std::string>>& lines) {
  const States states = growLines("Box| Other Name=x|", lines);
  return makeOperation<WritingScene>(
      name, Meets::Both, [=](WritingScene& s) { s.version = Tools::VersionText(version); },
      [](WritingScene& s) { s.write(); }, states, states.back().text);
}

Operations writings() {
  return {
      write("Write_Version10", "1.0",
            {{" Bedding", " Name=" + spaceless, " SurfaceStiffnessX=1", " SurfaceStiffnessY=2",
              " SurfaceStiffnessZ=3", " SurfaceStiffnessZFailure=tension",
              " TangentialSurfaceStiffnessXYFactor=0.5", " CurveStiffnessX=4", " CurveStiffnessY=5",
              " CurveStiffnessZ=6", " CurveStiffnessXX=7", " CurveStiffnessYFailure=compression",
              " CurveStiffnessZFailure=", " TangentialCurveStiffnessX=0.25"},
             {" Bedding", " Name=B", " SurfaceStiffnessZFailure=none",
              " TangentialSurfaceStiffnessXYFactor=0", " CurveStiffnessYFailure=none",
              " CurveStiffnessZFailure=none", " TangentialCurveStiffnessX=0"}}),
      write(
          "Write", "2.0",
          {{" CurveBedding", " Number=12", " Name=" + spaceless, " StiffnessX=4", " StiffnessY=5",
            " StiffnessZ=6", " StiffnessXX=7", " StiffnessYFailure=compression",
            " StiffnessZFailure=", " TangentialStiffnessXFactor=0.25"},
           {" SurfaceBedding", " Number=12", " Name=" + spaceless, " StiffnessX=1", " StiffnessY=2",
            " StiffnessZ=3", " StiffnessZFailure=tension", " TangentialStiffnessXYFactor=0.5"}}),
      makeOperation<WritingScene>(
          "Write_OfNoFoundations", Meets::Both, nullptr,
          [](WritingScene& s) {
            BeddingWriter(FoundationManager(), s.version).write(s.container->get());
          },
          {"Box| Other Name=x|"}, "Box| Other Name=x|"),
  };
}

INSTANTIATE_TEST_SUITE_P(BeddingReader, EveryFault, testing::ValuesIn(readings()), getName);
INSTANTIATE_TEST_SUITE_P(BeddingWriter, EveryFault, testing::ValuesIn(writings()), getName);

}  // namespace
}  // namespace FaultTest
