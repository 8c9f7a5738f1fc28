#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "documents/document.h"
#include "documents/writing.h"
#include "files/content.h"
#include "files/user_error.h"
#include "support/temporary_files.h"
#include "workbench/spreadsheets/field_names.h"

// Tables and data as documents.

namespace {

using Documents::ReadOptions;
using TestSupport::TemporaryPath;

std::unique_ptr<Documents::Document> openSheet(const std::string& path, const std::string& bytes,
                                               const ReadOptions& options = {}) {
  return std::make_unique<Documents::Document>(Files::Content{path, "", bytes}, options);
}

/// The form and the number of foundations, or the error that it gives.
std::string describeSheet(const std::string& path, const std::string& bytes,
                          std::optional<Documents::Form> form = std::nullopt) {
  ReadOptions options;
  options.form = form;
  try {
    const auto document = openSheet(path, bytes, options);
    document->requireReadable();
    const std::string count = std::to_string(document->getFoundations().getFoundations().size());
    switch (document->getForm()) {
      case Documents::Form::csv:
        return "csv " + count;
      case Documents::Form::json:
        return "json " + count;
      default:
        return "xml " + count;
    }
  } catch (const UserError& error) {
    return error.what();
  }
}

const std::string table = "number,name,areaX\n1,A,1.5\n2,B,2.5\n3,C,3.5\n";
const std::string foundationsInData =
    "{\"foundations\": [{\"number\": 1, \"name\": \"A\"},\n"
    "{\"number\": 2, \"name\": \"B\", \"current\": true}]}";
const std::string beddings = "<Beddings><SurfaceBedding Number='1' Name='A'/></Beddings>";

TEST(SheetDocument, OfATableIsToldByTheEndingOfItsName) {
  EXPECT_EQ(describeSheet("a.csv", table), "csv 3");
  EXPECT_EQ(describeSheet("A.CSV", table), "csv 3");
  EXPECT_EQ(describeSheet("a.csv.txt", table),
            "a.csv.txt: this is no XML document (a table or JSON needs the ending .csv or .json, "
            "or its form told)");
  EXPECT_EQ(describeSheet("csv", table),
            "csv: this is no XML document (a table or JSON needs the ending .csv or .json, or its "
            "form told)");
  EXPECT_EQ(describeSheet("a.csv", ""),
            "a.csv: this table is empty; its first row names the columns");
}

TEST(SheetDocument, OfDataIsToldByItsContentOrTheEndingOfItsName) {
  EXPECT_EQ(describeSheet("a", foundationsInData), "json 2");
  EXPECT_EQ(describeSheet("a", "\xEF\xBB\xBF \r\n" + foundationsInData), "json 2");
  EXPECT_EQ(describeSheet("a.csv", foundationsInData), "json 2");
  EXPECT_EQ(describeSheet("a.JSON", "[]"),
            "a.JSON:1:1: this is no JSON object with the member \"foundations\"");
}

TEST(SheetDocument, IsOfTheFormThatIsAskedFor) {
  EXPECT_EQ(describeSheet("a.txt", table, Documents::Form::csv), "csv 3");
  EXPECT_EQ(describeSheet("a.csv", "", Documents::Form::json).substr(0, 43),
            "a.csv:1:1: this is no JSON that can be read");
}

TEST(SheetDocument, IsNoneOfXmlWhateverItsName) {
  EXPECT_EQ(describeSheet("a.csv", beddings), "xml 1");
  EXPECT_EQ(describeSheet("a.json", "\xEF\xBB\xBF\n" + beddings, Documents::Form::csv), "xml 1");
}

TEST(SheetDocument, HasNoElements) {
  const auto document = openSheet("a.csv", table);

  EXPECT_TRUE(document->getEntries().empty());
  EXPECT_TRUE(document->listLists().empty());
  EXPECT_EQ(document->getModel(), nullptr);
  EXPECT_EQ(document->getExchange(), nullptr);
}

TEST(SheetDocument, IsReadAsItsUserSays) {
  ReadOptions options;
  options.dialect = {{}, ','};
  EXPECT_EQ(*openSheet("a.csv", "name;areaX\nA;1,500\n", options)->getSheet()->dialect.decimal,
            ',');
}

TEST(SheetDocument, KeepsOriginsOfThoseThatAreSelected) {
  const auto document = openSheet("a.csv", table);
  Selection selection;
  selection.selectNumbers("1,3");

  document->keep(selection);

  const std::vector<Spreadsheets::Origin>& origins = document->getSheet()->origins;
  ASSERT_EQ(origins.size(), 2u);
  EXPECT_EQ(origins[0].line, 2u);
  EXPECT_EQ(origins[1].line, 4u);
}

TEST(SheetDocument, IsEditedWhereSomeOfItsFoundationsAreSelected) {
  const auto document = openSheet("a.csv", table);
  Selection selection;
  selection.selectName("C");
  document->keep(selection);
  Editing::Draft draft(*document);
  draft.getCopy(0).setName("D");

  const auto edited = Editing::edit(*document, draft.makeWish());

  EXPECT_EQ(edited->getContent().bytes, "number,name,areaX\n1,A,1.5\n2,B,2.5\n3,D,3.5\n");
}

// --- Files

TEST(SheetFile, IsReadWholeWhereItIsText) {
  const std::string start(Files::lengthOfStart, ' ');
  const struct {
    const char* ending;
    std::string bytes;
    std::size_t left;
  } rows[] = {{".csv", start + table, 0},
              {".json", start + foundationsInData, 0},
              {".txt", "{" + start, 0},
              {".txt", start + table, table.size()},
              {".csv", std::string("a\0", 2) + start, 2}};
  for (const auto& row : rows) {
    const TemporaryPath path(row.ending);
    TestSupport::store(path.get(), row.bytes);
    EXPECT_EQ(Documents::readFile(path.get()).bytes.size(), row.bytes.size() - row.left)
        << row.ending;
  }
}

TEST(SheetFile, IsReadWholeWhereItsFormIsAskedFor) {
  const TemporaryPath path(".txt");
  TestSupport::store(path.get(), std::string(Files::lengthOfStart, ' ') + table);

  EXPECT_EQ(Documents::readFile(path.get(), Documents::Form::csv).bytes.size(),
            Files::lengthOfStart + table.size());
}

// --- Writing

const std::string model =
    "<?xml?>\n<SMOD><FOUNDATIONS CURRENT='A'><FOUND NUMBER='1' NAME='A' FXAREA='1.125' "
    "IsGenerated='1'/></FOUNDATIONS></SMOD>";

/// The file at `path` after the foundations of `bytes` are written into it, or the error.
std::string writeSheet(const std::string& bytes, const std::string& path, Documents::Form form,
                       const Spreadsheets::Dialect& dialect = {}) {
  Documents::Document in({"in", "", bytes});
  try {
    OutputFile to(path);
    Writing::Output output(to, form, in, dialect);
    if (output.isUpdate())
      output.update(in.getFoundations());
    else
      output.write(in.getFoundations());
    output.requireAll(in.getFoundations());
    output.commit();
  } catch (const UserError& error) {
    return error.what();
  }
  return Files::read(path).bytes;
}

const std::string names =
    "number,name,generated,areaX,areaY,areaZ,areaFailureZ,areaFactor,lineX,lineY,lineZ,"
    "lineRotationX,lineFailureX,lineFailureY,lineFailureZ,lineFactor,current\n";

TEST(SheetFile, IsMadeOfAnyDocument) {
  const TemporaryPath csv(".csv");
  const TemporaryPath json(".json");
  EXPECT_EQ(writeSheet(model, csv.get(), Documents::Form::csv),
            names + "1,A,true,1.125,0,0,none,0,,,,,none,none,none,0,true\n");
  EXPECT_EQ(writeSheet(beddings, json.get(), Documents::Form::json)
                .find("{\n  \"format\": \"kvfound-foundations\",\n  \"version\": 1,\n  "
                      "\"foundations\": [\n"),
            0u);
}

TEST(SheetFile, HasTheUnitsOfTheOneThatItIsMadeOf) {
  const TemporaryPath csv(".csv");
  EXPECT_EQ(writeSheet("{\"units\": {\"force\": \"kN\", \"length\": \"m\"}, \"foundations\": []}",
                       csv.get(), Documents::Form::csv),
            "#units,kN,m\n" + names);
}

TEST(SheetFile, ReadsBackInAnyDialect) {
  for (const char separator : {',', ';', '\t'})
    for (const char decimal : {'.', ','}) {
      const TemporaryPath path(".csv");
      const std::string written =
          writeSheet(model, path.get(), Documents::Form::csv, {separator, decimal});
      const auto read = openSheet(path.get(), written);
      EXPECT_EQ(*read->getSheet()->dialect.separator, separator);
      EXPECT_EQ(*read->getSheet()->dialect.decimal, decimal);
    }
}

TEST(SheetFile, ThatIsThereIsUpdatedInPlace) {
  const TemporaryPath path(".csv");
  TestSupport::store(path.get(),
                     "# ours\nname;number;areaX;areaY;areaZ;generated;current\r\n"
                     "A;1;1,0;;;;\r\nB;2;0;;;;\r\n");

  EXPECT_EQ(writeSheet(model, path.get(), Documents::Form::csv),
            "# ours\nname;number;areaX;areaY;areaZ;generated;current\r\n"
            "A;1;1,1250;0;0;true;true\r\n");
}

TEST(SheetFile, RefusesWhatItsColumnsCannotHold) {
  const TemporaryPath path(".csv");
  TestSupport::store(path.get(), "number,areaX\n1,0\n");
  const std::string told = writeSheet(model, path.get(), Documents::Form::csv);

  EXPECT_EQ(told.find(path.get() + ": was not written, since something would be lost: "), 0u)
      << told;
  EXPECT_EQ(TestSupport::load(path.get()), "number,areaX\n1,0\n");
}

TEST(SheetFile, RefusesARowThatWouldBeBlank) {
  const TemporaryPath path(".csv");
  TestSupport::store(path.get(), "name\nA\n");
  Documents::Document in(Documents::readFile(path.get()));
  Editing::Draft draft(in);
  draft.getCopy(0).setName("");
  OutputFile to(path.get());
  Writing::Output output(to, Documents::Form::csv, in);
  output.edit(in, draft.makeWish());

  EXPECT_THROW(output.requireAll(draft.getFoundations()), UserError);
}

TEST(SheetFile, CanBeReplacedByADocumentOfAnotherForm) {
  const TemporaryPath path(".csv");
  TestSupport::store(path.get(), table);

  EXPECT_EQ(writeSheet(beddings, path.get(), Documents::Form::firstExchange).find("<?xml"), 0u);
}

TEST(SheetFile, ThatCannotBeReadIsNotReplaced) {
  const TemporaryPath path(".csv");
  TestSupport::store(path.get(), "colour\nred\n");

  EXPECT_EQ(writeSheet(beddings, path.get(), Documents::Form::csv),
            path.get() + ":1: there is no column \"colour\"; " + SpreadsheetTest::fieldNames +
                "; it was not replaced: mend or remove it, or name another file");
}

}  // namespace
