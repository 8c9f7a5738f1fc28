#include <fstream>
#include <sstream>

#include "faults/documents.h"
#include "faults/every_fault.h"
#include "faults/limited_buffer.h"
#include "faults/scenes.h"

namespace FaultTest {
namespace {

const Lines document = {
    "SMOD",
    " OTHER",
    " FOUNDATIONS CURRENT=B",
    "  FOUND NUMBER=30 NAME=A_name_for_which_a_string_needs_memory FXAREA=1 FXLINE=2 FXX=3 "
    "FAILZAREA=1 FAILXLINE=-1 FAILYLINE=1 FAILZLINE=-1 FACAREA=2 FACLINE=3",
    "  OTHER",
    "  FOUND NAME=B IsGenerated=1",
    "  FOUND"};

const std::string a =
    "30 A_name_for_which_a_string_needs_memory [area (1, 0, 0), line (2, 0, 0), rotation (3, 0, "
    "0), fails area z 1, fails line x -1, fails line y 1, fails line z -1, factor area 2, factor "
    "line 3] changed";
const std::string b = "31 B [area (0, 0, 0), generated] changed";
const std::string c = "32 Found0032 [area (0, 0, 0)] changed";
const std::string rest = "; removed 7 Old; maximum 1.5; users uv; deleted 0 1 2";

/// Nothing is lost before the reader starts; then whole foundations come one by one.
const States reading = {everything, rest, a + rest, a + ", " + b + rest,
                        a + ", " + b + ", " + c + rest};
const std::string read = a + ", " + b + ", " + c + "; current 31" + rest;

/// A manager and a document to read.
struct ReadingScene : ManagerScene {
  std::string describe() {
    std::string state = ManagerScene::describe();
    if (tree == nullptr) return state;
    const std::string now = FaultTest::describe(*tree);
    if (before.empty()) before = now;
    return now == before ? state : state + "; and the document is " + now;
  }

  std::unique_ptr<KvXmlTree> tree;
  std::string before;
};

Operation create(const std::string& name, Meets meets, const Lines& lines, const States& failed,
                 const std::string& completed) {
  return makeOperation<ReadingScene>(
      name, meets, [lines](ReadingScene& s) { s.tree = makeTree(lines); },
      [](ReadingScene& s) { s.manager.createFromXml(s.tree->getCurrent()); }, failed, completed);
}

Operations creations() {
  return {
      create("CreateFromXml", Meets::Both, document, reading, read),
      create("CreateFromXml_WithoutFoundations", Meets::Both, {"SMOD", " FOUNDATIONS CURRENT=B"},
             {everything, rest}, rest),
      create("CreateFromXml_WithoutTheirElement", Meets::Calls, {"SMOD", " OTHER"}, {everything},
             rest),
      create("CreateFromXml_WithAnUnknownCurrent", Meets::Both,
             {"SMOD", " FOUNDATIONS CURRENT=Unknown", "  FOUND NAME=B"},
             {everything, rest, "1 B [area (0, 0, 0)] changed" + rest},
             "1 B [area (0, 0, 0)] changed" + rest),
      makeOperation<ReadingScene>(
          "CreateFromXml_OfNull", Meets::Nothing, nullptr,
          [](ReadingScene& s) { s.manager.createFromXml(nullptr); }, {}, rest),
  };
}

Operation readFile(const std::string& name, Meets meets, const std::string& text,
                   const States& failed, const std::string& completed) {
  return makeOperation<FileScene>(
      name, meets, [=](FileScene& s) { s.store(name, text); }, [](FileScene& s) { s.read(); },
      failed, completed);
}

Operations readings() {
  return {
      readFile("ReadXml", Meets::Both, makeFileText(document), reading, read + "; gives 1"),
      readFile("ReadXml_WithoutARoot", Meets::Both, "<?xml?>\n", {everything}, rest + "; gives 1"),
      readFile("ReadXml_OfAnotherRoot", Meets::Both, makeFileText({"OTHER", " FOUNDATIONS"}),
               {everything}, rest + "; gives 1"),
      readFile("ReadXml_OfWhatIsNoXml", Meets::Memory, "SMOD\n", {everything},
               everything + "; gives 0"),
      makeOperation<FileScene>(
          "ReadXml_OfNoFile", Meets::Both, [](FileScene& s) { s.path = "no such folder/file"; },
          [](FileScene& s) { s.read(); }, {everything}, everything + "; gives 0"),
  };
}

/// A manager with one foundation of everything, which must stay as it is, and a tree.
struct WritingScene {
  WritingScene() {
    auto made = std::make_unique<Foundation>();
    fill(*made);
    made->setName(spaceless);
    made->setChanged(false);
    manager.add(std::move(made));
    manager.add(static_cast<Foundation*>(nullptr));
    manager.setCurrentFoundation(manager.getFoundations().front());
  }

  std::string describe() {
    std::string state = FaultTest::describe(*tree);
    const std::string now = FaultTest::describe(*manager.getFoundations().front());
    if (before.empty()) before = now;
    if (now != before) state += "; and the manager holds " + now;
    return state;
  }

