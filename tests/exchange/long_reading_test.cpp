#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "exchange/documents.h"

using Found::Foundation;
using Found::FoundationManager;

// Documents long enough that the reader need not walk through the manager for every name and
// number: what it remembers must never differ from what a walk would find.

namespace ExchangeTest {
namespace {

std::string makeCurve(int number, const std::string& name) {
  return "<CurveBedding Number='" + std::to_string(number) + "' Name='" + name + "'/>";
}

/// Elements numbered 1 to 60 and named F1 to F60.
std::string makeManyCurves() {
  std::string elements;
  for (int number = 1; number <= 60; ++number)
    elements += makeCurve(number, "F" + std::to_string(number));
  return elements;
}

/// Others, numbered 101 to 160.
std::string makeMoreCurves() {
  std::string elements;
  for (int number = 101; number <= 160; ++number)
    elements += makeCurve(number, "G" + std::to_string(number));
  return elements;
}

/// What the manager holds behind the first 60.
std::string describeRest(const FoundationManager& manager) {
  FoundationManager rest;
  const std::vector<Foundation*>& all = manager.getFoundations();
  for (std::size_t i = 60; i < all.size(); ++i)
    addFoundation(rest, all[i]->getNumber(), all[i]->getName());
  return describe(rest);
}

class LongReading : public ReadingTest {};

TEST_F(LongReading, RefusesEachNumberThatCameBefore) {
  std::string again;
  Messages expected;
  for (int number = 1; number <= 60; ++number) {
    again += makeCurve(number, "G");
    expected.push_back("onInvalidNumber <CurveBedding> " + std::to_string(number));
  }
  expected.push_back("onReadFinished 60");

  read(makeManyCurves() + again);

  EXPECT_EQ(describeRest(manager), "");
  EXPECT_EQ(messenger.messages, expected);
}

TEST_F(LongReading, RefusesNumbersThatCameBeforeInSilence) {
  std::string again;
  for (int number = 1; number <= 61; ++number) again += makeCurve(number, "G");

  readText(manager, makeDocument(makeManyCurves() + again), currentVersion);

  EXPECT_EQ(describeRest(manager), "61 G");
}

TEST_F(LongReading, RenamesEachNameThatCameBefore) {
  std::string again;
  Messages expected;
  for (int i = 1; i <= 60; ++i) {
    const std::string name = "F" + std::to_string(i);
    again += makeCurve(100 + i, name);
    expected.push_back("onNameChanged <" + name + "> <" + name + "_1>");
  }
  expected.push_back("onReadFinished 120");

  read(makeManyCurves() + again);

  EXPECT_EQ(messenger.messages, expected);
}

TEST_F(LongReading, GivesOneNameManySuffixesInSilence) {
  for (const char* name : {"A_3", "A_5"}) addFoundation(manager, 1000, name);
  std::string elements;
  for (int number = 1; number <= 100; ++number) elements += makeCurve(number, "A");

  readText(manager, makeDocument(elements), currentVersion);

  std::string expected = "1000 A_3, 1000 A_5, 1 A, 2 A_1, 3 A_2, 4 A_4";
  for (int number = 5; number <= 100; ++number)
    expected += ", " + std::to_string(number) + " A_" + std::to_string(number + 1);
  EXPECT_EQ(describe(manager), expected);
}

TEST_F(LongReading, GivesOneNameManySuffixesWithAMessageForEach) {
  std::string elements;
  std::string expectedNames = "1 A";
  Messages expected;
  for (int number = 1; number <= 100; ++number) {
    elements += makeCurve(number, "A");
    if (number == 1) continue;
    const std::string name = "A_" + std::to_string(number - 1);
    expectedNames += ", " + std::to_string(number) + " " + name;
    expected.push_back("onNameChanged <A> <" + name + ">");
  }
  expected.push_back("onReadFinished 100");

  read(elements);

  EXPECT_EQ(describe(manager), expectedNames);
  EXPECT_EQ(messenger.messages, expected);
}

TEST_F(LongReading, MixesSuffixesGivenAndSuffixesReadInSilence) {
  readText(manager,
           makeDocument(makeManyCurves() + makeCurve(61, "A") + makeCurve(62, "A_2") +
                        makeCurve(63, "A") + makeCurve(64, "A_1") + makeCurve(65, "A") +
                        makeCurve(66, "A_4") + makeCurve(67, "A") + makeCurve(68, "A_1")),
           currentVersion);

  EXPECT_EQ(describeRest(manager),
            "61 A, 62 A_2, 63 A_1, 64 A_1_1, 65 A_3, 66 A_4, 67 A_5, 68 A_1_2");
}

TEST_F(LongReading, KnowsWhatTheManagerHadBefore) {
  for (int number = 1; number <= 60; ++number)
    addFoundation(manager, number, "F" + std::to_string(number));
  manager.add(nullptr);
  std::string elements;
  for (int number = 101; number <= 140; ++number)
    elements += makeCurve(number, "G" + std::to_string(number));

  read(elements + makeCurve(60, "H") + makeCurve(141, "F60") + makeCurve(140, "H") +
       makeCurve(142, "G140"));

  EXPECT_EQ(messenger.messages,
            (Messages{"onInvalidNumber <CurveBedding> 60", "onNameChanged <F60> <F60_1>",
                      "onInvalidNumber <CurveBedding> 140", "onNameChanged <G140> <G140_1>",
                      "onReadFinished 42"}));
}

TEST_F(LongReading, KnowsNothingOfTheReadingBefore) {
  readText(manager, makeDocument(makeManyCurves()), currentVersion);
  manager.reset();

  readText(manager, makeDocument(makeManyCurves()), currentVersion);

  EXPECT_EQ(manager.getFoundations().size(), 60u);
  EXPECT_EQ(manager.getFoundations().back()->getName(), "F60");
}

TEST_F(LongReading, NumbersBeddingsAndKnowsTheirNumbers) {
  std::string beddings;
  for (int i = 0; i < 60; ++i) beddings += "<Bedding Name='B'/>";

  readText(manager, makeDocument(beddings + makeCurve(60, "C") + makeCurve(61, "B_59")), "1.0");

  EXPECT_EQ(manager.getFoundations()[59]->getName(), "B_59");
  EXPECT_EQ(manager.getFoundations()[59]->getNumber(), 60);
  EXPECT_EQ(describeRest(manager), "61 B_59_1");
}

TEST_F(LongReading, SeesWhatEveryKindOfMessageDidToTheManager) {
  const struct {
    const char* element;
    const char* message;
  } rows[] = {{"<Other/>", "onUnknownElement <Other>"},
              {"<Bedding/>", "onMissingBeddingName"},
              {"<Bedding Name=''/>", "onEmptyBeddingName <>"},
              {"<CurveBedding/>", "onMissingNumber <CurveBedding>"},
              {"<CurveBedding Number='0'/>", "onInvalidNumber <CurveBedding> 0"},
              {"<CurveBedding Number='900'/>", "onMissingName 900"},
              {"<CurveBedding Number='900' Name=''/>", "onEmptyName 900 <>"}};
  for (const auto& row : rows) {
    FoundationManager changed;
    Messages expected = {row.message, "onInvalidNumber <CurveBedding> 1000",
                         "onNameChanged <Other> <Other_1>", "onReadFinished 62"};
    ActingMessenger host([&](const std::string& message) {
      if (message != row.message) return;
      changed.getFoundations()[0]->setName("Other");
      changed.getFoundations()[0]->setNumber(1000);
    });

    readText(changed,
             makeDocument(makeManyCurves() + row.element + makeCurve(1, "F1") +
                          makeCurve(1000, "X") + makeCurve(61, "Other")),
             "1.0", &host);

    EXPECT_EQ(host.messages, expected);
    EXPECT_EQ(describeRest(changed), "1 F1, 61 Other_1") << row.message;
  }
}

TEST_F(LongReading, SeesWhatTheMessageOfANewNameDidToTheManager) {
  ActingMessenger host([&](const std::string& message) {
    if (message == "onNameChanged <F2> <F2_1>") manager.getFoundations()[0]->setName("Other");
  });

  readText(manager,
           makeDocument(makeManyCurves() + makeCurve(61, "F2") + makeCurve(62, "F1") +
                        makeCurve(63, "Other")),
           currentVersion, &host);

  EXPECT_EQ(describeRest(manager), "61 F2_1, 62 F1, 63 Other_1");
}

TEST_F(LongReading, SeesFoundationsThatAMessageAdded) {
  ActingMessenger host([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") addFoundation(manager, 500, "Added");
  });

  readText(
      manager,
      makeDocument(makeManyCurves() + "<Other/>" + makeCurve(500, "X") + makeCurve(61, "Added")),
      currentVersion, &host);

  EXPECT_EQ(describeRest(manager), "500 Added, 61 Added_1");
}

TEST_F(LongReading, OutlivesFoundationsThatAMessageDeleted) {
  ActingMessenger host([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") manager.reset();
  });

  readText(manager,
           makeDocument(makeManyCurves() + "<Other/>" + makeManyCurves() + makeCurve(61, "F60")),
           currentVersion, &host);

  EXPECT_EQ(manager.getFoundations().size(), 61u);
  EXPECT_EQ(describeRest(manager), "61 F60_1");
}

TEST_F(LongReading, ForgetsForGoodTheNamesAndNumbersThatAMessageTookOut) {
  std::unique_ptr<Foundation> owner;
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    owner.reset(manager.getFoundations()[0]);
    manager.remove(owner.get(), false, false);
  });

