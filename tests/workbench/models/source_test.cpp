#include "models/source.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "files/user_error.h"

namespace {

using Texts = std::vector<std::string>;

std::string readEncoding(const std::string& bytes) {
  return Models::read({"a.xml", "", bytes}, {})->source->encoding;
}

/// The names of the fields that a document can hold.
Texts listFields(const std::string& name, const std::string& bytes) {
  const auto read = Models::read({name, "", bytes}, {});
  Texts names;
  for (const Fields::Field& field : Fields::list())
    if (read->source->fields.has(field)) names.emplace_back(field.name);
  return names;
}

TEST(ModelSource, KeepsWhatADocumentIs) {
  const std::string bytes = "#units;kN;m\nnumber;name;areaZ;current\n1;A;1,5;yes\n2;B;2;no\n";

  const auto read = Models::read({"a.csv", "", bytes}, {});

  EXPECT_EQ(read->source->content.bytes, bytes);
  EXPECT_EQ(read->source->content.shownPath, "a.csv");
  EXPECT_EQ(read->source->form, Documents::Form::csv);
  EXPECT_EQ(read->source->encoding, "utf-8");
  EXPECT_EQ(read->source->units, (Units{"kN", "m"}));
  EXPECT_EQ(read->source->dialect.separator, ';');
  EXPECT_TRUE(read->source->isReadWhole);
  ASSERT_EQ(read->foundations.getFoundations().size(), 2u);
  EXPECT_EQ(read->foundations.getCurrentFoundation(), read->foundations.getFoundations()[0]);
}

TEST(ModelSource, TellsTheEncodingThatHolds) {
  const std::string rest = "<Beddings><SurfaceBedding Number='1' Name='\xE4'/></Beddings>";
  EXPECT_EQ(readEncoding("<Beddings/>"), "utf-8");
  EXPECT_EQ(readEncoding(rest), "windows-1252");
  EXPECT_EQ(readEncoding("<?xml version='1.0' encoding='ISO-8859-1'?>" + rest), "ISO-8859-1");
  EXPECT_EQ(readEncoding("<?xml version='1.0' encoding='UTF-8'?>" + rest), "windows-1252");
  EXPECT_EQ(readEncoding("<?xml version='1.0' encoding='utf-8'?>" + rest), "windows-1252");
}

TEST(ModelSource, TellsWhatWasSkippedAndWhere) {
  const auto read = Models::read(
      {"a.xml", "", "<Beddings>\n<SurfaceBedding Number='0' Name='A'/></Beddings>"}, {});

  EXPECT_FALSE(read->source->isReadWhole);
  EXPECT_EQ(read->source->listLines(),
            Texts{"a.xml:2:1: the number 0 of a <SurfaceBedding> is below 1; it was skipped"});
}

TEST(ModelSource, TellsWhichFieldsADocumentCanHold) {
  EXPECT_EQ(listFields("a.csv", "name,current,areaX\nA,no,1\n"), (Texts{"name", "areaX"}));
  EXPECT_EQ(
      listFields("a.xml", "<Beddings><Bedding Name='A'/></Beddings>"),
      (Texts{"name", "areaX", "areaY", "areaZ", "areaFailureZ", "areaFactor", "lineX", "lineY",
             "lineZ", "lineRotationX", "lineFailureY", "lineFailureZ", "lineFactor"}));
  EXPECT_EQ(listFields("a.json", R"({"foundations": []})").size(), Fields::list().size());
}

TEST(ModelSource, IsOnlyOfDocumentsThatHostsRead) {
  EXPECT_THROW(Models::read({"a.xml", "", "<Kvml/>"}, {}), UserError);
}

}  // namespace
