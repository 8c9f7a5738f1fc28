#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "exchange/documents.h"
#include "found/bedding_reader.h"
#include "support/manager_state.h"
#include "support/random.h"

using Found::Foundation;
using Found::FoundationManager;
using Found::Umo::BeddingReader;
using Found::Umo::ReadMessenger;

// The reader against a description of it that walks through the manager's list for every question
// and remembers nothing, on random documents that are rich in clashes, while a random host changes
// the manager from inside the messages.

namespace ExchangeTest {
namespace {

using TestSupport::describeState;
using TestSupport::makeFoundation;
using TestSupport::Random;

// --- Reading, step by step

bool nameExists(const FoundationManager& manager, const std::string& name) {
  for (const Foundation* foundation : manager.getFoundations())
    if (foundation != nullptr && foundation->getName() == name) return true;
  return false;
}

bool numberExists(const FoundationManager& manager, int number) {
  for (const Foundation* foundation : manager.getFoundations())
    if (foundation != nullptr && foundation->getNumber() == number) return true;
  return false;
}

Foundation::Failure readFailure(const KvXmlN::Data& element, const std::string& key) {
  const KvXmlN::AttributeData* const attribute = element.findAttribute(key);
  if (attribute == nullptr) return Foundation::None;
  if (attribute->getData() == "tension") return Foundation::Tension;
  if (attribute->getData() == "compression") return Foundation::Compression;
  return Foundation::None;
}

std::optional<int> readNumber(const KvXmlN::Data& element) {
  const KvXmlN::AttributeData* const attribute = element.findAttribute("Number");
  if (attribute == nullptr) return std::nullopt;
  try {
    return std::stoi(attribute->getData());
  } catch (const std::logic_error&) {
    return std::nullopt;
  }
}

KvVector3D readVector(const KvXmlN::Data& element, const std::string& keyWithoutDirection) {
  KvVector3D v;
  v.x = element.getAttributeDouble(keyWithoutDirection + "X");
  v.y = element.getAttributeDouble(keyWithoutDirection + "Y");
  v.z = element.getAttributeDouble(keyWithoutDirection + "Z");
  return v;
}

class PlainReading {
 public:
  PlainReading(FoundationManager& target, const Tools::VersionText& asked, ReadMessenger& told)
      : manager(target), version(asked), messenger(told) {}

  void read(const KvXmlN::Data& container) {
    std::size_t count = 0;
    for (const KvXmlN::Data* child : container.getChildren()) {
      std::unique_ptr<Foundation> made;
      if (version.isEqualTo("1.0") && child->getName() == "Bedding")
        made = readBedding(*child, static_cast<int>(count));
      else if (child->getName() == "CurveBedding")
        made = readNumbered(*child, &PlainReading::readCurvePart);
      else if (child->getName() == "SurfaceBedding")
        made = readNumbered(*child, &PlainReading::readSurfacePart);
      else
        messenger.onUnknownElement(child->getName());
      if (made == nullptr) continue;
      manager.add(std::move(made));
      ++count;
    }
    messenger.onReadFinished(count);
  }

 private:
  using Part = void (*)(const KvXmlN::Data& element, Foundation& foundation);

  std::unique_ptr<Foundation> readBedding(const KvXmlN::Data& element, int index) {
    const auto name = KvXmlN::AttributeIn::readString(element, "Name");
    if (!name) {
      messenger.onMissingBeddingName();
      return nullptr;
    }
    if (name->empty()) {
      messenger.onEmptyBeddingName(*name);
      return nullptr;
    }
    auto made = std::make_unique<Foundation>();
    made->setName(nameExists(manager, *name) ? makeUniqueName(*name) : *name);
    made->setNumber(index + 1);
    const KvVector3D area = readVector(element, "SurfaceStiffness");
    const KvVector3D line = readVector(element, "CurveStiffness");
    const KvVector3D rotation(element.getAttributeDouble("CurveStiffnessXX"), 0.0, 0.0);
    made->setDispArea(&area);
    made->setFailAreaZ(readFailure(element, "SurfaceStiffnessZFailure"));
    made->setFactorArea(element.getAttributeDouble("TangentialSurfaceStiffnessXYFactor"));
    made->setDispLine(&line);
    made->setRotLine(&rotation);
    made->setFailLineY(readFailure(element, "CurveStiffnessYFailure"));
    made->setFailLineZ(readFailure(element, "CurveStiffnessZFailure"));
    made->setFactorLine(element.getAttributeDouble("TangentialCurveStiffnessX"));
    return made;
  }