  readText(manager,
           makeDocument(makeManyCurves() + "<Other/>" + makeMoreCurves() + makeCurve(1, "F1")),
           currentVersion, &host);

  EXPECT_EQ(host.messages, (Messages{"onUnknownElement <Other>", "onReadFinished 121"}));
}

TEST_F(LongReading, SeesThatAMessageOnlyRenumbered) {
  ActingMessenger host([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") manager.getFoundations()[0]->setNumber(1000);
  });

  readText(manager,
           makeDocument(makeManyCurves() + "<Other/>" + makeCurve(1, "X") + makeCurve(1000, "Y")),
           currentVersion, &host);

  EXPECT_EQ(host.messages, (Messages{"onUnknownElement <Other>",
                                     "onInvalidNumber <CurveBedding> 1000", "onReadFinished 61"}));
}

TEST_F(LongReading, SeesThatAMessageRenamedAll) {
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    for (Foundation* foundation : manager.getFoundations())
      foundation->setName(foundation->getName() + "b");
  });

  readText(manager,
           makeDocument(makeManyCurves() + "<Other/>" + makeCurve(61, "F1") + makeCurve(62, "F1b")),
           currentVersion, &host);

  EXPECT_EQ(describeRest(manager), "61 F1, 62 F1b_1");
}