  FoundationManager manager;
  std::string before;
  std::unique_ptr<KvXmlTree> tree;
  KvXmlData* start = nullptr;
};

/// The cursor is set by the host each time: a fault leaves it where it stood then.
Operation update(const std::string& name, Meets meets, const Lines& lines, bool cursor,
                 const States& failed) {
  return makeOperation<WritingScene>(
      name, meets,
      [=](WritingScene& s) {
        s.tree = makeTree(lines, cursor);
        s.start = s.tree->getCurrent();
      },
      [](WritingScene& s) {
        s.tree->setCurrent(s.start);
        s.manager.updateXml(s.tree.get());
      },
      failed, failed.back().text);
}

const std::vector<std::string> attributes = {
    " NUMBER=12",   " NAME=" + spaceless, " FXAREA=1",     " FYAREA=2",
    " FZAREA=3",    " FXLINE=4",          " FYLINE=5",     " FZLINE=6",
    " FXX=7",       " FAILZAREA=-1",      " FAILXLINE=1",  " FAILYLINE=-1",
    " FAILZLINE=7", " FACAREA=0.5",       " FACLINE=0.25", " IsGenerated=1"};

States join(States first, const States& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

Operations updates() {
  const std::string current = " CURRENT=" + spaceless;
  // What a line becomes when the attributes behind so many are added to its start.
  const auto add = [](const std::string& start, std::ptrdiff_t present = 0) {
    std::vector<std::string> parts = {start};
    parts.insert(parts.end(), attributes.begin() + present, attributes.end());
    return parts;
  };
  const std::string other = "  FOUND NUMBER=3|";
  const std::string head = "SMOD| FOUNDATIONS" + current + "|" + other;
  const std::vector<std::string> changed =
      add("  FOUND NUMBER=12 NAME=" + spaceless + " FXAREA=1", 3);
  return {
      update("UpdateXml_CreatingElements", Meets::Both, {"SMOD"}, true,
             growLines("SMOD|", {{" FOUNDATIONS", current}, add("  FOUND")})),
      update("UpdateXml_ChangingElements", Meets::Both,
             {"SMOD", " FOUNDATIONS CURRENT=C", "  FOUND NUMBER=3",
              "  FOUND NUMBER=12 NAME=Other FXAREA=9", "  OTHER"},
             true,
             join({"SMOD| FOUNDATIONS CURRENT=C|" + other +
                       "  FOUND NUMBER=12 NAME=Other FXAREA=9|  OTHER|",
                   head + "  FOUND NUMBER=12 NAME=Other FXAREA=9|  OTHER|",
                   head + "  FOUND NUMBER=12 NAME=" + spaceless + " FXAREA=9|  OTHER|"},
                  growLine(head, changed, "  OTHER|"))),
      update("UpdateXml_WithFoundationsAsTheRoot", Meets::Both, {"FOUNDATIONS"}, false,
             join({"FOUNDATIONS|"}, growLines("FOUNDATIONS" + current + "|", {add(" FOUND")}))),
      update("UpdateXml_WithoutACursorUnderAnotherRoot", Meets::Calls, {"OTHER"}, false,
             {"OTHER|"}),
      makeOperation<WritingScene>(
          "UpdateXml_OfNoFoundations", Meets::Both,
          [](WritingScene& s) { s.tree = makeTree({"SMOD"}); },
          [](WritingScene& s) { FoundationManager().updateXml(s.tree.get()); },
          {"SMOD|", "SMOD| FOUNDATIONS|"}, "SMOD| FOUNDATIONS|"),
      makeOperation<WritingScene>(
          "UpdateXml_OfNull", Meets::Nothing, [](WritingScene& s) { s.tree = makeTree({"SMOD"}); },
          [](WritingScene& s) { s.manager.updateXml(nullptr); }, {}, "SMOD|"),
  };
}

/// Prints to a stream that has the room in advance.
struct PrintingScene : WritingScene {
  PrintingScene() {
    static_cast<std::ostream&>(out).rdbuf(&buffer);
    tree = makeTree({"SMOD"});
  }

  std::string describe() {
    if (!buffer.get().empty()) {
      std::istringstream in(buffer.get());
      tree = std::make_unique<KvXmlTree>(in);
    }
    return WritingScene::describe();
  }

  std::ofstream out;
  LimitedBuffer buffer{4096};
};

Operations printings() {
  const std::string head = "SMOD| FOUNDATIONS CURRENT=" + spaceless + "|";
  std::string found = "  FOUND";
  for (const std::string& attribute : attributes) found += attribute;
  return {
      makeOperation<PrintingScene>(
          "WriteXml", Meets::Both, nullptr, [](PrintingScene& s) { s.manager.writeXml(s.out); },
          {"SMOD|"}, head + found + "|"),
      makeOperation<PrintingScene>(
          "WriteXml_OfNoFoundations", Meets::Both, nullptr,
          [](PrintingScene& s) { FoundationManager().writeXml(s.out); }, {"SMOD|"},
          "SMOD| FOUNDATIONS|"),
  };
}

INSTANTIATE_TEST_SUITE_P(Creation, EveryFault, testing::ValuesIn(creations()), getName);
INSTANTIATE_TEST_SUITE_P(Reading, EveryFault, testing::ValuesIn(readings()), getName);
INSTANTIATE_TEST_SUITE_P(Update, EveryFault, testing::ValuesIn(updates()), getName);
INSTANTIATE_TEST_SUITE_P(Printing, EveryFault, testing::ValuesIn(printings()), getName);

}  // namespace
}  // namespace FaultTest
