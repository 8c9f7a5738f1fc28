#include "comparing/units.h"

#include <string>

#include <gtest/gtest.h>

#include "files/user_error.h"

namespace {

using Comparing::compareUnits;
using Documents::Document;

Document makeTable(const std::string& path, const std::string& head) {
  return Document({path, "", head + "name\nA\n"});
}

Document makeModel(const std::string& path, const std::string& force) {
  return Document({path, "",
                   "<?xml version=\"1.0\"?>\n<SMOD><PROJECT UNITFORCE=\"" + force +
                       "\" UNITLENGTH=\"m\"/></SMOD>"});
}

TEST(ComparedUnits, ThatAreAlikeAreNotNoted) {
  EXPECT_FALSE(
      compareUnits(makeTable("a.csv", "#units,kN,m\n"), makeTable("b.csv", "#units,kN,m\n")));
  EXPECT_FALSE(compareUnits(makeTable("a.csv", ""), makeTable("b.csv", "")));
}

TEST(ComparedUnits, AreRefusedWhereTablesDiffer) {
  EXPECT_THROW(
      compareUnits(makeTable("a.csv", "#units,kN,m\n"), makeTable("b.csv", "#units,N,mm\n")),
      UserError);
}

TEST(ComparedUnits, ThatOnlyOneTableNamesAreNoted) {
  const Document naming = makeTable("a.csv", "#units,kN,m\n");
  const Document silent = makeTable("b.csv", "");
  for (const auto& note : {compareUnits(naming, silent), compareUnits(silent, naming)}) {
    ASSERT_TRUE(note);
    EXPECT_FALSE(note->isWarning);
    EXPECT_EQ(&note->about, &naming);
    EXPECT_EQ(note->sentence,
              "its units are kN and m; b.csv names none, and is taken for the same");
  }
}

TEST(ComparedUnits, ThatOnlyAModelTellsAreNotNoted) {
  EXPECT_FALSE(compareUnits(makeModel("a.xml", "kN"), makeTable("b.csv", "")));
}

TEST(ComparedUnits, AreWarnedOfWhereAModelTellsOthers) {
  const Document model = makeModel("a.xml", "N");
  const Document table = makeTable("b.csv", "#units,kN,m\n");

  const auto note = compareUnits(table, model);

  ASSERT_TRUE(note);
  EXPECT_TRUE(note->isWarning);
  EXPECT_EQ(&note->about, &table);
  EXPECT_EQ(note->sentence,
            "its units are kN and m, but those of a.xml are N and m; nothing is converted");
}

}  // namespace