TEST_F(LongReading, SeesThatAMessageRenumberedAll) {
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    for (Foundation* foundation : manager.getFoundations())
      foundation->setNumber(foundation->getNumber() + 1000);
  });

  readText(manager,
           makeDocument(makeManyCurves() + "<Other/>" + makeCurve(1, "X") + makeCurve(1001, "Y")),
           currentVersion, &host);

  EXPECT_EQ(describeRest(manager), "1 X");
}

TEST_F(LongReading, SeesThatAMessageTookOutTheLast) {
  std::unique_ptr<Foundation> owner;
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    owner.reset(manager.getFoundations().back());
    manager.remove(owner.get(), false, false);
  });

  readText(manager, makeDocument(makeManyCurves() + "<Other/>" + makeCurve(60, "F60")),
           currentVersion, &host);

  EXPECT_EQ(host.messages, (Messages{"onUnknownElement <Other>", "onReadFinished 61"}));
}

TEST_F(LongReading, SeesThatAMessagePutNullInThePlaceOfTheLast) {
  std::unique_ptr<Foundation> owner;
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    owner.reset(manager.getFoundations().back());
    manager.remove(owner.get(), false, false);
    manager.add(nullptr);
  });

  readText(manager, makeDocument(makeManyCurves() + "<Other/>" + makeCurve(60, "F60")),
           currentVersion, &host);

  EXPECT_EQ(host.messages, (Messages{"onUnknownElement <Other>", "onReadFinished 61"}));
}

TEST_F(LongReading, SeesThatAMessagePutTheFirstAlsoInThePlaceOfTheLast) {
  for (int number = 1; number <= 60; ++number)
    addFoundation(manager, number, "F" + std::to_string(number));
  Foundation* const first = manager.getFoundations().front();
  std::string refused;
  for (int i = 0; i < 20; ++i) refused += makeCurve(1, "X");
  std::unique_ptr<Foundation> owner;
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    owner.reset(manager.getFoundations().back());
    manager.remove(owner.get(), false, false);
    manager.add(first);
  });

  readText(manager, makeDocument(refused + makeCurve(61, "F1") + "<Other/>" + makeCurve(62, "F1")),
           currentVersion, &host);
  manager.remove(first, false, false);

  EXPECT_EQ(manager.getFoundations().back()->getName(), "F1_1");
}

