#include "documents/notes.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Documents::Document;
using Notes = std::vector<std::string>;

/// Sentences with the column, in documents of one line, of what they are about.
Notes show(Document& document) {
  Notes shown;
  for (const Documents::Note& note : Documents::listNotes(document))
    shown.push_back((note.position.line > 0 ? std::to_string(note.position.column) + ": " : "") +
                    note.sentence);
  return shown;
}

Notes listNotes(const std::string& bytes) {
  Document document({"file", "", bytes});
  return show(document);
}

TEST(Notes, TellEachBeddingThatIsNotReadAsItIs) {
  const struct {
    const char* bedding;
    const char* note;
  } rows[] = {
      {"<Load/>", "<Load> is no bedding of this version; it was skipped"},
      {"<CurveBedding Number='2'/>", "the bedding with the number 2 has no name; it was skipped"},
      {"<SurfaceBedding Number='2' Name=''/>",
       "the name of the bedding with the number 2 is empty; it was skipped"},
      {"<CurveBedding/>",
       "a <CurveBedding> has no number, or one that cannot be read; it was skipped"},
      {"<SurfaceBedding Number='0' Name='B'/>",
       "the number 0 of a <SurfaceBedding> is below 1; it was skipped"},
      {"<CurveBedding Number='1' Name='B'/>",
       "the number 1 of a <CurveBedding> is already taken; it was skipped"},
      {"<CurveBedding Number='1' Name='A'/>",
       "the number 1 of a <CurveBedding> is already taken; it was skipped"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(
        listNotes("<B><CurveBedding Number='1' Name='A'/>" + std::string(row.bedding) + "</B>"),
        (Notes{std::string("39: ") + row.note, "1 bedding was read"}))
        << row.bedding;
}

TEST(Notes, TellBeddingsOfTheFirstVersionByTheirElement) {
  EXPECT_EQ(
      listNotes("<B><Bedding/><Bedding Name=''/></B>"),
      (Notes{"4: a <Bedding> has no name; it was skipped",
             "14: the name of a <Bedding> is empty; it was skipped", "0 beddings were read"}));
}

TEST(Notes, TellNewNamesWithoutControlCharacters) {
  EXPECT_EQ(listNotes("<B><Bedding Name='a&#10;'/><Bedding Name='a&#10;'/></B>"),
            (Notes{"28: the name \"a\\n\" is already taken; the bedding was read as \"a\\n_1\"",
                   "2 beddings were read"}));
}

TEST(Notes, TellBeddingsOfTheFirstVersionInLaterOnes) {
  Document document({"file", "", "<B><Bedding Name='A'/></B>"}, {"2.0", {}, {}});

  EXPECT_EQ(show(document), (Notes{"4: <Bedding> is no bedding of this version; it was skipped",
                                   "0 beddings were read"}));
}

TEST(Notes, CountEachContainer) {
  EXPECT_EQ(listNotes("<X><A><Bedding Name='A'/></A><B><Bedding Name='B'/></B></X>"),
            (Notes{"1 bedding was read", "1 bedding was read"}));
}

TEST(Notes, AreNoneOfAFoundationInTwoParts) {
  EXPECT_EQ(listNotes("<B><CurveBedding Number='1' Name='A'/><SurfaceBedding Number='1' Name='A'/>"
                      "</B>"),
            Notes{"1 bedding was read"});
}

TEST(Notes, TellBeddingsWhereNothingIsRead) {
  EXPECT_EQ(listNotes("<X><Beddings><Bedding Name='A'/></Beddings><Y><Bedding Name='B'/></Y></X>"),
            (Notes{"1 bedding was read",
                   "47: a <Bedding> stands where no foundations are read; it was skipped"}));
}

TEST(Notes, TellFoundationsOfFurtherListsOfAModel) {
  EXPECT_EQ(listNotes("<?xml?>\n<SMOD><A><FOUND/></A><FOUNDATIONS><FOUND/></FOUNDATIONS>"
                      "<FOUNDATIONS><FOUND/></FOUNDATIONS></SMOD>"),
            Notes{"70: a <FOUND> stands where no foundations are read; it was skipped"});
}

TEST(Notes, AreNoneOfAModel) {
  EXPECT_EQ(listNotes("<?xml?>\n<SMOD><FOUNDATIONS><LOAD/></FOUNDATIONS></SMOD>"), Notes{});
}

TEST(Notes, AreCountedWithoutTheBeddingsThatAreReadAsTheyAre) {
  Document document({"file", "",
                     "<X><A><CurveBedding Number='1' Name='A'/><Load/></A>"
                     "<B><CurveBedding Number='2' Name='A'/></B></X>"});
  Document model({"file", "", "<?xml?>\n<SMOD><FOUNDATIONS><LOAD/></FOUNDATIONS></SMOD>"});

  EXPECT_EQ(Documents::countNotes(document), 2u);
  EXPECT_EQ(Documents::countNotes(model), 0u);
}

}  // namespace
