#include "documents/notes.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Documents::Document;
using Notes = std::vector<std::string>;

Notes listNotes(const std::string& bytes) {
  Document document({"file", "", bytes});
  return Documents::listNotes(document);
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
      {"<SurfaceBedding Number='1' Name='A'/>",
       "the number 1 of a <SurfaceBedding> is already taken; it was skipped"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(
        listNotes("<B><CurveBedding Number='1' Name='A'/>" + std::string(row.bedding) + "</B>"),
        (Notes{row.note, "1 bedding was read"}))
        << row.bedding;
}

TEST(Notes, TellBeddingsOfTheFirstVersionByTheirElement) {
  EXPECT_EQ(listNotes("<B><Bedding/><Bedding Name=''/></B>"),
            (Notes{"a <Bedding> has no name; it was skipped",
                   "the name of a <Bedding> is empty; it was skipped", "0 beddings were read"}));
}

TEST(Notes, TellNewNamesWithoutControlCharacters) {
  EXPECT_EQ(listNotes("<B><Bedding Name='a&#10;'/><Bedding Name='a&#10;'/></B>"),
            (Notes{"the name \"a\\n\" is already taken; the bedding was read as \"a\\n_1\"",
                   "2 beddings were read"}));
}

TEST(Notes, TellBeddingsOfTheFirstVersionInLaterOnes) {
  Document document({"file", "", "<B><Bedding Name='A'/></B>"}, "2.0");

  EXPECT_EQ(
      Documents::listNotes(document),
      (Notes{"<Bedding> is no bedding of this version; it was skipped", "0 beddings were read"}));
}

TEST(Notes, CountEachContainer) {
  EXPECT_EQ(listNotes("<X><A><Bedding Name='A'/></A><B><Bedding Name='B'/></B></X>"),
            (Notes{"1 bedding was read", "1 bedding was read"}));
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
