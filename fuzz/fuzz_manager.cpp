#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "bytes.h"
#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "property.h"

// Operations of a manager, each done to a plain model as well and checked. An input is the
// operations. What the host must not do is left out: end a foundation twice or while it is listed
// elsewhere.

namespace {

using Found::Foundation;
using Found::FoundationManager;
using Found::FoundationUser;
using Fuzz::Bytes;
using Fuzz::require;

constexpr int largest = std::numeric_limits<int>::max();

/// The values that foundations have.
enum Kind { nothing, area, line, rotation, notANumber, tiny };

double lengthOf(Kind kind) {
  constexpr double lengths[] = {0.0, 5.0, 2.0, 3.0, 0.0, 1e-12};
  return lengths[kind];
}

bool areEqual(Kind a, Kind b) {
  if (a == notANumber || b == notANumber) return false;
  return a == b || (std::min(a, b) == nothing && std::max(a, b) == tiny);
}

void giveValues(Foundation& foundation, Kind kind) {
  const KvVector3D vectors[] = {{}, {3, 0, -4}, {0, 2, 0}, {0, 0, 3}, {}, {1e-12, 0, 0}};
  const KvVector3D& v = vectors[kind];
  if (kind == area || kind == tiny) foundation.setDispArea(&v);
  if (kind == line) foundation.setDispLine(&v);
  if (kind == rotation) foundation.setRotLine(&v);
  if (kind == notANumber) foundation.setFactorLine(std::nan(""));
}

/// What the model knows of a foundation.
struct Record {
  int number = -1;
  std::string name;
  Kind kind = nothing;
  bool generated = false;
};

/// Uses the foundations it was told to, and counts how often it is asked.
class User : public FoundationUser {
 public:
  std::set<const Foundation*> used;

  bool usesFoundation(const Foundation* foundation) override {
    require(foundation != nullptr, "users are asked about foundations");
    return used.count(foundation) > 0;
  }
};

using List = std::vector<Foundation*>;

void eraseFirst(List& list, Foundation* foundation) {
  const auto place = std::find(list.begin(), list.end(), foundation);
  if (place != list.end()) list.erase(place);
}

class Session {
 public:
  explicit Session(Bytes& input) : bytes(input) {}

  ~Session() {
    // The manager deletes what is live, so that is taken out first: some is listed twice.
    const List listed = manager.getFoundations();
    for (Foundation* foundation : listed) manager.remove(foundation, false, false);
    for (const auto& entry : records) delete entry.first;
  }

  void run() {
    constexpr int most = 150;
    for (int i = 0; i < most && !bytes.isEmpty(); ++i) {
      step();
      check();
    }
  }

 private:
  void step() {
    switch (bytes.below(24)) {
      case 0:
      case 1:
        return add();
      case 2:
        return addOwned();
      case 3:
        return addAgain();
      case 4:
        return setCurrent();
      case 5:
      case 6:
        return remove();
      case 7:
        return redo();
      case 8:
      case 9:
        return give();
      case 10:
        return giveNamed();
      case 11:
        return giveName();
      case 12:
        return addUser();
      case 13:
        return removeUser();
      case 14:
        return use();
      case 15:
        manager.removeAllGenerated();
        prune(true, false);
        return renumber();
      case 16:
        manager.removeAllNotUsed();
        return prune(false, true);
      case 17:
        manager.removeAllNotUsedGenerated();
        prune(true, true);
        return renumber();
      case 18:
        return updateMaximum();
      case 19:
        maximum = -1.5;
        return manager.setMaxFoundationValue(maximum);
      case 20:
        return reset();
      case 21:
        return copy();
      case 22:
        return change();
      default:
        return find();
    }
  }

  // --- Picking

  int pickNumber() {
    constexpr int numbers[] = {-1, 0, 1, 2, 3, 7, 9999, largest - 1, largest, -5, -largest - 1};
    return bytes.pick(numbers);
  }

  std::string pickName() {
    static const char* const names[] = {
        "",          "A",         "a",         "Found0001",  "Found0002",      "Found0003",
        "Found0007", "Found00-1", "Found0000", "Found10000", "Found2147483647"};
    return bytes.pick(names);
  }

  Record pickRecord() {
    Record record;
    record.number = pickNumber();
    record.name = pickName();
    record.kind = static_cast<Kind>(bytes.below(tiny + 1));
    record.generated = bytes.flip();
    return record;
  }

  static std::unique_ptr<Foundation> make(const Record& record) {
    auto made = std::make_unique<Foundation>();
    made->setNumber(record.number);
    made->setName(record.name);
    made->setGenerated(record.generated);
    giveValues(*made, record.kind);
    return made;
  }