TEST_F(LongReading, SeesThatAMessagePutNullInThePlaceOfEveryFoundation) {
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    manager.reset();
    for (int i = 0; i < 60; ++i) manager.add(nullptr);
  });

  readText(manager, makeDocument(makeManyCurves() + "<Other/>" + makeCurve(1, "F1")),
           currentVersion, &host);

  EXPECT_EQ(describeRest(manager), "1 F1");
}

TEST_F(LongReading, SeesThatAMessagePutAFoundationInThePlaceOfNull) {
  manager.add(nullptr);
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    manager.remove(nullptr, false, false);
    addFoundation(manager, 500, "Added");
  });

  readText(manager,
           makeDocument("<CurveBedding Number='0'/><Other/>" + makeCurve(500, "X") +
                        makeCurve(1, "Added")),
           currentVersion, &host);

  EXPECT_EQ(describe(manager), "500 Added, 1 Added_1");
}

TEST_F(LongReading, ForgetsForGoodTheSuffixesThatAMessageTookOut) {
  ActingMessenger host([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") manager.getFoundations()[61]->setName("Renamed");
  });

  readText(manager,
           makeDocument(makeManyCurves() + makeCurve(61, "A") + makeCurve(62, "A") + "<Other/>" +
                        makeMoreCurves() + makeCurve(63, "A")),
           currentVersion, &host);

  EXPECT_EQ(host.messages, (Messages{"onNameChanged <A> <A_1>", "onUnknownElement <Other>",
                                     "onNameChanged <A> <A_1>", "onReadFinished 123"}));
}

TEST_F(LongReading, TakesFreeSuffixesAgainAfterAMessage) {
  std::string elements = makeCurve(1, "A");
  for (int number = 2; number <= 60; ++number) elements += makeCurve(number, "A");
  ActingMessenger host([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") manager.getFoundations()[5]->setName("Renamed");
  });

  readText(manager, makeDocument(elements + "<Other/>" + makeCurve(61, "A") + makeCurve(62, "A")),
           currentVersion, &host);

  EXPECT_EQ(describeRest(manager), "61 A_5, 62 A_60");
}

TEST_F(LongReading, KnowsWhatItAppendedWhileAMessageHadAddedAFoundationForAWhile) {
  std::unique_ptr<Foundation> guest;
  ActingMessenger host([&](const std::string& message) {
    if (message == "onNameChanged <F1> <F1_1>") {
      guest = std::make_unique<Foundation>();
      manager.add(guest.get());
    } else if (message == "onUnknownElement <Other>") {
      manager.remove(guest.get(), false, false);
    }
  });

  readText(manager,
           makeDocument(makeManyCurves() + makeCurve(61, "F1") + "<Other/>" + makeCurve(62, "G") +
                        makeCurve(63, "F1_1") + makeCurve(61, "H")),
           currentVersion, &host);

  EXPECT_EQ(host.messages, (Messages{"onNameChanged <F1> <F1_1>", "onUnknownElement <Other>",
                                     "onNameChanged <F1_1> <F1_1_1>",
                                     "onInvalidNumber <CurveBedding> 61", "onReadFinished 63"}));
}

TEST_F(LongReading, GivesTheFirstSuffixOnceItsOwnerWasThereForAWhile) {
  std::unique_ptr<Foundation> guest;
  ActingMessenger host([&](const std::string& message) {
    if (message == "onUnknownElement <Other>") {
      guest = std::make_unique<Foundation>();
      guest->setName("A_1");
      manager.add(guest.get());
    } else if (message == "onNameChanged <A> <A_2>") {
      manager.remove(guest.get(), false, false);
    }
  });

  readText(manager,
           makeDocument(makeCurve(201, "A") + "<Other/>" + makeCurve(202, "A") + makeManyCurves() +
                        makeCurve(203, "A")),
           currentVersion, &host);

  EXPECT_EQ(host.messages, (Messages{"onUnknownElement <Other>", "onNameChanged <A> <A_2>",
                                     "onNameChanged <A> <A_1>", "onReadFinished 63"}));
}

TEST_F(LongReading, KnowsHoweverManyFoundationsAMessageAdded) {
  for (int added = 0; added <= 140; ++added) {
    FoundationManager filled;
    ActingMessenger host([&](const std::string& message) {
      if (message != "onUnknownElement <Other>") return;
      for (int i = 0; i < added; ++i) addFoundation(filled, 1000 + i, "A" + std::to_string(i));
    });

    readText(filled, makeDocument(makeManyCurves() + "<Other/>" + makeCurve(999, "B")),
             currentVersion, &host);

    EXPECT_EQ(filled.getFoundations().back()->getName(), "B") << added;
  }
}

