#include "documents/losses.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "documents/document.h"

namespace {

using Documents::Document;
using Losses = std::vector<std::string>;

/// Of a model with these foundations, in a Kvml listing.
Losses listOfKvml(const std::string& foundations) {
  Document document(
      {"file", "",
       "<?xml?>\n<SMOD><FOUNDATIONS CURRENT='C'>" + foundations + "</FOUNDATIONS></SMOD>"});
  return ::Losses::listOfKvml(document.getFoundations());
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

  EXPECT_EQ(::Losses::list(document.getFoundations(), kept.getFoundations(), {}),
            (Losses{"number 1 \"A\": is lost, since its number is given twice",
                    "number 1 \"B\": is lost, since its number is given twice"}));
}

TEST(Losses, AreValuesThatAreGoneOrOthersAndNotWhatWasThere) {
  Document wanted({"file", "",
                   "<?xml?>\n<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='A' FZAREA='7' FZLINE='2' "
                   "FACAREA='0.5'/></FOUNDATIONS></SMOD>"});
  Document kept({"file", "",
                 "<B><CurveBedding Number='1' Name='A' StiffnessZ='2'/>"
                 "<CurveBedding Number='2' Name='B' StiffnessZ='2'/></B>"});

  EXPECT_EQ(
      ::Losses::list(wanted.getFoundations(), kept.getFoundations(), {}),
      (Losses{"number 1 \"A\": areaZ 7 is lost", "number 1 \"A\": areaFactor 0.5 becomes 0"}));
}

TEST(LossesOfKvml, AreBothFailuresWhereOneHasNoWord) {
  EXPECT_EQ(listOfKvml("<FOUND NUMBER='1' NAME='A' FZLINE='7' FAILYLINE='9' FAILZLINE='1'/>"),
            (Losses{"number 1 \"A\": lineFailureY 9 becomes none",
                    "number 1 \"A\": lineFailureZ compression becomes none"}));
}

}  // namespace