  /// Any foundation there is, live or not, or null.
  Foundation* pickAny() {
    List all = {nullptr};
    for (Foundation* foundation : order) all.push_back(foundation);
    return all[bytes.take() % all.size()];
  }

  // --- The operations

  void note(Foundation* foundation, const Record& record) {
    records[foundation] = record;
    order.push_back(foundation);
  }

  void add() {
    if (bytes.below(8) == 7) {
      manager.add(nullptr);
      return live.push_back(nullptr);
    }
    const Record record = pickRecord();
    Foundation* const added = make(record).release();
    note(added, record);
    manager.add(added);
    live.push_back(added);
  }

  void addOwned() {
    const Record record = pickRecord();
    std::unique_ptr<Foundation> added = make(record);
    note(added.get(), record);
    live.push_back(added.get());
    manager.add(std::move(added));
  }

  void addAgain() {
    Foundation* const foundation = pickAny();
    manager.add(foundation);
    live.push_back(foundation);
  }

  void setCurrent() {
    current = pickAny();
    manager.setCurrentFoundation(current);
  }

  void remove() {
    Foundation* const foundation = pickAny();
    const bool isKept = bytes.flip();
    const bool isWanted = bytes.flip();
    const bool isElsewhere = std::count(live.begin(), live.end(), foundation) > 1 ||
                             std::count(removed.begin(), removed.end(), foundation) > 0;
    const bool isDeleted = isWanted && !isKept && !isElsewhere;
    manager.remove(foundation, isKept ? isWanted : isDeleted, isKept);
    eraseFirst(live, foundation);
    if (isKept) removed.push_back(foundation);
    if (current == foundation) current = nullptr;
    if (isDeleted) forget(foundation);
  }

  void forget(Foundation* foundation) {
    records.erase(foundation);
    eraseFirst(order, foundation);
    for (User& user : users) user.used.erase(foundation);
  }

  void redo() {
    Foundation* const foundation = pickAny();
    manager.redo(foundation);
    const auto place = std::find(removed.begin(), removed.end(), foundation);
    if (foundation == nullptr || place == removed.end()) return;
    removed.erase(place);
    live.push_back(foundation);
  }

  void give() {
    Record record = pickRecord();
    const bool findEqual = bytes.flip();
    Foundation* const given = manager.giveFoundation(*make(record), findEqual);
    if (findEqual)
      if (Foundation* const equal = findKind(record.kind))
        return require(given == equal, "the first equal one is given");
    record.number = followHighest();
    if (record.name.empty()) record.name = nextName(record.number);
    note(given, record);
    live.push_back(given);
  }

  void giveNamed() {
    Record record;
    record.name = pickName();
    Foundation* const given = manager.giveFoundation(record.name);
    if (Foundation* const named = findNamed(record.name))
      return require(given == named, "the first of the name is given", record.name);
    record.number = followHighest();
    note(given, record);
    live.push_back(given);
  }

  void giveName() {
    const int start = pickNumber();
    const std::string name = manager.giveNextFoundationName(start);
    require(name == nextName(start), "the next name is the first that is free", name);
  }

  void addUser() {
    User* const user = pickUser();
    manager.addUser(user);
    registered.push_back(user);
  }

  void removeUser() {
    User* const user = pickUser();
    manager.removeUser(user);
    const auto place = std::find(registered.begin(), registered.end(), user);
    if (place != registered.end()) registered.erase(place);
  }

  User* pickUser() {
    const std::size_t place = bytes.below(std::size(users) + 1);
    return place < std::size(users) ? &users[place] : nullptr;
  }

  void use() {
    Foundation* const foundation = pickAny();
    if (foundation != nullptr) users[bytes.below(std::size(users))].used.insert(foundation);
  }

  void prune(bool onlyGenerated, bool onlyUnused) {
    const List before = live;
    for (Foundation* foundation : before) {
      if (foundation == nullptr) continue;
      if (onlyGenerated && !records[foundation].generated) continue;
      if (onlyUnused && isUsed(foundation)) continue;
      eraseFirst(live, foundation);
      if (current == foundation) current = nullptr;
    }
  }

  void renumber() {
    int number = 0;
    for (Foundation* foundation : live)
      if (foundation != nullptr) records[foundation].number = ++number;
  }

  void updateMaximum() {
    manager.updateFoundationMaximum();
    maximum = 0.0;
    for (Foundation* foundation : live)
      if (foundation != nullptr) maximum = std::max(maximum, lengthOf(records[foundation].kind));
  }