  std::unique_ptr<Foundation> readNumbered(const KvXmlN::Data& element, Part readPart) {
    const std::optional<int> number = readNumber(element);
    if (!number) {
      messenger.onMissingNumber(element.getName());
      return nullptr;
    }
    if (*number < 1 || numberExists(manager, *number)) {
      messenger.onInvalidNumber(element.getName(), *number);
      return nullptr;
    }
    const auto name = KvXmlN::AttributeIn::readString(element, "Name");
    if (!name) {
      messenger.onMissingName(*number);
      return nullptr;
    }
    if (name->empty()) {
      messenger.onEmptyName(*number, *name);
      return nullptr;
    }
    auto made = std::make_unique<Foundation>();
    made->setNumber(*number);
    made->setName(nameExists(manager, *name) ? makeUniqueName(*name) : *name);
    readPart(element, *made);
    return made;
  }

  static void readCurvePart(const KvXmlN::Data& element, Foundation& foundation) {
    const KvVector3D line = readVector(element, "Stiffness");
    const KvVector3D rotation(element.getAttributeDouble("StiffnessXX"), 0.0, 0.0);
    foundation.setDispLine(&line);
    foundation.setRotLine(&rotation);
    foundation.setFailLineY(readFailure(element, "StiffnessYFailure"));
    foundation.setFailLineZ(readFailure(element, "StiffnessZFailure"));
    foundation.setFactorLine(element.getAttributeDouble("TangentialStiffnessXFactor"));
  }

  static void readSurfacePart(const KvXmlN::Data& element, Foundation& foundation) {
    const KvVector3D area = readVector(element, "Stiffness");
    foundation.setDispArea(&area);
    foundation.setFailAreaZ(readFailure(element, "StiffnessZFailure"));
    foundation.setFactorArea(element.getAttributeDouble("TangentialStiffnessXYFactor"));
  }

  std::string makeUniqueName(const std::string& wanted) {
    std::string candidate = wanted;
    for (int counter = 1; nameExists(manager, candidate); ++counter)
      candidate = wanted + "_" + std::to_string(counter);
    messenger.onNameChanged(wanted, candidate);
    return candidate;
  }

