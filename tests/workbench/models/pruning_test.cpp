#include "models/pruning.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "documents/editing.h"
#include "foundations/fields.h"
#include "foundations/keep_list.h"

namespace {

using Documents::Document;
using Documents::Form;
using Texts = std::vector<std::string>;

const std::string model =
    "<?xml?>\n<SMOD><FOUNDATIONS><FOUND NUMBER='4' NAME='A'/><FOUND NUMBER='5' NAME='B' "
    "IsGenerated='1'/><FOUND NUMBER='6' NAME='C'/><FOUND NUMBER='7' NAME='D' IsGenerated='1'/>"
    "</FOUNDATIONS>\n<LINE FOUND='5'/><LINE FOUND='6'/><LINE FOUND='9'/></SMOD>";

Texts show(const Found::FoundationManager& manager) {
  Texts shown;
  for (const Found::Foundation* foundation : manager.getFoundations())
    shown.push_back(Fields::describe(*foundation));
  return shown;
}

Texts prune(Pruning::Options options, const std::string& list = "", Form form = Form::legacy) {
  Document document({"a.xml", "", model});
  Editing::Draft draft(document);
  std::istringstream in(list);
  KeepList user(in);
  if (!list.empty()) options.user = &user;
  Pruning::prune(options, form, draft.getFoundations());
  return show(draft.getFoundations());
}

TEST(Pruning, RemovesWhatWasGeneratedOrIsNotUsed) {
  EXPECT_EQ(prune({true, nullptr, true}), (Texts{"number 4 \"A\"", "number 6 \"C\""}));
  EXPECT_EQ(prune({false, nullptr, true}, "D\n"), Texts{"number 7 \"D\""});
  EXPECT_EQ(prune({true, nullptr, true}, "D\n"),
            (Texts{"number 4 \"A\"", "number 6 \"C\"", "number 7 \"D\""}));
}

TEST(Pruning, NumbersWhatIsLeftAnew) {
  EXPECT_EQ(prune({true}), (Texts{"number 1 \"A\"", "number 2 \"C\""}));
  EXPECT_EQ(prune({false, nullptr, true}, "A\nD\n", Form::firstExchange),
            (Texts{"number 1 \"A\"", "number 2 \"D\""}));
}

TEST(StaleNumbers, AreToldWithTheirPlaces) {
  Document document({"a.xml", "", model});
  Editing::Draft draft(document);
  Pruning::prune({true}, Form::legacy, draft.getFoundations());
  std::vector<Matching::Pair> pairs = draft.makeWish().pairs;
  Found::Foundation added;
  pairs.push_back({nullptr, &added});

  Texts lines;
  for (const Documents::Note& note : Pruning::listStale(document, pairs))
    lines.push_back(std::to_string(note.position.line) + ":" +
                    std::to_string(note.position.column) + ": " + note.sentence);

  EXPECT_EQ(lines, (Texts{"3:7: FOUND=\"5\" stays, but the foundation of this number is gone",
                          "3:24: FOUND=\"6\" stays, but the foundation of this number is number 2 "
                          "now"}));
}

TEST(StaleNumbers, AreNoneWhereNumbersStay) {
  Document document({"a.xml", "", model});
  Editing::Draft draft(document);

  EXPECT_TRUE(Pruning::listStale(document, draft.makeWish().pairs).empty());
}

}  // namespace