TEST_F(LongReading, KnowsThousandsOfFoundationsThatAMessageAdded) {
  std::string again = makeCurve(1, "X");
  Messages expected = {"onUnknownElement <Other>", "onInvalidNumber <CurveBedding> 1"};
  for (int i = 0; i < 100; ++i) {
    const std::string name = "A" + std::to_string(50 * i);
    again += makeCurve(101 + i, name);
    expected.push_back("onNameChanged <" + name + "> <" + name + "_1>");
  }
  expected.push_back("onReadFinished 160");
  ActingMessenger host([&](const std::string& message) {
    if (message != "onUnknownElement <Other>") return;
    for (int i = 0; i < 5000; ++i) addFoundation(manager, 1000 + i, "A" + std::to_string(i));
  });

  readText(manager, makeDocument(makeManyCurves() + "<Other/>" + again), currentVersion, &host);

  EXPECT_EQ(host.messages, expected);
}

TEST_F(LongReading, KnowsHoweverManyEvenNumbersAMessageAdded) {
  std::string elements;
  for (int number = 2; number <= 120; number += 2)
    elements += makeCurve(number, "F" + std::to_string(number));
  std::string unnamed;
  for (int number = 1000; number < 1040; number += 2)
    unnamed += "<CurveBedding Number='" + std::to_string(number) + "'/>";
  for (std::size_t added = 0; added <= 140; ++added) {
    FoundationManager filled;
    ActingMessenger host([&](const std::string& message) {
      if (message != "onUnknownElement <Other>") return;
      for (std::size_t i = 0; i < added; ++i)
        addFoundation(filled, 122 + 2 * static_cast<int>(i), "A");
    });

    readText(filled, makeDocument(elements + "<Other/>" + unnamed), currentVersion, &host);

    EXPECT_EQ(std::count(host.messages.begin(), host.messages.end(), "onMissingName 1038"), 1);
    EXPECT_EQ(filled.getFoundations().size(), 60 + added);
  }
}

TEST_F(LongReading, TakesNoLongerWhereManyHaveTheSameNumberAndName) {
  for (int i = 0; i < 50000; ++i) addFoundation(manager, 7, "Same");

  read(makeManyCurves());

  EXPECT_EQ(messenger.messages,
            (Messages{"onInvalidNumber <CurveBedding> 7", "onReadFinished 59"}));
}

TEST_F(LongReading, TakesNoLongerWhereNumbersStandInTwoRows) {
  for (int i = 1; i <= 50000; ++i) {
    addFoundation(manager, i, "A" + std::to_string(i));
    addFoundation(manager, i + (1 << 18), "B" + std::to_string(i));
  }

  read(makeCurve(50000, "C") + makeCurve((1 << 18) + 50000, "D") + makeMoreCurves() +
       makeCurve(60000, "E"));

  EXPECT_EQ(manager.getFoundations().size(), 100001u);
}

/// Two different names the standard hashes of which agree in their lower half.
std::pair<std::string, std::string> findNamesOfLikeHash() {
  std::unordered_map<std::uint32_t, std::string> known;
  for (int i = 0;; ++i) {
    const std::string name = "Soil " + std::to_string(i);
    const auto half = static_cast<std::uint32_t>(std::hash<std::string>()(name));
    const auto [place, isNew] = known.emplace(half, name);
    if (!isNew) return {place->second, name};
  }
}

TEST_F(LongReading, TellsNamesOfLikeHashApart) {
  const auto [first, second] = findNamesOfLikeHash();

  read(makeManyCurves() + makeCurve(61, first) + makeCurve(62, second));

  EXPECT_EQ(describeRest(manager), "61 " + first + ", 62 " + second);
  EXPECT_EQ(messenger.messages, Messages{"onReadFinished 62"});
}

TEST_F(LongReading, KnowsNumbersThatDifferInTheirUpperBitsOnly) {
  std::string elements;
  for (int i = 1; i <= 60; ++i) elements += makeCurve(i << 24, "F" + std::to_string(i));

  read(elements + makeCurve(60 << 24, "G") + makeCurve(61 << 24, "G"));

  EXPECT_EQ(describeRest(manager), std::to_string(61 << 24) + " G");
}

}  // namespace
}  // namespace ExchangeTest
