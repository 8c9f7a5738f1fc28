#include "documents/units.h"

#include <string>

#include <gtest/gtest.h>

#include "files/user_error.h"

namespace {

using Documents::chooseUnits;
using Documents::Document;

const Units kiloNewton = {"kN", "m"};
const Units newton = {"N", "mm"};

Document makeTable(const std::string& head) { return Document({"a.csv", "", head + "name\nA\n"}); }

TEST(ChosenUnits, AreThoseOfTheDocument) {
  const Document table = makeTable("#units,kN,m\n");

  EXPECT_EQ(chooseUnits(table, {}), kiloNewton);
  EXPECT_EQ(chooseUnits(table, kiloNewton), kiloNewton);
}

TEST(ChosenUnits, AreThoseGivenWhereTheDocumentNamesNone) {
  EXPECT_EQ(chooseUnits(makeTable(""), newton), newton);
  EXPECT_EQ(chooseUnits(makeTable(""), {}), Units{});
}

TEST(ChosenUnits, CannotDifferFromThoseOfTheDocument) {
  const Document table = makeTable("#units,kN,m\n");
  try {
    chooseUnits(table, newton);
    FAIL();
  } catch (const UserError& error) {
    EXPECT_STREQ(error.what(),
                 "a.csv: its units are kN and m, not N and mm; labels convert nothing, converting "
                 "does");
  }
}

}  // namespace