  /// Only when nothing live is listed twice.
  void reset() {
    std::set<const Foundation*> listed;
    for (const List* list : {&live, &removed})
      for (const Foundation* foundation : *list)
        if (foundation != nullptr && !listed.insert(foundation).second) return;
    manager.reset();
    const List ended = live;
    live.clear();
    require(manager.getCurrentFoundation() == current, "the current one stays as it was set");
    for (Foundation* foundation : ended) {
      if (foundation == nullptr) continue;
      if (foundation == current) current = nullptr;
      forget(foundation);
    }
    manager.setCurrentFoundation(current);
  }

  /// A copy holds the same and is let go of.
  void copy() {
    FoundationManager copied(manager);
    if (bytes.flip()) copied = manager;
    require(copied.getFoundations() == live && copied.getRemovedFoundations() == removed,
            "a copy holds the same foundations");
    require(copied.getCurrentFoundation() == current, "a copy has the current one");
    require(copied.getMaxFoundationValue() == maximum, "a copy has the maximum");
    require(copied.getNumberOfUsedFoundations() == countUsed(), "a copy has the users");
    for (Foundation* foundation : live) copied.remove(foundation, false, false);
    require(copied.getFoundations().empty(), "all is taken out");
  }

  /// A host renames and renumbers.
  void change() {
    Foundation* const foundation = pickAny();
    if (foundation == nullptr) return;
    Record& record = records[foundation];
    record.number = pickNumber();
    record.name = pickName();
    foundation->setNumber(record.number);
    foundation->setName(record.name);
  }

  void find() {
    const Record record = pickRecord();
    require(manager.findFoundation(record.name) == findNamed(record.name), "names are found");
    require(manager.findFoundation(record.number) == findNumbered(record.number),
            "numbers are found");
    require(manager.findFoundation(*make(record)) == findKind(record.kind), "values are found");
    Foundation* const foundation = pickAny();
    if (foundation != nullptr)
      require(manager.checkUsed(foundation) == isUsed(foundation), "users are asked");
  }

  // --- The model

  template <class Test>
  Foundation* findFirst(const Test& test) {
    for (Foundation* foundation : live)
      if (foundation != nullptr && test(records[foundation])) return foundation;
    return nullptr;
  }

  Foundation* findNamed(const std::string& name) {
    return findFirst([&](const Record& record) { return record.name == name; });
  }

  Foundation* findNumbered(int number) {
    return findFirst([&](const Record& record) { return record.number == number; });
  }

  Foundation* findKind(Kind kind) {
    return findFirst([&](const Record& record) { return areEqual(record.kind, kind); });
  }

  long long findHighest(long long floor) {
    for (Foundation* foundation : live)
      if (foundation != nullptr) floor = std::max<long long>(floor, records[foundation].number);
    return floor;
  }

  int followHighest() { return static_cast<int>(std::min<long long>(findHighest(0) + 1, largest)); }

  std::string nextName(int start) {
    for (long long number = findHighest(start);; ++number) {
      char text[32];
      std::snprintf(text, sizeof text, "%4lld", number);
      std::string name = text;
      std::replace(name.begin(), name.end(), ' ', '0');
      name.insert(0, "Found");
      if (findNamed(name) == nullptr) return name;
    }
  }

  bool isUsed(const Foundation* foundation) const {
    return std::any_of(registered.begin(), registered.end(), [=](const User* user) {
      return user != nullptr && user->used.count(foundation) > 0;
    });
  }

  std::size_t countUsed() const {
    std::size_t count = 0;
    for (const Foundation* foundation : live)
      if (foundation != nullptr && isUsed(foundation)) ++count;
    return count;
  }

  void check() {
    require(manager.getFoundations() == live, "the live list is in order");
    require(manager.getRemovedFoundations() == removed, "the removed list is in order");
    require(manager.getCurrentFoundation() == current, "the current one is told");
    require(manager.getMaxFoundationValue() == maximum, "the maximum is told");
    require(manager.getNumberOfUsedFoundations() == countUsed(), "those in use are counted");
    for (const auto& [foundation, record] : records) {
      require(foundation->getNumber() == record.number, "a foundation has its number");
      require(foundation->getName() == record.name, "a foundation has its name", record.name);
      require(foundation->isGenerated() == record.generated, "a foundation is generated or not");
    }
  }

  Bytes& bytes;
  User users[3];
  FoundationManager manager;
  List live;
  List removed;
  Foundation* current = nullptr;
  double maximum = 0.0;
  std::vector<User*> registered;
  std::map<Foundation*, Record> records;
  List order;  // of all foundations there are, so that an input picks the same ones always
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  Session(bytes).run();
  return 0;
}