  FoundationManager& manager;
  const Tools::VersionText& version;
  ReadMessenger& messenger;
};

// --- Random documents

/// Nothing for an attribute that is to be absent.
using Text = std::optional<std::string>;

/// How rich in clashes a document is: from how many numbers and names it draws.
struct Variety {
  explicit Variety(Random& random) {
    numbers = random.pick(std::vector<int>{5, 30, 100, 1000});
    names = random.pick(std::vector<std::size_t>{1, 3, 10, 40, 300});
    faults = random.pick(std::vector<std::size_t>{2, 3, 12, 1000});
  }
  int numbers;
  std::size_t names;
  std::size_t faults;  // one element in so many has a fault
};

std::string drawName(Random& random, const Variety& variety) {
  // Names that are suffixed forms of each other, one that no std::string holds in itself, and
  // plain ones.
  static const std::string names[] = {"A",
                                      "A_1",
                                      "B",
                                      "A_1_1",
                                      "A_2",
                                      "A_3",
                                      "B_2",
                                      "a",
                                      "Found0001",
                                      "A_01",
                                      "a rather long name of a bedding",
                                      "a rather long name of a bedding_1"};
  const std::size_t place = random.below(variety.names);
  return place < std::size(names) ? names[place] : "N" + std::to_string(place);
}

int drawNumber(Random& random, const Variety& variety) {
  return random.between(1, variety.numbers);
}

void append(std::string& element, const std::string& key, const Text& text) {
  if (text) element += " " + key + "='" + *text + "'";
}

Text drawNameText(Random& random, const Variety& variety) {
  if (!random.oneIn(variety.faults)) return drawName(random, variety);
  if (random.oneIn(2)) return std::nullopt;
  return "";
}

Text drawNumberText(Random& random, const Variety& variety) {
  const int number = drawNumber(random, variety);
  if (!random.oneIn(variety.faults)) return std::to_string(number);
  if (random.oneIn(8)) return std::nullopt;
  static const std::string texts[] = {
      "7.9", "x", "0",   "-3",  "",           "+4",  " 5",          "6 7",          "0x9",
      "+",   "-", "--2", "+-2", "&#9;&#10;8", "007", "99999999999", "-99999999999", "2147483647"};
  return random.pick(texts);
}

void appendValues(std::string& element, Random& random) {
  static const std::string doubleKeys[] = {"StiffnessX",
                                           "StiffnessY",
                                           "StiffnessZ",
                                           "StiffnessXX",
                                           "TangentialStiffnessXFactor",
                                           "TangentialStiffnessXYFactor",
                                           "SurfaceStiffnessX",
                                           "SurfaceStiffnessZ",
                                           "CurveStiffnessY",
                                           "CurveStiffnessXX",
                                           "TangentialSurfaceStiffnessXYFactor",
                                           "TangentialCurveStiffnessX"};
  static const std::string failureKeys[] = {"StiffnessYFailure", "StiffnessZFailure",
                                            "SurfaceStiffnessZFailure", "CurveStiffnessYFailure",
                                            "CurveStiffnessZFailure"};
  static const std::string doubles[] = {"1", "-2.5", "0", "1e3", "x", ""};
  static const std::string failures[] = {"tension", "none",     "compression", "Tension",
                                         "",        "tension ", "-1"};
  for (const std::string& key : doubleKeys)
    if (random.oneIn(8)) append(element, key, random.pick(doubles));
  for (const std::string& key : failureKeys)
    if (random.oneIn(8)) append(element, key, random.pick(failures));
}

/// `recent`: the numbers drawn before. One of the last is drawn again more often than by chance.
Text drawNumberText(Random& random, const Variety& variety, std::vector<Text>& recent) {
  if (!recent.empty() && random.oneIn(5)) {
    const std::size_t back = random.below(std::min(recent.size(), std::size_t{4}));
    return recent[recent.size() - 1 - back];
  }
  recent.push_back(drawNumberText(random, variety));
  return recent.back();
}

std::string drawElement(Random& random, const Variety& variety, std::vector<Text>& recentNumbers) {
  static const std::string unknown[] = {"Other", "bedding", "CurveBeddings"};
  static const std::string known[] = {"CurveBedding", "SurfaceBedding", "Bedding", "CurveBedding"};
  const bool isUnknown = random.oneIn(3 * variety.faults);
  std::string element = "<" + (isUnknown ? random.pick(unknown) : random.pick(known));
  append(element, "Number", drawNumberText(random, variety, recentNumbers));
  append(element, "Name", drawNameText(random, variety));
  appendValues(element, random);
  return element + "/>\n";
}

std::string drawDocument(Random& random, const Variety& variety) {
  const std::size_t longest = random.pick(std::vector<std::size_t>{4, 20, 80});
  std::string elements;
  std::vector<Text> recentNumbers;
  for (std::size_t left = random.below(longest + 1); left > 0; --left)
    elements += drawElement(random, variety, recentNumbers);
  return makeDocument(elements);
}

// --- A host that changes its manager

/// What it does is told by random choices and by places in the manager's lists, never by pointers:
/// two hosts that make the same choices do the same as long as their managers are alike.
///
/// A foundation is on the live list, on the removed list or with the host, in one place only, so
/// that each is deleted once.
class Host {
 public:
  Host(const Variety& variety, const std::string& versionText)
      : version(versionText), drawnFrom(variety) {}
  ~Host() {
    for (const Foundation* foundation : manager.getRemovedFoundations()) delete foundation;
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  void fill(Random& random) {
    for (std::size_t left = random.below(12); left > 0; --left) addNew(random);
    for (std::size_t left = random.below(4); left > 0; --left) act(random);
  }

  void act(Random& random) {
    using Action = void (Host::*)(Random&);
    // The more often an action stands here, the likelier it is.
    static constexpr Action actions[] = {
        &Host::addNew,          &Host::addNew,     &Host::addNull,   &Host::addAgain,
        &Host::takeOut,         &Host::takeOut,    &Host::deleteOne, &Host::deleteOne,
        &Host::replaceOne,      &Host::replaceOne, &Host::putAside,  &Host::bringBack,
        &Host::rename,          &Host::rename,     &Host::renumber,  &Host::renumber,
        &Host::exchangeNames,   &Host::moveToEnd,  &Host::giveEqual, &Host::giveNamed,
        &Host::choose,          &Host::prune,      &Host::empty,     &Host::changeVersion,
        &Host::renameElsewhere, &Host::addMany,
    };
    (this->*random.pick(actions))(random);
  }

  /// Adds one that stays until dismissGuest(); nothing else may be done in between.
  void addGuest(Random& random) {
    addNew(random);
    guest = list().back();
  }

  void dismissGuest() {
    if (guest != nullptr) takeOut(guest);
    guest = nullptr;
  }

  FoundationManager manager;
  Tools::VersionText version;

 private:
  const std::vector<Foundation*>& list() const { return manager.getFoundations(); }

  Foundation* drawListed(Random& random) const {
    if (list().empty()) return nullptr;
    // Mostly one of the last: what the last element read became, what an action before it added
    // and, less often, what this reading added.
    const std::size_t furthest = list().size() - 1;
    const std::size_t places[] = {0, 1, random.below(4), random.below(list().size())};
    return list()[furthest - std::min(random.pick(places), furthest)];
  }

  void addNew(Random& random) {
    const int number = random.oneIn(10) ? -1 : drawNumber(random, drawnFrom);
    const std::string name = random.oneIn(10) ? "" : drawName(random, drawnFrom);
    manager.add(makeFoundation(random, number, name));
  }

  void addMany(Random& random) {
    for (std::size_t left = random.below(40); left > 0; --left) addNew(random);
  }

  void addNull(Random& /*random*/) { manager.add(nullptr); }

  void addAgain(Random& random) {
    if (own.empty()) return;
    const std::size_t place = random.below(own.size());
    manager.add(std::move(own[place]));
    own.erase(own.begin() + static_cast<std::ptrdiff_t>(place));
  }

  void takeOut(Random& random) { takeOut(drawListed(random)); }

  void takeOut(Foundation* foundation) {
    if (list().empty()) return;
    manager.remove(foundation, false, false);
    own.emplace_back(foundation);
  }

  void deleteOne(Random& random) { manager.remove(drawListed(random), true, false); }

  /// The new one may well lie where the old one lay.
  void replaceOne(Random& random) {
    deleteOne(random);
    addNew(random);
  }

  void putAside(Random& random) {
    const bool deletes = random.oneIn(2);
    if (!list().empty()) manager.remove(drawListed(random), deletes, true);
  }

  void bringBack(Random& random) {
    if (!manager.getRemovedFoundations().empty())
      manager.redo(random.pick(manager.getRemovedFoundations()));
  }

  void rename(Random& random) {
    const std::string name = drawName(random, drawnFrom);
    if (Foundation* const foundation = drawListed(random)) foundation->setName(name);
  }

  void renumber(Random& random) {
    const int number = drawNumber(random, drawnFrom);
    if (Foundation* const foundation = drawListed(random)) foundation->setNumber(number);
  }

  void exchangeNames(Random& random) {
    Foundation* const a = drawListed(random);
    Foundation* const b = drawListed(random);
    if (a == nullptr || b == nullptr) return;
    const std::string name = a->getName();
    a->setName(b->getName());
    b->setName(name);
  }

  void moveToEnd(Random& random) {
    if (list().empty()) return;
    Foundation* const foundation = drawListed(random);
    manager.remove(foundation, false, false);
    manager.add(foundation);
  }

  void giveEqual(Random& random) {
    const std::string name = random.oneIn(2) ? "" : drawName(random, drawnFrom);
    const auto wanted = makeFoundation(random, -1, name);
    manager.giveFoundation(*wanted, random.oneIn(2));
  }

  void giveNamed(Random& random) { manager.giveFoundation(drawName(random, drawnFrom)); }

  void choose(Random& random) {
    manager.setCurrentFoundation(random.oneIn(4) ? nullptr : drawListed(random));
  }

  /// Also renumbers what is left.
  void prune(Random& random) {
    const std::vector<Foundation*> before = list();
    const bool takesAll = random.oneIn(3);
    for (Foundation* foundation : before)
      if (foundation != nullptr && (takesAll || foundation->isGenerated()))
        own.emplace_back(foundation);
    if (takesAll)
      manager.removeAllNotUsed();  // nobody uses any
    else
      manager.removeAllGenerated();
  }

  void empty(Random& random) {
    if (!random.oneIn(3)) return;
    manager.setCurrentFoundation(nullptr);  // otherwise it would point to one that was deleted
    manager.reset();
  }

  void changeVersion(Random& random) {
    version = Tools::VersionText(random.oneIn(2) ? "1.0" : currentVersion);
  }

  void renameElsewhere(Random& random) {
    const std::string name = drawName(random, drawnFrom);
    if (manager.getRemovedFoundations().empty()) return;
    if (Foundation* const removed = random.pick(manager.getRemovedFoundations()))
      removed->setName(name);
  }

  Variety drawnFrom;
  std::vector<std::unique_ptr<Foundation>> own;
  Foundation* guest = nullptr;
};

struct Interruption : std::runtime_error {
  Interruption() : std::runtime_error("interrupted") {}
};

/// What the messenger of a case does besides recording.
struct Behaviour {
  enum { Listens, Lends, Acts } kind = Listens;  // lends: only adds for a while, see addGuest()
  bool throws = false;
};

/// One of the two that are compared: a host, and a messenger that acts for it.
class Side {
 public:
  Side(unsigned seed, const Behaviour& behaviour, const Variety& variety,
       const std::string& version)
      : host(variety, version),
        messenger([this, behaviour](const std::string& /*message*/) {
          if (behaviour.kind != Behaviour::Listens) act();
          if (++messages == throwingMessage) throw Interruption();
        }),
        random(seed),
        pause(random.pick(pauses)),
        liveliness(behaviour.kind == Behaviour::Lends ? 1 : random.pick(livelinesses)),
        throwingMessage(behaviour.throws ? 1 + random.below(30) : 0) {
    host.fill(random);
  }
  Side(const Side&) = delete;
  Side& operator=(const Side&) = delete;

