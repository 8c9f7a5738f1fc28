#include "documents/losses.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "documents/document.h"

namespace {

using Documents::Document;
using Losses = std::vector<std::string>;

Losses show(const std::vector<::Losses::Loss>& losses) {
  Losses shown;
  for (const ::Losses::Loss& loss : losses) shown.push_back(loss.foundation + ": " + loss.sentence);
  return shown;
}

/// Of a model with these foundations, in a Kvml listing.
Losses listOfKvml(const std::string& foundations) {
  Document document(
      {"file", "",
       "<?xml?>\n<SMOD><FOUNDATIONS CURRENT='C'>" + foundations + "</FOUNDATIONS></SMOD>"});
  return show(::Losses::listOfKvml(document.getFoundations()));
}

TEST(LossesOfKvml, AreNoneOfWhatAListingShows) {
  EXPECT_EQ(
      listOfKvml("<FOUND NUMBER='1' NAME='A' FZAREA='7' FAILZAREA='-1' FACAREA='0.5'/>"
                 "<FOUND NUMBER='2' NAME='B' FXLINE='7' FXX='2' FAILYLINE='1' FACLINE='0.25'/>"),
      Losses{});
}

TEST(LossesOfKvml, AreWhatAListingRounds) {
  EXPECT_EQ(listOfKvml("<FOUND NUMBER='1' NAME='A' FZAREA='7.123' FACAREA='0.123'/>"),
            (Losses{"number 1 \"A\": areaZ 7.123 becomes 7.1",
                    "number 1 \"A\": areaFactor 0.123 becomes 0.12"}));
}

TEST(LossesOfKvml, AreFailuresThatAListingHasNoWordsFor) {
  EXPECT_EQ(listOfKvml("<FOUND NUMBER='1' NAME='A' FZLINE='7' FAILXLINE='1' FAILYLINE='1' "
                       "FAILZLINE='9'/>"),
            (Losses{"number 1 \"A\": lineFailureX compression becomes none",
                    "number 1 \"A\": lineFailureY compression becomes none",
                    "number 1 \"A\": lineFailureZ 9 becomes none"}));
}

TEST(LossesOfKvml, AreFoundationsWithoutAPlaceAndTheCurrentOne) {
  EXPECT_EQ(listOfKvml("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B' FXX='2'/>"
                       "<FOUND NUMBER='3' NAME='C' FZAREA='7'/>"),
            (Losses{"number 1 \"A\": is lost, since it has no stiffness",
                    "number 2 \"B\": is lost, since its only stiffness is one against rotation",
                    "number 3 \"C\": is no longer the current foundation"}));
}

TEST(LossesOfNumbers, AreThoseGivenTwice) {
  Document document({"file", "",
                     "<?xml?>\n<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='A'/>"
                     "<FOUND NUMBER='1' NAME='B'/></FOUNDATIONS></SMOD>"});
  Document kept({"file", "", "<?xml?>\n<SMOD><FOUNDATIONS/></SMOD>"});

  EXPECT_EQ(show(::Losses::list(document.getFoundations(), kept.getFoundations(), {})),
            (Losses{"number 1 \"A\": is lost, since its number is given twice",
                    "number 1 \"B\": is lost, since its number is given twice"}));
}

TEST(Losses, TellAnEmptyNameInQuotes) {
  const Found::Foundation nameless;
  const Fields::Difference named = {*Fields::find("name"), std::string(), std::string("A")};

  EXPECT_EQ(::Losses::describe(nameless, named).sentence, "name \"\" becomes A");
}

TEST(Losses, AreValuesThatAreGoneOrOthersAndNotWhatWasThere) {
  Document wanted({"file", "",
                   "<?xml?>\n<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='A' FZAREA='7' FZLINE='2' "
                   "FACAREA='0.5'/></FOUNDATIONS></SMOD>"});
  Document kept({"file", "",
                 "<B><CurveBedding Number='1' Name='A' StiffnessZ='2'/>"
                 "<CurveBedding Number='2' Name='B' StiffnessZ='2'/></B>"});

  EXPECT_EQ(
      show(::Losses::list(wanted.getFoundations(), kept.getFoundations(), {})),
      (Losses{"number 1 \"A\": areaZ 7 is lost", "number 1 \"A\": areaFactor 0.5 becomes 0"}));
}

TEST(LossesOfKvml, AreBothFailuresWhereOneHasNoWord) {
  EXPECT_EQ(listOfKvml("<FOUND NUMBER='1' NAME='A' FZLINE='7' FAILYLINE='9' FAILZLINE='1'/>"),
            (Losses{"number 1 \"A\": lineFailureY 9 becomes none",
                    "number 1 \"A\": lineFailureZ compression becomes none"}));
}

/// What goes from a model with these foundations when it becomes the other one.
Losses listReplaced(const std::string& before, const std::string& after, Documents::Form source) {
  const std::string start = "<?xml?>\n<SMOD><FOUNDATIONS CURRENT='C'>";
  const std::string end = "</FOUNDATIONS></SMOD>";
  Document old({"file", "", start + before + end});
  Document now({"file", "", start + after + end});
  return show(::Losses::listReplaced(old.getFoundations(), now.getFoundations(), source,
                                     {Matching::Key::number, Matching::Key::name}));
}

TEST(LossesReplaced, AreFoundationsWithoutACounterpartAndTheCurrentOne) {
  EXPECT_EQ(listReplaced("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='C'/>",
                         "<FOUND NUMBER='1' NAME='A'/>", Documents::Form::exchange),
            Losses{"number 2 \"C\": goes from the document"});
  EXPECT_EQ(listReplaced("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='C'/>",
                         "<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='D'/>",
                         Documents::Form::exchange),
            Losses{"number 2 \"C\": is no longer the current foundation"});
}

TEST(LossesReplaced, AreFieldsThatTheSourceCannotTell) {
  const char* const before =
      "<FOUND NUMBER='1' NAME='A' FZLINE='1' FAILXLINE='1' IsGenerated='1'/>";
  const char* const after = "<FOUND NUMBER='1' NAME='A' FZLINE='2'/>";

  EXPECT_EQ(listReplaced(before, after, Documents::Form::exchange),
            (Losses{"number 1 \"A\": generated yes becomes no",
                    "number 1 \"A\": lineFailureX compression becomes none"}));
  EXPECT_EQ(listReplaced(before, after, Documents::Form::legacy), Losses{});
}

TEST(LossesHalved, AreTheOtherPartsOfFoundations) {
  Document document({"file", "",
                     "<B><CurveBedding Number='1' Name='A'/><SurfaceBedding Number='1' Name='A'/>"
                     "<SurfaceBedding Number='2' Name='B'/><CurveBedding Number='2' Name='B'/>"
                     "<CurveBedding Number='3' Name='C'/></B>"});

  EXPECT_EQ(show(::Losses::listHalved(document)),
            (Losses{"number 1 \"A\": hosts that read the document keep only its line part",
                    "number 2 \"B\": hosts that read the document keep only its area part"}));
}

TEST(LossesUnread, AreNamedWithTheirLines) {
  Document document({"file", "",
                     "<B><CurveBedding Number='1' Name='A'/>\n<CurveBedding Number='1' "
                     "Name='a&#10;'/>\n<CurveBedding Number='1'/></B>"});
  std::vector<const Documents::Entry*> unread;
  for (const Documents::Entry& entry : document.getEntries().front())
    if (entry.foundation == nullptr) unread.push_back(&entry);

  EXPECT_EQ(show(::Losses::listUnread(unread)),
            (Losses{"number 1 \"a\\n\": goes without ever having been read (line 2)",
                    "number 1 \"\": goes without ever having been read (line 3)"}));
}

}  // namespace
