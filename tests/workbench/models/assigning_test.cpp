#include "models/assigning.h"

#include <string>

#include <gtest/gtest.h>

#include "files/user_error.h"

namespace {

using Assigning::Change;
using Found::Foundation;

template <class Work>
std::string tellError(const Work& work) {
  try {
    work();
  } catch (const UserError& error) {
    return error.what();
  }
  return "";
}

/// Two foundations, 1 "A" and 2 "B", of which the second shall get values.
std::string assign(const std::string& field, const std::string& text) {
  Found::FoundationManager manager;
  Foundation& first = *manager.giveFoundation(Foundation(), false);
  Foundation& second = *manager.giveFoundation(Foundation(), false);
  first.setNumber(1);
  first.setName("A");
  second.setNumber(2);
  second.setName("B");
  return tellError([&] {
    const std::vector<Change> changes = {Assigning::read(field, text)};
    Assigning::apply(changes, second);
    Assigning::requireUnique(manager, {&second}, changes);
  });
}

TEST(Assigning, SetsWhatATextMeans) {
  Foundation foundation;

  Assigning::apply({Assigning::read("name", "A"), Assigning::read("areaFactor", "0.5")},
                   foundation);

  EXPECT_EQ(foundation.getName(), "A");
  EXPECT_EQ(foundation.getFactorArea(), 0.5);
}

TEST(Assigning, TellsWhatAFieldTakes) {
  EXPECT_EQ(assign("areaZ", "1,5"),
            "areaZ cannot be \"1,5\", only a number such as 1500 or 2.5e4, or nothing");
}

TEST(Assigning, TellsTheFieldThatWasMeant) {
  EXPECT_EQ(assign("areaz", "1"), "there is no field \"areaz\"; did you mean areaZ?");
  EXPECT_EQ(assign("current", "yes"), "which foundation is current cannot be set");
}

TEST(Assigning, RefusesNumbersAndNamesThatAreTaken) {
  EXPECT_EQ(assign("number", "1"), "number 1 is taken by \"A\"; nothing was changed");
  EXPECT_EQ(assign("name", "A"), "the name \"A\" is taken by number 1; nothing was changed");
  EXPECT_EQ(assign("number", "3"), "");
  EXPECT_EQ(assign("name", "C"), "");
  EXPECT_EQ(assign("areaZ", "1"), "");
}

TEST(Assigning, RefusesOneNameForSeveral) {
  const std::vector<Change> changes = {Assigning::read("name", "C")};
  Found::FoundationManager manager;
  Foundation& first = *manager.giveFoundation(Foundation(), false);
  Foundation& second = *manager.giveFoundation(Foundation(), false);
  Assigning::apply(changes, first);
  Assigning::apply(changes, second);
  first.setNumber(1);
  second.setNumber(2);

  EXPECT_EQ(tellError([&] {
              Assigning::requireUnique(manager, {&first, &second}, changes);
            }),
            "the name \"C\" is taken by number 1; nothing was changed");
}

TEST(Assigning, RefusesNumbersWhereThereAreNone) {
  const auto require = [](Documents::Form form, const char* field) {
    return tellError(
        [&] { Assigning::requireNumbers(form, "a.xml", {Assigning::read(field, "1")}); });
  };
  EXPECT_EQ(require(Documents::Form::firstExchange, "number"),
            "a.xml: documents of version 1.0 have no numbers that could be set");
  EXPECT_EQ(require(Documents::Form::firstExchange, "areaZ"), "");
  EXPECT_EQ(require(Documents::Form::exchange, "number"), "");
}

}  // namespace
