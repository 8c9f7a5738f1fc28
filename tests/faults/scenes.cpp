#include "faults/scenes.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "faults/faults.h"
#include "support/foundations.h"
#include "support/temporary_files.h"

namespace FaultTest {
namespace {

std::string print(double value) {
  char buffer[32];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

bool holds(const std::vector<Foundation*>& list, const Foundation* foundation) {
  return std::find(list.begin(), list.end(), foundation) != list.end();
}

std::string describeList(const std::vector<Foundation*>& list) {
  std::string text;
  for (Foundation* foundation : list)
    text += (text.empty() ? "" : ", ") + (foundation != nullptr ? describe(*foundation) : "null");
  return text;
}

}  // namespace

void fill(Foundation& foundation) {
  foundation.setName(longName);
  foundation.setNumber(12);
  TestSupport::setDispArea(foundation, 1.0, 2.0, 3.0);
  TestSupport::setDispLine(foundation, 4.0, 5.0, 6.0);
  TestSupport::setRotLine(foundation, 7.0, 8.0, 9.0);
  foundation.setFailAreaZ(Foundation::Tension);
  foundation.setFailLineX(Foundation::Compression);
  foundation.setFailLineY(Foundation::Tension);
  foundation.setFailLineZ(static_cast<Foundation::Failure>(7));
  foundation.setFactorArea(0.5);
  foundation.setFactorLine(0.25);
  foundation.setFailPossible(true);
  foundation.setGenerated(true);
  foundation.setChanged(false);
}

std::string describe(Foundation& foundation) {
  std::string text = std::to_string(foundation.getNumber()) + " " + foundation.getName();
  const std::string values = TestSupport::describeValues(foundation);
  if (!values.empty()) text += " [" + values + "]";
  if (foundation.getChanged()) text += " changed";
  return text;
}

FoundationScene::FoundationScene() { fill(full); }

std::string FoundationScene::describe() {
  std::string text = FaultTest::describe(target);
  if (made) text += "; made " + FaultTest::describe(*made);
  if (result) text += "; gives " + print(*result);
  const std::string operand = FaultTest::describe(full);
  if (operand != filled) text += "; and the operand is " + operand;
  return text;
}

bool HostUser::usesFoundation(const Foundation* foundation) {
  callHost("usesFoundation");
  asked += name;
  return foundation != nullptr && foundation == used;
}

ManagerScene::ManagerScene() : u('u', asked), v('v', asked) {
  slab = make(5, "Slab");
  slab->setGenerated(true);
  TestSupport::setDispArea(*slab, 3.0, 4.0, 0.0);
  beam = make(9, longName);
  TestSupport::setDispLine(*beam, 0.0, 0.0, 2.0);
  plain = make(-1, "");
  plain->setGenerated(true);
  for (Foundation* foundation : {slab, beam, static_cast<Foundation*>(nullptr), plain}) {
    if (foundation != nullptr) foundation->setChanged(false);
    manager.add(foundation);
  }
  manager.setCurrentFoundation(beam);

  old = make(7, "Old");
  manager.remove(old, false, true);
  manager.setMaxFoundationValue(1.5);
  u.used = beam;
  manager.addUser(&u);
  manager.addUser(&v);

  other.add(make(1, "Other"));
  spare = make(4, "Spare");
  deletions.emplace(std::vector<const void*>(all.begin(), all.end()));
}

ManagerScene::~ManagerScene() {
  deleteWhatNobodyOwns();
  // What managers share stays with the first one.
  for (FoundationManager* sharing : {&other, copied ? &*copied : &other})
    for (Foundation* foundation : manager.getFoundations())
      sharing->remove(foundation, false, false);
}

Foundation* ManagerScene::make(int number, const std::string& name) {
  auto made = std::make_unique<Foundation>();
  made->setNumber(number);
  made->setName(name);
  all.push_back(made.get());
  return made.release();
}

void ManagerScene::deleteWhatNobodyOwns() {
  const std::vector<int> deleted = deletions->getReleased();
  deletions.reset();
  for (std::size_t i = 0; i < all.size(); ++i) {
    const bool isOwned =
        holds(manager.getFoundations(), all[i]) || holds(other.getFoundations(), all[i]);
    const bool isGone = std::count(deleted.begin(), deleted.end(), static_cast<int>(i)) > 0;
    if (!isOwned && !isGone) delete all[i];
  }
}

std::string ManagerScene::describeRest(const FoundationManager& described) {
  std::string state;
  if (Foundation* const current = described.getCurrentFoundation()) {
    const bool isLive = holds(described.getFoundations(), current);
    state += "; current " + (isLive ? std::to_string(current->getNumber()) : "not listed");
  }
  if (!described.getRemovedFoundations().empty())
    state += "; removed " + describeList(described.getRemovedFoundations());
  if (described.getMaxFoundationValue() != 0.0)
    state += "; maximum " + print(described.getMaxFoundationValue());
  asked.clear();
  described.checkUsed(&probe);
  if (!asked.empty()) state += "; users " + asked;
  return state;
}

std::string ManagerScene::describeManager(const FoundationManager& described) {
  return describeList(described.getFoundations()) + describeRest(described);
}

std::string ManagerScene::describe() {
  std::string state = describeManager(manager);
  if (const std::string second = describeManager(other); second != "1 Other")
    state += "; the other " + second;
  if (copied) state += "; copied " + describeManager(*copied);
  const std::vector<int> deleted = deletions->getReleased();
  if (!deleted.empty()) state += "; deleted";
  for (const int place : deleted) state += " " + std::to_string(place);
  if (result) state += "; gives " + print(*result);
  if (!text.empty()) state += "; gives " + text;
  return state;
}

FileScene::~FileScene() { std::filesystem::remove(path); }

void FileScene::store(const std::string& row, const std::string& content) {
  const std::string program = getKind() == Kind::Memory ? "memory" : "calls";
  path = testing::TempDir() + "kvfound_" + program + "_" + row + ".xml";
  TestSupport::store(path, content);
}

void FileScene::read() { result = manager.readXml(path) ? 1.0 : 0.0; }

}  // namespace FaultTest