  /// Notes an interruption behind the last message.
  template <class Call>
  void run(const Call& read) {
    try {
      read();
    } catch (const Interruption& interruption) {
      messenger.messages.push_back(interruption.what());
    }
  }

  void act() {
    // What was added at a message and went at the next must not be remembered either: between
    // them, an element may have been read.
    host.dismissGuest();
    if (!random.oneIn(pause)) return;
    for (std::size_t left = random.below(liveliness); left > 0; --left) host.act(random);
    if (random.oneIn(liveliness == 1 ? 2 : 6)) host.addGuest(random);
  }

  Host host;
  ActingMessenger messenger;

 private:
  static constexpr std::size_t pauses[] = {1, 2, 6};
  static constexpr std::size_t livelinesses[] = {2, 5};

  Random random;
  std::size_t pause;            // acts at one message in so many
  std::size_t liveliness;       // then does less than so much
  std::size_t throwingMessage;  // counted from 1
  std::size_t messages = 0;
};

/// Reads one or two documents, and lets the host act in between.
void compareReadings(unsigned seed, const Behaviour& behaviour, bool isSilent) {
  Random random(seed);
  const Variety variety(random);
  const std::string version = random.oneIn(2) ? "1.0" : currentVersion;
  Side real(seed, behaviour, variety, version);
  Side plain(seed, behaviour, variety, version);
  BeddingReader reader(real.host.manager, real.host.version);
  if (!isSilent) reader.setMessenger(&real.messenger);

  for (std::size_t left = 1 + random.below(2); left > 0; --left) {
    const std::string text = drawDocument(random, variety);
    const std::unique_ptr<KvXmlN::Document> document = parse(text);

    real.run([&] { reader.read(document->getRoot()); });
    plain.run([&] {
      PlainReading(plain.host.manager, plain.host.version, plain.messenger)
          .read(document->getRoot());
    });

    if (isSilent) plain.messenger.messages.clear();
    EXPECT_EQ(real.messenger.messages, plain.messenger.messages) << text;
    EXPECT_EQ(describeState(real.host.manager), describeState(plain.host.manager)) << text;
    if (testing::Test::HasFailure()) return;
    real.act();
    plain.act();
  }
}

void compareManyReadings(unsigned firstSeed, unsigned cases, const Behaviour& behaviour,
                         bool isSilent = false) {
  for (unsigned seed = firstSeed; seed < firstSeed + cases; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    compareReadings(seed, behaviour, isSilent);
    if (testing::Test::HasFailure()) return;  // one document is enough to look at
  }
}

TEST(ReadingAsDescribed, InSilence) {
  compareManyReadings(10000, 500, {Behaviour::Listens, false}, true);
}

TEST(ReadingAsDescribed, ToAMessengerThatOnlyListens) {
  compareManyReadings(20000, 500, {Behaviour::Listens, false});
}

TEST(ReadingAsDescribed, ToAMessengerThatChangesTheManager) {
  compareManyReadings(30000, 1500, {Behaviour::Acts, false});
}

TEST(ReadingAsDescribed, ToAMessengerThatAddsForAWhile) {
  compareManyReadings(35000, 1000, {Behaviour::Lends, false});
}

TEST(ReadingAsDescribed, ToAMessengerThatThrows) {
  compareManyReadings(40000, 500, {Behaviour::Listens, true});
}

TEST(ReadingAsDescribed, ToAMessengerThatChangesTheManagerAndThrows) {
  compareManyReadings(50000, 500, {Behaviour::Acts, true});
}

}  // namespace
}  // namespace ExchangeTest
