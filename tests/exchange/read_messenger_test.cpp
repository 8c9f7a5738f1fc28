#include "found/read_messenger.h"

#include <stdexcept>
#include <type_traits>

#include "exchange/documents.h"
#include "found/bedding_reader.h"

using Found::Foundation;
using Found::FoundationManager;
using Found::Umo::BeddingReader;
using Found::Umo::ReadMessenger;

namespace ExchangeTest {
namespace {

TEST(ReadMessenger, IsAnAbstractClassToDeriveFrom) {
  EXPECT_TRUE(std::is_abstract_v<ReadMessenger>);
  EXPECT_TRUE(std::has_virtual_destructor_v<ReadMessenger>);
  EXPECT_EQ(sizeof(ReadMessenger), sizeof(void*));
}

TEST(ReadMessenger, CopiesNothingOfItsOwn) {
  RecordingMessenger first;
  first.onMissingName(3);
  RecordingMessenger second(first);
  RecordingMessenger third;
  third = first;

  first.onMissingName(4);

  EXPECT_EQ(first.messages, (Messages{"onMissingName 3", "onMissingName 4"}));
  EXPECT_EQ(second.messages, (Messages{"onMissingName 3"}));
  EXPECT_EQ(third.messages, (Messages{"onMissingName 3"}));
}

TEST(ReadMessenger, IsDestroyedThroughItsBase) {
  struct Ending : RecordingMessenger {
    explicit Ending(bool& flag) : ended(flag) {}
    ~Ending() override { ended = true; }
    bool& ended;
  };
  bool ended = false;

  std::unique_ptr<ReadMessenger>(new Ending(ended)).reset();

  EXPECT_TRUE(ended);
}

/// A document with one element for each message.
const std::string allMessages = makeDocument(
    "<Bedding Name='A'/><Other/><Bedding/><Bedding Name=''/><CurveBedding/>"
    "<SurfaceBedding Number='0'/><CurveBedding Number='8'/><CurveBedding Number='8' Name=''/>"
    "<SurfaceBedding Number='8' Name='A'/>");

struct HostError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What the manager holds after the messenger has thrown at this message.
std::string readUntilThrown(const std::string& name) {
  FoundationManager manager;
  ActingMessenger messenger([&](const std::string& message) {
    if (message.substr(0, message.find(' ')) == name) throw HostError(message);
  });
  try {
    readText(manager, allMessages, "1.0", &messenger);
    ADD_FAILURE() << name << " is not sent";
  } catch (const HostError& error) {
    EXPECT_EQ(error.what(), messenger.messages.back());
  }
  return describe(manager);
}

TEST(BeddingMessage, ComesOnceForEachElement) {
  FoundationManager manager;
  RecordingMessenger messenger;

  readText(manager, allMessages, "1.0", &messenger);

  EXPECT_EQ(messenger.messages,
            (Messages{"onUnknownElement <Other>", "onMissingBeddingName", "onEmptyBeddingName <>",
                      "onMissingNumber <CurveBedding>", "onInvalidNumber <SurfaceBedding> 0",
                      "onMissingName 8", "onEmptyName 8 <>", "onNameChanged <A> <A_1>",
                      "onReadFinished 2"}));
  EXPECT_EQ(describe(manager), "1 A, 8 A_1");
}

TEST(BeddingMessage, ThatThrowsEndsTheReadingAndKeepsWhatWasAdded) {
  for (const char* name : {"onUnknownElement", "onMissingBeddingName", "onEmptyBeddingName",
                           "onMissingNumber", "onInvalidNumber", "onMissingName", "onEmptyName"})
    EXPECT_EQ(readUntilThrown(name), "1 A") << name;
}

TEST(BeddingMessage, ThatThrowsAtANewNameKeepsTheElementOut) {
  EXPECT_EQ(readUntilThrown("onNameChanged"), "1 A");
}

TEST(BeddingMessage, ThatThrowsAtTheEndKeepsAllThatWasAdded) {
  EXPECT_EQ(readUntilThrown("onReadFinished"), "1 A, 8 A_1");
}

TEST(BeddingMessage, ThatThrewDoesNotHinderTheNextReading) {
  const auto document = parse(makeDocument("<Bedding Name='A'/><Other/><Bedding Name='B'/>"));
  const Tools::VersionText version("1.0");
  FoundationManager manager;
  BeddingReader reader(manager, version);
  ActingMessenger throwing([](const std::string& message) { throw HostError(message); });
  reader.setMessenger(&throwing);
  EXPECT_THROW(reader.read(document->getRoot()), HostError);

  RecordingMessenger messenger;
  reader.setMessenger(&messenger);
  reader.read(document->getRoot());

  EXPECT_EQ(describe(manager), "1 A, 1 A_1, 2 B");
  EXPECT_EQ(messenger.messages,
            (Messages{"onNameChanged <A> <A_1>", "onUnknownElement <Other>", "onReadFinished 2"}));
}

TEST(BeddingMessage, MayAddToTheManagerAndIsNotCounted) {
  FoundationManager manager;
  ActingMessenger messenger([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") addFoundation(manager, 3, "A");
  });

  readText(manager,
           makeDocument("<Bedding Name='Z'/><Other/><CurveBedding Number='3' Name='B'/><Bedding "
                        "Name='A'/>"),
           "1.0", &messenger);

  EXPECT_EQ(describe(manager), "1 Z, 3 A, 2 A_1");
  EXPECT_EQ(messenger.messages,
            (Messages{"onUnknownElement <Other>", "onInvalidNumber <CurveBedding> 3",
                      "onNameChanged <A> <A_1>", "onReadFinished 2"}));
}

TEST(BeddingMessage, MayEmptyTheManagerAndTheCountGoesOn) {
  FoundationManager manager;
  ActingMessenger messenger([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") manager.reset();
  });

  readText(manager, makeDocument("<Bedding Name='A'/><Other/><Bedding Name='A'/>"), "1.0",
           &messenger);

  EXPECT_EQ(describe(manager), "2 A");
  EXPECT_EQ(messenger.messages, (Messages{"onUnknownElement <Other>", "onReadFinished 2"}));
}

TEST(BeddingMessage, OfANewNameHoldsWhateverTheHostDoesWithTheManager) {
  FoundationManager manager;
  addFoundation(manager, 9, "A");
  ActingMessenger messenger([&](const std::string& message) {
    if (message == "onNameChanged <A> <A_1>") manager.reset();
  });

  readText(manager,
           makeDocument("<CurveBedding Number='1' Name='A'/><CurveBedding Number='9' Name='A'/>"),
           currentVersion, &messenger);

  EXPECT_EQ(describe(manager), "1 A_1, 9 A");
  EXPECT_EQ(messenger.messages, (Messages{"onNameChanged <A> <A_1>", "onReadFinished 2"}));
}

TEST(BeddingMessage, MayRenameAFoundationOfTheManager) {
  FoundationManager manager;
  Foundation& old = addFoundation(manager, 9, "A");
  ActingMessenger messenger([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") old.setName("B");
  });

  readText(manager, makeDocument("<Other/><CurveBedding Number='1' Name='A'/>"), currentVersion,
           &messenger);

  EXPECT_EQ(describe(manager), "9 B, 1 A");
  EXPECT_EQ(messenger.messages, (Messages{"onUnknownElement <Other>", "onReadFinished 1"}));
}

TEST(BeddingMessage, MayFreeTheSuffixThatWasJustGiven) {
  FoundationManager manager;
  ActingMessenger messenger([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") manager.getFoundations().back()->setName("B");
  });

  readText(manager,
           makeDocument("<CurveBedding Number='1' Name='A'/><CurveBedding Number='2' Name='A'/>"
                        "<Other/><CurveBedding Number='3' Name='A'/>"),
           currentVersion, &messenger);

  EXPECT_EQ(describe(manager), "1 A, 2 B, 3 A_1");
  EXPECT_EQ(messenger.messages, (Messages{"onNameChanged <A> <A_1>", "onUnknownElement <Other>",
                                          "onNameChanged <A> <A_1>", "onReadFinished 3"}));
}

TEST(BeddingMessage, MayPutAFoundationBackInThePlaceOfTheOneThatWasRead) {
  FoundationManager manager;
  Foundation& old = addFoundation(manager, 9, "A");
  bool isTakenOut = false;
  ActingMessenger messenger([&](const std::string& message) {
    if (!isTakenOut) manager.remove(&old, false, false);
    isTakenOut = true;
    if (message != "onUnknownElement <Other>") return;
    manager.reset();
    manager.add(&old);
  });

  readText(manager,
           makeDocument("<CurveBedding Number='1' Name='A'/><Other/><CurveBedding Number='2' "
                        "Name='A'/>"),
           currentVersion, &messenger);

  EXPECT_EQ(messenger.messages, (Messages{"onNameChanged <A> <A_1>", "onUnknownElement <Other>",
                                          "onNameChanged <A> <A_1>", "onReadFinished 2"}));
}

TEST(BeddingMessage, MayChangeTheVersionForTheElementsThatFollow) {
  const auto document = parse(makeDocument("<Bedding Name='A'/><Other/><Bedding Name='B'/>"));
  Tools::VersionText version("1.0");
  FoundationManager manager;
  ActingMessenger messenger([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") version = Tools::VersionText(currentVersion);
  });
  BeddingReader reader(manager, version);
  reader.setMessenger(&messenger);

  reader.read(document->getRoot());

  EXPECT_EQ(describe(manager), "1 A");
  EXPECT_EQ(messenger.messages, (Messages{"onUnknownElement <Other>", "onUnknownElement <Bedding>",
                                          "onReadFinished 1"}));
}

TEST(BeddingMessage, MayPutAnotherMessengerInThePlaceOfOneThatEnds) {
  const auto document = parse(makeDocument("<First/><Second/><Third/>"));
  const Tools::VersionText version(currentVersion);
  FoundationManager manager;
  BeddingReader reader(manager, version);
  RecordingMessenger second;
  struct Leaving : RecordingMessenger {
    Leaving(BeddingReader& itsReader, ReadMessenger& itsSuccessor)
        : reader(itsReader), successor(itsSuccessor) {}
    void receive(const std::string& /*message*/) override {
      reader.setMessenger(&successor);
      delete this;
    }
    BeddingReader& reader;
    ReadMessenger& successor;
  };
  reader.setMessenger(new Leaving(reader, second));

  reader.read(document->getRoot());

  EXPECT_EQ(second.messages, (Messages{"onUnknownElement <Second>", "onUnknownElement <Third>",
                                       "onReadFinished 0"}));
}

TEST(BeddingMessage, MaySwitchMessagesOff) {
  const auto document = parse(makeDocument("<First/><Second/><CurveBedding Number='1' Name='A'/>"));
  const Tools::VersionText version(currentVersion);
  FoundationManager manager;
  BeddingReader reader(manager, version);
  ActingMessenger messenger([&](const std::string& /*message*/) { reader.setMessenger(nullptr); });
  reader.setMessenger(&messenger);

  reader.read(document->getRoot());

  EXPECT_EQ(messenger.messages, (Messages{"onUnknownElement <First>"}));
  EXPECT_EQ(describe(manager), "1 A");
}

TEST(BeddingMessage, MayReadAnotherContainer) {
  const auto document = parse(makeDocument("<Bedding Name='A'/><Other/><Bedding Name='B'/>"));
  const auto inner = parse(makeDocument("<Bedding Name='A'/><Bedding Name='C'/>"));
  const Tools::VersionText version("1.0");
  FoundationManager manager;
  BeddingReader reader(manager, version);
  ActingMessenger messenger([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") reader.read(inner->getRoot());
  });
  reader.setMessenger(&messenger);

  reader.read(document->getRoot());

  EXPECT_EQ(describe(manager), "1 A, 1 A_1, 2 C, 2 B");
  EXPECT_EQ(messenger.messages, (Messages{"onUnknownElement <Other>", "onNameChanged <A> <A_1>",
                                          "onReadFinished 2", "onReadFinished 2"}));
}

}  // namespace
}  // namespace ExchangeTest
